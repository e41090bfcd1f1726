#include "host/scripts/ScriptLine.h"

namespace host {
namespace {

class Splitter {
 public:
  Splitter(std::string_view line, std::vector<std::string>* words) : rest_(line), words_(words) {}

  Result<> Run() {
    while (!rest_.empty()) {
      const char next = Take();
      if (next == ' ' || next == '\t' || next == '\r') {
        EndWord();
      } else if (next == '#' && !inWord_) {
        break;
      } else if (!TakePart(next)) {
        return next == '\\' ? Problem(N_("a backslash at the end of the line")) : Problem(N_("a quote without an end"));
      }
    }
    EndWord();
    return {};
  }

 private:
  char Take() {
    const char next = rest_.front();
    rest_.remove_prefix(1);
    return next;
  }

  void EndWord() {
    if (inWord_) words_->push_back(std::move(word_));
    word_.clear();
    inWord_ = false;
  }

  bool TakePart(char next) {
    inWord_ = true;
    if (next == '\'') return TakeSingleQuoted();
    if (next == '"') return TakeDoubleQuoted();
    if (next != '\\') {
      word_ += next;
      return true;
    }
    return TakeEscaped();
  }

  bool TakeEscaped() {
    if (rest_.empty()) return false;
    word_ += Take();
    return true;
  }

  bool TakeSingleQuoted() {
    const std::size_t end = rest_.find('\'');
    if (end == std::string_view::npos) return false;
    word_ += rest_.substr(0, end);
    rest_.remove_prefix(end + 1);
    return true;
  }

  bool TakeDoubleQuoted() {
    while (!rest_.empty()) {
      const char next = Take();
      if (next == '"') return true;
      if (next != '\\') {
        word_ += next;
      } else if (!TakeEscaped()) {
        return false;
      }
    }
    return false;
  }

  std::string_view rest_;
  std::vector<std::string>* words_;
  std::string word_;
  bool inWord_ = false;
};

}  // namespace

Result<> SplitScriptLine(std::string_view line, std::vector<std::string>* words) {
  words->clear();
  return Splitter(line, words).Run();
}

}  // namespace host
