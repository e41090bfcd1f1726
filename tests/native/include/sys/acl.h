#pragma once
typedef struct _acl* acl_t;
typedef enum { ACL_TYPE_EXTENDED = 0x100 } acl_type_t;
extern "C" acl_t acl_init(int count);
extern "C" acl_t acl_get_file(const char* path, acl_type_t type);
extern "C" int acl_set_fd_np(int fd, acl_t list, acl_type_t type);
extern "C" int acl_free(void* object);
