// The general table, but for texts.
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "kit/files/AKFilePath.h"
#include "kit/host/AKHostServices.h"
#include "kit/panels/AKGUIDesc.h"
#include "kit/values/AKValueHelpers.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Examiner.h"
#include "torture/Report.h"

namespace torture {
namespace {

void AskProperty(const AKString& key, bool mayBe) {
  const AKValue before = AKValueSetasAKString(AKString("as it was"));
  AKValue out = before;
  Call call("general.getApplicationProperty", "ask for " + TextOf(key), kGeneralSection);
  const int status = call([&] { return NKGetApplicationProperty(key, &out); });
  if (status == 0 && mayBe) return call.Expect(!out.IsEmpty() && !(out == before), "a value", TextOf(out));
  call.ExpectStatus(kStatusNoProperty, status);
  call.ExpectIs(before, out);
}

void AskProperties() {
  AskProperty("Name", true);
  const AKString unknown[] = {"", "name\x01", ".", "Name.Name", OddText(), LongText(), AKString("Name\0", 5)};
  for (const AKString& key : unknown) AskProperty(key, false);
  AKValue first;
  Call call("general.getApplicationProperty", "ask for \"Name\" and change the value that came", kGeneralSection);
  if (call([&] { return NKGetApplicationProperty("Name", &first); }) != 0) return;
  const AKValue kept = first;
  if (AKString* text = first.GetasAKString()) *text += " changed";
  AKValue second;
  call([&] { return NKGetApplicationProperty("Name", &second); });
  call.ExpectIs(kept, second);
}

// A path is the host's and stays as it is, whatever is asked for meanwhile.
void AskPaths() {
  constexpr unsigned int kKinds[] = {0, 1, 2, 3, 64, 100, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
  std::vector<std::pair<const AKFilePath*, AKString>> paths;
  for (const unsigned int kind : kKinds) {
    Call call("general.getStandardPath", "ask for kind " + TextOf(kind), kGeneralSection);
    const AKFilePath* path = call([&] { return &NKGetStandardPath(kind); });
    if (path == nullptr) return call.Expect(false, "a path, empty for an unknown kind", "a null reference");
    call.Expect(path->IsEmpty() || path->IsAbsolute(), "an absolute path, or the empty one", TextOf(path->Text()));
    paths.emplace_back(path, AKString(path->Text().CStr(), path->Text().Length()));
  }
  for (std::size_t i = 0; i < paths.size(); ++i) {
    Call call("general.getStandardPath", "look again at the path of kind " + TextOf(kKinds[i]), kGeneralSection);
    call.ExpectIs(paths[i].second, paths[i].first->Text());
    const AKFilePath* again = call([&] { return &NKGetStandardPath(kKinds[i]); });
    if (again != nullptr) call.ExpectIs(paths[i].second, again->Text());
  }
}

// The result, and what became of the path.
void AskFile(const char* entry, int (*dialog)(AKFilePath&, const AKString&, const AKString&), const AKString& title,
             bool isRefused) {
  const AKFilePath before("/tmp/as it was.akd");
  AKFilePath path = before;
  Call call(entry, "open it with the title " + TextOf(title), isRefused ? kWithinSection : kDialogSection);
  const int result = call([&] { return dialog(path, title, "akd;png"); });
  if (isRefused || (result != 0 && result != 1)) call.ExpectIs(0, result);
  if (result != 1) call.ExpectIs(before.Text(), path.Text());
  if (result == 1) call.Expect(!path.IsEmpty(), "the path that was chosen", "an empty one");
}

void AskProgress() {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double fraction : {0.0, 0.5, 1.0, -1.0, 2.0, 1e308, kInfinity, -kInfinity, std::nan("")}) {
    Call call("general.windowProgress", "show " + TextOf(fraction), kDialogSection);
    const int result = call([&] { return AKGUIWindowProgress(0, fraction, OddText()); });
    call.Expect(result == 0 || result == 1, "0 or 1", TextOf(result));
  }
  for (const unsigned int command : {1U, 1U, 7U, 0xFFFFFFFFU, 1U}) {
    Call call("general.windowProgress", "give command " + TextOf(command), kDialogSection);
    call([&] { return AKGUIWindowProgress(command, 0.5, LongText()); });
  }
}

}  // namespace

void AskGeneral(const Moment& moment) {
  AskProperties();
  AskPaths();
  AskTexts();
  AskLog();
  AskDialogs(moment);
}

void AskDialogs(const Moment& moment) {
  if (moment.ID() == MomentID::kStart || Moment::MayEdit()) return;
  AskFile("general.dialogSaveFile", &AKGUIDialogSaveFile, "Refuse This", true);
  AskFile("general.dialogOpenFile", &AKGUIDialogOpenFile, "Refuse This", true);
}

void AskDialogsOpen(Examiner* examiner, AKGUIDesc*) {
  AskFile("general.dialogSaveFile", &AKGUIDialogSaveFile, "Save", false);
  AskFile("general.dialogOpenFile", &AKGUIDialogOpenFile, "Open", false);
  AskFile("general.dialogSaveFile", &AKGUIDialogSaveFile, OddText(), false);
  AskFile("general.dialogOpenFile", &AKGUIDialogOpenFile, LongText(), false);
  AskProgress();
  const auto panel = std::make_unique<AKGUIDesc>("-title:\"A dialog\"");
  panel->NewController("-id:1 -type:Button -title:Close -pos:(10;10) -dim:(100;22)");
  constexpr int kBefore = 12345;
  int status = -1;
  const auto open = [&](const char* done, int (Examiner::*proc)(AKGUIDesc&, AKGUIEvent&)) {
    int result = kBefore;
    Call call("panel.openModalDialog", done, kPanelSection);
    status = call([&] { return panel->OpenModalDialog(static_cast<AKModalProc>(proc), examiner, &result); });
    call.Expect(status == 0 || status == -1, "status 0, or -1 without a window", TextOf(status));
    call.ExpectIs(status == 0 ? 17 : kBefore, result);
  };
  open("open a dialog whose button closes it with 17", &Examiner::CloseByButton);
  open("open a dialog that its procedure closes with 17 as soon as it is filled", &Examiner::CloseAtOnce);
  Call again("panel.openModalDialog", "open it once more without a place for the result", kPanelSection);
  const auto proc = static_cast<AKModalProc>(&Examiner::CloseAtOnce);
  again.ExpectStatus(status, again([&] { return panel->OpenModalDialog(proc, examiner, nullptr); }));
}

}  // namespace torture
