#include "view/WaveEditor_Frm.h"

#include <QApplication>

int main(int argc, char** argv) {
    const QApplication Application(argc, argv);
    quoril::WaveEditor_Frm Window;
    Window.show();
    return QApplication::exec();
}
