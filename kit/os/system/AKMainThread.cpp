#include "kit/os/AKMainThread_p.h"

#include <pthread.h>

bool AKIsMainThread() { return ::pthread_main_np() != 0; }
