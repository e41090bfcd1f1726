// What the user gave objects last, which new ones take.
#pragma once

#include <optional>

#include "host/session/DocumentSession.h"

namespace host {

/// To be called when the user changed brush, pen, opacity or dashes of what is selected.
void NoteStyle(const DocumentSession& session);
/// None until then.
const std::optional<SharedStyle>& LastStyle();

}  // namespace host
