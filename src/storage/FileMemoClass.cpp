#include "storage/FileMemoClass.h"
