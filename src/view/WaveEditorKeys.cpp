// The keys of the main window.
#include "base/CommandFailure.h"
#include "base/ProgressReport.h"
#include "view/MainKeys.h"
#include "view/WaveEditor_Frm.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"

#include <QAction>
#include <QKeyEvent>

#include <optional>

namespace quoril {

namespace {

std::optional<MainKey> MainKeyOf(int Key) {
    switch (Key) {
    case Qt::Key_Escape:
        return MainKey::Escape;
    case Qt::Key_X:
        return MainKey::X;
    case Qt::Key_Z:
        return MainKey::Z;
    case Qt::Key_F2:
        return MainKey::F2;
    case Qt::Key_F3:
        return MainKey::F3;
    case Qt::Key_F4:
        return MainKey::F4;
    case Qt::Key_F5:
        return MainKey::F5;
    case Qt::Key_Up:
        return MainKey::Up;
    case Qt::Key_Down:
        return MainKey::Down;
    case Qt::Key_Left:
        return MainKey::Left;
    case Qt::Key_Right:
        return MainKey::Right;
    case Qt::Key_Home:
        return MainKey::Home;
    case Qt::Key_End:
        return MainKey::End;
    case Qt::Key_B:
        return MainKey::B;
    case Qt::Key_S:
        return MainKey::S;
    case Qt::Key_M:
        return MainKey::M;
    default:
        return std::nullopt;
    }
}

} // namespace

void WaveEditor_Frm::keyPressEvent(QKeyEvent* Event) {
    if (Event->key() == Qt::Key_Shift)
        PanelMouse->HideLines();
    const std::optional<MainKey> Key = MainKeyOf(Event->key());
    // Keys with Alt belong to the menus and the desktop.
    if (!Key || (Event->modifiers() & (Qt::AltModifier | Qt::MetaModifier))) {
        QMainWindow::keyPressEvent(Event);
        return;
    }
    if (ProgressFrm->IsOn())
        return;
    const auto RunEntry = [this](const std::string& Name) {
        if (Entry(Name)->isEnabled())
            RunCommand(Name);
    };
    quoril::RunCommand({}, [&] {
        MainKeyPressed(*Key, Event->modifiers() & Qt::ControlModifier,
                       Event->modifiers() & Qt::ShiftModifier,
                       {PanelMouse->Mouse, Wave_Pic[1]->ScaleWidth(), RunEntry});
        PanelMouse->CommandRun();
    });
}

} // namespace quoril
