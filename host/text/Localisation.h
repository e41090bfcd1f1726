// Translations, through gettext.
//
// A text is looked up in a domain; the text itself is the key, and what is shown when there is no translation. The host
// has a domain of its own, "objecthost"; a bundle has the one that it sets right before its lookups. The catalogues of
// a domain are searched in the folders that were added, the last first: FOLDER/LANGUAGE/LC_MESSAGES/DOMAIN.mo. The
// language follows LANGUAGE, LC_ALL, LC_MESSAGES and LANG.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace host {

class Localisation {
 public:
  /// The process's translations. They stay those of the environment at the first use.
  static Localisation& Instance();

  Localisation(Localisation const&) = delete;
  Localisation& operator=(Localisation const&) = delete;

  /// A folder of catalogues; one that is not there is no mistake.
  void AddFolder(std::string const& folder);

  void SetDomain(std::string const& domain);
  std::string const& Domain() const { return domain_; }

  /// The translation in the domain that was set last, as bundles get text (DisplayText.h): valid as long as the
  /// process. `text` itself, the same pointer, when there is none.
  char const* ForBundle(char const* text);

  /// The translation in the host's own domain as UTF-8, or `text` itself.
  char const* ForHost(char const* text);

 private:
  Localisation();

  void Bind(std::string const& domain);

  std::string domain_;
  std::vector<std::string> folders_;
  std::vector<std::string> bound_;
  // What bundles were given, by domain and text; a node's text does not move.
  std::unordered_map<std::string, std::string> given_;
};

/// A text of the host in the user's language, UTF-8.
inline char const* Tr(char const* text) { return Localisation::Instance().ForHost(text); }

}  // namespace host
