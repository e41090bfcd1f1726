#include "kit/os/AKMainThread_p.h"

#include <unistd.h>

bool AKIsMainThread() { return ::getpid() == ::gettid(); }
