// The fonts of the program.
#pragma once

namespace host {

/// Fonts can be bound while one of these lives. A family that is not installed is replaced by the nearest one, so that
/// every text is drawn on a machine that has any font.
class Fonts {
 public:
  Fonts();
  Fonts(const Fonts&) = delete;
  Fonts& operator=(const Fonts&) = delete;
  ~Fonts();
};

}  // namespace host
