// The names of the document's file.
#pragma once

#include <string>

namespace quoril {

extern std::string WaveFileName; ///< with its ending, without a folder; "New.wav" when new
extern std::string WaveFilePath; ///< full path
extern std::string WaveDir;      ///< folder of the last open or save; kept across sessions
extern std::string SelectedDir;  ///< folder of the last Save Selected
extern bool Mp3ParamsChosen;     ///< the parameters for MP3 have been chosen for this document

} // namespace quoril
