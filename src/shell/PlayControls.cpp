#include "shell/PlayControls.h"

#include "base/CommandFailure.h"
#include "base/DocumentState.h"
#include "base/PlayState.h"
#include "base/QtText.h"
#include "bookmarks/BookmarkEditMod.h"
#include "playback/PlayMod.h"
#include "playback/PlaySpeed.h"
#include "selection/DurationText.h"
#include "selection/SelectionMod.h"
#include "settings/UserGuideMod.h"
#include "storage/FileMemoClass.h"
#include "view/PicturePanel.h"
#include "view/PlayHotKeys.h"
#include "view/ReadOutLabel.h"
#include "view/SpeedBox.h"
#include "view/WaveEditor_Frm.h"
#include "view/WavePanel.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <array>

namespace quoril {

namespace {

constexpr int TimerMs = 40;
constexpr double TipChance = 0.2;
constexpr int SpeedBoxEdge = 4;

struct PlayButton {
    const char* Key;
    PlayCodes Code;
    bool WithTip;
};
constexpr std::array<PlayButton, 7> PlayButtons = {{{"PlayNew", PlayNew, true},
                                                    {"PlayNewRev", PlayNewRev, true},
                                                    {"Play", PlaySelection, true},
                                                    {"PlayRev", PlaySelectionRev, true},
                                                    {"Pause", PlayCodePause, false},
                                                    {"Stop", PlayCodeStop, false},
                                                    {"UTurn", PlayCodeUTurn, false}}};

/// What can be used once something has played.
constexpr std::array<const char*, 4> NeedPlayer = {{"Play", "PlayRev", "Stop", "UTurn"}};

void TipNowAndThen() {
    if (GuideChance(TipChance))
        UserGuide(
            "Press the Space key to play or to stop, and the U key to turn the direction while "
            "playing.");
}

void HotKey(PlayHotKeys Key) {
    quoril::RunCommand("Play failed", [Key] {
        PlayHotKey(Key, [](BookmarkRec& Bookmark) {
            bool Ok = false;
            BookmarkEdit(BookmarkAsItStands, Bookmark, Ok);
            return Ok;
        });
    });
}

} // namespace

PlayControls::PlayControls(WaveEditor_Frm& MainWindow)
    : Window(MainWindow), PlayPosTimer(new QTimer(this)),
      SpeedBoxPic(
          new SpeedBox(MainWindow.TopFrame->parentWidget(), PlaySpeedLeast, PlaySpeedMost)) {
    PlayPosTimer->setObjectName(QStringLiteral("PlayPosTimer"));
    PlayPosTimer->setInterval(TimerMs);
    PlayPosTimer->setTimerType(Qt::PreciseTimer);
    connect(PlayPosTimer, &QTimer::timeout, this,
            [] { quoril::RunCommand("Play failed", PlayPosTimerFired); });
    SpeedBoxPic->Moved = [](std::int32_t Index, std::int32_t Value) {
        quoril::RunCommand("Play failed", [&] { PlaySpeedChange(Index, Value); });
    };
    RegisterButtons();
    Window.installEventFilter(this);
    SetPlayWindow(this);
}

PlayControls::~PlayControls() {
    SetPlayWindow(nullptr);
}

void PlayControls::RegisterButtons() {
    for (const PlayButton& Each : PlayButtons)
        Window.Commands.Set(std::string("PlayToolbar_") + Each.Key, [Each] {
            PlayCommand(Each.Code, 0);
            if (Each.WithTip)
                TipNowAndThen();
        });
    Window.Commands.Set("PlayToolbar_Loop", [this] {
        LoopOn = Window.ToolButton("PlayToolbar", "Loop")->isChecked();
        quoril::RunCommand("Play failed", SetLoopONOFF);
    });
    Window.Commands.Set("SoundTmpoMnu", PlaySpeedShow);
}

bool PlayControls::eventFilter(QObject* Watched, QEvent* Event) {
    if (Watched != &Window || Event->type() != QEvent::KeyPress)
        return QObject::eventFilter(Watched, Event);
    const auto* const Key = static_cast<QKeyEvent*>(Event);
    switch (Key->key()) {
    case Qt::Key_Space:
        if (!Key->isAutoRepeat())
            quoril::RunCommand("Play failed", PlayOrStop);
        return true;
    case Qt::Key_QuoteLeft:
        PlayCommand(PlayNew, 0);
        return true;
    case Qt::Key_U:
        PlayCommand(PlayCodeUTurn, 0);
        return true;
    case Qt::Key_Backslash:
        HotKey(HotKeyBackslash);
        return true;
    case Qt::Key_BracketLeft:
        HotKey(HotKeyBracketLeft);
        return true;
    case Qt::Key_BracketRight:
        HotKey(HotKeyBracketRight);
        return true;
    case Qt::Key_Backspace:
        HotKey(HotKeyBackspace);
        return true;
    case Qt::Key_Equal:
        HotKey(HotKeyEqual);
        return true;
    default:
        return QObject::eventFilter(Watched, Event);
    }
}

// ---- What the controls ask

bool PlayControls::ConfirmSelection(std::int32_t& FromPos, std::int32_t& ToPos,
                                    std::int32_t& WorkChn, std::int32_t Need,
                                    const std::string& Operation) {
    return quoril::ConfirmSelection(FromPos, ToPos, WorkChn, Need, Operation);
}

std::string PlayControls::FormatDuration(float Seconds) const {
    return quoril::FormatDuration(Seconds);
}

std::int32_t PlayControls::Handle() const {
    const auto Number = static_cast<std::int32_t>(Window.winId());
    return Number == 0 ? 1 : Number;
}

bool PlayControls::PlayEnabled() const {
    return std::ranges::all_of(NeedPlayer, [this](const char* Key) {
        return Window.ToolButton("PlayToolbar", Key)->isEnabled();
    });
}

// ---- What they show

void PlayControls::RefreshPlayScale() {
    Window.RefreshPlayScale();
}

void PlayControls::RefreshScrollScale() {
    Window.RefreshScrollScale();
}

void PlayControls::EnablePlayButtons() {
    for (const char* Key : NeedPlayer)
        Window.SetEntryEnabled(std::string("PlayToolbar_") + Key, true);
}

void PlayControls::SetPause(bool Enabled, const std::string& ToolTip) {
    QToolButton* const Button = Window.ToolButton("PlayToolbar", "Pause");
    Button->setToolTip(ShownText(ToolTip));
    Button->setAccessibleName(ShownText(ToolTip));
    Window.SetEntryEnabled("PlayToolbar_Pause", Enabled);
}

void PlayControls::DisableStop() {
    for (const char* Key : {"Stop", "UTurn"})
        Window.SetEntryEnabled(std::string("PlayToolbar_") + Key, false);
}

void PlayControls::SetLoopPressed(bool Pressed) {
    Window.ToolButton("PlayToolbar", "Loop")->setChecked(Pressed);
}

void PlayControls::SetPlayPosTimer(bool On) {
    if (!On)
        PlayPosTimer->stop();
    else if (!PlayPosTimer->isActive())
        PlayPosTimer->start();
}

void PlayControls::MovePlayPosShp(std::int32_t X1, std::int32_t X2) {
    Window.Wave_Pic[1]->PlayPosShp->SetX(X1);
    Window.Wave_Pic[2]->PlayPosShp->SetX(X2);
}

void PlayControls::SetPlayPosLbl(const std::string& Text) {
    Window.PlayPosLbl->setText(ShownText(Text));
}

void PlayControls::SetPlayStatusLbl(const std::string& Text) {
    Window.PlayStatusLbl->setText(ShownText(Text));
}

void PlayControls::SetSpeedText(std::int32_t Index, const std::string& Text) {
    SpeedBoxPic->SetText(Index, ShownText(Text));
    Window.SpeedDispLbl.at(static_cast<std::size_t>(Index))->setText(ShownText(Text));
}

void PlayControls::ShowSpeedBox(std::int32_t ValueFor, std::int32_t ValueRev) {
    SetSpeedText(1, PlaySpeedText(TempoFor));
    SetSpeedText(2, PlaySpeedText(TempoRev));
    const QWidget* const Around = SpeedBoxPic->parentWidget();
    SpeedBoxPic->ShowAt(Around->width() - SpeedBoxEdge, SpeedBoxTop(), ValueFor, ValueRev);
}

int PlayControls::SpeedBoxTop() const {
    const int BelowToolbars = Window.TopFrame->geometry().bottom() + SpeedBoxEdge;
    // The scale of a stereo document lies between the panels; the box leaves it free if it can.
    const QRect Scale(Window.ScalePic->mapTo(SpeedBoxPic->parentWidget(), QPoint()),
                      Window.ScalePic->size());
    if (WaveStore->WavFmtChannel == 2 &&
        Scale.top() < BelowToolbars + SpeedBoxPic->sizeHint().height())
        return Scale.bottom() + SpeedBoxEdge;
    return BelowToolbars;
}

} // namespace quoril
