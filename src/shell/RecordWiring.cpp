#include "shell/RecordWiring.h"

#include "base/CommandFailure.h"
#include "base/ModalWindow.h"
#include "platform/DirectXSetup.h"
#include "playback/PlayMod.h"
#include "recording/AlsaCapture.h"
#include "recording/PulseCapture.h"
#include "recording/Recd_Frm.h"
#include "recording/RecordSession.h"
#include "recording/VolumePanel.h"
#include "view/WaveEditor_Frm.h"

#include <utility>

namespace quoril {

namespace {

bool SoundServerIsThere() {
    constexpr std::int32_t LeastVersion = 7;
    const auto Found = DirectXSetupGetVersion();
    return Found && Found->Known && Found->Version >= LeastVersion;
}

} // namespace

struct RecordCommands::Systems {
    PulseCapture Server;
    AlsaCapture Plain;
};

RecordCommands::RecordCommands(WaveEditor_Frm& MainWindow)
    : Window(MainWindow),
      Real(std::make_unique<Systems>()), Around{Real->Server, Real->Plain, SoundServerIsThere} {}

RecordCommands::RecordCommands(WaveEditor_Frm& MainWindow, RecordSurroundings Given)
    : Window(MainWindow), Around(std::move(Given)) {}

RecordCommands::~RecordCommands() = default;

void RecordCommands::Record() {
    if (Session != nullptr)
        return;
    RecordSession Asked(Around);
    if (!Asked.InitilizeForm())
        return;
    // What plays would be recorded, and could not be stopped while the main window is away.
    if (PlayIsOn())
        PlayCommand(PlayCodeStop, 0);
    Asked.LoadSettings();
    Session = &Asked;
    struct Closing {
        RecordCommands& Of;
        ~Closing() {
            Of.Shown = nullptr;
            Of.Session = nullptr;
        }
    } const AtEnd{*this};
    ShowWindow(Asked);
}

void RecordCommands::ShowWindow(RecordSession& Asked) {
    Recd_Frm Dialog(Asked);
    Shown = &Dialog;
    Dialog.Leaving = [this] { Window.show(); };
    Dialog.OpenEngine();
    Window.hide();
    RunModal(Dialog);
    if (Dialog.DoneClicked)
        Window.Refresh_Wave_View();
}

bool RecordCommands::HoldsTake() const noexcept {
    return Session != nullptr && Session->HoldsTake();
}

void RecordCommands::TakeDown() {
    if (Shown == nullptr)
        return;
    Shown->Unload();
    Shown->hide();
}

void WireRecordCommands(WaveEditor_Frm& Window, RecordCommands& Recording) {
    Window.Commands.Set("Record_Mnu",
                        [&Recording] { RunCommand({}, [&Recording] { Recording.Record(); }); });
    Window.Commands.Set("SoundVolMnu",
                        [] { OpenVolumePanel(VolumePanelFolders(), VolumePage::Whole); });
}

} // namespace quoril
