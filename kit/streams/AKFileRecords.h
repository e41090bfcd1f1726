// The records of strings, paths, UTF-16 text and class identifiers in files.
//
// Each function returns the status of the file; a failed read leaves the output empty, but a class identifier alone.
#pragma once

#include "kit/containers/ATNumberArray.h"
#include "kit/files/AKFilePath.h"
#include "kit/streams/AKFile.h"
#include "kit/text/AKClassID.h"

///@{
/// A count, always a multiple of 4, and that many bytes of NUL-padded UTF-8.
int AKFileReadAKString(const AKFile& file, AKString* text);
int AKFileWriteAKString(AKFile& file, const AKString& text);
///@}

///@{
/// The string record of the path's text with the byte 1 in place of every "/".
int AKFileReadAKFilePath(const AKFile& file, AKFilePath* path);
int AKFileWriteAKFilePath(AKFile& file, const AKFilePath& path);
///@}

///@{
/// A 32-bit count of code units and the units, both in the order `endian`; no padding.
int AKFileReadAKUniChars(const AKFile& file, AKUniChars* units, unsigned int endian = 0);
int AKFileWriteAKUniChars(AKFile& file, const AKUniChars& units, unsigned int endian = 0);
///@}

///@{
/// The 8 bytes as they stand.
int AKFileReadAKClassID(const AKFile& file, AKClassID* id);
int AKFileWriteAKClassID(AKFile& file, const AKClassID& id);
///@}
