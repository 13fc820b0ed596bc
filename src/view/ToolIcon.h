// The program's own drawings for buttons and menu entries.
#pragma once

#include <QIcon>
#include <QString>

namespace quoril {

/// The drawing of that key (see icons/), sharp at every size, in the colours of the theme in use:
/// its lines follow the text colour, and it pales where the control is disabled. A key without a
/// drawing gives an icon that is null.
[[nodiscard]] QIcon ToolIcon(const QString& Key);

} // namespace quoril
