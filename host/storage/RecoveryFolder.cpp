#include "host/storage/RecoveryFolder.h"

#include <cstdlib>
#include <fstream>

#include "kit/files/AKFileUtils.h"
#include "kit/files/AKStandardFolders.h"

namespace host {

std::string RecoveryFolder() {
  const AKFilePath data = AKStandardFolderGetPath(AKStandardFolder::kApplicationSupport);
  return data.IsEmpty() ? std::string()
                        : std::string(AKFileUtils::GetAsSystemPath(data).CStr()) + "/objecthost/recovery";
}

// The program's name in the second field may hold blanks and parentheses; the 20th field behind it is the time.
unsigned long long StartOfProcess(unsigned long long process) {
  std::ifstream stream("/proc/" + std::to_string(process) + "/stat");
  std::string text;
  std::getline(stream, text);
  const std::size_t name = text.rfind(')');
  if (name == std::string::npos) return 0;
  std::size_t field = name + 1;
  for (int i = 0; i < 19 && field != std::string::npos; ++i) field = text.find(' ', field + 1);
  return field == std::string::npos ? 0 : std::strtoull(text.c_str() + field, nullptr, 10);
}

}  // namespace host
