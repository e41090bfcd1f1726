// The demo: the whole road from a new document to one that came back from the disk in another process.
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "host/Program.h"
#include "host/bundles/BundleSet.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/gallery/DemoScene.h"
#include "host/listings/DocumentListing.h"
#include "host/pictures/DocumentPicture.h"
#include "host/storage/DocumentFile.h"
#include "host/storage/WholeFiles.h"
#include "host/terminal/Output.h"
#include "host/text/Printable.h"

extern char** environ;

namespace host {
namespace {

// Runs this program again and returns its exit code, or -1 when it could not be run.
int RunSelf(const std::vector<std::string>& words) {
  std::vector<std::string> all = {Program::ExecutablePath()};
  for (const auto& bundle : Program::Bundles().Loaded()) {
    all.emplace_back("--only-bundle");
    all.push_back(bundle->Path());
  }
  all.insert(all.end(), words.begin(), words.end());
  std::vector<char*> arguments;
  arguments.reserve(all.size() + 1);
  for (std::string& word : all) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  Output::Flush();
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, Output::Descriptor(), STDOUT_FILENO);
  pid_t child = 0;
  const int failure = posix_spawn(&child, arguments[0], &files, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  if (failure != 0) return -1;
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Result<> SaveScene(const Document& document, const std::string& base) {
  const std::string listing = FullListing(document);
  if (const auto done = WriteDocument(document, base + ".akd"); !done) return done.Why();
  if (const auto done = ReplaceFile(base + ".txt", listing.data(), listing.size()); !done) return done.Why();
  if (const auto done = ExportPicture(document, base + ".png", {}, nullptr); !done) return done.Why();
  if (const auto done = ExportPicture(document, base + ".pdf", {}, nullptr); !done) return done.Why();
  return ExportPicture(document, base + ".svg", {}, nullptr);
}

int RunDemo(const std::vector<std::string>& words) {
  CommandLine line({}, {});
  if (const auto done = line.Parse(words, 0, 1); !done) return Fail(done.Why());
  const std::string folder = line.Positional().empty() ? "out" : line.Positional()[0];
  if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) {
    return Fail("can't make the folder \"" + folder + "\": " + std::strerror(errno));
  }
  const std::string base = folder + "/scene";
  for (const auto& bundle : Program::Bundles().Loaded())
    Output::Print("Loaded the bundle %s\n", Printable(bundle->Path()).c_str());
  {
    const auto session = MakeDemoScene();
    if (!session) return Fail(session.Why());
    if (const auto done = SaveScene((*session)->Doc(), base); !done) return Fail(done.Why());
    Output::Print("Drew the scene into %s.png (.pdf, .svg), saved it as %s.akd, and closed it.\n",
                  Printable(base).c_str(), Printable(base).c_str());
  }
  Output::Print("Opening it again in a new process:\n");
  const int code = RunSelf({"verify", base + ".akd", "--listing", base + ".txt", "--picture", base + ".png"});
  if (code != 0) return Fail("the document did not come back as it was saved");
  Output::Print("Done. The picture is %s.png\n", Printable(base).c_str());
  return 0;
}

int RunVerify(const std::vector<std::string>& words) {
  CommandLine line({"listing", "picture", "scale"}, {});
  if (const auto done = line.Parse(words, 1, 1); !done) return Fail(done.Why());
  const std::string& path = line.Positional()[0];
  const auto document = ReadDocument(path);
  if (!document) return Fail(document.Why());
  std::string report = "  " + Printable(path) + " opened: " + std::to_string((*document)->ObjectCount()) + " objects\n";
  if (line.Has("listing")) {
    std::string expected;
    if (const auto done = ReadWholeFile(line.Value("listing", ""), &expected); !done) return Fail(done.Why());
    if (expected != FullListing(**document)) return Fail("\"" + path + "\" has other properties than its listing");
    report += "  every property is as it was\n";
  }
  if (line.Has("picture")) {
    std::string expected;
    std::vector<unsigned char> png;
    if (const auto done = ReadWholeFile(line.Value("picture", ""), &expected); !done) return Fail(done.Why());
    if (const auto done = RenderPicture(**document, PictureKind::kPNG, {}, nullptr, &png); !done)
      return Fail(done.Why());
    if (expected != std::string(png.begin(), png.end())) return Fail("\"" + path + "\" draws other pixels");
    report += "  every pixel is as it was\n";
  }
  Output::Write(report);
  return 0;
}

}  // namespace

const Command kDemoCommand = {
    "demo", "make, draw, save and reopen a scene",
    "usage: objecthost demo [FOLDER]\n\n"
    "Makes a scene of rounded rectangles, uses the inspector panel, draws the scene, saves it, opens it\n"
    "again in a new process, and checks that every property and every pixel came back. Leaves scene.png,\n"
    "scene.pdf, scene.svg, scene.akd and scene.txt in FOLDER (out). Exits with 1 when anything differs.\n",
    &RunDemo};

const Command kVerifyCommand = {
    "verify", "compare a document with an earlier listing and picture",
    "usage: objecthost verify FILE [--listing TEXT] [--picture PICTURE.png]\n\n"
    "Opens a document and compares it with what \"list --all\" printed and what \"draw\" drew of it at\n"
    "scale 1. Exits with 1 when anything differs.\n",
    &RunVerify};

}  // namespace host
