// What belongs to the whole process, the host's and every other bundle's: a bundle leaves it alone.
#include <fenv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <filesystem>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/validator/Subject.h"

namespace host::validator {
namespace {

// Everything that a host does with each class, once.
void UseAll(Trial& trial) {
  const auto* subject = new Subject(trial);  // stays as long as the process
  const AGBitmap bitmap(64, 64, AGBitmap::kFlagZeroFill);
  for (const ClassCalls& cls : subject->Classes()) {
    const Instance object = cls.Make();
    const State state = StateOf(cls, object);
    if (cls.Has(kAKMethodInitFromFile)) cls.MakeFrom(state.record);
    cls.Set(object, state.properties);
    AKDrawEvent event;
    event.bounds = {8, 8, 56, 56};
    cls.Draw(object, bitmap.GetContextOfBitmap(), event);
    if (cls.Panel() != nullptr) cls.Send(object, AKGUIEvent::kFillControls, 0);
  }
}

template <typename Ask>
void ExpectKept(Trial& trial, const char* what, Ask ask) {
  const auto before = ask();
  UseAll(trial);
  const auto after = ask();
  trial.Do("start and use the bundle");
  trial.Expect(after == before, std::string(what) + " \"" + before + "\"", std::string(what) + " \"" + after + "\"");
}

void Folder(Trial& trial) {
  ExpectKept(trial, "the working folder", [] { return std::filesystem::current_path().string(); });
}

void Permissions(Trial& trial) {
  ExpectKept(trial, "the mask of permissions", [] {
    const mode_t mask = umask(0);
    umask(mask);
    return std::to_string(mask);
  });
}

void Locale(Trial& trial) {
  ExpectKept(trial, "the locale", [] { return std::string(std::setlocale(LC_ALL, nullptr)); });
}

void Rounding(Trial& trial) {
  ExpectKept(trial, "the rounding of numbers", [] { return std::to_string(fegetround()); });
}

void Environment(Trial& trial) {
  ExpectKept(trial, "the environment", [] {
    std::string all;
    for (char** entry = environ; *entry != nullptr; ++entry) all += std::string(*entry) + "\n";
    return all;
  });
}

void Signals(Trial& trial) {
  ExpectKept(trial, "the handlers of signals", [] {
    std::string all;
    for (int number = 1; number < 32; ++number) {
      struct sigaction action {};
      sigaction(number, nullptr, &action);
      all += std::to_string(reinterpret_cast<std::uintptr_t>(action.sa_handler)) + " ";
    }
    return all;
  });
}

void Output(Trial& trial) {
  int ends[2];
  if (pipe(ends) != 0) trial.Skip("no pipe can be made");
  const int kept = dup(STDOUT_FILENO);
  std::fflush(stdout);
  dup2(ends[1], STDOUT_FILENO);
  UseAll(trial);
  std::fflush(nullptr);
  dup2(kept, STDOUT_FILENO);
  close(ends[1]);
  char text[256];
  const ssize_t count = read(ends[0], text, sizeof(text));
  trial.Do("start and use the bundle");
  trial.Expect(count <= 0, "nothing on standard output",
               "\"" + std::string(text, count > 0 ? static_cast<std::size_t>(count) : 0) + "\"");
}

}  // namespace

std::vector<Check> ProcessChecks() {
  return {
      {"process-folder", "The bundle stays out of the working folder, from which the host opens files.", 2, &Folder},
      {"process-permissions", "The bundle leaves the mask of permissions, or the host's documents get others.", 2,
       &Permissions},
      {"process-locale", "The bundle leaves the process's locale, or numbers in the host's files get other points.", 2,
       &Locale},
      {"process-rounding", "The bundle leaves the rounding of numbers, with which everything is drawn.", 2, &Rounding},
      {"process-environment", "The bundle leaves the environment variables, which are the host's.", 2, &Environment},
      {"process-signals", "The bundle leaves the handlers of signals, with which the host saves the user's work.", 2,
       &Signals},
      {"process-output", "The bundle prints nothing: standard output is the host's, and the log is there for it.", 2,
       &Output},
  };
}

}  // namespace host::validator
