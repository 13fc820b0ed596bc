// Mouse, wheel and keys over the wave panels of the real window.
#include "MouseEvents.h"
#include "WindowFixture.h"

#include "selection/ScriptedSelConf.h"
#include "selection/SelectionMod.h"
#include "view/MousePointer.h"
#include "view/ReadOutLabel.h"
#include "view/ValueLabel.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"

#include <QAction>
#include <QLabel>
#include <QStatusBar>
#include <QTimer>
#include <QtTest>

namespace quoril::test {
namespace {

class PanelMouseTest : public WindowTest {
  protected:
    PanelMouseTest() {
        Source.Document = {1000, 1000, 2, 16};
        Source.Left.assign(1000, 12);
        Source.Right.assign(1000, -7);
        Window->SetSource(&Source);
        Show();
        Window->Refresh_Wave_View();
    }
    WavePanel* Panel(int Channel = 1) const { return Window->Wave_Pic.at(std::size_t(Channel)); }
    /// A place on a panel, as a share of its width.
    QPoint At(double Share, int Channel = 1) const {
        return {int(std::lround(Share * (Panel(Channel)->width() - 1))), 30};
    }
    void Waited() {
        Window->PanelMouse->Mouse.MoveWait = false;
        Window->PanelMouse->MouseMoveWaitTimer->stop();
    }
    void Press(QPoint Where, Qt::MouseButton Button = Qt::LeftButton, int Channel = 1) {
        SendMouse(Panel(Channel), QEvent::MouseButtonPress, Where, Button, Button);
        Waited();
    }
    void Move(QPoint Where, Qt::MouseButtons Held = Qt::NoButton, int Channel = 1) {
        SendMouse(Panel(Channel), QEvent::MouseMove, Where, Qt::NoButton, Held);
    }
    void Release(QPoint Where, int Channel = 1) {
        SendMouse(Panel(Channel), QEvent::MouseButtonRelease, Where, Qt::LeftButton, Qt::NoButton);
    }
    void Leave(int Channel = 1) {
        QEvent Event(QEvent::Leave);
        QApplication::sendEvent(Panel(Channel), &Event);
    }
    void Wheel(QPoint Where, int Notches, Qt::KeyboardModifiers Keys = {}, QPoint Pixels = {},
               Qt::ScrollPhase Phase = Qt::NoScrollPhase) {
        SendWheel(Panel(), Where, Notches, Keys, Pixels, Phase);
    }
    std::string Text(const QLabel* Label) const { return Label->text().toStdString(); }
    bool PanelsAreClean() const {
        return Panel(1)->Picture() == Panel(1)->WaveBak_Pic &&
               Panel(2)->Picture() == Panel(2)->WaveBak_Pic;
    }
    /// The place where a range from sample 201 to 601 begins and ends.
    QPoint First() const { return At(0.2); }
    QPoint Second() const { return At(0.6); }

    ArraySource Source;
};

TEST_F(PanelMouseTest, ADragInvertsThePicturesAndReadsOnlyWhatIsShownOfTheMouse) {
    Press(First());
    Source.Asked = 0;
    Move(At(0.4), Qt::LeftButton);
    Move(Second(), Qt::LeftButton);
    // The sample under the mouse at each move, and for the bands one window in a tenth of a second.
    EXPECT_EQ(Source.Asked, 2U);
    ASSERT_EQ(Source.Stretches.size(), 1U);
    EXPECT_EQ(Source.Stretches.front().Count, 512);
    EXPECT_EQ(SelStart, 0);
    for (const int Channel : {1, 2}) {
        const QImage& Shown = Panel(Channel)->Picture();
        const QImage& Back = Panel(Channel)->WaveBak_Pic;
        EXPECT_EQ(Shown.pixel(Second().x() - 3, 9), Back.pixel(Second().x() - 3, 9) ^ 0x00FFFFFFU);
        EXPECT_EQ(Shown.pixel(First().x() + 3, 9), Back.pixel(First().x() + 3, 9) ^ 0x00FFFFFFU);
        EXPECT_EQ(Shown.pixel(Second().x() + 3, 9), Back.pixel(Second().x() + 3, 9));
        EXPECT_EQ(Shown.pixel(First().x() - 3, 9), Back.pixel(First().x() - 3, 9));
    }
    EXPECT_EQ(Text(Window->SelectLbl[1]), std::to_string(Window->PanelMouse->Mouse.DragFrom));
    // Back again: nothing stays behind of the wider band.
    Move(At(0.3), Qt::LeftButton);
    EXPECT_EQ(Panel()->Picture().pixel(Second().x() - 3, 9),
              Panel()->WaveBak_Pic.pixel(Second().x() - 3, 9));
    Release(At(0.3));
    EXPECT_TRUE(PanelsAreClean());
    EXPECT_NEAR(SelStart, 201, 2);
    EXPECT_NEAR(SelEnd, 301, 2);
    EXPECT_EQ(Text(Window->SelectLbl[2]), std::to_string(SelEnd));
}

TEST_F(PanelMouseTest, ADragOverOneChannelInvertsThatChannelAlone) {
    SelBoth = false;
    Press(First(), Qt::LeftButton, 2);
    Move(Second(), Qt::LeftButton, 2);
    EXPECT_EQ(SelSingle, 2);
    EXPECT_EQ(Panel(1)->Picture(), Panel(1)->WaveBak_Pic);
    EXPECT_NE(Panel(2)->Picture(), Panel(2)->WaveBak_Pic);
    Release(Second(), 2);
}

TEST_F(PanelMouseTest, AShakyClickIsNoDrag) {
    SendMouse(Panel(), QEvent::MouseButtonPress, First(), Qt::LeftButton, Qt::LeftButton);
    EXPECT_TRUE(Window->PanelMouse->MouseMoveWaitTimer->isActive());
    EXPECT_EQ(Window->PanelMouse->MouseMoveWaitTimer->interval(), 70);
    Move(First() + QPoint(3, 0), Qt::LeftButton);
    Release(First() + QPoint(3, 0));
    EXPECT_EQ(SelStart, SelEnd);
    EXPECT_EQ(MouseMode, 1);
    EXPECT_FALSE(Window->PanelMouse->MouseMoveWaitTimer->isActive());
}

TEST_F(PanelMouseTest, TheReadOutsAndLinesFollowTheMouse) {
    Move(At(0.5));
    EXPECT_NE(Text(Window->DisplayPosLbl[1]).find("/50"), std::string::npos);
    EXPECT_EQ(Text(Window->DisplayPosLbl[2]).substr(0, 6), "00012/");
    EXPECT_EQ(Text(Find<QLabel>("StatusBar1_UserGuide")), "Press F1 to see help");
    for (const int Channel : {1, 2}) {
        EXPECT_TRUE(Panel(Channel)->MouseLine->isVisible());
        EXPECT_EQ(Panel(Channel)->MouseLine->X(), Panel()->PixelAt(At(0.5)).x());
    }
    SelBoth = false;
    Move(At(0.5), {}, 2);
    EXPECT_EQ(Text(Window->DisplayPosLbl[2]).substr(0, 7), "-00007/");
    EXPECT_FALSE(Panel(1)->MouseLine->isVisible());
    EXPECT_TRUE(Panel(2)->MouseLine->isVisible());
    Leave(2);
    EXPECT_FALSE(Panel(2)->MouseLine->isVisible());
    EXPECT_EQ(Text(Window->DisplayPosLbl[1]), "");
    EXPECT_EQ(Text(Window->DisplayPosLbl[2]), "");
}

TEST_F(PanelMouseTest, BesideTheDocumentAStarStandsForTheSample) {
    Move({Panel()->width() - 1, 30});
    EXPECT_EQ(Text(Window->DisplayPosLbl[2]).substr(0, 4), " * /");
}

TEST_F(PanelMouseTest, ShiftHidesTheLines) {
    Move(At(0.5));
    QTest::keyPress(Panel(), Qt::Key_Shift);
    EXPECT_FALSE(Panel(1)->MouseLine->isVisible());
    EXPECT_FALSE(Panel(2)->MouseLine->isVisible());
}

TEST_F(PanelMouseTest, ADragGoesOnWhileTheMouseIsOutside) {
    Press(First());
    Move({5000, -400}, Qt::LeftButton);
    Leave();
    EXPECT_FALSE(Panel()->MouseLine->isVisible());
    Release({5000, -400});
    EXPECT_EQ(SelEnd, 1000);
}

TEST_F(PanelMouseTest, ALostWindowEndsADragAndClearsTheBand) {
    for (const QEvent::Type Kind : {QEvent::WindowDeactivate, QEvent::WindowBlocked}) {
        Press(First());
        Move(Second(), Qt::LeftButton);
        EXPECT_FALSE(PanelsAreClean());
        QEvent Event(Kind);
        QApplication::sendEvent(Window.get(), &Event);
        EXPECT_TRUE(PanelsAreClean());
        EXPECT_EQ(SelStart, 0);
        EXPECT_EQ(MouseMode, 0);
        EXPECT_EQ(Text(Window->SelectLbl[1]), "0");
        Release(Second());
        EXPECT_EQ(SelStart, 0);
    }
}

TEST_F(PanelMouseTest, AReleaseThatWasNeverToldEndsTheDragAtTheNextMove) {
    Press(First());
    Move(Second(), Qt::LeftButton);
    Move(At(0.8));
    EXPECT_TRUE(PanelsAreClean());
    EXPECT_EQ(Window->PanelMouse->Mouse.Hold(), MouseHold::None);
    EXPECT_EQ(SelStart, 0);
}

TEST_F(PanelMouseTest, KeysDuringADragKeepPictureAndLabelsTogether) {
    Press(First());
    Move(Second(), Qt::LeftButton);
    const std::string Dragged = Text(Window->SelectLbl[2]);
    QTest::keyClick(Panel(), Qt::Key_Escape);
    QTest::keyClick(Panel(), Qt::Key_F3);
    EXPECT_LT(ViewTotal, 1000);
    EXPECT_EQ(Text(Window->SelectLbl[2]), Dragged);
    EXPECT_FALSE(PanelsAreClean());
    // A tool of the view takes the mouse from the selection.
    QTest::keyClick(Panel(), Qt::Key_Z);
    EXPECT_TRUE(PanelsAreClean());
    EXPECT_EQ(Text(Window->SelectLbl[2]), "0");
    Release(Second());
    EXPECT_EQ(SelStart, 0);
    EXPECT_EQ(ViewMouseMode, 4);
}

TEST_F(PanelMouseTest, AShorterDocumentTakesAwayTheSelectionBeyondIt) {
    Press(First());
    Move(Second(), Qt::LeftButton);
    Release(Second());
    Move(At(0.9));
    EXPECT_NEAR(SelEnd, 601, 2);
    Document(300, 2);
    Source.Document.Total = 300;
    Window->Refresh_Wave_View();
    EXPECT_EQ(SelStart, 0);
    EXPECT_EQ(SelEnd, 0);
    EXPECT_EQ(Text(Window->SelectLbl[2]), "0");
    EXPECT_EQ(Text(Window->ViewLbl[0]), "300");
    // The read-out stands for the place under the mouse as it is now.
    EXPECT_NE(Text(Window->DisplayPosLbl[1]).find("/271"), std::string::npos)
        << Text(Window->DisplayPosLbl[1]);
    EXPECT_TRUE(PanelsAreClean());
}

TEST_F(PanelMouseTest, AShorterDocumentEndsADrag) {
    Press(First());
    Move(Second(), Qt::LeftButton);
    Document(300, 2);
    Source.Document.Total = 300;
    Window->Refresh_Wave_View();
    EXPECT_EQ(Window->PanelMouse->Mouse.Hold(), MouseHold::None);
    EXPECT_TRUE(PanelsAreClean());
    Release(Second());
    EXPECT_EQ(SelStart, 0);
    EXPECT_EQ(MouseMode, 0);
}

TEST_F(PanelMouseTest, PointersFollowTheTool) {
    EXPECT_EQ(Panel()->cursor().shape(), Qt::ArrowCursor);
    for (const char* Name :
         {"Zoom_Mnu_0", "Zoom_Mnu_1", "Pan_Mnu", "SelectMouse_Mnu_1", "SelectMouse_Mnu_2"}) {
        Window->Entry(Name)->trigger();
        EXPECT_EQ(Panel(1)->cursor().shape(), Qt::BitmapCursor) << Name;
        EXPECT_EQ(Panel(2)->cursor().shape(), Qt::BitmapCursor) << Name;
    }
    Window->Entry("SelectMouse_Mnu_0")->trigger();
    EXPECT_EQ(Panel()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PanelMouseTest, AConfirmedSelectionTakesPointerAndLineOfTheToolAway) {
    ScriptedSelConf Dialog(0);
    const auto Confirm = [] {
        std::int32_t From = 0, To = 0, WorkChn = 0;
        return ConfirmSelection(From, To, WorkChn, 2, "Cut");
    };
    Window->Entry("SelectMouse_Mnu_2")->trigger();
    EXPECT_EQ(Panel()->MouseLine->Color(),
              ColorFromBgr(ColorOf(WaveColor::SecPtSelLineCursorColor)));
    ASSERT_TRUE(Confirm());
    for (const int Channel : {1, 2}) {
        EXPECT_EQ(Panel(Channel)->cursor().shape(), Qt::ArrowCursor);
        EXPECT_EQ(Panel(Channel)->MouseLine->Color(),
                  ColorFromBgr(ColorOf(WaveColor::LineCursorColor)));
    }
    // A first point waits for the second one, and the dialog takes its place.
    Press(First());
    Release(First());
    EXPECT_EQ(Panel()->MouseLine->Color(),
              ColorFromBgr(ColorOf(WaveColor::SecPtSelLineCursorColor)));
    ASSERT_TRUE(Confirm());
    EXPECT_EQ(Panel()->MouseLine->Color(), ColorFromBgr(ColorOf(WaveColor::LineCursorColor)));
}

TEST_F(PanelMouseTest, AZoomThatEndsDrawingTakesItsPointerAway) {
    Source.Document.Total = 3000;
    Source.Left.resize(3000);
    Source.Right.resize(3000);
    Document(3000, 2);
    ViewAll = false;
    ViewTotal = 900;
    MouseMode = MouseModeDraw;
    Window->RefreshMousePointer();
    Window->Refresh_Wave_View();
    EXPECT_EQ(Panel()->cursor().shape(), Qt::BitmapCursor);
    Move(At(0.5));
    EXPECT_FALSE(Panel()->MouseLine->isVisible());
    QTest::keyClick(Panel(), Qt::Key_F2);
    EXPECT_EQ(MouseMode, MouseModeSelect);
    EXPECT_EQ(Panel()->cursor().shape(), Qt::ArrowCursor);
    Move(At(0.5));
    EXPECT_TRUE(Panel()->MouseLine->isVisible());
}

TEST_F(PanelMouseTest, AMoveShowsAToolThatWasChangedWithoutAWord) {
    MouseMode = MouseModeStart;
    Move(At(0.5));
    EXPECT_EQ(Panel()->cursor().shape(), Qt::BitmapCursor);
    MouseMode = MouseModeSelect;
    Move(At(0.6));
    EXPECT_EQ(Panel()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PanelMouseTest, TheZoomToolTellsThatItWaitsForTheOtherEnd) {
    Window->Entry("Zoom_Mnu_0")->trigger();
    const auto* Tip = Find<QLabel>("ZoomTipLbl");
    Move(First());
    EXPECT_FALSE(Tip->isVisible());
    Press(First());
    Release(First());
    EXPECT_TRUE(Tip->isVisible());
    const QPoint Mouse = Panel()->mapTo(Tip->parentWidget(), First());
    EXPECT_EQ(Tip->x(), Mouse.x() - 10);
    EXPECT_EQ(Tip->y(), std::max(Mouse.y() - 14 - Tip->height(), 0));
    Press(Second());
    Release(Second());
    EXPECT_FALSE(Tip->isVisible());
    EXPECT_NEAR(ViewFrom, 201, 2);
    EXPECT_NEAR(ViewTotal, 400, 4);
}

TEST_F(PanelMouseTest, ADoubleClickSelectsAll) {
    Press(First());
    Release(First());
    SendMouse(Panel(), QEvent::MouseButtonDblClick, First(), Qt::LeftButton, Qt::LeftButton);
    Release(First());
    EXPECT_EQ(SelStart, 1);
    EXPECT_EQ(SelEnd, 1000);
    EXPECT_EQ(MouseMode, 0);
}

TEST_F(PanelMouseTest, TheWheelScrollsZoomsAndPages) {
    ViewAll = false;
    ViewFrom = 401;
    ViewTotal = 100;
    Window->Refresh_Wave_View();
    Wheel(At(0.5), -1);
    EXPECT_EQ(ViewFrom, 411);
    Wheel(At(0.5), 2);
    EXPECT_EQ(ViewFrom, 391);
    Wheel(At(0.5), -1, Qt::ShiftModifier);
    EXPECT_EQ(ViewFrom, 491);
    Wheel(At(0), 1, Qt::ControlModifier);
    EXPECT_EQ(ViewFrom, 491);
    EXPECT_EQ(ViewTotal, 60);
    Wheel(At(0), -9, Qt::ControlModifier);
    EXPECT_EQ(ViewTotal, 1000);
    EXPECT_TRUE(ViewAll);
    EXPECT_EQ(Text(Window->ViewLbl[0]), "1000");
    // All in view is no state that holds the wheel.
    Wheel(At(0), 1, Qt::ControlModifier);
    EXPECT_FALSE(ViewAll);
    EXPECT_EQ(ViewTotal, 600);
    EXPECT_EQ(Text(Window->ViewLbl[0]), "600");
}

TEST_F(PanelMouseTest, FingersMoveThePictureAndAWheelWithPixelsDoesNot) {
    ViewAll = false;
    ViewFrom = 401;
    ViewTotal = 100;
    Window->Refresh_Wave_View();
    const int Tenth = int(std::lround((Panel()->width() - 1) * 0.1));
    Wheel(At(0.5), 0, {}, {-Tenth, 1}, Qt::ScrollUpdate);
    EXPECT_EQ(ViewFrom, 411);
    Wheel(At(0.5), 1, {}, {0, 15});
    EXPECT_EQ(ViewFrom, 401);
}

TEST_F(PanelMouseTest, TheWheelOverAnEmptyDocumentDoesNothing) {
    Document(0, 2);
    Source.Document.Total = 0;
    Window->Refresh_Wave_View();
    const std::int32_t Before = ViewFrom;
    for (const Qt::KeyboardModifiers Keys :
         {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier})
        Wheel(At(0.5), 1, Keys);
    Move(At(0.5));
    EXPECT_EQ(ViewFrom, Before);
    EXPECT_EQ(Text(Window->DisplayPosLbl[1]), "");
    EXPECT_FALSE(Panel()->MouseLine->isVisible());
}

TEST_F(PanelMouseTest, KeysReachTheWindowAlsoWithCtrl) {
    ViewAll = false;
    ViewFrom = 401;
    ViewTotal = 100;
    Window->Refresh_Wave_View();
    QTest::keyClick(Panel(), Qt::Key_Right);
    EXPECT_EQ(ViewFrom, 411);
    QTest::keyClick(Panel(), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(ViewFrom, 901);
    QTest::keyClick(Panel(), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(ViewFrom, 901);
    QTest::keyClick(Panel(), Qt::Key_X);
    EXPECT_EQ(ViewMouseMode, 6);
    QTest::keyClick(Panel(), Qt::Key_Z, Qt::AltModifier);
    EXPECT_EQ(ViewMouseMode, 6);
    QTest::keyClick(Panel(), Qt::Key_Escape);
    EXPECT_EQ(ViewMouseMode, 0);
    // Entries without a routine stay unused.
    QTest::keyClick(Panel(), Qt::Key_B);
    QTest::keyClick(Panel(), Qt::Key_Z, Qt::ControlModifier);
}

} // namespace
} // namespace quoril::test
