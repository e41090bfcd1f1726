// Writing a file in place, where no other can take its place.
#pragma once

/// A file for reading and writing, in the temporary folder, that has no name and goes with its descriptor: -1 on
/// failure, with errno.
int AKFileOpenNameless();

/// Replaces the content of `target` by that of `content`. That of `old`, the same file opened for reading, goes to a
/// file "tmp_XXXXXX" in the temporary folder first, which is deleted once the new content is on the disk; a failure
/// restores it from there, and where even that fails the copy stays. A negative `old` stands for a file that cannot be
/// read, which is then written without a copy. False, with errno, on failure.
bool AKFileRewrite(int target, int content, int old);
