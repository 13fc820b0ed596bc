// editor_stand_in PLAYER FOLDER: starts a player as the editor does, says its process number, and
// waits to be killed.
#include "playback/PlayerProcess.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication Application(argc, argv);
    const auto Player = quoril::StartPlayerProcess(argv[1], argv[2]);
    std::printf("%d\n", quoril::PlayerProcessId(*Player));
    std::fflush(stdout);
    return QCoreApplication::exec();
}
