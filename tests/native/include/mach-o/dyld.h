#pragma once
#include <stdint.h>
extern "C" int _NSGetExecutablePath(char* buf, uint32_t* bufsize);
