// Has the layouts checked wherever the kit is compiled.
#include "kit/AKLayout_p.h"
