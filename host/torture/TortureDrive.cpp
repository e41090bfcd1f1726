#include "host/torture/TortureDrive.h"

#include <clocale>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>

#include "graphics/bitmaps/AGBitmap.h"
#include "host/HostLog.h"
#include "host/bundles/Bundle.h"
#include "host/panels/Inspector.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/session/DocumentSession.h"
#include "host/storage/DocumentFile.h"
#include "host/storage/WholeFiles.h"
#include "host/tables/SlotCall.h"
#include "host/torture/Torture.h"
#include "host/torture/TortureInterface.h"
#include "kit/panels/AKGUIEvent.h"

namespace host {
namespace {

using validator::Trial;

constexpr AKClassID kExaminer("akExam");
constexpr unsigned int kIdle = HostPanel::kEventIdle;
// The controls of the examiner's panel; docs/torture.md tells what each does.
enum Control : unsigned int { kValue = 1, kEdit = 2, kDialogs = 3, kMemory = 4, kDeleteMe = 5 };

/// A sitting with the bundle.
class Drive {
 public:
  /// `begin` is told what is done next.
  Drive(Trial& trial, DocumentSession* session, std::function<void(const std::string&)> begin)
      : trial_(trial), session_(*session), begin_(std::move(begin)) {
    Host::Instance().Sessions().MakeCurrent(session_);
  }

  void Run();

 private:
  void Expect(const Result<>& done) const {
    if (!done) trial_.Fail("it is done", done.Why().English());
  }
  std::string Bytes() const;
  ObjectID FirstExaminer() const;
  void Draw() const;
  void WriteAndRead() const;
  void Fill(ObjectID id);
  void Change(ObjectID id, Control control);
  void ChangeProperty(ObjectID id);
  void UndoAll(const std::string& first);

  Trial& trial_;
  DocumentSession& session_;
  std::function<void(const std::string&)> begin_;
};

std::string Drive::Bytes() const {
  begin_("write the document");
  AKFile stream(AKFile::kModeMemory);
  std::optional<Problem> unwritable;
  if ((stream.CreateForReadWrite() | WriteDocument(session_.Doc(), stream, &unwritable)) != 0) {
    trial_.Fail("the document can be written", unwritable ? unwritable->English() : "a status");
  }
  const void* data = nullptr;
  unsigned long long size = 0;
  stream.GetMemoryStreamDataPtr(&data, &size);
  return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

void Drive::WriteAndRead() const {
  const std::string bytes = Bytes();
  begin_("read the document again");
  AKFile stream(bytes.data(), static_cast<unsigned int>(bytes.size()));
  stream.OpenForRead();
  const auto again = ReadDocument(stream, "the document");
  if (!again) trial_.Fail("the document can be read again", again.Why().English());
  trial_.Expect(UnreadObjects(**again).empty(), "each object reads its record", "one does not");
}

ObjectID Drive::FirstExaminer() const {
  ObjectID found = kNoObjectID;
  session_.Doc().ForEachObject([&](const DocumentObject& object) {
    if (found == kNoObjectID && object.classID == kExaminer) found = object.id;
  });
  if (found == kNoObjectID) trial_.Fail("an object of the bundle's", "none is left");
  return found;
}

void Drive::Draw() const {
  begin_("draw the document");
  const AGBitmap bitmap(64, 64, AGBitmap::kFlagZeroFill);
  DrawObjects(session_.Doc(), bitmap.GetContextOfBitmap(), 0.25);
}

void Drive::Fill(ObjectID id) {
  begin_("fill the panel");
  Inspector inspector;
  Expect(inspector.Open(&session_, {id}));
  Expect(inspector.Fill());
  begin_("send an idle event");
  Expect(inspector.Send(kIdle, 0, nullptr));
}

void Drive::Change(ObjectID id, Control control) {
  begin_("change control " + std::to_string(control));
  Inspector inspector;
  Expect(inspector.Open(&session_, {id}));
  std::string name;
  Expect(inspector.Enter(control, control == kValue ? "0.25" : "", &name));
  trial_.Expect(!name.empty(), "the object names the change", "no name");
}

void Drive::ChangeProperty(ObjectID id) {
  begin_("ask for properties and set one");
  Expect(session_.Objects().SetProperties({id}, {{"Value", "0.75"}}));
  const AKObject* object = session_.Doc().Find(id)->instance.get();
  begin_("ask for the natural bounds");
  if (HasSlot(*object->Class(), kAKMethodGetNaturalBounds)) {
    CallSlot<AGRect>(*object->Class(), kAKMethodGetNaturalBounds, object);
  }
}

// Everything back to the first state, everything done again, and back.
void Drive::UndoAll(const std::string& first) {
  const std::string last = Bytes();
  const std::size_t steps = session_.Steps().Known().Position();
  begin_("undo " + std::to_string(steps) + " steps");
  session_.Steps().GoTo(0);
  trial_.Expect(Bytes() == first, "the document as it was", "another one");
  begin_("redo " + std::to_string(steps) + " steps");
  session_.Steps().GoTo(steps);
  trial_.Expect(Bytes() == last, "the document as it was before the undo", "another one");
  Draw();
}

void Drive::Run() {
  const std::string empty = Bytes();
  for (const double x : {10.0, 100.0}) {
    begin_("add an object");
    const auto added = session_.Objects().Add(kExaminer, "-default", {{x, 10, x + 80, 60}, 0.1});
    if (!added) trial_.Fail("an object is added", added.Why().English());
  }
  const ObjectID id = FirstExaminer();
  Draw();
  WriteAndRead();
  ChangeProperty(id);
  Fill(id);
  for (const Control control : {kValue, kEdit, kDialogs, kMemory, kEdit}) Change(id, control);
  UndoAll(empty);
  begin_("copy, paste, duplicate and delete");
  Expect(session_.Clipboard().Paste(session_.Clipboard().Copy({FirstExaminer()}), 5, 5));
  Expect(session_.Clipboard().Duplicate({FirstExaminer()}, 5, 5));
  Expect(session_.Objects().Delete({FirstExaminer()}));
  const std::string before = Bytes();
  {
    EditStep step(session_.Steps(), "Several in One");
    Change(FirstExaminer(), kEdit);
    Change(FirstExaminer(), kValue);
    Change(FirstExaminer(), kDeleteMe);
    step.End();
  }
  begin_("undo a step of many changes");
  trial_.Expect(session_.Steps().Undo() && Bytes() == before, "the document as it was before the step", "another one");
  UndoAll(empty);
  WriteAndRead();
}

// The numbered lines of the bundle, each in its turn and whole.
class LogWatch {
 public:
  LogWatch() {
    HostLog::Instance().sink = [this](const std::string& line) { Take(line); };
  }
  LogWatch(const LogWatch&) = delete;
  LogWatch& operator=(const LogWatch&) = delete;
  ~LogWatch() { HostLog::Instance().sink = nullptr; }

  /// That they are as many as the report in the file tells, and none was lost.
  void Expect(Trial& trial, const std::string& report) const {
    std::string json;
    const auto read = ReadWholeFile(report, &json);
    trial.Expect(read.operator bool(), "a report", "none");
    const unsigned long logged = NumberIn(json, "logLines");
    trial.Expect(lost_.empty() && lines_ == logged,
                 std::to_string(logged) + " numbered lines in the log, whole and in order",
                 lost_.empty() ? std::to_string(lines_) : lost_ + " behind line " + std::to_string(lines_ - 1));
  }

 private:
  void Take(const std::string& line) {
    constexpr std::string_view kMark = "HostTorture line ";
    const std::size_t at = line.find(kMark);
    if (at == std::string::npos) return;
    const unsigned long number = std::strtoul(line.c_str() + at + kMark.size(), nullptr, 10);
    if (number != ++lines_ && lost_.empty()) lost_ = "line " + std::to_string(number);
    constexpr std::size_t kLongest = 32767;
    if (line.ends_with("....") && line.size() - at != kLongest && lost_.empty()) lost_ = "a line that was cut";
  }

  unsigned int lines_ = 0;
  std::string lost_;
};

}  // namespace

void DriveTorture(Trial& trial, const TorturePlan& plan, const std::string& report) {
  // A language in which the bundle's texts differ from their keys.
  setenv("LANGUAGE", "de", 1);
  setenv("AK_TORTURE_LANGUAGE", "de", 1);
  std::setlocale(LC_MESSAGES, "C.UTF-8");
  const LogWatch log;
  TortureInterface interface(trial);
  Host::Instance().userInterface = &interface;
  const auto begin = [&](const std::string& what) {
    std::string found;
    if (plan.endsEarly && ReadWholeFile(report, &found) && NumberIn(found, "findings") != 0) trial.Skip("it is found");
    trial.Do(what);
  };
  // A document is open already: the bundle must not see it before it has started.
  auto session = std::make_unique<DocumentSession>(std::make_unique<Document>(AGSize{200, 200}));
  Host::Instance().Sessions().MakeCurrent(*session);
  trial.Do("load the bundle");
  auto bundle = Bundle::Load(plan.bundle, plan.services);
  if (!bundle) trial.Fail("the bundle starts", bundle.Why().English());
  Drive(trial, session.get(), begin).Run();
  begin("close the document");
  session.reset();
  begin("unload the bundle");
  (*bundle).reset();
  Host::Instance().userInterface = nullptr;
  trial.Do("look at the log");
  log.Expect(trial, report);
}

}  // namespace host
