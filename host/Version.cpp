#include "host/Version.h"

const char* const host::kVersion = AK_VERSION;
