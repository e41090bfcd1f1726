// Translations, through gettext.
//
// A text is looked up in a domain; the text itself is the key, and what is shown when there is no translation. The host
// has a domain of its own, "objecthost"; a bundle has the one that it sets right before its lookups. The catalogues of
// a domain are searched in the folders that were added, the last first: FOLDER/LANGUAGE/LC_MESSAGES/DOMAIN.mo. The
// language follows LANGUAGE, LC_ALL, LC_MESSAGES and LANG.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace host {

class Localisation {
 public:
  /// The process's translations. They stay those of the environment at the first use.
  static Localisation& Instance();

  Localisation(const Localisation&) = delete;
  Localisation& operator=(const Localisation&) = delete;

  /// A folder of catalogues; one that is not there is no mistake.
  void AddFolder(const std::string& folder);

  void SetDomain(const std::string& domain);

  /// The translation in the domain that was set last, as bundles get text (DisplayText.h): valid as long as the
  /// process. `text` itself, the same pointer, when there is none.
  const char* ForBundle(const char* text);

  /// The translation in the host's own domain as UTF-8, or `text` itself.
  const char* ForHost(const char* text);

  /// For a program whose errors only people read.
  void TranslateErrors() { translatesErrors_ = true; }
  bool TranslatesErrors() const { return translatesErrors_; }

 private:
  Localisation();

  void Bind(const std::string& domain);

  bool translatesErrors_ = false;
  std::string domain_;
  std::vector<std::string> folders_;
  std::vector<std::string> bound_;
  // What bundles were given, by domain and text; a node's text does not move.
  std::unordered_map<std::string, std::string> given_;
};

/// A text of the host in the user's language, UTF-8.
inline const char* Tr(const char* text) { return Localisation::Instance().ForHost(text); }

/// The same with `part` in place of the text's "%s".
std::string TrWith(const char* text, std::string_view part);

/// What went wrong, with the parts in place of each "%s" in turn. The command line says it in English, since scripts
/// read it; once errors are translated, it is in the user's language.
std::string ErrorText(const char* text, std::initializer_list<std::string_view> parts = {});

/// Marks a text that goes through Tr later, so that scripts/translations finds it.
constexpr const char* N_(const char* text) { return text; }

}  // namespace host
