#include "kit/os/AKUserFolders_p.h"

const char* const kAKFoldersBelowHome[8] = {
    "", "Desktop", "Library/Preferences", "Library/Application Support", "Documents", "Pictures", "Movies", "Music"};
