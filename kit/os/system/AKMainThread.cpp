#include <pthread.h>

#include "kit/os/AKMainThread_p.h"

bool AKIsMainThread() { return ::pthread_main_np() != 0; }
