// The program that runs, and who runs it.
#pragma once

#include <string>

/// The path of the program's file, links followed; empty when the system does not tell.
std::string AKProgramPath();
/// The folder of the files that come with the program; it need not exist.
std::string AKProgramResources();

/// What the user reads, as "de" or "de_AT", with a character set and modifier behind it on some systems. Empty when the
/// system does not tell.
std::string AKUserLocaleName();
