#include "host/validator/Check.h"
namespace host::validator {
std::vector<Check> PanelUseChecks() { return {}; }
}  // namespace host::validator
