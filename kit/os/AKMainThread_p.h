// Which thread of the process is the main one.
#pragma once

bool AKIsMainThread();
