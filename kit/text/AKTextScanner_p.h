// A cursor over text that reads numbers as scanf does in the C locale.
#pragma once

namespace aktext {

class Scanner {
 public:
  Scanner(const char* begin, const char* end) : position_(begin), end_(end) {}

  /// Steps over `c` when it comes next; nothing is skipped before it.
  bool Literal(char c);
  /// "%ld": a number too large is the nearest long.
  bool Long(long* value);
  /// "%d": the low 32 bits of a long.
  bool Int(int* value);
  /// "%u": a minus sign negates, and the low 32 bits of an unsigned long are kept.
  bool Unsigned(unsigned int* value);
  /// "%f" and "%lf".
  bool Float(float* value) { return FloatOf(value); }
  bool Float(double* value) { return FloatOf(value); }

 private:
  void SkipSpace();
  bool Sign();
  bool Digits(unsigned long* magnitude, bool* overflow);
  const char* PlainDecimalEnd(const char* p) const;
  template <typename T>
  bool FloatOf(T* value);
  template <typename T>
  bool SlowFloat(T* value);

  const char* position_;
  const char* end_;
};

/// A copy of the part of a text that a reader looks at, with dots as decimal separators.
class ScanText {
 public:
  explicit ScanText(const char* text);
  bool IsEmpty() const { return begin_ == end_; }
  const char* begin() const { return begin_; }
  Scanner Scan() const { return {begin_, end_}; }

 private:
  char buffer_[64];
  const char* begin_;
  const char* end_;
};

}  // namespace aktext
