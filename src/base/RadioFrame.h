// A frame of radio buttons in a dialog.
#pragma once

#include <span>

class QButtonGroup;
class QDialog;
class QLayout;

namespace quoril {

/// Adds a frame with a heading and a button for each caption to `Place`, a layout of the dialog.
/// The buttons are an array of controls `Name`, whose elements, also their numbers in the group,
/// begin with `First`. None is checked.
QButtonGroup* AddRadioFrame(QDialog& Dialog, QLayout& Place, const char* Heading, const char* Name,
                            std::span<const char* const> Captions, int First);

} // namespace quoril
