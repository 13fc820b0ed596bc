// Copy, cut, delete and paste between the menu and the core.
#pragma once

#include "edit/CopyPasteCommands.h"

namespace quoril {

class WaveEditor_Frm;

/// The windows that these commands need.
class CopyPasteWindows final : public CopyPasteView {
  public:
    void ShowCopied(const CopiedLines& Lines) override;
};

/// Registers the commands; the object must outlive the window's use of them.
void WireCopyPasteCommands(WaveEditor_Frm& Window, CopyPasteClass& Pasting);

} // namespace quoril
