#include "shell/HelpViewer.h"

#include "base/Failure.h"
#include "base/ModalWindow.h"
#include "base/MsgBoxMod.h"
#include "platform/FileSystem.h"
#include "platform/ProgramPlaces.h"
#include "settings/STD1.h"
#include "shell/HelpTopics.h"
#include "shell/HelpViewerFrm.h"
#include "view/WaveEditor_Frm.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

namespace quoril {

std::string HelpFileName;

namespace {

constexpr const char* HelpFile = "quoril-wave-editor.qch";
/// A control says with this property that it stands for a topic whatever its name.
constexpr const char* ContextProperty = "HelpContextID";

QPointer<HelpViewerFrm>& KnownWindow() {
    static QPointer<HelpViewerFrm> Window;
    return Window;
}

/// The help stands over the window in use: a modal dialog lets through only what belongs to it.
/// When that dialog is closed, the help goes on over the main window.
void PutOver(QWidget* Owner, HelpViewerFrm* Help) {
    if (Help->parentWidget() != Owner)
        Help->setParent(Owner, Qt::Window);
    const auto* Dialog = qobject_cast<QDialog*>(Owner);
    if (Dialog == nullptr)
        return;
    QObject::connect(Dialog, &QDialog::finished, Help, [Dialog, Help] {
        if (Help->parentWidget() != Dialog)
            return;
        const bool Shown = Help->isVisible();
        Help->setParent(MainWindow(), Qt::Window);
        Help->setVisible(Shown);
    });
}

/// In a menu, the entry that is highlighted; elsewhere the control itself.
template <class Menu>
const QObject* HighlightedIn(const Menu* Where) {
    const QAction* Entry = Where->activeAction();
    return Entry != nullptr && !Entry->objectName().isEmpty() ? static_cast<const QObject*>(Entry)
                                                              : Where;
}
const QObject* PlaceOf(const QObject* Control) {
    if (const auto* Popup = qobject_cast<const QMenu*>(QApplication::activePopupWidget()))
        return HighlightedIn(Popup);
    if (const auto* Bar = qobject_cast<const QMenuBar*>(Control))
        return HighlightedIn(Bar);
    return Control;
}

/// Takes F1 before the menu bar's own key for it does.
class HelpKeyFilter final : public QObject {
  public:
    using QObject::QObject;
    bool eventFilter(QObject* Receiver, QEvent* Event) override {
        // The help goes with the main window, which is hidden long before the end when a large
        // document has to be taken down.
        if (Event->type() == QEvent::Hide && Receiver == parent() && !Event->spontaneous())
            delete KnownWindow();
        if (Event->type() != QEvent::KeyPress && Event->type() != QEvent::ShortcutOverride)
            return false;
        auto* Key = static_cast<QKeyEvent*>(Event);
        if (Key->key() != Qt::Key_F1 || Key->modifiers() != Qt::NoModifier ||
            !Receiver->isWidgetType())
            return false;
        Event->accept();
        if (Event->type() == QEvent::KeyPress && !Key->isAutoRepeat())
            HelpFor(Receiver);
        return true;
    }

  private:
    static void HelpFor(const QObject* Receiver) {
        const int Number = HelpContextAt(PlaceOf(Receiver));
        while (QWidget* Popup = QApplication::activePopupWidget())
            if (!Popup->close())
                break;
        ShowHelp(Number);
    }
};

/// A file of the help by its place beside the program or in an installation, the first if in
/// neither.
std::string BesideOrInstalled(const std::string& ExecutableFolder, const std::string& File) {
    const std::string Beside = ExecutableFolder + "/" + File;
    const std::string Installed =
        FolderOfPath(ExecutableFolder) + "/share/quoril-wave-editor/" + File;
    return !FileExists(Beside) && FileExists(Installed) ? Installed : Beside;
}

} // namespace

std::string HelpFileBeside(const std::string& ExecutableFolder) {
    return BesideOrInstalled(ExecutableFolder, HelpFile);
}

std::string HelpPageBeside(const std::string& ExecutableFolder, const std::string& Page) {
    return BesideOrInstalled(ExecutableFolder, "help/pages/" + Page);
}

void HelpSetUp(WaveEditor_Frm& Window) {
    if (HelpFileName.empty())
        HelpFileName = HelpFileBeside(FolderOfPath(ProgramFile()));
    // The entries set a topic on a hidden control and press F1 on it; the key does the rest.
    auto* HelpDummeyPic = new QWidget(&Window);
    HelpDummeyPic->setObjectName(QStringLiteral("HelpDummeyPic"));
    HelpDummeyPic->hide();
    for (int Index = 0; Index <= 3; ++Index) {
        const std::string Name = "Help_Mnu_" + std::to_string(Index);
        Window.Commands.Set(Name, [HelpDummeyPic, Number = HelpContextOf(Name)] {
            HelpDummeyPic->setProperty(ContextProperty, Number);
            QKeyEvent F1(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
            QApplication::sendEvent(HelpDummeyPic, &F1);
        });
    }
    Window.RefreshCommands();
    qApp->installEventFilter(new HelpKeyFilter(&Window));
}

void HelpTakeDown() {
    delete KnownWindow();
    HelpFileName.clear();
}

HelpViewerFrm* HelpWindow() {
    return KnownWindow();
}

bool ShowHelp(int Number) {
    QWidget* Owner = WindowInUse();
    HelpViewerFrm* Help = KnownWindow();
    if (Help == nullptr) {
        auto New = std::make_unique<HelpViewerFrm>();
        try {
            New->Load(HelpFileName, SessionDir.empty() ? GetTempPathA() : SessionDir);
        } catch (const Failure& What) {
            MsgBox(What.what(), "Help");
            return false;
        }
        Help = New.release();
        KnownWindow() = Help;
    }
    if (Owner != Help)
        PutOver(Owner, Help);
    Help->ShowPage(HelpPageOf(Number));
    Help->show();
    Help->raise();
    Help->activateWindow();
    return true;
}

int HelpContextAt(const QObject* Control) {
    for (const QObject* Each = Control; Each != nullptr; Each = Each->parent()) {
        if (const int Given = Each->property(ContextProperty).toInt(); Given != 0)
            return Given;
        if (const int Named = HelpContextOf(Each->objectName().toStdString()); Named != 0)
            return Named;
        // A dialog or a menu without a topic is no part of the main window's.
        if (Each->isWidgetType() && static_cast<const QWidget*>(Each)->isWindow())
            break;
    }
    return HelpOverview;
}

} // namespace quoril
