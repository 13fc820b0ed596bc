#include "base/ModalWindow.h"

#include "base/ProgressReport.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QGridLayout>
#include <QPointer>
#include <QStyle>
#include <algorithm>

namespace quoril {

namespace {

QPointer<QWidget>& KnownMainWindow() {
    static QPointer<QWidget> Window;
    return Window;
}

/// Makes a dialog wide enough for its title, which the window manager would cut off otherwise.
void MakeRoomForTitle(QDialog& Dialog) {
    QFont TitleFont = Dialog.font();
    TitleFont.setBold(true);
    constexpr int FrameButtons = 5; // each about as wide as the title is high
    const int Frame = FrameButtons * Dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    constexpr int Most = 640; // a screen of 800 has room for it
    const int Width =
        std::min(QFontMetrics(TitleFont).horizontalAdvance(Dialog.windowTitle()) + Frame, Most);
    if (auto* const Column = qobject_cast<QBoxLayout*>(Dialog.layout());
        Column != nullptr && Column->direction() == QBoxLayout::TopToBottom) {
        const QMargins Margins = Column->contentsMargins();
        Column->addStrut(Width - Margins.left() - Margins.right());
    } else if (auto* const Grid = qobject_cast<QGridLayout*>(Dialog.layout())) {
        const QMargins Margins = Grid->contentsMargins();
        auto* const Strut = new QSpacerItem(Width - Margins.left() - Margins.right(), 0);
        Grid->addItem(Strut, Grid->rowCount(), 0, 1, std::max(Grid->columnCount(), 1));
    }
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
