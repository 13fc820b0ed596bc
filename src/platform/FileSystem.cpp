#include "platform/FileSystem.h"
