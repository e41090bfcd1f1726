// The user's standard folders.
//
// They follow the XDG base directories (preferences and application data) and the XDG user directories (the others, as
// user-dirs.dirs in the configuration home names them), with fallbacks below the home. A returned path need not exist.
#pragma once

#include "kit/files/AKFilePath.h"

/// The folders, with the numbers that hosts use.
enum class AKStandardFolder : unsigned int {
  kUser = 0,                ///< the home
  kDesktop = 1,             ///< what lies on the desktop
  kPreferences = 2,         ///< settings of programs
  kApplicationSupport = 3,  ///< data of programs
  kDocuments = 4,           ///< texts and the like
  kPictures = 5,            ///< pictures
  kMovies = 6,              ///< films
  kMusic = 7,               ///< sound
};
/// The numbers of the folders are below this.
inline constexpr unsigned int kAKStandardFolderCount = 8;

/// "User", "Desktop", "Preferences", "ApplicationSupport", "Documents", "Pictures", "Movies", "Music"; empty for any
/// other number.
AKString AKStandardFolderGetName(AKStandardFolder folder);
/// False for any other name; they are compared exactly.
bool AKStandardFolderFromName(const AKString& name, AKStandardFolder* folder);

/// An absolute path without a separator at its end; empty for any other number.
AKFilePath AKStandardFolderGetPath(AKStandardFolder folder);
