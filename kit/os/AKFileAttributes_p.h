// What a file keeps when another takes its place.
#pragma once

#include <sys/stat.h>

#include <string>

/// Gives the file open on `descriptor` owner, group, permissions, access control list and extended attributes of the
/// file at `path`, as far as the user may. Nobody gets an access that the old file did not give: without the right to
/// keep the group, its members and all others get what both had; without the right to keep a list, nobody but the owner
/// gets any. Set-user-ID and set-group-ID bits and capabilities, which stand for the content, are not kept. False, with
/// errno, when the permissions cannot be set.
bool AKFileKeepAttributes(const std::string& path, const struct stat& status, int descriptor);
