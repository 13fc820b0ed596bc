#include "platform/PrivateProfile.h"
