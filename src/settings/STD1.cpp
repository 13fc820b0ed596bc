#include "settings/STD1.h"
