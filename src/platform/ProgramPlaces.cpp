#include "platform/ProgramPlaces.h"
