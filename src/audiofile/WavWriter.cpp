#include "audiofile/OpenSaveClass.h"
