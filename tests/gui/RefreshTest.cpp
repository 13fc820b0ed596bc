// The main window over a document: layout, limits, labels, strips, snapshots.
#include "WindowFixture.h"

#include "base/Failure.h"
#include "view/ArrowImage.h"
#include "view/ReadOutLabel.h"
#include "view/ValueLabel.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"
#include "view/ZoomMod.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QStatusBar>
#include <QToolButton>
#include <QtTest>

namespace quoril::test {
namespace {

class RefreshTest : public WindowTest {
  protected:
    std::string Label(const char* Name) const { return Find<QLabel>(Name)->text().toStdString(); }
    static QRect Place(const QWidget* What) { return What->geometry(); }
};

TEST_F(RefreshTest, AMonoDocumentHasTheScaleAboveOnePanel) {
    Document(1000, 1);
    Show();
    Window->Refresh_Wave_View();
    const QRect Top = Place(Window->TopFrame);
    const QRect Scale = Place(Window->ScalePic);
    const QRect Panel = Place(Window->Wave_Pic[1]);
    EXPECT_EQ(Scale.top(), Top.bottom() + 1);
    EXPECT_EQ(Panel.top(), Scale.bottom() + 1);
    EXPECT_EQ(Panel.bottom() + 1, Place(Window->HScrollPic).top());
    EXPECT_FALSE(Window->Wave_Pic[2]->isVisible());
    EXPECT_GT(Panel.height(), 200);
}

TEST_F(RefreshTest, AStereoDocumentHasTheScaleBetweenTwoPanels) {
    for (const int Height : {600, 601}) {
        Show(900, Height);
        const QRect Top = Place(Window->TopFrame);
        const QRect Upper = Place(Window->Wave_Pic[1]);
        const QRect Scale = Place(Window->ScalePic);
        const QRect Lower = Place(Window->Wave_Pic[2]);
        const int Avail = Place(Window->HScrollPic).top() - (Top.bottom() + 1) - Scale.height();
        EXPECT_EQ(Upper.top(), Top.bottom() + 1);
        EXPECT_EQ(Upper.height(), Avail / 2);
        EXPECT_EQ(Scale.top(), Upper.bottom() + 1);
        EXPECT_EQ(Lower.top(), Scale.bottom() + 1);
        EXPECT_EQ(Lower.height(), Avail - Avail / 2);
        EXPECT_TRUE(Window->Wave_Pic[2]->isVisible());
    }
}

TEST_F(RefreshTest, TheFirstRefreshShowsTheWholeDocument) {
    Show();
    EXPECT_EQ(ViewFrom, 1);
    EXPECT_EQ(ViewTotal, 1000);
    EXPECT_TRUE(ViewAll);
    EXPECT_DOUBLE_EQ(PixelsPerSample, (Window->Wave_Pic[1]->ScaleWidth() - 1) / 1000.0);
    EXPECT_DOUBLE_EQ(Window->PanelScale.PixelsPerUnit,
                     (Window->Wave_Pic[1]->ScaleHeight() - 1) / 65536.0);
    EXPECT_DOUBLE_EQ(Window->PanelScale.ZeroLineY, Window->Wave_Pic[1]->ScaleHeight() / 2.0);
}

TEST_F(RefreshTest, TheLimitsOfTheViewAreApplied) {
    Show();
    ViewAll = false;
    ViewFrom = 995;
    ViewTotal = 3;
    Window->Refresh_Wave_View();
    EXPECT_EQ(ViewTotal, 10);
    EXPECT_EQ(ViewFrom, 991);
    EXPECT_FALSE(ViewAll);
}

TEST_F(RefreshTest, ASelectionBeyondTheEndGoes) {
    Show();
    SelStart = 900;
    SelEnd = 1001;
    PlaySelStart = 5;
    PlaySelEnd = 1001;
    Window->Refresh_Wave_View();
    EXPECT_EQ(SelStart, 0);
    EXPECT_EQ(SelEnd, 0);
    EXPECT_EQ(PlaySelStart, 0);
    EXPECT_EQ(PlaySelEnd, 0);
}

TEST_F(RefreshTest, AnEmptyDocumentClearsThePanelsAndLeavesLabelsAndStripsAlone) {
    Show();
    SelStart = 10;
    SelEnd = 500;
    Window->Refresh_Wave_View();
    const std::string LabelBefore = Label("SelectLbl_1");
    const std::string SizeBefore = Label("StatusBar1_Size");
    const QImage Scale = Window->ScalePic->Picture().copy();
    const QImage Scroll = Window->HScrollPic->Picture().copy();
    WaveStore->StorageReset();
    SelStart = 777;
    Window->Refresh_Wave_View();
    for (const int Channel : {1, 2}) {
        QImage Cleared(Window->Wave_Pic.at(std::size_t(Channel))->Picture().size(),
                       QImage::Format_RGB32);
        Cleared.fill(ColorFromBgr(ColorOf(WaveColor::NormalBackColor)));
        EXPECT_EQ(Window->Wave_Pic.at(std::size_t(Channel))->Picture(), Cleared) << Channel;
    }
    EXPECT_EQ(Label("SelectLbl_1"), LabelBefore);
    EXPECT_EQ(Label("StatusBar1_Size"), SizeBefore);
    EXPECT_EQ(Window->ScalePic->Picture(), Scale);
    EXPECT_EQ(Window->HScrollPic->Picture(), Scroll);
    EXPECT_EQ(SelStart, 777) << "the limits belong to a document that has samples";
}

TEST_F(RefreshTest, TheSnapshotIsTheFinishedPicture) {
    Show();
    SelStart = 100;
    SelEnd = 300;
    Window->Refresh_Wave_View();
    for (const int Channel : {1, 2}) {
        WavePanel* Panel = Window->Wave_Pic.at(std::size_t(Channel));
        EXPECT_EQ(Panel->WaveBak_Pic, Panel->Picture()) << Channel;
        const QImage Before = Panel->WaveBak_Pic.copy();
        Panel->Picture().fill(Qt::red);
        EXPECT_EQ(Panel->WaveBak_Pic, Before) << "drawing on the panel reached the snapshot";
    }
}

TEST_F(RefreshTest, TheDrawToolIsDroppedWhenTheViewPassesASecond) {
    Show();
    Document(3000, 2);
    ViewAll = false;
    MouseMode = 7;
    ViewFrom = 1;
    ViewTotal = 1000;
    Window->Refresh_Wave_View();
    EXPECT_EQ(MouseMode, 7);
    ViewTotal = 1001;
    Window->Refresh_Wave_View();
    EXPECT_EQ(MouseMode, 0);
}

class CursorSource final : public WaveSource {
  public:
    DocumentFacts Document{8000000, 44100, 1, 16};
    mutable bool SawHourglass = false;
    bool Fails = false;
    [[nodiscard]] DocumentFacts Facts() const override { return Document; }
    void WillNeed(const std::vector<std::int32_t>&) const override {}
    void SamplesAt(std::int32_t, const std::vector<std::int32_t>& Positions,
                   std::vector<std::int16_t>& Samples) const override {
        const QCursor* Over = QGuiApplication::overrideCursor();
        SawHourglass = Over != nullptr && Over->shape() == Qt::WaitCursor;
        if (Fails)
            throw Failure("gone");
        Samples.assign(Positions.size(), 0);
    }
    void StretchAt(std::int32_t, std::int32_t, std::int32_t,
                   std::vector<std::int16_t>& Samples) const override {
        Samples.assign(1, 0);
    }
};

TEST_F(RefreshTest, AViewAboveThreeMinutesIsDrawnUnderTheHourglass) {
    CursorSource Source;
    Window->SetSource(&Source);
    Show();
    ViewAll = false;
    ViewTotal = HourglassViewTotal;
    Window->Refresh_Wave_View();
    EXPECT_FALSE(Source.SawHourglass);
    ViewTotal = HourglassViewTotal + 1;
    Window->Refresh_Wave_View();
    EXPECT_TRUE(Source.SawHourglass);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    Source.Fails = true;
    Window->Refresh_Wave_View(); // tells it on the panel
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "a failure leaves no hourglass";
    Source.Fails = false;
}

TEST_F(RefreshTest, TheLabelsShowSelectionAndView) {
    Show();
    SelStart = 101;
    SelEnd = 300;
    ViewAll = false;
    ViewFrom = 51;
    ViewTotal = 500;
    Window->Refresh_Wave_View();
    EXPECT_EQ(Label("SelectLbl_0"), "200");
    EXPECT_EQ(Label("SelectLbl_1"), "101");
    EXPECT_EQ(Label("SelectLbl_2"), "300");
    EXPECT_EQ(Label("ViewLbl_0"), "500");
    EXPECT_EQ(Label("ViewLbl_1"), "51");
    EXPECT_EQ(Label("ViewLbl_2"), "550");
    EXPECT_EQ(Label("StatusBar1_Size"), "Samples 1000, Duration 01");
    Window->PanelMouse->Mouse.DragFrom = 5;
    Window->PanelMouse->Mouse.DragTo = 14;
    Window->RefreshDisplayLabels(true);
    EXPECT_EQ(Label("SelectLbl_0"), "10");
    EXPECT_EQ(Label("SelectLbl_1"), "5");
    EXPECT_EQ(Label("SelectLbl_2"), "14");
}

TEST_F(RefreshTest, TheMenuOfALabelTogglesTimeAndSamples) {
    Show();
    EXPECT_TRUE(Window->EntryChecked("DisplayToggleMnu_0"));
    Window->Entry("DisplayToggleMnu_1")->trigger();
    EXPECT_EQ(ShowHhmmss, 1);
    EXPECT_EQ(Label("ViewLbl_0"), "01");
    EXPECT_TRUE(Window->EntryChecked("DisplayToggleMnu_1"));
    EXPECT_FALSE(Window->EntryChecked("DisplayToggleMnu_0"));
    Window->Entry("DisplayToggleMnu_0")->trigger();
    EXPECT_EQ(ShowHhmmss, 0);
    EXPECT_EQ(Label("ViewLbl_0"), "1000");
}

TEST_F(RefreshTest, ARightClickOnALabelOpensItsMenu) {
    Show();
    auto* Where = Find<QLabel>("ViewLbl_1");
    QContextMenuEvent Event(QContextMenuEvent::Mouse, QPoint(3, 3),
                            Where->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(Where, &Event);
    auto* Menu = Find<QMenu>("PopMnu");
    EXPECT_TRUE(Menu->isVisible());
    QStringList Names;
    for (const QAction* Action : Menu->actions())
        if (!Action->isSeparator())
            Names << Action->objectName();
    EXPECT_EQ(Names,
              (QStringList{"DisplayEnterValMnu", "DisplayToggleMnu_0", "DisplayToggleMnu_1"}));
    Menu->hide();
}

TEST_F(RefreshTest, ColoursReachPanelsAndLabels) {
    const auto Colors = [](const QWidget* What) {
        return std::pair(What->palette().color(QPalette::Window),
                         What->palette().color(QPalette::WindowText));
    };
    WaveColors.at(std::size_t(WaveColor::NormalBackColor)) = 0x112233;
    WaveColors.at(std::size_t(WaveColor::SelectBackColor)) = 0x445566;
    WaveColors.at(std::size_t(WaveColor::WaveFormNormalColor)) = 0x778899;
    WaveColors.at(std::size_t(WaveColor::ScaleBackColor)) = 0xABCDEF;
    WaveColors.at(std::size_t(WaveColor::PlayPosIndiColor)) = 0x0A0B0C;
    MouseMode = 2;
    ViewMouseMode = 4;
    Window->ApplyColorSettings();
    const QColor Normal(0x33, 0x22, 0x11);
    const QColor Select(0x66, 0x55, 0x44);
    const QColor Text(0x99, 0x88, 0x77);
    for (const char* Name : {"DisplayPosLbl_1", "DisplayPosLbl_2", "DisplayPos2Lbl_1",
                             "DisplayPos2Lbl_2", "ViewLbl_0", "ViewLbl_1", "ViewLbl_2"})
        EXPECT_EQ(Colors(Find<QLabel>(Name)), std::pair(Normal, Text)) << Name;
    for (const char* Name : {"SelectLbl_0", "SelectLbl_1", "SelectLbl_2"})
        EXPECT_EQ(Colors(Find<QLabel>(Name)), std::pair(Select, Text)) << Name;
    EXPECT_EQ(Find<QLabel>("PlayPosLbl")->palette().color(QPalette::Window), Normal);
    for (const int Channel : {1, 2}) {
        const WavePanel* Panel = Window->Wave_Pic.at(std::size_t(Channel));
        EXPECT_EQ(Panel->BackColor(), Normal);
        EXPECT_EQ(Panel->PlayPosShp->Color(), QColor(0x0C, 0x0B, 0x0A));
    }
    EXPECT_EQ(Window->HScrollPic->BackColor(), QColor(0xEF, 0xCD, 0xAB));
    EXPECT_EQ(MouseMode, 0);
    EXPECT_EQ(ViewMouseMode, 0);
}

TEST_F(RefreshTest, TheLineCursorsTakeTheColourOfTheTool) {
    Show();
    const auto ColorNow = [&] { return Window->Wave_Pic[1]->MouseLine->Color(); };
    const QColor First = ColorFromBgr(ColorOf(WaveColor::LineCursorColor));
    const QColor Second = ColorFromBgr(ColorOf(WaveColor::SecPtSelLineCursorColor));
    struct Tool {
        std::int32_t View, Mouse;
        bool SecondColor;
    };
    for (const Tool& What : {Tool{4, 0, false}, Tool{5, 0, true}, Tool{6, 0, false},
                             Tool{8, 0, false}, Tool{0, 2, false}, Tool{0, 3, true},
                             Tool{0, 1, true}, Tool{0, 0, false}, Tool{4, 3, false}}) {
        ViewMouseMode = What.View;
        MouseMode = What.Mouse;
        Window->RefreshMousePointer();
        EXPECT_EQ(ColorNow(), What.SecondColor ? Second : First) << What.View << What.Mouse;
    }
    Window->Wave_Pic[1]->MouseLine->show();
    ViewMouseMode = 0;
    MouseMode = 7;
    Window->RefreshMousePointer();
    EXPECT_FALSE(Window->Wave_Pic[1]->MouseLine->isVisible());
}

TEST_F(RefreshTest, BookmarksAreDrawnWhileTheirEntryIsChecked) {
    Show();
    Window->Refresh_Wave_View();
    const QImage Without = Window->Wave_Pic[1]->Picture().copy();
    Bookmarks.push_back({"mark", "", BokPoint, 500, 500, false});
    Window->Refresh_Wave_View();
    EXPECT_NE(Window->Wave_Pic[1]->Picture(), Without);
    EXPECT_NE(Window->Wave_Pic[2]->Picture(), Without);
    ASSERT_TRUE(Window->EntryChecked("Bookmark_Show_Mnu"));
    Window->Entry("Bookmark_Show_Mnu")->trigger();
    EXPECT_FALSE(Window->EntryChecked("Bookmark_Show_Mnu"));
    EXPECT_EQ(Window->Wave_Pic[1]->Picture(), Without);
}

TEST_F(RefreshTest, ResizingDrawsAnew) {
    Show(900, 600);
    const double Before = PixelsPerSample;
    Window->resize(1100, 600);
    QApplication::processEvents();
    EXPECT_GT(PixelsPerSample, Before);
    EXPECT_EQ(Window->Wave_Pic[1]->WaveBak_Pic.width(), Window->Wave_Pic[1]->ScaleWidth());
    EXPECT_EQ(Window->ArrowImg[0]->parentWidget(), Window->HScrollPic);
    EXPECT_EQ(Place(Window->ArrowImg[0]).right(), Window->HScrollPic->width() - 1);
    EXPECT_EQ(Place(Window->ArrowImg[1]).left(), 0);
}

TEST_F(RefreshTest, AFileThatAnotherProgramChangedIsToldOnThePanels) {
    Document(0, 1);
    const std::string Name = Session.WriteFile("a.raw", std::vector<std::uint8_t>(2000, 64));
    const std::int32_t OrgNo = OrgFileAdd(Name, 1, 16);
    {
        const std::int32_t BlockNo = BlockNew(1000, BlockSilence);
        BlockRec& Block = BlockTable[static_cast<std::size_t>(BlockNo)];
        Block = {OrgNo, 1, 1, BlockOrgFile, {}, 1000, 0};
        ++OrgFileTable[static_cast<std::size_t>(OrgNo)].OrgFileUse;
        BlockCarrBuffClass Carrier;
        Carrier.BuffBlocksPutFresh({BlockNo});
        WaveStore->WaveDataInsert(1, 1, &Carrier, nullptr, "", true);
    }
    Show();
    const QImage Good = Window->Wave_Pic.at(1)->Picture().copy();
    Session.WriteFile("a.raw", std::vector<std::uint8_t>(2002, 64));
    Window->Refresh_Wave_View(); // nothing is thrown, and the rest of the window is drawn
    const QImage Told = Window->Wave_Pic.at(1)->Picture().copy();
    // The letters are white, and paler at their edges.
    const auto IsPale = [](QRgb Pixel) {
        return std::min({qRed(Pixel), qGreen(Pixel), qBlue(Pixel)}) > 170;
    };
    const auto Count = [&](const QImage& Picture) {
        int Found = 0;
        for (int y = 0; y < Picture.height(); ++y)
            for (int x = 0; x < Picture.width(); ++x)
                Found += IsPale(Picture.pixel(x, y)) ? 1 : 0;
        return Found;
    };
    EXPECT_EQ(Count(Good), 0);
    EXPECT_GT(Count(Told), 50);
    EXPECT_TRUE(Messages.Texts().empty());
}

TEST_F(RefreshTest, ToolsFitInTheWindowAtEveryWidth) {
    for (const int Width : {700, 1024, 1920}) {
        Show(Width, 700);
        for (const QWidget* Bar :
             Window->TopFrame->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            EXPECT_GE(Bar->x(), 0);
            EXPECT_LE(Bar->geometry().right(), Window->TopFrame->width())
                << qPrintable(Bar->objectName()) << " at " << Width;
            EXPECT_LE(Bar->geometry().bottom(), Window->TopFrame->height())
                << qPrintable(Bar->objectName()) << " at " << Width;
        }
    }
}

TEST_F(RefreshTest, ValuesOfAnyLengthFitTheirLabels) {
    Show(1024, 700);
    for (const char* Name : {"SelectLbl_0", "ViewLbl_2"}) {
        const auto* Value = Find<QLabel>(Name);
        EXPECT_GE(Value->contentsRect().width(),
                  Value->fontMetrics().horizontalAdvance("2147483647"))
            << Name;
    }
    const auto* Position = Find<QLabel>("DisplayPosLbl_1");
    EXPECT_GE(Position->contentsRect().width(),
              Position->fontMetrics().horizontalAdvance("13:31:35.83/2147483647"));
}

TEST_F(RefreshTest, ThePanelsTellAssistiveToolsWhatTheyShow) {
    Show();
    SelBoth = false;
    SelSingle = 2;
    SelStart = 100;
    SelEnd = 300;
    Window->Refresh_Wave_View();
    EXPECT_EQ(Window->Wave_Pic[1]->accessibleDescription(),
              "Shows samples 1 to 1000, 00 to 01 of 1000 samples. Nothing is selected here.");
    EXPECT_EQ(Window->Wave_Pic[2]->accessibleDescription(),
              "Shows samples 1 to 1000, 00 to 01 of 1000 samples. Selected are samples 100 to "
              "300, 00.10 to 00.30.");
    const QAccessibleInterface* Seen = QAccessible::queryAccessibleInterface(Window->Wave_Pic[2]);
    ASSERT_NE(Seen, nullptr);
    EXPECT_EQ(Seen->text(QAccessible::Name), "Waveform, right channel");
    EXPECT_EQ(Seen->text(QAccessible::Description), Window->Wave_Pic[2]->accessibleDescription());
    EXPECT_TRUE(Seen->state().focusable);
    SelEnd = 100;
    Window->Refresh_Wave_View();
    EXPECT_TRUE(Window->Wave_Pic[2]->accessibleDescription().endsWith(
        "The point at sample 100 is selected."));
}

TEST_F(RefreshTest, EveryControlOfTheWindowHasAnAccessibleName) {
    Show();
    for (const QWidget* Control : Window->findChildren<QWidget*>()) {
        const bool Named = !Control->objectName().isEmpty() &&
                           !Control->objectName().startsWith("qt_") && Control->isVisible();
        const bool Ours = Control == Window->Wave_Pic[1] || Control == Window->Wave_Pic[2] ||
                          Control == Window->ScalePic || Control == Window->HScrollPic ||
                          qobject_cast<const QToolButton*>(Control) != nullptr ||
                          (qobject_cast<const QLabel*>(Control) != nullptr && Named);
        EXPECT_TRUE(!Ours || !Named || !Control->accessibleName().isEmpty())
            << qPrintable(Control->objectName());
    }
}

TEST_F(RefreshTest, TheHelpLineFollowsTheMouse) {
    Show();
    auto* Line = Find<QLabel>("StatusBar1_UserGuide");
    QEnterEvent Enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QApplication::sendEvent(Window->ToolButton("ViewToolbar", "ZoomAll"), &Enter);
    EXPECT_EQ(Line->text(), "Use this button to zoom all (view all).");
    QApplication::sendEvent(Find<QLabel>("ViewLbl_2"), &Enter);
    EXPECT_EQ(Line->text(), "View To. Click to edit. Right click for menu.");
    QApplication::sendEvent(Find<QLabel>("DisplayPosLbl_1"), &Enter);
    EXPECT_EQ(Line->text(), "Current X Position of mouse. hh.mm.ss.ss/Samlpes.");
    QApplication::sendEvent(Window->TopFrame, &Enter);
    EXPECT_EQ(Line->text(), "");
    Window->StatusGuide("hint");
    QApplication::sendEvent(Window->statusBar(), &Enter);
    EXPECT_EQ(Line->text(), "");
}

TEST_F(RefreshTest, ADroppedFileIsHandedOn) {
    Show();
    std::string Dropped;
    Window->FileDropped = [&](const std::string& Name) { Dropped = Name; };
    QMimeData Data;
    Data.setUrls({QUrl("http://example.org/x.wav"), QUrl::fromLocalFile("/tmp/first.wav"),
                  QUrl::fromLocalFile("/tmp/second.wav")});
    QDragEnterEvent Enter(QPoint(5, 5), Qt::CopyAction, &Data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window.get(), &Enter);
    EXPECT_TRUE(Enter.isAccepted());
    QDropEvent Event(QPointF(5, 5), Qt::CopyAction, &Data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window.get(), &Event);
    EXPECT_EQ(Dropped, "/tmp/first.wav");
}

TEST_F(RefreshTest, ViewCommandsOfMenuAndToolbarZoom) {
    Show();
    Window->ToolButton("ViewToolbar", "ZoomIn")->click();
    EXPECT_EQ(ViewTotal, 600);
    EXPECT_EQ(ViewFrom, 201);
    Window->Entry("ViewAll_Mnu")->trigger();
    EXPECT_EQ(ViewTotal, 1000);
    Window->Entry("Zoom_Mnu_4")->trigger();
    EXPECT_EQ(ViewTotal, Window->Wave_Pic[1]->ScaleWidth());
    Window->Entry("Pan_Mnu")->trigger();
    EXPECT_EQ(ViewMouseMode, 8);
    Window->Entry("SelectAll_Mnu")->trigger();
    EXPECT_EQ(SelStart, 1);
    EXPECT_EQ(SelEnd, 1000);
    Window->ToolButton("MouseToolbar", "Reset")->click();
    EXPECT_EQ(SelStart, 0);
}

TEST_F(RefreshTest, KeysOfTheMenusWorkInTheWindow) {
    Show();
    Window->activateWindow();
    QTest::keyClick(Window.get(), Qt::Key_F3);
    EXPECT_EQ(ViewTotal, 600);
    QTest::keyClick(Window.get(), Qt::Key_F2);
    EXPECT_EQ(ViewTotal, 1000);
    QTest::keyClick(Window.get(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(SelEnd, 1000);
}

} // namespace
} // namespace quoril::test
