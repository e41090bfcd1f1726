#include "host/validator/Check.h"
namespace host::validator {
std::vector<Check> DamageChecks() { return {}; }
}  // namespace host::validator
