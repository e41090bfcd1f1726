// The user's standard folders.
//
// They follow the XDG base directories (preferences and application data) and the XDG user directories (the others, as
// user-dirs.dirs in the configuration home names them), with fallbacks below the home. A returned path need not exist.
#pragma once

#include "kit/files/AKFilePath.h"

enum class AKStandardFolder : unsigned int {
  kUser = 0,
  kDesktop = 1,
  kPreferences = 2,
  kApplicationSupport = 3,
  kDocuments = 4,
  kPictures = 5,
  kMovies = 6,
  kMusic = 7,
};
inline constexpr unsigned int kAKStandardFolderCount = 8;

/// "User", "Desktop", "Preferences", "ApplicationSupport", "Documents", "Pictures", "Movies", "Music"; empty for any
/// other number.
AKString AKStandardFolderGetName(AKStandardFolder folder);
/// False for any other name; they are compared exactly.
bool AKStandardFolderFromName(const AKString& name, AKStandardFolder* folder);

/// An absolute path without a separator at its end; empty for any other number.
AKFilePath AKStandardFolderGetPath(AKStandardFolder folder);
