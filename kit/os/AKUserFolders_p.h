// Where a user's standard folders lie when nothing else is configured.
#pragma once

/// Below the home, as the system calls them, in the order of AKStandardFolder; the first is the home itself, "".
extern const char* const kAKFoldersBelowHome[8];
