// The help: where its file is, the window that shows it, and the key F1.
#pragma once

#include <string>

class QObject;
class QWidget;

namespace quoril {

class HelpViewerFrm;
class WaveEditor_Frm;

/// The compiled help. Set by HelpSetUp when it is empty, cleared by HelpTakeDown.
extern std::string HelpFileName;

/// The help of a program in that folder: beside the program, as in a build tree, or where an
/// installation has it. Gives the first place when there is none in either.
[[nodiscard]] std::string HelpFileBeside(const std::string& ExecutableFolder);
/// The same for a page as a browser reads it, such as "index.html".
[[nodiscard]] std::string HelpPageBeside(const std::string& ExecutableFolder,
                                         const std::string& Page);

/// Registers the entries of `Help_Mnu`, and makes F1 in any window of the program open the topic of
/// what it is pressed on, until the main window is gone.
void HelpSetUp(WaveEditor_Frm& Window);
/// Closes the help window and forgets the file.
void HelpTakeDown();

/// Opens the help window at a topic, or brings it to the front. When the help can not be read, a
/// message says why, and the result is false.
bool ShowHelp(int Number);
/// The help window; null while none is open.
[[nodiscard]] HelpViewerFrm* HelpWindow();

/// The topic of a control: its own, or that of the nearest window or panel around it that has one;
/// the overview without any.
[[nodiscard]] int HelpContextAt(const QObject* Control);

} // namespace quoril
