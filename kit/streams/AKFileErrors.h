// The status codes of files and the log lines that go with them.
#pragma once

class AKFile;
class AKString;

inline constexpr int kAKFileStatusChunkMismatch = -880;
inline constexpr int kAKFileStatusTooBig = -881;
inline constexpr int kAKFileStatusMapOutOfBounds = -882;
inline constexpr int kAKFileStatusMapBadOffset = -883;
inline constexpr int kAKFileStatusMapFailed = -884;
inline constexpr int kAKFileStatusGetSizeFailed = -885;
inline constexpr int kAKFileStatusSetSizeFailed = -886;
inline constexpr int kAKFileStatusGetPosFailed = -887;
inline constexpr int kAKFileStatusSetPosFailed = -888;
inline constexpr int kAKFileStatusWriteFailed = -889;
inline constexpr int kAKFileStatusReadFailed = -890;
inline constexpr int kAKFileStatusOpenFailed = -891;
inline constexpr int kAKFileStatusAlreadyOpened = -892;
inline constexpr int kAKFileStatusNotOpened = -893;
inline constexpr int kAKFileStatusResourceMissing = -895;

/// Logs the message of `status` (-881 to -893) for the file and returns `status`. A disk file's line carries errno.
int AKFileLogFailure(const AKFile& file, int status);

/// A read failure (-890) that the file's content tells, not a call to the system: without errno.
int AKFileLogMissingBytes(const AKFile& file);

/// The same as AKFileLogFailure for a path that no AKFile stands for, with errno.
int AKFileLogPathFailure(const AKString& path, int status);

/// The file's path, or "Memory Stream".
const char* AKFileNameInMessages(const AKFile& file);
