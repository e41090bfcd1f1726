// Gathers the class model: class records, objects, host services, handlers and inspector panels.
#pragma once

#include "kit/host/AKHostServices.h"
#include "kit/log/AKLog.h"
#include "kit/objects/AKClass.h"
#include "kit/objects/AKClassSetup.h"
#include "kit/objects/AKHandler.h"
#include "kit/objects/AKObject.h"
#include "kit/objects/AKObjectClass.h"
#include "kit/panels/AKGUIDesc.h"
