// The checks that a bundle is asked to pass, one file a family in host/checks/.
//
// A check is a function that runs in a process of its own (TrialProcess.h): it returns when the bundle passes, and ends
// the process through its Trial when it does not.
#pragma once

#include <string_view>
#include <vector>

namespace host::validator {

class Trial;

struct Check {
  enum class Kind {
    kPlain,
    kNeeded,    ///< no other check has a meaning where it fails
    kSequence,  ///< its cases are sequences of operations, which can be left out one by one
  };

  const char* id;    ///< "record-roundtrip"; the heading of its section in docs/validator.md
  const char* asks;  ///< one sentence: what is asked, and why
  int level;         ///< the lowest that runs it, 1 to 10
  void (*run)(Trial& trial);
  Kind kind = Kind::kPlain;
};

/// All checks in the order in which they run.
const std::vector<Check>& AllChecks();
/// Null for an unknown ID.
const Check* FindCheck(std::string_view id);

// The families.
std::vector<Check> FileChecks();
std::vector<Check> LoadChecks();
std::vector<Check> ProcessChecks();
std::vector<Check> SetupChecks();
std::vector<Check> HostChecks();
std::vector<Check> ClassChecks();
std::vector<Check> InstanceChecks();
std::vector<Check> PropertyChecks();
std::vector<Check> RecordChecks();
std::vector<Check> DamageChecks();
std::vector<Check> DrawingChecks();
std::vector<Check> DrawingEdgeChecks();
std::vector<Check> PanelChecks();
std::vector<Check> PanelUseChecks();
std::vector<Check> TranslationChecks();
std::vector<Check> IsolationChecks();
std::vector<Check> OrderChecks();
std::vector<Check> TimeChecks();
std::vector<Check> MemoryChecks();

}  // namespace host::validator
