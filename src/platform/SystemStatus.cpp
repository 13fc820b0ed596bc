#include "platform/SystemStatus.h"
