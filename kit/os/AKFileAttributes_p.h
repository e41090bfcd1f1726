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

// What each system does in its own way.

/// Whether the file has an access control list beside its permissions.
bool AKFileHasAccessList(const std::string& path);
/// True when afterwards the new file has the old one's access control list, or neither has one: a folder may give its
/// new files a list of its own.
bool AKFileCopyAccessList(const std::string& path, int descriptor);
/// Takes away a list that the folder gave, if there is one.
void AKFileRemoveAccessList(int descriptor);
/// As many as the system lets the user set; capabilities and access control lists are not among them.
void AKFileCopyExtendedAttributes(const std::string& path, int descriptor);
