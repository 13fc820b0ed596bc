#include "platform/ChildProcess.h"
