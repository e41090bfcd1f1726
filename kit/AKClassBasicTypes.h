// Gathers the class model: class records, objects, host services, handlers and inspector panels.
#pragma once

#include "kit/AKClass.h"
#include "kit/AKClassSetup.h"
#include "kit/AKGUIDesc.h"
#include "kit/AKHandler.h"
#include "kit/AKHostServices.h"
#include "kit/AKLog.h"
#include "kit/AKObject.h"
