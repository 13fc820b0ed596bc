// The tool Draw in the real window, at a scale of the desktop that is set before the program
// starts: its entries and buttons, what a stroke shows, and what it makes of the document.
#include "MouseEvents.h"
#include "WindowFixture.h"

#include "settings/UserGuideMod.h"
#include "storage/StorageChecks.h"
#include "storage/UndoListener.h"
#include "support/FullDisk.h"
#include "view/LiteralStroke.h"
#include "view/WaveColumns.h"
#include "view/WaveMouse.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"

#include <QAction>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include <random>

namespace quoril::test {
namespace {

const bool ScaleIsSet = qputenv("QT_SCALE_FACTOR", DRAW_SCALE);

const std::string Refusal =
    "Draw with mouse failed|Zoom in (+) to draw with mouse.\nView less then one second duration\n"
    "on screen and try again to draw\n\nIt is better to draw viewing 1:1";

/// Keeps the tips that are shown.
class TipWatch final : public UserGuideWindow {
  public:
    TipWatch() { SetUserGuideWindow(this); }
    ~TipWatch() override { SetUserGuideWindow(nullptr); }
    TipWatch(const TipWatch&) = delete;
    TipWatch& operator=(const TipWatch&) = delete;
    bool ShowGuideTip(const GuideTip& Tip) override {
        Tips.push_back(Tip.Message);
        return false;
    }
    void ShowStatusGuide(const std::string&) override {}
    std::vector<std::string> Tips;
};

class DrawToolTest : public WindowTest {
  protected:
    using Samples = std::vector<std::int16_t>;

    DrawToolTest() {
        ShowNewUserGuide = false;
        Show();
        Window->Refresh_Wave_View();
    }
    WavePanel* Panel(int Channel = 1) const { return Window->Wave_Pic.at(std::size_t(Channel)); }
    QAction* Entry(int Index) const { return Window->Entry("Draw_Mnu_" + std::to_string(Index)); }
    QToolButton* Button(const char* Key) const { return Window->ToolButton("DrawToolbar", Key); }
    /// The entries and buttons are those of the tool in use, or put away.
    bool Follows(bool InUse) const {
        return Entry(1)->isEnabled() != InUse && Entry(2)->isEnabled() == InUse &&
               Button("Draw")->isEnabled() != InUse && Button("DrawDone")->isEnabled() == InUse;
    }
    void View(std::int32_t From, std::int32_t Count) {
        ViewAll = false;
        ViewFrom = From;
        ViewTotal = Count;
        Window->Refresh_Wave_View();
    }
    void Take() {
        Entry(1)->trigger();
        ASSERT_EQ(MouseMode, MouseModeDraw);
    }
    /// A place of the window system that lies within a pixel of the panel's picture.
    QPointF Place(QPoint Pixel, int Channel = 1) const {
        const double Ratio = Panel(Channel)->PixelRatio();
        return {(Pixel.x() + 0.5) / Ratio, (Pixel.y() + 0.5) / Ratio};
    }
    void Press(QPoint Pixel, int Channel = 1, Qt::MouseButton Which = Qt::LeftButton) {
        SendMouse(Panel(Channel), QEvent::MouseButtonPress, Place(Pixel, Channel), Which, Which);
        Window->PanelMouse->Mouse.MoveWait = false;
        Window->PanelMouse->MouseMoveWaitTimer->stop();
    }
    void Move(QPoint Pixel, int Channel = 1, Qt::MouseButtons Held = Qt::LeftButton) {
        SendMouse(Panel(Channel), QEvent::MouseMove, Place(Pixel, Channel), Qt::NoButton, Held);
    }
    void Release(QPoint Pixel, int Channel = 1, Qt::MouseButton Which = Qt::LeftButton) {
        SendMouse(Panel(Channel), QEvent::MouseButtonRelease, Place(Pixel, Channel), Which,
                  Qt::NoButton);
    }
    void Key(Qt::Key Which, Qt::KeyboardModifiers With = {}) {
        QTest::keyClick(Panel(), Which, With);
    }
    static Samples Channel(int Index) { return ChannelSamples(*WaveStore, Index); }
    static std::string UndoName() { return WaveStore->UndoMenu().Caption; }

    // The point under a pixel, as the text of the tool has it.
    LiteralPoint PointAt(QPoint Pixel) const {
        const WaveScale& Scale = Window->PanelScale;
        const auto Total = static_cast<double>(WaveStore->WavWaveINos);
        const double Pos = std::nearbyint(Pixel.x() / PixelsPerSample + ViewFrom);
        return {static_cast<std::int64_t>(std::min(std::max(Pos, 1.0), Total)),
                std::llrint((Scale.ZeroLineY - Pixel.y()) / Scale.PixelsPerUnit)};
    }
    /// The finished picture, and on it the points, each in its column alone.
    QImage WithPoints(const LiteralStroke& Stroke, int Channel) const {
        const QImage& Back = Panel(Channel)->WaveBak_Pic;
        QImage Made = Back.copy();
        const WaveScale& Scale = Window->PanelScale;
        for (const LiteralPoint& Each : Stroke.Points) {
            if (Each.Pos < 1 || Each.Pos > WaveStore->WavWaveINos)
                continue;
            const auto Val =
                std::min<std::int64_t>(std::max<std::int64_t>(Each.Val, -32767), 32767);
            const int X = PixelOf((static_cast<double>(Each.Pos) - ViewFrom) * PixelsPerSample);
            const int Y = PixelOf(Scale.ZeroLineY - static_cast<double>(Val) * Scale.PixelsPerUnit);
            if (!Made.rect().contains(X, Y))
                continue;
            // One pixel, as the user sees it.
            const int Thick = std::max(1, int(Panel(Channel)->PixelRatio()));
            for (int Column = X; Column < std::min(X + Thick, Made.width()); ++Column) {
                for (int Row = 0; Row < Made.height(); ++Row)
                    Made.setPixel(Column, Row, Back.pixel(Column, Row));
                for (int Row = Y; Row < std::min(Y + Thick, Made.height()); ++Row)
                    Made.setPixel(Column, Row, QColor(Qt::white).rgb());
            }
        }
        return Made;
    }
    bool PanelsAreClean() const {
        return Panel(1)->Picture() == Panel(1)->WaveBak_Pic &&
               Panel(2)->Picture() == Panel(2)->WaveBak_Pic;
    }
};

// ---- The tool

TEST_F(DrawToolTest, TheScaleIsTheOneThatWasSet) {
    ASSERT_TRUE(ScaleIsSet);
    EXPECT_DOUBLE_EQ(Panel()->PixelRatio(), QByteArray(DRAW_SCALE).toDouble());
}

TEST_F(DrawToolTest, IsRefusedAboveASecondAndTakenAtOne) {
    Document(1001, 2);
    View(1, 1001);
    EXPECT_TRUE(Follows(false));
    Entry(1)->trigger();
    EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>{Refusal});
    EXPECT_EQ(MouseMode, MouseModeSelect);
    EXPECT_TRUE(Follows(false));
    View(1, 1000);
    ViewMouseMode = ViewMouseModeZoomAt;
    Button("Draw")->click();
    EXPECT_TRUE(Messages.TakeTexts().empty());
    EXPECT_EQ(MouseMode, MouseModeDraw);
    EXPECT_EQ(ViewMouseMode, ViewMouseModeNone);
    EXPECT_TRUE(Follows(true));
    EXPECT_EQ(Panel()->cursor().shape(), Qt::BitmapCursor);
    Button("DrawDone")->click();
    EXPECT_EQ(MouseMode, MouseModeSelect);
    EXPECT_TRUE(Follows(false));
    EXPECT_EQ(Panel()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_FALSE(Find<QTimer>("DrawBtnEnblTimer")->isActive());
}

TEST_F(DrawToolTest, TellsHowItIsDoneAndNowAndThenHowItEnds) {
    TipWatch Watch;
    ShowNewUserGuide = true;
    const std::string How = "With this command scratch with mouse to draw. Use draw done after "
                            "finishing drawing.";
    GuideChanceFix(0.5);
    Take();
    EXPECT_EQ(Watch.Tips, std::vector<std::string>{How});
    Key(Qt::Key_Escape);
    Watch.Tips.clear();
    GuideChanceFix(0.05);
    Take();
    EXPECT_EQ(Watch.Tips, (std::vector<std::string>{
                              How, "You can cancel drawing mode with Esc - key if needed."}));
    GuideChanceFix(std::nullopt);
}

TEST_F(DrawToolTest, EscEndsItWithTheButtonsAtOnce) {
    Take();
    Key(Qt::Key_Escape);
    EXPECT_EQ(MouseMode, MouseModeSelect);
    EXPECT_TRUE(Follows(false));
}

TEST_F(DrawToolTest, AViewOfMoreThanASecondEndsItAndTheButtonsFollowByThemselves) {
    Document(3000, 2);
    View(1, 700);
    Take();
    auto* Timer = Find<QTimer>("DrawBtnEnblTimer");
    EXPECT_EQ(Timer->interval(), 500);
    EXPECT_TRUE(Timer->isActive());
    Key(Qt::Key_F2);
    EXPECT_EQ(MouseMode, MouseModeSelect);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Follows(false); }, 5000));
    EXPECT_FALSE(Timer->isActive());
}

TEST_F(DrawToolTest, TheTimerLeavesTheToolInUseAlone) {
    Take();
    const QSignalSpy Ticks(Find<QTimer>("DrawBtnEnblTimer"), &QTimer::timeout);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Ticks.count() > 0; }, 5000));
    EXPECT_TRUE(Follows(true));
    EXPECT_EQ(MouseMode, MouseModeDraw);
}

// ---- Strokes

TEST_F(DrawToolTest, RandomStrokesOnBothPanelsAreShownAndTakenPointByPoint) {
    std::mt19937 Random(6);
    const auto Number = [&Random](int From, int To) {
        return std::uniform_int_distribution<int>(From, To)(Random);
    };
    std::array<Samples, 3> Now = {Samples{}, Channel(1), Channel(2)};
    std::vector<std::array<Samples, 3>> Past;
    for (int Round = 0; Round < 60; ++Round) {
        SCOPED_TRACE(Round);
        const int Count = Round % 3 == 0 ? Number(10, 60) : Number(61, 1000);
        View(Number(1, 1001 - Count), Count);
        if (MouseMode != MouseModeDraw)
            Take();
        SelBoth = Round % 2 == 0;
        const int On = Number(1, 2);
        const int Width = Panel(On)->ScaleWidth();
        const int Height = Panel(On)->ScaleHeight();
        // Beside the panel, too, on all sides.
        const auto Any = [&] {
            return QPoint(Number(-Width / 4, Width + Width / 4), Number(-Height, 2 * Height));
        };
        LiteralStroke Stroke;
        const QPoint Down(Number(0, Width - 1), Number(0, Height - 1));
        const Qt::MouseButton Which = Number(0, 2) == 0 ? Qt::RightButton : Qt::LeftButton;
        Press(Down, On, Which);
        Stroke.Down(PointAt(Down).Pos, PointAt(Down).Val);
        EXPECT_EQ(SelSingle, On);
        for (int Moves = Number(0, 8); Moves > 0; --Moves) {
            const QPoint To = Any();
            Move(To, On, Which);
            Stroke.Move(PointAt(To).Pos, PointAt(To).Val, 1000);
            ASSERT_EQ(Panel(On)->Picture(), WithPoints(Stroke, On));
            ASSERT_EQ(Panel(3 - On)->Picture(), Panel(3 - On)->WaveBak_Pic);
        }
        ASSERT_EQ(Channel(On), Now.at(std::size_t(On))) << "before the release";
        Past.push_back(Now);
        Stroke.Up(Now.at(std::size_t(On)), ViewFrom, ViewTotal, 16);
        Release(Any(), On, Which);
        ASSERT_EQ(Channel(1), Now[1]);
        ASSERT_EQ(Channel(2), Now[2]);
        ASSERT_EQ(UndoName(), "Undo [Draw - with mouse]");
        ASSERT_TRUE(PanelsAreClean());
        ASSERT_EQ(BrokenRule(*WaveStore), "");
        ASSERT_EQ(MouseMode, MouseModeDraw);
    }
    for (; !Past.empty(); Past.pop_back()) {
        WaveStore->Undo();
        EXPECT_EQ(Channel(1), Past.back()[1]);
        EXPECT_EQ(Channel(2), Past.back()[2]);
    }
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
    EXPECT_TRUE(Messages.Texts().empty());
}

TEST_F(DrawToolTest, AClickReplacesOneSampleAndMovesOfTheFirstMomentDoNotCount) {
    View(101, 100);
    Take();
    const QPoint Where(Panel()->ScaleWidth() / 2, 3);
    SendMouse(Panel(), QEvent::MouseButtonPress, Place(Where), Qt::LeftButton, Qt::LeftButton);
    EXPECT_TRUE(Window->PanelMouse->MouseMoveWaitTimer->isActive());
    Move(Where + QPoint(200, 50));
    Release(Where + QPoint(200, 50));
    Samples Expected(1000, 0);
    Expected.at(std::size_t(PointAt(Where).Pos) - 1) =
        static_cast<std::int16_t>(PointAt(Where).Val);
    EXPECT_EQ(Channel(1), Expected);
    EXPECT_EQ(Channel(2), Samples(1000, 0));
    EXPECT_GT(*std::max_element(Expected.begin(), Expected.end()), 30000);
}

TEST_F(DrawToolTest, BelowThePanelTheLowestDrawnValueIsStored) {
    View(1, 100);
    Take();
    Press({10, Panel()->ScaleHeight() + 500});
    Release({10, Panel()->ScaleHeight() + 500});
    const Samples Made = Channel(1);
    EXPECT_EQ(*std::min_element(Made.begin(), Made.end()), -32767);
}

TEST_F(DrawToolTest, TheWheelDoesNothingWhileAStrokeIsDrawnAndWorksBehindIt) {
    View(301, 200);
    Take();
    Press({100, 10});
    Move({200, 30});
    const QImage Before = Panel()->Picture().copy();
    for (const auto Keys : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier})
        SendWheel(Panel(), Place({150, 20}), 1, Keys);
    EXPECT_EQ(ViewFrom, 301);
    EXPECT_EQ(ViewTotal, 200);
    EXPECT_EQ(Panel()->Picture(), Before);
    Release({200, 30});
    EXPECT_EQ(UndoName(), "Undo [Draw - with mouse]");
    SendWheel(Panel(), Place({150, 20}), 1, {});
    EXPECT_NE(ViewFrom, 301);
}

TEST_F(DrawToolTest, AKeyThatChangesTheViewKeepsWhatStaysInIt) {
    View(301, 200);
    Take();
    const QPoint End(Panel()->ScaleWidth() - 1, 5);
    LiteralStroke Stroke;
    Press({0, 5});
    Stroke.Down(PointAt({0, 5}).Pos, PointAt({0, 5}).Val);
    Move(End);
    Stroke.Move(PointAt(End).Pos, PointAt(End).Val, 1000);
    Key(Qt::Key_Right);
    EXPECT_EQ(ViewFrom, 321);
    EXPECT_EQ(Panel()->Picture(), WithPoints(Stroke, 1)) << "the stroke is shown at its new place";
    Release(End);
    Samples Expected(1000, 0);
    Stroke.Up(Expected, 321, 200, 16);
    EXPECT_EQ(Channel(1), Expected);
    EXPECT_EQ(Expected.at(319), 0);
    EXPECT_NE(Expected.at(320), 0);
}

TEST_F(DrawToolTest, EscInTheMidstOfAStrokeDoesNothing) {
    View(1, 200);
    Take();
    Press({10, 10});
    Move({60, 40});
    Key(Qt::Key_Escape);
    EXPECT_EQ(MouseMode, MouseModeDraw);
    Move({90, 10});
    Release({90, 10});
    EXPECT_EQ(UndoName(), "Undo [Draw - with mouse]");
    EXPECT_NE(Channel(1), Samples(1000, 0));
    Key(Qt::Key_Escape);
    EXPECT_EQ(MouseMode, MouseModeSelect);
}

TEST_F(DrawToolTest, AStrokeWhoseGroundIsTakenAwayIsDropped) {
    const auto Begin = [&] {
        Document(3000, 2);
        View(1, 700);
        if (MouseMode != MouseModeDraw)
            Window->Commands.Run("Draw_Mnu_1"); // the entry itself may not have followed yet
        ASSERT_EQ(MouseMode, MouseModeDraw);
        Press({10, 10});
        Move({200, 40});
        ASSERT_FALSE(PanelsAreClean());
    };
    const auto ExpectDropped = [&] {
        Release({250, 60});
        EXPECT_TRUE(PanelsAreClean());
        EXPECT_EQ(Channel(1), Samples(3000, 0));
        EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
        EXPECT_EQ(Window->PanelMouse->Mouse.Hold(), MouseHold::None);
    };
    Begin();
    Key(Qt::Key_F5); // a view of three seconds ends the tool
    EXPECT_EQ(MouseMode, MouseModeSelect);
    ExpectDropped();
    Begin();
    Key(Qt::Key_Z); // another tool
    ExpectDropped();
    ViewMouseMode = ViewMouseModeNone;
    Begin();
    QEvent Deactivated(QEvent::WindowDeactivate);
    QApplication::sendEvent(Window.get(), &Deactivated);
    EXPECT_EQ(MouseMode, MouseModeDraw) << "the tool stays";
    ExpectDropped();
    Begin();
    Move({300, 50}, 1, Qt::NoButton); // the release was never told
    ExpectDropped();
    Begin();
    Window->Commands.Run("SelectAll_Mnu");
    Window->PanelMouse->CommandRun();
    ExpectDropped();
}

TEST_F(DrawToolTest, OnlyTheButtonThatBeganAStrokeEndsIt) {
    View(1, 200);
    Take();
    Press({10, 10}, 1, Qt::RightButton);
    Move({60, 40}, 1, Qt::RightButton);
    Release({60, 40}, 1, Qt::LeftButton);
    EXPECT_EQ(Window->PanelMouse->Mouse.Hold(), MouseHold::Draw);
    Release({60, 40}, 1, Qt::RightButton);
    EXPECT_EQ(UndoName(), "Undo [Draw - with mouse]");
}

TEST_F(DrawToolTest, TwoQuickPressesAreTwoStrokes) {
    View(1, 200);
    Take();
    Press({100, 10});
    Release({100, 10});
    SendMouse(Panel(), QEvent::MouseButtonDblClick, Place({102, 20}), Qt::LeftButton,
              Qt::LeftButton);
    Release({102, 20});
    EXPECT_EQ(SelStart, 0);
    EXPECT_EQ(MouseMode, MouseModeDraw);
    WaveStore->Undo();
    EXPECT_EQ(UndoName(), "Undo [Draw - with mouse]") << "each is a step";
}

TEST_F(DrawToolTest, AToolOfTheViewGoesBeforeItAndGivesItBack) {
    View(1, 200);
    Take();
    Key(Qt::Key_X);
    Press({100, 10});
    Release({100, 10});
    EXPECT_EQ(ViewTotal, 120);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
    Key(Qt::Key_Escape);
    EXPECT_EQ(MouseMode, MouseModeDraw);
    Press({100, 10});
    Release({100, 10});
    EXPECT_TRUE(WaveStore->UndoMenu().Enabled);
}

TEST_F(DrawToolTest, NothingHappensOverAnEmptyDocument) {
    Document(0, 1);
    Window->Refresh_Wave_View();
    ViewTotal = 0;
    Entry(1)->trigger();
    Press({100, 10});
    Move({150, 10});
    Release({150, 10});
    EXPECT_EQ(WaveStore->WavWaveINos, 0);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
    EXPECT_TRUE(Messages.Texts().empty());
}

TEST_F(DrawToolTest, AStrokeThatFindsNoRoomIsToldAndLeavesNoTrace) {
    View(1, 200);
    Take();
    const FullDisk Work;
    const std::int32_t Good = MemoryBudget;
    Press({10, 10});
    Move({200, 40});
    Work.Fill();
    MemoryBudget = MemoryUsed + 1;
    Release({200, 40});
    Work.Empty();
    MemoryBudget = Good;
    const bool Failed = !Messages.TakeTexts().empty();
    EXPECT_EQ(Failed, Channel(1) == Samples(1000, 0));
    EXPECT_TRUE(PanelsAreClean());
    EXPECT_EQ(Window->PanelMouse->Mouse.Hold(), MouseHold::None);
    EXPECT_EQ(BrokenRule(*WaveStore), "");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

} // namespace
} // namespace quoril::test
