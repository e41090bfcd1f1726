#include "host/window/LastStyle.h"

namespace host {
namespace {

std::optional<SharedStyle>& Style() {
  static std::optional<SharedStyle> style;
  return style;
}

}  // namespace

void NoteStyle(const DocumentSession& session) {
  if (auto style = StyleOf(session.Doc(), session.Selection().IDs())) Style() = std::move(style);
}

const std::optional<SharedStyle>& LastStyle() { return Style(); }

}  // namespace host
