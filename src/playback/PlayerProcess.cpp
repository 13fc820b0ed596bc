#include "playback/PlayerProcess.h"

#include "PlayerInterface.h"
#include "base/Failure.h"
#include "platform/CompanionProcess.h"
#include "platform/FileSystem.h"
#include "platform/ProgramPlaces.h"
#include "settings/STD1.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusPendingReply>

#include <atomic>
#include <cctype>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace quoril {

namespace {

constexpr int StartMs = 5000;
constexpr int AnswerMs = 3000;
// Finding a way for sound may take as long as a sound server takes to answer, twice.
constexpr int DriverMs = 15000;
// What a socket's name may be long, with room for the name in the folder.
constexpr std::size_t LongestFolder = 80;

QList<int> WordList(const std::vector<std::int32_t>& Words) {
    return {Words.begin(), Words.end()};
}

/// A path in an address: what the address's grammar does not take is written in hexadecimal.
std::string AddressOf(const std::string& Path) {
    constexpr std::string_view Digits = "0123456789abcdef";
    std::string Address = "unix:path=";
    for (const char Each : Path) {
        const auto Byte = static_cast<unsigned char>(Each);
        if ((Byte < 128 && std::isalnum(Byte) != 0) ||
            std::string_view("-_/.").find(Each) != std::string_view::npos) {
            Address += Each;
        } else {
            Address += '%';
            Address += Digits[Byte >> 4U];
            Address += Digits[Byte & 15U];
        }
    }
    return Address;
}

class PlayerProcess final : public PlayerComponent {
  public:
    PlayerProcess(const std::string& Program, const std::string& Folder);
    ~PlayerProcess() override;
    PlayerProcess(const PlayerProcess&) = delete;
    PlayerProcess& operator=(const PlayerProcess&) = delete;

    std::int32_t DriverState(std::int32_t Window) override {
        Player->setTimeout(DriverMs);
        const auto Patience = [this] { Player->setTimeout(AnswerMs); };
        auto Reply = Player->DriverState(Window);
        Reply.waitForFinished();
        Patience();
        return Checked(Reply).value();
    }
    std::int32_t PlayPosition() override { return Checked(Player->PlayPosition()).value(); }
    void PlayForward() override { Checked(Player->PlayForward()); }
    void PlayReverse() override { Checked(Player->PlayReverse()); }
    std::int32_t PlayStatus() override { return Checked(Player->PlayStatus()).value(); }
    void UTurn() override { Checked(Player->UTurn()); }
    void Stop() override { Checked(Player->Stop()); }
    void Continue() override { Checked(Player->Continue()); }
    void Pause() override { Checked(Player->Pause()); }
    void PauseStart() override { Checked(Player->PauseStart()); }
    void Load(std::int32_t Bits, std::int32_t Channels, std::int32_t Freq, std::int32_t Length,
              const std::vector<std::int32_t>& Left,
              const std::vector<std::int32_t>& Right) override {
        Checked(Player->Load(Bits, Channels, Freq, Length, WordList(Left), WordList(Right)));
    }
    void MemoryBytes(std::int32_t Bytes) override { Checked(Player->MemoryBytes(Bytes)); }
    void Loop(bool On) override { Checked(Player->Loop(On ? -1 : 0)); }
    void TempoForward(float Tempo) override { Checked(Player->TempoForward(Tempo)); }
    void TempoReverse(float Tempo) override { Checked(Player->TempoReverse(Tempo)); }
    void TempDir(const std::string& Folder) override {
        Checked(Player->TempDir(QByteArray::fromStdString(Folder)));
    }
    void ReleaseFiles() override { Checked(Player->ReleaseFiles()); }
    void PlayForwardFrom(std::int32_t Offset) override { Checked(Player->PlayForwardFrom(Offset)); }
    void PlayReverseFrom(std::int32_t Offset) override { Checked(Player->PlayReverseFrom(Offset)); }
    void FilesEntered(const std::vector<EnteredFile>& Files) override {
        QByteArrayList Names;
        QList<qlonglong> Identities;
        for (const EnteredFile& Each : Files) {
            Names.append(QByteArray::fromStdString(Each.Name));
            Identities.append({static_cast<qlonglong>(Each.Identity.Device),
                               static_cast<qlonglong>(Each.Identity.Inode), Each.Identity.Bytes,
                               Each.Identity.ChangedNs});
        }
        Checked(Player->FilesEntered(Names, Identities));
    }
    [[nodiscard]] bool IsAlive() const override { return Process->IsRunning(); }
    [[nodiscard]] int Id() const { return static_cast<int>(Process->Id()); }

  private:
    template <class Reply>
    Reply Checked(Reply Answer) {
        Answer.waitForFinished();
        if (!Answer.isError())
            return Answer;
        // The connection ends a moment before the process does.
        const bool Ended = !IsAlive() || !Player->connection().isConnected();
        throw PlayerGone(Ended ? "The player has ended.\nThe next Play starts it anew."
                               : "The player does not answer.\nThe next Play starts it anew.");
    }

    std::unique_ptr<CompanionProcess> Process;
    QString ConnectionName;
    std::unique_ptr<OrgQuorilQuorilWaveEditorDllInterface> Player;
};

PlayerProcess::PlayerProcess(const std::string& Program, const std::string& Folder) {
    qDBusRegisterMetaType<QByteArrayList>(); // as the names of files go
    static std::atomic<int> Number{0};
    const std::string Name = "player" + std::to_string(++Number) + ".socket";
    ConnectionName = QStringLiteral("quoril-player-%1").arg(Number.load());
    // A socket's name is short: a long folder is named by way of a descriptor.
    const Descriptor Opened(Folder.size() > LongestFolder
                                ? ::open(Folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)
                                : -1);
    const std::string Own = std::to_string(::getpid());
    const std::string Socket =
        (Opened.IsOpen() ? "/proc/" + Own + "/fd/" + std::to_string(Opened.Get()) : Folder) + "/" +
        Name;
    const std::string Address = AddressOf(Socket);
    Process = std::make_unique<CompanionProcess>(std::vector<std::string>{Program, Address, Own},
                                                 StartMs);
    QDBusConnection Connection =
        QDBusConnection::connectToPeer(QString::fromStdString(Address), ConnectionName);
    // Nobody else needs the socket's name from here on, and the folder can go.
    (void)DeleteFileAnyway(Folder + "/" + Name);
    if (!Connection.isConnected()) {
        QDBusConnection::disconnectFromPeer(ConnectionName);
        throw Failure("The player can not be reached\n" +
                      Connection.lastError().message().toStdString());
    }
    Player = std::make_unique<OrgQuorilQuorilWaveEditorDllInterface>(
        QString(), QStringLiteral("/Player"), Connection);
    Player->setTimeout(AnswerMs);
    QObject::connect(Player.get(), &OrgQuorilQuorilWaveEditorDllInterface::MsgBoxOb, qApp,
                     [this](const QByteArray& Prompt, const QByteArray& Title) {
                         // A box runs an event loop, in which this object may end.
                         if (const auto Told = MsgBoxOb)
                             Told(Prompt.toStdString(), Title.toStdString());
                     });
}

PlayerProcess::~PlayerProcess() {
    Player.reset();
    QDBusConnection::disconnectFromPeer(ConnectionName);
}

} // namespace

std::unique_ptr<PlayerComponent> StartPlayerProcess(const std::string& Program,
                                                    const std::string& Folder) {
    return std::make_unique<PlayerProcess>(Program, Folder);
}

std::unique_ptr<PlayerComponent> StartPlayerProcess() {
    return StartPlayerProcess(FolderOfPath(ProgramFile()) + "/quoril-player", SessionDir);
}

int PlayerProcessId(const PlayerComponent& Component) {
    const auto* const Started = dynamic_cast<const PlayerProcess*>(&Component);
    return Started == nullptr ? -1 : Started->Id();
}

} // namespace quoril
