// A text of the host that has a translation: only N_ makes one, and only of a literal, which scripts/translations
// finds.
#pragma once

namespace host {

class Text {
 public:
  /// The English text, which is the key of the catalogues; valid as long as the program.
  constexpr operator const char*() const { return id_; }

 private:
  friend consteval Text N_(const char* text);
  explicit constexpr Text(const char* id) : id_(id) {}

  const char* id_;
};

/// Marks a text that is translated where it is shown.
consteval Text N_(const char* text) { return Text(text); }

}  // namespace host
