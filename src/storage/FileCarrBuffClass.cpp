#include "storage/FileCarrBuffClass.h"
