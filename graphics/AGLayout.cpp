// Has the layouts checked wherever the graphics layer is compiled.
#include "graphics/AGLayout_p.h"
