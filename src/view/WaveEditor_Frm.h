// The main window.
#pragma once

#include "view/CommandTable.h"

#include <QMainWindow>

namespace quoril {

class WaveEditor_Frm : public QMainWindow {
  public:
    explicit WaveEditor_Frm(QWidget* Parent = nullptr);

    CommandTable Commands;
};

} // namespace quoril
