// quoril-player SOCKET EDITOR: plays for the editor with the process number EDITOR, which talks to
// it over the socket that it makes, and which holds the other end of its standard input. It ends
// when the editor does.
#include "PlayerAdaptor.h"
#include "player/AlsaOutput.h"
#include "player/PulseOutput.h"
#include "player/QuorilWaveEditorDll.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusServer>
#include <QSocketNotifier>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quoril {
namespace {

std::unique_ptr<SoundOutput> MakeOutput(const OutputNotice& Notice) {
    if (auto Server = MakePulseOutput(Notice))
        return Server;
    return MakeAlsaOutput(Notice);
}

/// The system ends this process with the editor; and the editor may have ended already.
void EndWithEditor(pid_t Editor) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != Editor)
        ::_exit(0);
}

/// The file of a socket's address "unix:path=...", in which strange bytes stand as % and two
/// digits.
std::string SocketFile(const std::string& Address) {
    std::string File;
    for (std::size_t i = Address.find('=') + 1; i < Address.size(); ++i) {
        if (Address[i] == '%' && i + 2 < Address.size()) {
            File += static_cast<char>(std::stoi(Address.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            File += Address[i];
        }
    }
    return File;
}

int PlayerRun(int ArgumentCount, char** Arguments) {
    if (ArgumentCount != 3) {
        std::fputs("This program is started by the editor.\n", stderr);
        return 2;
    }
    EndWithEditor(static_cast<pid_t>(std::strtol(Arguments[2], nullptr, 10)));
    std::signal(SIGPIPE, SIG_IGN);
    const QCoreApplication Application(ArgumentCount, Arguments);
    std::setlocale(LC_NUMERIC, "C");

    qDBusRegisterMetaType<QByteArrayList>(); // as the names of files come
    QuorilWaveEditorDll Component(MakeOutput);
    new PlayerAdaptor(&Component);
    QDBusServer Server(QString::fromLocal8Bit(Arguments[1]));
    if (!Server.isConnected()) {
        std::fputs(qPrintable(Server.lastError().message() + QLatin1Char('\n')), stderr);
        return 1;
    }
    // The socket is for this user alone; the library has opened it to everybody.
    if (::chmod(SocketFile(Arguments[1]).c_str(), S_IRUSR | S_IWUSR) != 0)
        return 1;
    QObject::connect(&Server, &QDBusServer::newConnection, &Component,
                     [&Component](const QDBusConnection& Connection) {
                         QDBusConnection Peer = Connection;
                         Peer.registerObject(QStringLiteral("/Player"), &Component);
                     });
    // The editor holds the other end for as long as it lives, and closes it to end the player.
    QSocketNotifier EditorEnd(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&EditorEnd, &QSocketNotifier::activated, &Application, [] { ::_exit(0); });
    // The editor waits for this line.
    std::fputs("ready\n", stdout);
    std::fflush(stdout);
    return QCoreApplication::exec();
}

} // namespace
} // namespace quoril

int main(int argc, char** argv) {
    return quoril::PlayerRun(argc, argv);
}
