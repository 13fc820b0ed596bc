#include "storage/WoroFileBlockMod.h"
