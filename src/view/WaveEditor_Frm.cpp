#include "view/WaveEditor_Frm.h"

namespace quoril {

WaveEditor_Frm::WaveEditor_Frm(QWidget* Parent) : QMainWindow(Parent) {}

} // namespace quoril
