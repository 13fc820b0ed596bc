#include "shell/CopyPasteWiring.h"

#include "base/ModalWindow.h"
#include "shell/CopiedFrm.h"
#include "view/WaveEditor_Frm.h"

namespace quoril {

void CopyPasteWindows::ShowCopied(const CopiedLines& Lines) {
    CopiedFrm Dialog(Lines, WindowInUse());
    RunModal(Dialog);
}

void WireCopyPasteCommands(WaveEditor_Frm& Window, CopyPasteClass& Pasting) {
    CommandTable& Commands = Window.Commands;
    Commands.Set("Edit_Copy_Mnu", [&Pasting] { Pasting.Copy(); });
    Commands.Set("Edit_CopyF_Mnu", [&Pasting] { Pasting.CopyFile(); });
    Commands.Set("Edit_Cut_Mnu", [&Pasting] { Pasting.Cut(); });
    Commands.Set("Edit_Delete_Mnu", [&Pasting] { Pasting.Delete(); });
    for (std::int32_t Mode = PasteReplace; Mode <= PasteCrossFade; ++Mode)
        Commands.Set("Edit_Paste_Mnu_" + std::to_string(Mode),
                     [&Pasting, Mode] { Pasting.Paste(Mode); });
}

} // namespace quoril
