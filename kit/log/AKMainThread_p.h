// Which thread of the process is the main one.
#pragma once

#include <unistd.h>

inline bool AKIsMainThread() { return getpid() == gettid(); }
