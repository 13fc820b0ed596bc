#include "storage/BlockCarrBuffClass.h"
