#include <unistd.h>

#include "kit/os/AKMainThread_p.h"

bool AKIsMainThread() { return ::getpid() == ::gettid(); }
