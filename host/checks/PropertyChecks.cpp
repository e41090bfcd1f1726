#include "host/validator/Check.h"
namespace host::validator {
std::vector<Check> PropertyChecks() { return {}; }
}  // namespace host::validator
