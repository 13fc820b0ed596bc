#include "storage/SampleRun.h"
