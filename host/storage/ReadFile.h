// Files as bytes.
#pragma once

#include <string>

namespace host {

/// Puts the whole file into `*bytes`. False, with one line in `*error`, when it can't be
/// read.
bool ReadWholeFile(const std::string& path, std::string* bytes, std::string* error);

}  // namespace host
