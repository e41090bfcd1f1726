#include "host/text/Localisation.h"

#include <libintl.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <filesystem>

#include "host/text/DisplayText.h"

namespace host {
namespace {

constexpr char kHostDomain[] = "objecthost";

// The language that the environment asks for, as LANGUAGE takes it: "de_DE" of "de_DE.UTF-8@euro". Empty for none.
std::string RequestedLanguage() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value == nullptr || value[0] == '\0') continue;
    const std::string locale(value);
    const std::string name = locale.substr(0, locale.find_first_of(".@"));
    return name == "C" || name == "POSIX" ? std::string() : name;
  }
  return {};
}

// gettext translates nothing in the locale "C", which is also where a language ends up whose locale the machine has not
// got. C.UTF-8 is always there, and LANGUAGE then says the rest.
void ChooseLocale() {
  if (std::setlocale(LC_CTYPE, "") == nullptr) std::setlocale(LC_CTYPE, "C.UTF-8");
  if (std::setlocale(LC_MESSAGES, "") != nullptr && std::string(std::setlocale(LC_MESSAGES, nullptr)) != "C") return;
  const std::string language = RequestedLanguage();
  const char* preferred = std::getenv("LANGUAGE");
  const bool prefers = preferred != nullptr && preferred[0] != '\0';
  if (language.empty()) return;
  std::setlocale(LC_MESSAGES, "C.UTF-8");
  if (!prefers) setenv("LANGUAGE", language.c_str(), 1);
}

bool HasCatalogue(const std::string& folder, const std::string& domain) {
  std::error_code error;
  for (const auto& language : std::filesystem::directory_iterator(folder, error)) {
    if (std::filesystem::exists(language.path() / "LC_MESSAGES" / (domain + ".mo"), error)) return true;
  }
  return false;
}

}  // namespace

Localisation& Localisation::Instance() {
  static Localisation localisation;
  return localisation;
}

Localisation::Localisation() { ChooseLocale(); }

void Localisation::AddFolder(const std::string& folder) {
  folders_.push_back(folder);
  bound_.clear();
}

void Localisation::Bind(const std::string& domain) {
  if (std::find(bound_.begin(), bound_.end(), domain) != bound_.end()) return;
  for (auto folder = folders_.rbegin(); folder != folders_.rend(); ++folder) {
    if (!HasCatalogue(*folder, domain)) continue;
    bindtextdomain(domain.c_str(), folder->c_str());
    bind_textdomain_codeset(domain.c_str(), "UTF-8");
    break;
  }
  bound_.push_back(domain);
}

void Localisation::SetDomain(const std::string& domain) { domain_ = domain; }

const char* Localisation::ForBundle(const char* text) {
  // The empty text is gettext's key of a catalogue's header.
  if (text == nullptr || text[0] == '\0' || domain_.empty()) return text;
  Bind(domain_);
  const char* translation = dgettext(domain_.c_str(), text);
  if (translation == text) return text;
  std::string& given = given_[domain_ + '\0' + text];
  if (given.empty()) given = TextForBundles(translation).CStr();
  return given.c_str();
}

const char* Localisation::ForHost(const char* text) {
  if (text[0] == '\0') return text;
  Bind(kHostDomain);
  return dgettext(kHostDomain, text);
}

// What is put in is not searched for the next place.
std::string Filled(std::string text, const std::vector<std::string>& words) {
  std::size_t from = 0;
  for (const std::string& word : words) {
    const std::size_t place = text.find("%s", from);
    if (place == std::string::npos) break;
    text.replace(place, 2, word);
    from = place + word.size();
  }
  return text;
}

std::string TrWith(const char* text, std::string_view part) { return Filled(Tr(text), {std::string(part)}); }

}  // namespace host
