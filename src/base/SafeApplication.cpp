#include "base/SafeApplication.h"

#include "base/CommandFailure.h"

namespace quoril {

bool SafeApplication::notify(QObject* Receiver, QEvent* Event) {
    bool Handled = true;
    RunCommand({}, [&] { Handled = QApplication::notify(Receiver, Event); });
    return Handled;
}

} // namespace quoril
