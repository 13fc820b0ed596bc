#include "view/ColorSettings.h"
