// What may follow on a command line, for shells.
#pragma once

#include <string>
#include <vector>

namespace host {

/// One line for each word that may stand where the last of `words` does and begins as it does: the word, and behind a
/// tab, where there is something to say of it, what it is. `words` stand behind the program's name. Words that end with
/// "=" go on. Empty where a file's name, or anything, may stand.
std::string Completions(const std::vector<std::string>& words);

}  // namespace host
