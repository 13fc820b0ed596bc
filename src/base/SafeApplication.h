// The application of the windows, which no failure ends.
#pragma once

#include <QApplication>

namespace quoril {

/// What the handler of an event throws is told to the user, and the program goes on: the toolkit
/// would end the process, and unsaved work with it. Commands catch what fails in them; this is for
/// what was forgotten.
class SafeApplication final : public QApplication {
  public:
    using QApplication::QApplication;
    bool notify(QObject* Receiver, QEvent* Event) override;
};

} // namespace quoril
