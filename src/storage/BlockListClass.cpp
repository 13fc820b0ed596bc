#include "storage/BlockListClass.h"
