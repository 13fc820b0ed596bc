// The window that confirms a copy.
#pragma once

#include "edit/CopyPasteCommands.h"

#include <QDialog>

namespace quoril {

class CopiedFrm final : public QDialog {
  public:
    CopiedFrm(const CopiedLines& Lines, QWidget* Parent);
};

} // namespace quoril
