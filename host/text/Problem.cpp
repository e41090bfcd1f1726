#include "host/text/Problem.h"

#include "host/text/Localisation.h"
#include "host/text/Printable.h"

namespace host {

Problem::Problem(Text text, std::initializer_list<Part> parts) : text_(text), parts_(parts) {}

std::string Problem::English() const { return Render(false); }
std::string Problem::Translated() const { return Render(true); }

std::string Problem::Render(bool translated) const {
  std::vector<std::string> words;
  for (const Part& part : parts_) {
    if (!part.inner_.empty()) {
      words.push_back(part.inner_.front().Render(translated));
    } else {
      words.push_back(Printable(translated && !part.translated_.empty() ? part.translated_ : part.text_));
    }
  }
  return Filled(translated ? Tr(text_) : static_cast<const char*>(text_), words);
}

}  // namespace host
