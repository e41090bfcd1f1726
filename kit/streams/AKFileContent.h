// Whole files as text.
//
// The bytes go as they are, without conversion between character sets. Each function returns a status of files, logged;
// a failed load leaves the text empty.
#pragma once

#include "kit/streams/AKFile.h"

///@{
/// Everything in the file, which must be open for reading, without trailing NULs.
int AKFileLoadContentToString(const AKFile& file, AKString* text);
int AKFileLoadContentToString(const AKFilePath& path, AKString* text);
///@}

/// Writes the text, without a terminator, at the beginning of the file, which must be open for writing.
int AKFileSaveContentOfString(AKFile& file, const AKString& text);
/// Replaces the file whole or not at all.
int AKFileSaveContentOfString(const AKFilePath& path, const AKString& text);

/// The file `name` of the application's resources. Fails with -895 when it cannot be found or loaded.
int AKFileLoadContentToStringFromResources(const AKString& name, AKString* text);
