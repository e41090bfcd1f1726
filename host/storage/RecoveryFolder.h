// Where programs leave what the next one is to find after a crash, and which of them are running.
#pragma once

#include <string>

namespace host {

/// "objecthost/recovery" in the user's data folder, which need not exist; empty when there is no such folder.
std::string RecoveryFolder();

/// When a process started, in ticks since boot, which tells it from a later one of the same number; 0 when it is gone.
unsigned long long StartOfProcess(unsigned long long process);

}  // namespace host
