#pragma once
#include <stdint.h>
typedef struct _copyfile_state* copyfile_state_t;
typedef uint32_t copyfile_flags_t;
#define COPYFILE_ACL (1 << 0)
#define COPYFILE_XATTR (1 << 2)
extern "C" int fcopyfile(int from_fd, int to_fd, copyfile_state_t state, copyfile_flags_t flags);
