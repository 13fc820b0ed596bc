#include "base/ModalWindow.h"

#include "base/ProgressReport.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>

namespace quoril {

namespace {

QPointer<QWidget>& KnownMainWindow() {
    static QPointer<QWidget> Window;
    return Window;
}

} // namespace

void SetMainWindow(QWidget* Window) {
    KnownMainWindow() = Window;
}

QWidget* MainWindow() {
    return KnownMainWindow();
}

QWidget* WindowInUse() {
    if (QApplication::activeModalWidget() != nullptr)
        return QApplication::activeModalWidget();
    return MainWindow() != nullptr && MainWindow()->isVisible() ? MainWindow() : nullptr;
}

int RunModal(QDialog& Dialog) {
    const ProgressSuspension NoProgress;
    const OrdinaryPointer NoHourglass;
    Dialog.setWindowModality(Qt::ApplicationModal);
    return Dialog.exec();
}

OrdinaryPointer::OrdinaryPointer() : Changed(QGuiApplication::overrideCursor() != nullptr) {
    if (Changed)
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
}

OrdinaryPointer::~OrdinaryPointer() {
    if (Changed)
        QGuiApplication::restoreOverrideCursor();
}

} // namespace quoril
