// Gathers brushes and pens.
#pragma once

#include "graphics/paint/AGBrush.h"
#include "graphics/paint/AGPen.h"
