#include "audiofile/ULawTable.h"
