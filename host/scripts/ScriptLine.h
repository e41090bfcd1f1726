// One line of a script as words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/text/Problem.h"

namespace host {

/// Splits a line at blanks and tabs. A word may have stretches in single quotes, which are taken as they are, and in
/// double quotes, in which a backslash takes the next character as it is, as it does outside of quotes. "#" at the
/// beginning of a word starts a comment. Fails for a quote without an end or a backslash at the end.
Result<> SplitScriptLine(std::string_view line, std::vector<std::string>* words);

}  // namespace host
