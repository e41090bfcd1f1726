#include "host/validator/Check.h"

namespace host::validator {

const std::vector<Check>& AllChecks() {
  static const std::vector<Check> all = [] {
    std::vector<Check> checks;
    for (const auto family :
         {&FileChecks, &SetupChecks, &HostChecks, &LoadChecks, &ProcessChecks, &ClassChecks, &InstanceChecks,
          &PropertyChecks, &RecordChecks, &DamageChecks, &DrawingChecks, &DrawingEdgeChecks, &PanelChecks,
          &PanelUseChecks, &TranslationChecks, &IsolationChecks, &OrderChecks, &TimeChecks, &MemoryChecks}) {
      for (const Check& check : family()) checks.push_back(check);
    }
    return checks;
  }();
  return all;
}

const Check* FindCheck(std::string_view id) {
  for (const Check& check : AllChecks()) {
    if (id == check.id) return &check;
  }
  return nullptr;
}

}  // namespace host::validator
