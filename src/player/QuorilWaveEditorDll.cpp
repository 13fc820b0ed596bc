#include "player/QuorilWaveEditorDll.h"

#include <QSocketNotifier>

#include <span>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace quoril {

namespace {

const QByteArray MessageTitle = QByteArrayLiteral("Play failed");
// The prompt that is no box but the status line.
const QByteArray StatusPrompt = QByteArrayLiteral("S2");

std::span<const std::int32_t> Words(const QList<int>& List) {
    return {List.constData(), static_cast<std::size_t>(List.size())};
}

} // namespace

QuorilWaveEditorDll::QuorilWaveEditorDll(OutputMaker Maker, QObject* Parent)
    : QObject(Parent), NoticeHandle(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      Engine(std::move(Maker), [this] { (void)::eventfd_write(NoticeHandle, 1); }) {
    auto* Notice = new QSocketNotifier(NoticeHandle, QSocketNotifier::Read, this);
    connect(Notice, &QSocketNotifier::activated, this, [this] {
        eventfd_t Count = 0;
        (void)::eventfd_read(NoticeHandle, &Count);
        Attend();
    });
}

QuorilWaveEditorDll::~QuorilWaveEditorDll() {
    Engine.SwitchOff();
    ::close(NoticeHandle);
}

void QuorilWaveEditorDll::Guarded(const std::function<void()>& What) {
    try {
        What();
    } catch (const std::exception& Failed) {
        emit MsgBoxOb(QByteArray(Failed.what()), MessageTitle);
    }
    TellStatus();
}

void QuorilWaveEditorDll::Attend() {
    if (const std::string Told = Engine.Attend(); !Told.empty())
        emit MsgBoxOb(QByteArray::fromStdString(Told), MessageTitle);
    TellStatus();
}

void QuorilWaveEditorDll::TellStatus() {
    std::string Now;
    switch (Engine.Status()) {
    case PlayingForward:
        Now = "Playing";
        break;
    case PlayingReverse:
        Now = "Playing in reverse";
        break;
    case PlayPaused:
        Now = "Paused";
        break;
    default:
        break;
    }
    if (std::exchange(StatusTold, Now) != Now)
        emit MsgBoxOb(StatusPrompt, QByteArray::fromStdString(Now));
}

int QuorilWaveEditorDll::DriverState(int Window) {
    int State = 0;
    Guarded([&] {
        if (Window == 0)
            Engine.SwitchOff();
        else
            State = Engine.SwitchOn();
    });
    return State;
}

int QuorilWaveEditorDll::PlayPosition() {
    return Engine.Position();
}

void QuorilWaveEditorDll::PlayForward() {
    Guarded([&] { Engine.Play(0, 1); });
}

void QuorilWaveEditorDll::PlayReverse() {
    Guarded([&] { Engine.PlayFromEnd(); });
}

int QuorilWaveEditorDll::PlayStatus() {
    return Engine.Status();
}

void QuorilWaveEditorDll::UTurn() {
    Guarded([&] { Engine.UTurn(); });
}

void QuorilWaveEditorDll::Stop() {
    Guarded([&] { Engine.Stop(); });
}

void QuorilWaveEditorDll::Continue() {
    Guarded([&] { Engine.Continue(); });
}

void QuorilWaveEditorDll::Pause() {
    Guarded([&] { Engine.Pause(); });
}

void QuorilWaveEditorDll::PauseStart() {
    Guarded([&] { Engine.PauseStart(); });
}

void QuorilWaveEditorDll::Load(int Bits, int Channels, int Freq, int Length,
                               const QList<int>& LeftList, const QList<int>& RightList) {
    const std::vector<EnteredFile> Files = std::exchange(Entered, {});
    Guarded([&] {
        Engine.Load(Bits, Channels, Freq, Length, Words(LeftList), Words(RightList), Files);
    });
}

void QuorilWaveEditorDll::MemoryBytes(int Bytes) {
    Engine.SetMemoryBytes(Bytes);
}

void QuorilWaveEditorDll::Loop(short On) {
    Guarded([&] { Engine.SetLoop(On != 0); });
}

void QuorilWaveEditorDll::TempoForward(double Tempo) {
    Engine.SetTempo(1, static_cast<float>(Tempo));
}

void QuorilWaveEditorDll::TempoReverse(double Tempo) {
    Engine.SetTempo(-1, static_cast<float>(Tempo));
}

void QuorilWaveEditorDll::TempDir(const QByteArray& Folder) {
    WorkFolder = Folder.toStdString();
}

void QuorilWaveEditorDll::ReleaseFiles() {
    Guarded([&] { Engine.ReleaseFiles(); });
}

void QuorilWaveEditorDll::PlayForwardFrom(int Offset) {
    Guarded([&] { Engine.Play(Offset, 1); });
}

void QuorilWaveEditorDll::PlayReverseFrom(int Offset) {
    Guarded([&] { Engine.Play(Offset, -1); });
}

void QuorilWaveEditorDll::FilesEntered(const QByteArrayList& Names,
                                       const QList<qlonglong>& Identities) {
    constexpr qsizetype NumbersOfEach = 4;
    Entered.clear();
    for (qsizetype i = 0; i < Names.size() && (i + 1) * NumbersOfEach <= Identities.size(); ++i) {
        const qlonglong* const Numbers = Identities.constData() + i * NumbersOfEach;
        Entered.push_back({Names[i].toStdString(),
                           {static_cast<std::uint64_t>(Numbers[0]),
                            static_cast<std::uint64_t>(Numbers[1]), Numbers[2], Numbers[3]}});
    }
}

} // namespace quoril
