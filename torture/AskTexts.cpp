// Translations and the log.
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "kit/host/AKHostServices.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Examiner.h"
#include "torture/Report.h"

namespace torture {
namespace {

constexpr char kText[] = "Host Examiner";  // a text that has translations in the bundle's catalogues
constexpr std::size_t kLongestLine = 32767;

// What the host has to give for it in the language that AK_TORTURE_LANGUAGE names, in Mac OS Roman; empty where that is
// not known. The bundle's catalogues are installed then.
std::string KnownTranslation() {
  static constexpr std::pair<const char*, const char*> kKnown[] = {{"de",
                                                                    "Host-Pr\x9F"
                                                                    "fer"},
                                                                   {"es", "Examinador del anfitri\x97n"}};
  const char* const language = std::getenv("AK_TORTURE_LANGUAGE");
  for (const auto& [name, text] : kKnown) {
    if (language != nullptr && std::strcmp(language, name) == 0) return text;
  }
  return "";
}

// An address that the host keeps, or may keep, of a text that was asked for.
struct Given {
  std::string asked;
  const char* text;
  std::string was;
};

std::string LookUp(const char* done) {
  Call call("general.localeGetString", done, kGeneralSection);
  const char* text = call([] { return NKLocaleGetString(kText); });
  call.Expect(text != nullptr && text[0] != '\0', "a text", text == nullptr ? "null" : "an empty one");
  return text == nullptr ? "" : text;
}

void SetDomain(const std::string& domain) {
  std::vector<char> borrowed(domain.c_str(), domain.c_str() + domain.size() + 1);
  Call call("general.localeSetDomain", "set the domain " + TextOf(domain) + " and overwrite the name", kGeneralSection);
  call([&] { NKLocaleSetDomain(borrowed.data()); });
  std::memset(borrowed.data(), '#', domain.size());
}

// A domain without catalogues gives back what was asked for.
void AskUnknownTexts(std::vector<Given>* kept) {
  for (const std::string& asked : {std::string(), std::string("No such text"), std::string("%s%n\xFF\xC3"),
                                   std::string(LongText().CStr()), std::string("\xEF\xBB\xBF\xE6\x97\xA5")}) {
    std::vector<char> buffer(asked.c_str(), asked.c_str() + asked.size() + 1);
    Call call("general.localeGetString", "look up " + TextOf(asked) + ", which has no translation", kGeneralSection);
    const char* text = call([&] { return NKLocaleGetString(buffer.data()); });
    if (text == nullptr) {
      call.Expect(false, "the text itself", "null");
    } else {
      call.ExpectIs(std::string_view(asked), std::string_view(text));
      if (text != buffer.data()) kept->push_back({asked, text, text});
    }
    std::memset(buffer.data(), '#', asked.size());
  }
}

}  // namespace

void AskTexts() {
  std::vector<Given> kept;
  SetDomain("HostTorture.none");
  AskUnknownTexts(&kept);
  const std::string without = LookUp("look up a text in a domain without catalogues");
  Call call("general.localeSetDomain", "set a domain without catalogues", kGeneralSection);
  call.ExpectIs(std::string_view(kText), std::string_view(without));
  SetDomain(Examiner::kLocaleDomain);
  const std::string first = LookUp("look up a text in the bundle's domain");
  const std::string known = KnownTranslation();
  const Call own("general.localeSetDomain", "set the bundle's domain, which has catalogues", kGeneralSection);
  if (!known.empty()) own.ExpectIs(std::string_view(known), std::string_view(first));
  for (const std::string& other : {std::string(), std::string("../../etc"), std::string(LongText().CStr())}) {
    SetDomain(other);
    AskUnknownTexts(&kept);
    SetDomain(Examiner::kLocaleDomain);
    const std::string again = LookUp("look it up again, behind another domain");
    Call back("general.localeSetDomain", "set the bundle's domain again", kGeneralSection);
    back.ExpectIs(std::string_view(first), std::string_view(again));
  }
  for (const Given& given : kept) {
    const Call later("general.localeGetString", "look again at what came for " + TextOf(given.asked), kGeneralSection);
    later.ExpectIs(std::string_view(given.was), std::string_view(given.text));
  }
}

void AskLog() {
  if (!HasTable(TableID::kGeneral)) return;
  const auto log = [](std::string line, const std::string& done) {
    Call call("general.logMessage", done, kGeneralSection);
    call([&] { gAKWrap->logMessage(line.c_str()); });
    line.assign(line.size(), '#');
  };
  const auto numbered = [] { return "HostTorture line " + std::to_string(Report::The().NextLogLine()) + ": "; };
  log(numbered() + Moment::Where() + "\n", "log a line");
  log(numbered() + "%s%n%d", "log a line of conversions, without a line end");
  if (Moment::Current()->ID() != MomentID::kStart && Moment::Current()->ID() != MomentID::kDraw) return;
  log("", "log an empty line");
  log(OddText().CStr(), "log a line that is not well formed");
  std::string longest = numbered();
  longest.resize(kLongestLine, '.');
  log(longest, "log the longest line that there is");
}

}  // namespace torture
