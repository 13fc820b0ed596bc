#include "platform/FileHandle.h"
