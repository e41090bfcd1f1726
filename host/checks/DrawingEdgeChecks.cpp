#include "host/validator/Check.h"
namespace host::validator {
std::vector<Check> DrawingEdgeChecks() { return {}; }
}  // namespace host::validator
