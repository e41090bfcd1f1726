// The names of the method slots of a class record, for listings.
#pragma once

namespace host {

/// "akmDraw" for kAKMethodDraw; "(the host's)" for a slot that plug-ins do not fill.
const char* MethodName(unsigned int slot);

}  // namespace host
