// SVG pictures of any program. What is taken lies in finite places; importing it is one step or changes nothing.
#include <cmath>

#include "fuzz/HostFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using host_fuzz::Bytes;
  using host_fuzz::Require;
  host_fuzz::Start();
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto picture = host::ReadSvg(text);
  const auto session = host_fuzz::MakeSession(1);
  const std::string before = Bytes(session->Doc());
  const auto taken =
      host::LooksLikeMarkup(text) ? session->Import().Take(text, {}) : host::Result<host::Imported>(host::Imported());
  if (!picture) {
    Require(Bytes(session->Doc()) == before);
    return 0;
  }
  Require(picture->rectangles.size() <= picture->elements);
  for (const host::SvgRectangle& each : picture->rectangles) {
    Require(std::isfinite(each.bounds.Width()) && each.bounds.Width() > 0 && std::isfinite(each.bounds.Height()) &&
            each.bounds.Height() > 0 && std::isfinite(each.angle) && each.rounding >= 0 && each.rounding <= 1 &&
            std::isfinite(each.strokeWidth) && each.opacity >= 0 && each.opacity <= 1 &&
            (each.dashes.empty() || host::AreDashes(each.dashes)));
  }
  if (taken && taken->taken > 0) {
    Require(taken->taken == picture->rectangles.size() && session->Steps().Known().Count() == 1);
    host_fuzz::CheckDocument(session->Doc());
    Require(session->Steps().Undo());
  }
  Require(Bytes(session->Doc()) == before);
  return 0;
}
