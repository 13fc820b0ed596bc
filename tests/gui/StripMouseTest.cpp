// Mouse events on the time scale, the overview bar and the arrows of the main window.
#include "MouseEvents.h"
#include "WindowFixture.h"

#include "base/PlayState.h"
#include "playback/PlayMod.h"
#include "settings/UserGuideMod.h"
#include "view/ArrowImage.h"
#include "view/ReadOutLabel.h"
#include "view/WavePanel.h"

#include <QLabel>
#include <QStatusBar>
#include <QTimer>
#include <QtTest>
#include <gmock/gmock.h>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Without a sound driver a play command says so: that shows that one was given.
constexpr const char* PlayTried =
    "Play failed|Put ON the Sound driver in Options box (Tools-Options menu) to play";

class TipBook final : public UserGuideWindow {
  public:
    bool ShowGuideTip(const GuideTip& Tip) override {
        Tips.push_back(Tip.Message);
        return false;
    }
    void ShowStatusGuide(const std::string&) override {}
    std::vector<std::string> Tips;
};

/// A document of ten seconds, with a view of one second from 3001 on: a sample for each column.
class StripMouseTest : public WindowTest {
  protected:
    StripMouseTest() {
        SoundDriverState = 0;
        QuickPlay = true;
        PlayDirection = 1;
        Document(10000, 2);
        Show(1001);
        ViewAll = false;
        ViewFrom = 3001;
        ViewTotal = 1000;
        Window->Refresh_Wave_View();
    }
    ~StripMouseTest() override { SetUserGuideWindow(nullptr); }

    /// The column of a sample on the time scale, and the sample that this column means.
    int ColumnOf(std::int32_t Position) const {
        return static_cast<int>(std::lround(Window->PanelScale.XOf(Position)));
    }
    std::int32_t At(int X) const { return Window->PanelScale.PositionAt(X, Window->Facts().Total); }
    static void Send(QWidget* Where, QEvent::Type Type, int X, Qt::MouseButton Button,
                     Qt::MouseButtons Held) {
        SendMouse(Where, Type, {double(X), Where->height() / 2.0}, Button, Held);
    }
    static void Press(QWidget* Where, int X, Qt::MouseButton Button = Qt::LeftButton) {
        Send(Where, QEvent::MouseButtonPress, X, Button, Button);
    }
    static void Move(QWidget* Where, int X, Qt::MouseButtons Held = Qt::LeftButton) {
        Send(Where, QEvent::MouseMove, X, Qt::NoButton, Held);
    }
    static void Release(QWidget* Where, int X, Qt::MouseButton Button = Qt::LeftButton) {
        Send(Where, QEvent::MouseButtonRelease, X, Button, Qt::NoButton);
    }
    void WaitForMoves() const {
        const auto* const Timer = Find<QTimer>("ScaleMoveWaitTimer");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !Timer->isActive(); }, 5000));
    }
    /// From one column to the other with the left button, past the wait.
    void Drag(int From, int To) const {
        Press(Window->ScalePic, From);
        WaitForMoves();
        Move(Window->ScalePic, To);
        Release(Window->ScalePic, To);
    }
    std::string Guide() const { return Find<QLabel>("StatusBar1_UserGuide")->text().toStdString(); }
    static void ExpectMarks(std::int32_t From, std::int32_t To) {
        EXPECT_EQ(PlaySelStart, From);
        EXPECT_EQ(PlaySelEnd, To);
    }
    /// This column or one beside it is red over the better part of its height.
    static bool RedAt(PicturePanel* Strip, int X) {
        const QImage& Picture = Strip->Picture();
        for (const int Near : {X - 1, X, X + 1}) {
            int Red = 0;
            for (int Y = 0; Y < Picture.height(); ++Y)
                Red += Picture.pixelColor(Near, Y) == QColor(255, 0, 0) ? 1 : 0;
            if (2 * Red >= Picture.height())
                return true;
        }
        return false;
    }
};

TEST_F(StripMouseTest, AClickOnTheScaleMakesAPointAndPlays) {
    Press(Window->ScalePic, 300);
    ExpectMarks(0, 0);
    Release(Window->ScalePic, 300);
    ExpectMarks(At(300), At(300));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(PlayTried));
    EXPECT_TRUE(RedAt(Window->ScalePic, 302));
    const double Share = At(300) / 10000.0;
    EXPECT_TRUE(RedAt(Window->HScrollPic, static_cast<int>(std::lround(
                                              Share * (Window->HScrollPic->ScaleWidth() - 1)))));
}

TEST_F(StripMouseTest, ADragOnTheScaleSelectsAndPlaysAtItsEnd) {
    Press(Window->ScalePic, 300);
    WaitForMoves();
    Move(Window->ScalePic, 500);
    ExpectMarks(At(300), At(500));
    EXPECT_TRUE(RedAt(Window->ScalePic, 300));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    Release(Window->ScalePic, 500);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(PlayTried));
    Move(Window->ScalePic, 800, Qt::NoButton);
    ExpectMarks(At(300), At(500));
}

TEST_F(StripMouseTest, ADragToTheLeftHasItsEndsInOrder) {
    Drag(500, 200);
    ExpectMarks(At(200), At(500));
}

TEST_F(StripMouseTest, AShakyClickIsNoDrag) {
    Press(Window->ScalePic, 300);
    Move(Window->ScalePic, 303);
    Release(Window->ScalePic, 303);
    ExpectMarks(At(300), At(300));
}

TEST_F(StripMouseTest, ADragBeyondTheWindowIsLimitedToTheDocument) {
    Drag(300, 40000);
    ExpectMarks(At(300), 10000);
    Drag(300, -40000);
    ExpectMarks(1, At(300));
}

TEST_F(StripMouseTest, WithoutQuickPlayNothingPlaysAndATipMayCome) {
    QuickPlay = false;
    ShowNewUserGuide = true;
    TipBook Book;
    SetUserGuideWindow(&Book);
    GuideChanceFix(0.0);
    Press(Window->ScalePic, 300);
    Release(Window->ScalePic, 300);
    Press(Window->ScalePic, 600, Qt::RightButton);
    Release(Window->ScalePic, 600, Qt::RightButton);
    Drag(200, 400);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_THAT(Book.Tips, ElementsAre("For \"Quick play\" by clicking or selecting on this scale, "
                                       "set it \"ON\" in options.",
                                       "See options for \"Quick play\" when you click or select on "
                                       "this scale."));
    GuideChanceFix(0.06);
    Press(Window->ScalePic, 300);
    Release(Window->ScalePic, 300);
    EXPECT_EQ(Book.Tips.size(), 2U);
}

TEST_F(StripMouseTest, TheRightButtonAdjustsAtOnceAndPlays) {
    Press(Window->ScalePic, 450, Qt::RightButton);
    ExpectMarks(At(450), 10000);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(PlayTried));
    Release(Window->ScalePic, 450, Qt::RightButton);
    Press(Window->ScalePic, 200, Qt::RightButton);
    ExpectMarks(At(200), 10000);
    EXPECT_TRUE(RedAt(Window->ScalePic, 200));
}

TEST_F(StripMouseTest, TheMiddleButtonDoesNothingOnTheScale) {
    Press(Window->ScalePic, 450, Qt::MiddleButton);
    Release(Window->ScalePic, 450, Qt::MiddleButton);
    ExpectMarks(0, 0);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(StripMouseTest, TheReleaseOfAnotherButtonDoesNotEndADrag) {
    Press(Window->ScalePic, 300);
    WaitForMoves();
    Move(Window->ScalePic, 400);
    Release(Window->ScalePic, 400, Qt::RightButton);
    Move(Window->ScalePic, 500);
    ExpectMarks(At(300), At(500));
}

TEST_F(StripMouseTest, AButtonThatCameUpUnseenEndsTheDrag) {
    Press(Window->ScalePic, 300);
    WaitForMoves();
    Move(Window->ScalePic, 500, Qt::NoButton);
    Release(Window->ScalePic, 500);
    ExpectMarks(0, 0);
}

TEST_F(StripMouseTest, AMoveOverTheScaleShowsWhereItIs) {
    Window->DisplayPosLbl[2]->setText(QStringLiteral("old"));
    const int X = ColumnOf(3501);
    Move(Window->ScalePic, X, Qt::NoButton);
    EXPECT_EQ(Guide(), "Time scale. Click or select on this scale to play");
    EXPECT_EQ(At(X), 3501);
    EXPECT_EQ(Window->DisplayPosLbl[1]->text(), QStringLiteral("03.50/3501"));
    EXPECT_EQ(Window->DisplayPosLbl[2]->text(), QString());
    for (const std::size_t Channel : {1U, 2U}) {
        EXPECT_TRUE(Window->Wave_Pic.at(Channel)->MouseLine->isVisible());
        EXPECT_EQ(Window->Wave_Pic.at(Channel)->MouseLine->X(), X);
    }
}

TEST_F(StripMouseTest, TheReadOutFollowsAViewThatMovesUnderTheMouse) {
    const int X = ColumnOf(3501);
    Move(Window->ScalePic, X, Qt::NoButton);
    ViewFrom = 5001;
    Window->Refresh_Wave_View();
    EXPECT_EQ(Window->DisplayPosLbl[1]->text(), QStringLiteral("05.50/5501"));
    EXPECT_EQ(Window->Wave_Pic[1]->MouseLine->X(), X);
}

TEST_F(StripMouseTest, LeavingTheScaleTakesItsReadOutAndLinesAway) {
    QEvent Leave(QEvent::Leave);
    Press(Window->ScalePic, 300);
    WaitForMoves();
    Move(Window->ScalePic, 400);
    // The button is held: the scale keeps the mouse wherever it is.
    QApplication::sendEvent(Window->ScalePic, &Leave);
    EXPECT_TRUE(Window->Wave_Pic[1]->MouseLine->isVisible());
    Release(Window->ScalePic, 400);
    QApplication::sendEvent(Window->ScalePic, &Leave);
    EXPECT_EQ(Window->DisplayPosLbl[1]->text(), QString());
    EXPECT_FALSE(Window->Wave_Pic[1]->MouseLine->isVisible());
    EXPECT_FALSE(Window->Wave_Pic[2]->MouseLine->isVisible());
    // Nothing of it comes back with the next picture.
    Window->Refresh_Wave_View();
    EXPECT_EQ(Window->DisplayPosLbl[1]->text(), QString());
}

TEST_F(StripMouseTest, AnEmptiedDocumentTakesTheReadOutOfTheScaleAway) {
    Move(Window->ScalePic, 300, Qt::NoButton);
    Document(0, 2);
    Window->Refresh_Wave_View();
    EXPECT_EQ(Window->DisplayPosLbl[1]->text(), QString());
    EXPECT_FALSE(Window->Wave_Pic[1]->MouseLine->isVisible());
}

TEST_F(StripMouseTest, TheMouseLineIsOnTheSelectedChannel) {
    SelBoth = false;
    SelSingle = 2;
    Move(Window->ScalePic, 300, Qt::NoButton);
    EXPECT_FALSE(Window->Wave_Pic[1]->MouseLine->isVisible());
    EXPECT_TRUE(Window->Wave_Pic[2]->MouseLine->isVisible());
    SelSingle = 1;
    Move(Window->ScalePic, 301, Qt::NoButton);
    EXPECT_TRUE(Window->Wave_Pic[1]->MouseLine->isVisible());
    EXPECT_FALSE(Window->Wave_Pic[2]->MouseLine->isVisible());
}

TEST_F(StripMouseTest, AMoveRightAfterAPressOnlyShowsTheHint) {
    Window->DisplayPosLbl[1]->setText(QStringLiteral("old"));
    Press(Window->ScalePic, 300);
    Window->StatusGuide("");
    Move(Window->ScalePic, 400);
    EXPECT_EQ(Guide(), "Time scale. Click or select on this scale to play");
    EXPECT_EQ(Window->DisplayPosLbl[1]->text(), QStringLiteral("old"));
}

TEST_F(StripMouseTest, APressBesideTheViewOnTheBarPages) {
    Press(Window->HScrollPic, Window->ScrollEdge[2] + 1);
    EXPECT_EQ(ViewFrom, 4001);
    EXPECT_EQ(ViewTotal, 1000);
    Release(Window->HScrollPic, 600);
    Press(Window->HScrollPic, Window->ScrollEdge[1] - 1);
    EXPECT_EQ(ViewFrom, 3001);
    Move(Window->HScrollPic, 700);
    EXPECT_EQ(ViewFrom, 3001);
}

TEST_F(StripMouseTest, AFastSecondClickPagesOnceMore) {
    Press(Window->HScrollPic, 800);
    Release(Window->HScrollPic, 800);
    Send(Window->HScrollPic, QEvent::MouseButtonDblClick, 800, Qt::LeftButton, Qt::LeftButton);
    EXPECT_EQ(ViewFrom, 5001);
}

TEST_F(StripMouseTest, APressLeftOfTheViewAtTheStartLeavesItThere) {
    ViewFrom = 1;
    Window->Refresh_Wave_View();
    Press(Window->HScrollPic, Window->ScrollEdge[1] - 1);
    EXPECT_EQ(ViewFrom, 1);
    EXPECT_EQ(ViewTotal, 1000);
}

TEST_F(StripMouseTest, ADragOfTheBarTakesTheViewAlong) {
    const int X = Window->ScrollEdge[1] + 10;
    Press(Window->HScrollPic, X);
    EXPECT_EQ(ViewFrom, 3001);
    EXPECT_EQ(Window->HScrollPic->cursor().shape(), Qt::ClosedHandCursor);
    const QImage Before = Window->HScrollPic->Picture().copy();
    Move(Window->HScrollPic, X + 90);
    EXPECT_EQ(ViewFrom, 3001 + static_cast<std::int32_t>(
                                   std::lround(90 * 10000.0 / Window->HScrollPic->ScaleWidth())));
    EXPECT_NE(Window->HScrollPic->Picture(), Before);
    Release(Window->HScrollPic, X + 90);
    EXPECT_EQ(Window->HScrollPic->cursor().shape(), Qt::OpenHandCursor);
    const std::int32_t Here = ViewFrom;
    Move(Window->HScrollPic, X, Qt::NoButton);
    EXPECT_EQ(ViewFrom, Here);
}

TEST_F(StripMouseTest, TheViewIsDraggedToBothEndsAndNoFurther) {
    Press(Window->HScrollPic, Window->ScrollEdge[1]);
    Move(Window->HScrollPic, 5000);
    EXPECT_EQ(ViewFrom, 9001);
    Move(Window->HScrollPic, -5000);
    EXPECT_EQ(ViewFrom, 1);
}

TEST_F(StripMouseTest, AButtonThatCameUpUnseenEndsTheDragOfTheBar) {
    Press(Window->HScrollPic, Window->ScrollEdge[1]);
    Move(Window->HScrollPic, 600, Qt::NoButton);
    EXPECT_EQ(ViewFrom, 3001);
}

TEST_F(StripMouseTest, AMoveOverTheBarTellsWhatCanBeDone) {
    Move(Window->ScalePic, 300, Qt::NoButton);
    Move(Window->HScrollPic, Window->ScrollEdge[1], Qt::NoButton);
    EXPECT_EQ(Guide(), "View/selection range shown here, Hold and drag to drag view");
    EXPECT_EQ(Window->HScrollPic->cursor().shape(), Qt::OpenHandCursor);
    EXPECT_FALSE(Window->Wave_Pic[1]->MouseLine->isVisible());
    EXPECT_FALSE(Window->Wave_Pic[2]->MouseLine->isVisible());
    Move(Window->HScrollPic, Window->ScrollEdge[2] + 1, Qt::NoButton);
    EXPECT_EQ(Guide(), "View/selection range shown here, Click here to shift view");
    EXPECT_EQ(Window->HScrollPic->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(StripMouseTest, TheArrowsMoveTheViewByAFewSamples) {
    Press(Window->ArrowImg[0], 47);
    EXPECT_EQ(ViewFrom, 3002);
    Press(Window->ArrowImg[0], 8);
    EXPECT_EQ(ViewFrom, 3042);
    Press(Window->ArrowImg[1], 0);
    EXPECT_EQ(ViewFrom, 3041);
    Press(Window->ArrowImg[1], 40);
    EXPECT_EQ(ViewFrom, 3001);
}

TEST_F(StripMouseTest, AMoveOverAnArrowTellsWhatItDoes) {
    Move(Window->ScalePic, 300, Qt::NoButton);
    Move(Window->ArrowImg[0], 20, Qt::NoButton);
    EXPECT_EQ(Guide(), "Click to shift view for fine adjustment. Smaller line will move smaller "
                       "amount.");
    EXPECT_FALSE(Window->Wave_Pic[1]->MouseLine->isVisible());
}

TEST_F(StripMouseTest, AMoveOverTheRightArrowIsAtItsPlaceOnTheBar) {
    ViewFrom = 1;
    Window->Refresh_Wave_View();
    ASSERT_GT(Window->ScrollEdge[2], 20);
    Move(Window->ArrowImg[0], 20, Qt::NoButton);
    EXPECT_EQ(Window->HScrollPic->cursor().shape(), Qt::ArrowCursor);
    Move(Window->ArrowImg[1], 20, Qt::NoButton);
    EXPECT_EQ(Window->HScrollPic->cursor().shape(), Qt::OpenHandCursor);
}

void Turn(QWidget* Where, double X, int Notches, Qt::KeyboardModifiers Keys = {}) {
    SendWheel(Where, {X, Where->height() / 2.0}, Notches, Keys);
}

TEST_F(StripMouseTest, TheWheelScrollsByATenthOfTheView) {
    Turn(Window->ScalePic, 300, -1);
    EXPECT_EQ(ViewFrom, 3101);
    Turn(Window->HScrollPic, 300, -2);
    EXPECT_EQ(ViewFrom, 3301);
    Turn(Window->ArrowImg[0], 10, 3);
    EXPECT_EQ(ViewFrom, 3001);
    EXPECT_EQ(ViewTotal, 1000);
}

TEST_F(StripMouseTest, TheWheelWithShiftScrollsByAWholeView) {
    Turn(Window->ScalePic, 300, -1, Qt::ShiftModifier);
    EXPECT_EQ(ViewFrom, 4001);
    Turn(Window->HScrollPic, 300, 2, Qt::ShiftModifier);
    EXPECT_EQ(ViewFrom, 2001);
}

TEST_F(StripMouseTest, TheWheelWithCtrlZoomsAroundTheSampleUnderTheMouse) {
    const std::int32_t Under = At(300);
    Turn(Window->ScalePic, 300, 1, Qt::ControlModifier);
    EXPECT_LT(ViewTotal, 1000);
    EXPECT_NEAR(At(300), Under, 1);
    Turn(Window->ScalePic, 300, -2, Qt::ControlModifier);
    EXPECT_GT(ViewTotal, 1000);
    EXPECT_NEAR(At(300), Under, 1);
}

TEST_F(StripMouseTest, TheWheelWithCtrlOnTheBarZoomsAroundTheSampleThatThePlaceStandsFor) {
    const int X = (Window->ScrollEdge[1] + Window->ScrollEdge[2]) / 2;
    const double Under = X * 10000.0 / (Window->HScrollPic->ScaleWidth() - 1);
    const double Across = (Under - ViewFrom) / ViewTotal;
    Turn(Window->HScrollPic, X, 1, Qt::ControlModifier);
    EXPECT_LT(ViewTotal, 1000);
    EXPECT_NEAR((Under - ViewFrom) / ViewTotal, Across, 0.01);
}

TEST_F(StripMouseTest, TheWheelWithCtrlBesideTheViewOnTheBarKeepsTheNearerEdge) {
    Turn(Window->HScrollPic, 10, 1, Qt::ControlModifier);
    EXPECT_EQ(ViewFrom, 3001);
    EXPECT_LT(ViewTotal, 1000);
}

TEST_F(StripMouseTest, TheWheelWithCtrlOnAnArrowZoomsAroundTheSampleThatThePlaceStandsFor) {
    ViewFrom = 9001;
    Window->Refresh_Wave_View();
    const ArrowImage* const Right = Window->ArrowImg[0];
    const int OnArrow = (Right->x() + Window->ScrollEdge[2]) / 2 - Right->x();
    const double Under = (Right->x() + OnArrow) * 10000.0 / (Window->HScrollPic->ScaleWidth() - 1);
    const double Across = (Under - ViewFrom) / ViewTotal;
    ASSERT_GT(Across, 0.2);
    Turn(Window->ArrowImg[0], OnArrow, 1, Qt::ControlModifier);
    EXPECT_LT(ViewTotal, 1000);
    EXPECT_NEAR((Under - ViewFrom) / ViewTotal, Across, 0.01);
}

TEST_F(StripMouseTest, TheWheelIsStillWhileTheBarIsDragged) {
    Press(Window->HScrollPic, Window->ScrollEdge[1]);
    Turn(Window->HScrollPic, Window->ScrollEdge[1], -1);
    EXPECT_EQ(ViewFrom, 3001);
}

TEST_F(StripMouseTest, OverAnEmptyDocumentNothingHappens) {
    Document(0, 2);
    ViewFrom = 77;
    for (QWidget* Strip :
         {static_cast<QWidget*>(Window->ScalePic), static_cast<QWidget*>(Window->HScrollPic),
          static_cast<QWidget*>(Window->ArrowImg[0])})
        for (const Qt::MouseButton Button : {Qt::LeftButton, Qt::RightButton}) {
            Press(Strip, 20, Button);
            Move(Strip, 40, Button);
            Release(Strip, 40, Button);
            Turn(Strip, 40, -1);
        }
    EXPECT_EQ(ViewFrom, 77);
    ExpectMarks(0, 0);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

} // namespace
} // namespace quoril::test
