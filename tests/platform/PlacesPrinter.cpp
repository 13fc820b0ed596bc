// Prints where it lies and where its settings go, each with a zero byte at its end; for the tests,
// which put it into all sorts of places. With an argument it deletes its own file first.
#include "platform/ProgramPlaces.h"

#include <cstdio>
#include <unistd.h>

int main(int argc, char** argv) {
    if (argc > 1 && ::unlink(argv[0]) != 0)
        return 1;
    std::printf("%s%c%s%c", quoril::ProgramFile().c_str(), '\0',
                quoril::FolderForSettings(quoril::FolderOfProgram()).c_str(), '\0');
    return 0;
}
