#include "kit/os/AKUserFolders_p.h"

const char* const kAKFoldersBelowHome[8] = {"",          "Desktop",  ".config", ".local/share",
                                            "Documents", "Pictures", "Videos",  "Music"};
