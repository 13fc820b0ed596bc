#include "shell/WEditor.h"

int main(int argc, char** argv) {
    return quoril::WEditorRun(argc, argv);
}
