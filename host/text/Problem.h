// What went wrong, as a value: a text and the parts that stand in place of each "%s" of it in turn. It is put into
// words where it is shown: in English on the command line, since scripts read it, and in the user's language in the
// window.
//
// What can fail returns a Result: a value, or a problem with everything as it was before.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/text/Text.h"

namespace host {

class Problem {
 public:
  /// A name, a number or what the system said, shown as it is; or a problem, which follows the language.
  class Part;

  Problem(Text text, std::initializer_list<Part> parts = {});

  /// One line, UTF-8; what can't be shown of its parts is escaped.
  std::string English() const;
  std::string Translated() const;

 private:
  std::string Render(bool translated) const;

  Text text_;
  std::vector<Part> parts_;
};

class Problem::Part {
 public:
  Part(std::string_view text) : text_(text) {}
  Part(const std::string& text) : text_(text) {}
  Part(const char* text) : text_(text) {}
  /// What another program said, in English and translated.
  Part(std::string english, std::string translated) : text_(std::move(english)), translated_(std::move(translated)) {}
  Part(Problem inner) : inner_{std::move(inner)} {}
  Part(Text text) : inner_{Problem(text)} {}

 private:
  friend class Problem;

  std::string text_;
  std::string translated_;      // empty for a part that is not translated
  std::vector<Problem> inner_;  // one or none
};

/// Done, where there is no value to return.
struct Success {};

/// A value, or why there is none. True when there is one.
template <typename Value = Success>
class [[nodiscard]] Result {
 public:
  Result(Value value) : value_(std::move(value)) {}
  Result(Problem problem) : problem_(std::move(problem)) {}
  Result() requires std::is_same_v<Value, Success> : value_(Success()) {}

  explicit operator bool() const { return value_.has_value(); }
  Value& operator*() { return *value_; }
  const Value& operator*() const { return *value_; }
  Value* operator->() { return &*value_; }
  const Value* operator->() const { return &*value_; }
  /// Only when there is no value.
  const Problem& Why() const { return *problem_; }

 private:
  std::optional<Value> value_;
  std::optional<Problem> problem_;
};

}  // namespace host
