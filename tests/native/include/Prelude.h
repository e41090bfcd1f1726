// Included first: what the C library of the other system has beside this one's, and what it lacks.
#pragma once

#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <locale.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <charconv>

extern "C" int pthread_main_np(void);
#define O_SEARCH 0x40100000
#define st_birthtimespec st_ctim
#define st_mtimespec st_mtim
#define newlocale newlocale_is_in_xlocale_h
#define duplocale duplocale_is_in_xlocale_h
#define freelocale freelocale_is_in_xlocale_h

#undef O_PATH
#undef O_TMPFILE
#undef O_DIRECT
#undef AT_EMPTY_PATH
#undef MAP_POPULATE
#pragma GCC poison memrchr mempcpy strchrnul rawmemchr gettid statx getrandom secure_getenv canonicalize_file_name
#pragma GCC poison getxattr setxattr listxattr removexattr fgetxattr fsetxattr flistxattr fremovexattr
#pragma GCC poison O_PATH O_TMPFILE O_DIRECT AT_EMPTY_PATH MAP_POPULATE mremap memfd_create renameat2 fdatasync
#pragma GCC poison posix_fadvise fallocate posix_fallocate sync_file_range copy_file_range pipe2 accept4 dup3
// Of doubles; the conversions of integers do without.
#pragma GCC poison chars_format
