// Where a process crashed: the calls that led there, written by the process itself and put into names afterwards.
#pragma once

#include <string>
#include <vector>

namespace host::validator {

/// From now on a signal that would end the process has it write its calls to the file `descriptor` first, on a stack of
/// its own. SIGABRT, which ends one that hangs, is among them.
void WriteCallsOnCrash(int descriptor);

/// The calls of what was written, the innermost first, by the symbol tables of the files they lie in. Calls of this
/// program below those of the bundle are left out.
std::vector<std::string> NamedCalls(const std::string& written);

}  // namespace host::validator
