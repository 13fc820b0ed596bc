// The window that tells what the sound system lacks.
#pragma once

#include <QDialog>

namespace quoril {

class CheckDx7Frm final : public QDialog {
  public:
    explicit CheckDx7Frm(QWidget* Parent);
};

/// Shows the window once, by chance, to a user whose sound does without a sound server: for the
/// entry sequence.
void OfferDx7Check();

} // namespace quoril
