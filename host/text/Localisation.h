// Translations, through gettext.
//
// A text is looked up in a domain; the text itself is the key, and what is shown when there is no translation. The host
// has a domain of its own, "objecthost"; a bundle has the one that it sets right before its lookups. The catalogues of
// a domain are searched in the folders that were added, the last first: FOLDER/LANGUAGE/LC_MESSAGES/DOMAIN.mo. The
// language follows LANGUAGE, LC_ALL, LC_MESSAGES and LANG.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/text/Text.h"

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

 private:
  Localisation();

  void Bind(const std::string& domain);

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

/// A text with the words in place of each "%s" in turn.
std::string Filled(std::string text, const std::vector<std::string>& words);

}  // namespace host
