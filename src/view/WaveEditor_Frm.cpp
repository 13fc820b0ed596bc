#include "view/WaveEditor_Frm.h"

#include "base/CommandFailure.h"
#include "base/ModalWindow.h"
#include "base/ProgramTitle.h"
#include "base/ProgressReport.h"
#include "base/QtText.h"
#include "base/ViewState.h"
#include "view/BandDisplay.h"
#include "view/ColorSettings.h"
#include "view/ToolIcon.h"
#include "view/ValueLabel.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QStatusTipEvent>
#include <QToolButton>
#include <QUrl>
#include <QWindow>

namespace quoril {

WaveEditor_Frm::WaveEditor_Frm(QWidget* Parent) : QMainWindow(Parent) {
    setObjectName(QStringLiteral("WaveEditor_Frm"));
    setWindowIcon(ToolIcon(QStringLiteral("Program")));
    setAcceptDrops(true);
    SetMainWindow(this);
    BuildMenus();
    BuildPanels();
    BuildToolbars();
    BuildStatusBar();
    RegisterOwnCommands();
    ApplyColorSettings();
    SetDocumentTitle("New.wav");
    SetMenu_To_DefaultFormat();
    UndoMenuChanged({});
    SetEntryChecked("Bookmark_Show_Mnu", true);
    SetRecentFiles({});
    RefreshDisplayToggle();
    SetViewListener(this);
    SetUndoListener(this);
    for (const char* Key : {"Play", "PlayRev", "Pause", "Stop", "UTurn"})
        SetEntryEnabled(std::string("PlayToolbar_") + Key, false);
    SetEntryEnabled("Draw_Mnu_2", false);
    RefreshCommands();
    Wave_Pic[1]->setFocus();
    resize(1000, 640);
}

WaveEditor_Frm::~WaveEditor_Frm() {
    if (CurrentViewListener() == this)
        SetViewListener(nullptr);
    if (CurrentUndoListener() == this)
        SetUndoListener(nullptr);
}

void WaveEditor_Frm::RunCommand(const std::string& Name) {
    // A menu in the desktop's panel and assistive programs reach entries past every dialog.
    if (ProgressFrm->IsOn() || QApplication::activeModalWidget() != nullptr)
        return;
    quoril::RunCommand({}, [&] {
        Commands.Run(Name);
        PanelMouse->CommandRun();
    });
}

void WaveEditor_Frm::SetDocumentTitle(const std::string& WaveFileName) {
    setWindowTitle(ShownText(WaveFileName + " [" + ProgramTitle + "]"));
}

void WaveEditor_Frm::StatusGuide(const std::string& Message) {
    StatusPanels.at("UserGuide")->setText(ShownText(Message));
}

void WaveEditor_Frm::ApplyColorSettings() {
    const std::int32_t Back = ColorOf(WaveColor::NormalBackColor);
    const std::int32_t Text = ColorOf(WaveColor::WaveFormNormalColor);
    for (const int Channel : {1, 2}) {
        Wave_Pic.at(std::size_t(Channel))->SetBackColor(Back);
        Wave_Pic.at(std::size_t(Channel))
            ->PlayPosShp->SetColor(ColorOf(WaveColor::PlayPosIndiColor));
    }
    HScrollPic->SetBackColor(ColorOf(WaveColor::ScaleBackColor));
    DispFrqVolPic->SetBackColor(Back);
    Bands->Clear();
    for (const std::size_t Index : {0U, 1U, 2U}) {
        SelectLbl.at(Index)->SetColors(ColorOf(WaveColor::SelectBackColor), Text);
        ViewLbl.at(Index)->SetColors(Back, Text);
    }
    for (const std::size_t Index : {1U, 2U}) {
        DisplayPosLbl.at(Index)->SetColors(Back, Text);
        DisplayPos2Lbl.at(Index)->SetColors(Back, Text);
    }
    PlayPosLbl->SetColors(Back, ColorOf(WaveColor::PlayPosIndiColor));
    MouseMode = 0;
    ViewMouseMode = 0;
    RefreshMousePointer();
}

bool WaveEditor_Frm::event(QEvent* Event) {
    // Menus tell the hint of the highlighted entry this way.
    if (Event->type() == QEvent::StatusTip) {
        StatusGuide(static_cast<QStatusTipEvent*>(Event)->tip().toUtf8().toStdString());
        return true;
    }
    return QMainWindow::event(Event);
}

bool WaveEditor_Frm::eventFilter(QObject* Watched, QEvent* Event) {
    if (Watched == Client && Event->type() == QEvent::Resize)
        RefreshSafely();
    if (Event->type() == QEvent::MouseButtonPress) {
        const std::string Command = Watched->property("ClickCommand").toString().toStdString();
        if (!Command.empty())
            RunCommand(Command);
    }
    // Between two controls nothing lies under the mouse that could be helped with.
    if (Event->type() == QEvent::Enter)
        StatusGuide(Watched->property("StatusHint").toString().toStdString());
    if (Event->type() == QEvent::Leave)
        StatusGuide("");
    return QMainWindow::eventFilter(Watched, Event);
}

void WaveEditor_Frm::showEvent(QShowEvent* Event) {
    QMainWindow::showEvent(Event);
    // Another screen can have another scale, and the pictures are made for one.
    connect(windowHandle(), &QWindow::screenChanged, this, &WaveEditor_Frm::RefreshSafely,
            Qt::UniqueConnection);
}

void WaveEditor_Frm::RefreshSafely() {
    quoril::RunCommand({}, [this] { Refresh_Wave_View(); });
}

void WaveEditor_Frm::resizeEvent(QResizeEvent* Event) {
    QMainWindow::resizeEvent(Event);
    if (PlaceChanged)
        PlaceChanged();
}

void WaveEditor_Frm::moveEvent(QMoveEvent* Event) {
    QMainWindow::moveEvent(Event);
    if (PlaceChanged)
        PlaceChanged();
}

void WaveEditor_Frm::changeEvent(QEvent* Event) {
    QMainWindow::changeEvent(Event);
    if (Event->type() == QEvent::WindowStateChange && PlaceChanged)
        PlaceChanged();
}

void WaveEditor_Frm::closeEvent(QCloseEvent* Event) {
    if (UnloadWanted && !UnloadWanted())
        Event->ignore();
    else
        Event->accept();
}

void WaveEditor_Frm::dragEnterEvent(QDragEnterEvent* Event) {
    if (FileDropped && Event->mimeData()->hasUrls())
        Event->acceptProposedAction();
}

void WaveEditor_Frm::dropEvent(QDropEvent* Event) {
    for (const QUrl& Url : Event->mimeData()->urls()) {
        if (!Url.isLocalFile())
            continue;
        Event->acceptProposedAction();
        // The bytes of the name, which need not be text.
        FileDropped(
            QByteArray::fromPercentEncoding(Url.path(QUrl::FullyEncoded).toLatin1()).toStdString());
        return;
    }
}

} // namespace quoril
