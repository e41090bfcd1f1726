// The status codes of files and the log lines that go with them.
#pragma once

class AKFile;
class AKString;

inline constexpr int kAKFileStatusChunkMismatch = -880;    ///< another signature than expected
inline constexpr int kAKFileStatusTooBig = -881;           ///< more than a size, a count or a limit allows
inline constexpr int kAKFileStatusMapOutOfBounds = -882;   ///< a mapping beyond the end of the file
inline constexpr int kAKFileStatusMapBadOffset = -883;     ///< a mapping that begins at no page
inline constexpr int kAKFileStatusMapFailed = -884;        ///< the system refused a mapping
inline constexpr int kAKFileStatusGetSizeFailed = -885;    ///< size or times cannot be told
inline constexpr int kAKFileStatusSetSizeFailed = -886;    ///< the size cannot be changed
inline constexpr int kAKFileStatusGetPosFailed = -887;     ///< the position cannot be told
inline constexpr int kAKFileStatusSetPosFailed = -888;     ///< the position cannot be set
inline constexpr int kAKFileStatusWriteFailed = -889;      ///< not everything was written
inline constexpr int kAKFileStatusReadFailed = -890;       ///< not everything is there
inline constexpr int kAKFileStatusOpenFailed = -891;       ///< the file cannot be opened or made
inline constexpr int kAKFileStatusAlreadyOpened = -892;    ///< opened twice
inline constexpr int kAKFileStatusNotOpened = -893;        ///< used without being open, or not for that
inline constexpr int kAKFileStatusResourceMissing = -895;  ///< the application has no such resource

/// Logs the message of `status` (-881 to -893) for the file and returns `status`. A disk file's line carries errno.
int AKFileLogFailure(const AKFile& file, int status);

/// A read failure (-890) that the file's content tells, not a call to the system: without errno.
int AKFileLogMissingBytes(const AKFile& file);

/// The same as AKFileLogFailure for a path that no AKFile stands for, with errno.
int AKFileLogPathFailure(const AKString& path, int status);

/// The file's path, or "Memory Stream".
const char* AKFileNameInMessages(const AKFile& file);
