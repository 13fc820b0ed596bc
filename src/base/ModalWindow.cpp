#include "base/ModalWindow.h"

#include "base/ProgressReport.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QPointer>
#include <QStyle>

namespace quoril {

namespace {

QPointer<QWidget>& KnownMainWindow() {
    static QPointer<QWidget> Window;
    return Window;
}

/// Makes a dialog that is one column wide enough for its title, which the window manager would cut
/// off otherwise.
void MakeRoomForTitle(QDialog& Dialog) {
    auto* const Column = qobject_cast<QBoxLayout*>(Dialog.layout());
    if (Column == nullptr || Column->direction() != QBoxLayout::TopToBottom)
        return;
    QFont TitleFont = Dialog.font();
    TitleFont.setBold(true);
    constexpr int FrameButtons = 5; // each about as wide as the title is high
    const int Frame = FrameButtons * Dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QMargins Margins = Column->contentsMargins();
    Column->addStrut(QFontMetrics(TitleFont).horizontalAdvance(Dialog.windowTitle()) + Frame -
                     Margins.left() - Margins.right());
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
    MakeRoomForTitle(Dialog);
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
