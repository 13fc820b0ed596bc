#include "platform/SampleMemory.h"
