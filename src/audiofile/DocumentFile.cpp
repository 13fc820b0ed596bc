#include "audiofile/DocumentFile.h"

namespace quoril {

std::string WaveFileName;
std::string WaveFilePath;
std::string WaveDir;
std::string SelectedDir;
bool Mp3ParamsChosen = false;

} // namespace quoril
