#include "audiofile/OpenSaveClass.h"

#include "storage/WoroFileBlockMod.h"

namespace quoril {

std::int32_t AuWriteMode = 0;

OpenSaveClass::OpenSaveClass() : FileBlockLength(BudgetShare(524288)) {}

} // namespace quoril
