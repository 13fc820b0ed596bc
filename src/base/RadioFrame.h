// A frame of radio buttons in a dialog.
#pragma once

#include <span>

class QButtonGroup;
class QDialog;
class QLayout;

namespace quoril {

/// From now on the Tab key comes to the option of the group that is chosen, whence the arrows go on
/// to the others. Called before an option is chosen.
void TabToTheChosen(QButtonGroup& Group);

/// Adds a frame with a heading and a button for each caption to `Place`, a layout of the dialog.
/// The buttons are an array of controls `Name`, whose elements, also their numbers in the group,
/// begin with `First`. None is checked. An "&" in a caption stands before its access key.
QButtonGroup* AddRadioFrame(QDialog& Dialog, QLayout& Place, const char* Heading, const char* Name,
                            std::span<const char* const> Captions, int First);

} // namespace quoril
