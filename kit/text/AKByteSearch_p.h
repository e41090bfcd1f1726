// Search of bytes in bytes, shared by the string operations.
#pragma once

namespace akbytes {

/// The first occurrence of `sub` in `text`, or null. An empty `sub` is found at the start. Linear in the worst case.
const char* Find(const char* text, unsigned int length, const char* sub, unsigned int subLength);

/// Whether `sub` occurs in `text`, both upper-cased through the current locale. Linear in the worst case.
bool ContainsAnyCase(const char* text, unsigned int length, const char* sub, unsigned int subLength);

/// The last occurrence of `sub` in `text` that begins at or before `latest`, or null. `sub` must fit in behind
/// `latest`. Linear in the worst case.
const char* FindLast(const char* text, unsigned int latest, const char* sub, unsigned int subLength);

}  // namespace akbytes
