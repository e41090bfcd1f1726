// Gathers brushes and pens.
#pragma once

#include "graphics/AGBrush.h"
#include "graphics/AGPen.h"
