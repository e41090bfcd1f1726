// Whether the bundle that examines hosts finds those that are wrong, and nothing in the one that is right.
//
// usage: torture_tests BUNDLE CATALOGUES ABI_JSON [PART PARTS]
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <regex>

#include "host/storage/WholeFiles.h"
#include "host/text/Localisation.h"
#include "host/torture/Torture.h"
#include "host/validator/Heap.h"
#include "tests/host/torture/HostMutants.h"

namespace host {
namespace {

HostTables RealTables() {
  const AKHostServiceRecord record = Host::Instance().ServiceRecord();
  return {
      record, *record.generalTable, *record.classTable, *record.handlerTable, *record.controlTable, *record.panelTable};
}

std::vector<HostMutant> AllMutants() {
  std::vector<HostMutant> all;
  for (const auto& more : {GeneralMutants(), ClassMutants(), HandlerMutants(), ControlMutants(), PanelMutants()}) {
    all.insert(all.end(), more.begin(), more.end());
  }
  return all;
}

// The bundle with the tables, which are copied; those that the record lacks stay out.
TorturePlan PlanOf(const std::string& bundle, const HostTables& tables) {
  TorturePlan plan;
  plan.bundle = bundle;
  plan.services = tables.record;
  plan.services.generalTable = &tables.general;
  plan.services.classTable = &tables.classes;
  plan.services.handlerTable = tables.record.handlerTable == nullptr ? nullptr : &tables.handler;
  plan.services.controlTable = &tables.control;
  plan.services.panelTable = &tables.panel;
  return plan;
}

// The report names the entry, or its table where only the memory tells; or as what was called when the host crashed; or
// as one that was not reached. What becomes of log lines only the host sees.
bool IsFound(const HostMutant& mutant, const TortureResult& result) {
  const std::string entry = mutant.entry;
  const std::string table = entry.substr(0, entry.find('.'));
  const std::string& json = result.json;
  if (json.find("\"entry\":\"" + entry + "\"") != json.npos || json.find("\"entry\":\"" + table + "\"") != json.npos) {
    return true;
  }
  // A sanitizer ends the process by itself.
  const auto end = result.outcome.end;
  if (end == validator::Outcome::End::kKilled || end == validator::Outcome::End::kExited)
    return json.find("\"" + entry + " at ") != json.npos;
  if (entry == "general.logMessage") return result.outcome.doing == "look at the log";
  const std::size_t list = json.find("\"entriesNotReached\":");
  return json.substr(list, json.find("\n", list) - list).find("\"" + entry + "\"") != json.npos;
}

// A sanitizer tells of these itself: its allocator says nothing of what is taken, and it ends a process that reads what
// was freed before the bundle can say anything.
bool IsTheSanitizers(const std::string& fault) {
  return validator::HasSanitizer() && (fault.starts_with("frees nothing") || fault.starts_with("forgets panels") ||
                                       fault == "keeps the name of another's" || fault == "one buffer for all texts" ||
                                       fault == "ends what it still uses");
}

// Whether the bundle finds it.
bool Try(const std::string& bundle, const HostMutant& mutant, bool* isSkipped) {
  static HostTables tables;
  tables = gReal;
  mutant.make(&tables);
  TorturePlan plan = PlanOf(bundle, tables);
  plan.endsEarly = true;
  const auto result = Torture(plan);
  *isSkipped = IsTheSanitizers(mutant.fault);
  if (*isSkipped || (result && IsFound(mutant, *result))) return true;
  std::printf("NOT FOUND: %s: %s\n", mutant.entry, mutant.fault);
  if (result)
    std::printf("%s%s\n%s\n", result->text.c_str(), result->outcome.seen.c_str(), result->outcome.output.c_str());
  return false;
}

int FindAll(const std::string& bundle, std::size_t part, std::size_t parts) {
  const std::vector<HostMutant> mutants = AllMutants();
  std::size_t tried = 0;
  std::size_t found = 0;
  for (std::size_t i = part; i < mutants.size(); i += parts) {
    bool isSkipped = false;
    const bool isFound = Try(bundle, mutants[i], &isSkipped);
    tried += isSkipped ? 0 : 1;
    found += isFound && !isSkipped ? 1 : 0;
  }
  std::printf("%zu of %zu wrong hosts found: %.0f %%\n", found, tried,
              100.0 * static_cast<double>(found) / static_cast<double>(tried));
  return found == tried && tried != 0 ? 0 : 1;
}

// Every entry of the tables, as the description of the interface lists them, is another one in some mutant.
bool IsEachEntryChanged(const std::string& abi) {
  static const std::map<std::string, std::size_t> kTables = {{"AKGeneralTable", offsetof(HostTables, general)},
                                                             {"AKClassTable", offsetof(HostTables, classes)},
                                                             {"AKHandlerTable", offsetof(HostTables, handler)},
                                                             {"AKControlTable", offsetof(HostTables, control)},
                                                             {"AKPanelTable", offsetof(HostTables, panel)}};
  std::vector<HostTables> changed;
  for (const HostMutant& mutant : AllMutants()) mutant.make(&changed.emplace_back(gReal));
  static const std::regex kItem(R"re("(A[KG]\w+)": \{|"offset": (\d+),\s+"name": "(\w+)")re");
  std::string table;
  std::size_t count = 0;
  bool isEach = true;
  for (std::sregex_iterator item(abi.begin(), abi.end(), kItem), end; item != end; ++item) {
    if ((*item)[1].matched) table = (*item)[1];
    if ((*item)[1].matched || !kTables.contains(table)) continue;
    const std::size_t at = kTables.at(table) + std::stoul((*item)[2]);
    const auto isOther = [&](const HostTables& one) {
      return std::memcmp(reinterpret_cast<const char*>(&one) + at, reinterpret_cast<const char*>(&gReal) + at, 8) != 0;
    };
    ++count;
    if (std::any_of(changed.begin(), changed.end(), isOther)) continue;
    std::printf("no mutant changes %s.%s\n", table.c_str(), (*item)[3].str().c_str());
    isEach = false;
  }
  std::printf("%zu entries\n", count);
  return isEach && count > 80;
}

int RunAll(const std::string& bundle, std::size_t part, std::size_t parts) {
  const auto right = Torture(PlanOf(bundle, gReal));
  if (!right || !right->IsPassed()) {
    std::printf("a false alarm: %s\n", right ? (right->text + right->outcome.seen + right->outcome.output).c_str()
                                             : right.Why().English().c_str());
    return 1;
  }
  return FindAll(bundle, part, parts);
}

}  // namespace

const HostTables gReal = RealTables();

}  // namespace host

int main(int count, char** words) {
  if (count < 4) return 2;
  setenv("AK_TORTURE_ROUNDS", "1", 1);
  host::Localisation::Instance().AddFolder(words[2]);
  std::string abi;
  if (!host::ReadWholeFile(words[3], &abi) || !host::IsEachEntryChanged(abi)) return 1;
  const std::size_t part = count > 5 ? std::strtoul(words[4], nullptr, 10) : 0;
  return host::RunAll(words[1], part, count > 5 ? std::strtoul(words[5], nullptr, 10) : 1);
}
