// What is asked again and again must not take more memory each time.
#include <dlfcn.h>
#include <malloc.h>

#include "torture/Ask.h"
#include "torture/Call.h"

namespace torture {
namespace {

constexpr int kTimes = 12;
constexpr std::size_t kLeast = 16;  // bytes of the smallest block

std::size_t Taken() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

// After the first times, in which stores fill up, the bytes taken grow with each: by a block at least where one leaks.
template <typename Ask>
void ExpectFlat(std::string_view entry, const char* done, const char* section, Ask ask) {
  std::size_t taken[3] = {};
  for (std::size_t& one : taken) {
    for (int i = 0; i < kTimes; ++i) ask();
    one = Taken();
  }
  const auto grown = [&](int i) { return taken[i] > taken[i - 1] ? taken[i] - taken[i - 1] : 0; };
  const Call call(entry, done, section);
  call.Expect(grown(1) < kTimes * kLeast || grown(2) < kTimes * kLeast, "no memory that stays taken",
              std::to_string(grown(2)) + " bytes more with each 12 times");
}

}  // namespace

void AskMemory(const Moment& moment) {
  if (dlsym(RTLD_DEFAULT, "__asan_init") != nullptr)
    return;  // it finds more by itself, and its allocator tells nothing
  ExpectFlat("general", "ask the general table again and again", kGeneralSection, [&] { AskGeneral(moment); });
  ExpectFlat("class", "make, copy and end objects again and again", kClassSection, [&] { AskObjects(moment); });
  ExpectFlat("class", "write and read objects again and again", kClassSection, [&] { AskRecords(moment); });
  ExpectFlat("class", "look classes up again and again", kClassSection, [] { AskClasses(); });
  ExpectFlat("class.addInspectorGUIDesc", "give panels that are refused again and again", kWithinSection,
             [] { AskSetupAgain(); });
  ExpectFlat("handler.destruct", "make and end handlers again and again", kHandlerSection, [] { AskManyHandlers(); });
  ExpectFlat("control", "make and end controls again and again", kControlSection, [] { AskControls(); });
  ExpectFlat("panel", "make and end panels again and again", kPanelSection, [&] { AskPanels(moment); });
}

}  // namespace torture
