// What plug-ins do to a document, through the service tables and from within their own methods.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <functional>
#include <utility>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/Host.h"
#include "host/HostLog.h"
#include "host/bundles/Instance.h"
#include "host/listings/MethodName.h"
#include "host/model/InstanceCall.h"
#include "host/model/ObjectProperties.h"
#include "host/model/ObjectRecord.h"
#include "host/panels/Inspector.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/tables/SlotCall.h"
#include "kit/objects/AKHandler.h"
#include "kit/values/AKValueHelpers.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

AKObject* NewInstance(const char* format, ...) {
  va_list list;
  va_start(list, format);
  AKObject* object = AKClass::NewObjectWithArgs(nullptr, AKClassID("stdRect"), format, list);
  va_end(list);
  return object;
}

AKObjectArray ArrayOf(std::initializer_list<AKObject*> objects) { return AKObjectArray(objects); }

class HandlerTest : public SessionFixture {
 protected:
  void SetUp() override {
    SessionFixture::SetUp();
    HostLog::Instance().sink = [this](const std::string& line) { log_.push_back(line); };
    session_ = std::make_unique<DocumentSession>(MakeDocument(3));
    Host::Instance().Sessions().MakeCurrent(*session_);
  }
  void TearDown() override {
    session_.reset();
    HostLog::Instance().sink = nullptr;
  }

  AKObject* InstanceAt(std::size_t number) { return session_->Doc().ObjectAt(number).instance.get(); }
  void SetCurvature(AKObject* object, double curvature) {
    AKDictionary properties;
    properties.SetValue("Rounding", AKValueSetasFloat64(curvature));
    CallSlot<int, const AKDictionary&>(*object->Class(), kAKMethodSetObjectProperties, object, properties);
  }

  std::vector<std::string> log_;
  std::unique_ptr<DocumentSession> session_;
};

TEST_F(HandlerTest, Calls_AreNamedSteps_ThatCanBeUndone) {
  AKHandler handler(nullptr);
  ASSERT_TRUE(handler.IsActive());
  const std::string before = Bytes(*session_);
  handler.SetActionName("Scatter");
  EXPECT_TRUE(handler.ActionName() == "Scatter");

  ASSERT_EQ(handler.AddObjects(ArrayOf({NewInstance("-default"), NewInstance("")}), InstanceAt(0), 0), 0);
  EXPECT_EQ(session_->Doc().ObjectCount(), 5U);
  EXPECT_EQ(session_->Steps().UndoTitle(), "Undo Scatter");
  EXPECT_EQ(TextOf(PropertiesOf(session_->Doc().ObjectAt(1)).GetValue("Rounding")), "0.5") << "in front of its parent";
  ASSERT_EQ(handler.AddObject(NewInstance("-default"), handler.GetMasterLayer(), 1), 0);
  EXPECT_EQ(TextOf(PropertiesOf(session_->Doc().ObjectAt(0)).GetValue("Rounding")), "0.5") << "behind all others";

  SetCurvature(InstanceAt(5), 0.25);
  const std::string unrevised = Bytes(*session_);
  ASSERT_EQ(handler.ReviseObject(InstanceAt(5)), 0);
  ASSERT_EQ(handler.DeleteObjects(ArrayOf({InstanceAt(0), InstanceAt(2)})), 0);
  EXPECT_EQ(session_->Steps().Known().Count(), 4U);
  ASSERT_TRUE(session_->Steps().Undo());
  EXPECT_EQ(Bytes(*session_), unrevised);
  ASSERT_TRUE(session_->Steps().Undo());
  EXPECT_NE(Bytes(*session_), unrevised) << "the revision was a step of its own";
  EXPECT_TRUE(session_->Steps().GoTo(0));
  EXPECT_EQ(Bytes(*session_), before);
}

TEST_F(HandlerTest, BadCalls_AreRefusedWhole_AndLogged) {
  AKHandler handler(nullptr);
  const std::string before = Bytes(*session_);
  AKObject* fresh = NewInstance("");
  const AKObjectArray bad[] = {ArrayOf({fresh, nullptr}), ArrayOf({fresh, fresh}), ArrayOf({InstanceAt(0)}),
                               ArrayOf({handler.GetMasterLayer()})};
  for (const AKObjectArray& objects : bad) EXPECT_LT(handler.AddObjects(objects, nullptr, 0), 0);
  EXPECT_LT(handler.AddObject(fresh, fresh, 0), 0) << "its parent is in no document";
  EXPECT_LT(handler.DeleteObjects(ArrayOf({InstanceAt(1), fresh})), 0);
  EXPECT_LT(handler.ReviseObject(fresh), 0);
  EXPECT_EQ(Bytes(*session_), before);
  EXPECT_EQ(log_.size(), 7U);
  session_.reset();
  EXPECT_FALSE(handler.IsActive());
  EXPECT_EQ(handler.GetMasterLayer(), nullptr);
  EXPECT_LT(handler.AddObject(fresh, nullptr, 0), 0);
  AKClass::DeleteObject(fresh);
}

// Methods put in the place of the rectangle's own: the object asks for its own end while they run.
struct Suicidal {
  static inline int status = 1;

  static int Run(void* instance) {
    auto* self = static_cast<AKObject*>(instance);
    AKHandler handler(nullptr);
    status = handler.DeleteObject(self);
    return self->ClassID() == AKClassID("stdRect") ? 0 : -1;  // the instance is still there
  }
  static int Inspect(void* self, AKGUIDesc&, AKGUIEvent& event) {
    event.actionName = AKString(std::string(1 << 20, 'x'));
    return Run(self);
  }
};

// Adds a control whenever it is asked for anything, moves and sets others, and sends itself a further event.
struct Restless {
  static inline unsigned int depth = 0;
  static inline unsigned int added = 0;

  static int Inspect(void* self, AKGUIDesc& panel, AKGUIEvent& event) {
    panel.NewController("-id:%u -type:EditNum -value:1", 100 + added++);
    panel.SetBounds(2, 0, 0, static_cast<int>(added), 20);
    panel.SetValueAsFloat64(2, 0.25);
    panel.SetValueAsFloat64(99 + added, added);
    if (++depth < 3) {
      auto* object = static_cast<AKObject*>(self);
      AKGUIEvent further(event);
      CallSlot<int, AKGUIDesc&, AKGUIEvent&>(*object->Class(), kAKMethodInspector, object, panel, further);
    }
    --depth;
    return 0;
  }
};

template <typename Function>
void Replace(unsigned int slot, Function function, AKMethodSlot* old) {
  AKClass* cls = Host::Instance().Classes().Find(AKClassID("stdRect"));
  *old = cls->methods[slot];
  cls->methods[slot] = {reinterpret_cast<std::uintptr_t>(function), 0};
}

TEST_F(HandlerTest, PanelEditedFromWithin_WhileFilled_ShowsWhatWasAdded) {
  AKMethodSlot old;
  Inspector inspector;
  ASSERT_TRUE(inspector.Open(session_.get(), {ID(*session_, 0), ID(*session_, 1)}));
  const unsigned int count = inspector.Panel().GetControllerCount();
  Replace(kAKMethodInspector, &Restless::Inspect, &old);
  EXPECT_TRUE(inspector.Fill());
  EXPECT_TRUE(inspector.Change(2, 0.75, nullptr));
  Host::Instance().Classes().Find(AKClassID("stdRect"))->methods[kAKMethodInspector] = old;
  EXPECT_EQ(Restless::added, 15U) << "five events, each with two further ones";
  EXPECT_EQ(inspector.Panel().GetControllerCount(), count + 15);
  EXPECT_EQ(inspector.Wrapper().GetValueAsFloat64(114), 15);
  EXPECT_EQ(session_->Steps().Known().Count(), 0U) << "the objects are what they were";
}

// Calls from within a method all that changes a document or ends the object that the method runs on.
struct Meddler {
  static inline AKObject* victim = nullptr;
  static inline std::vector<int> statuses;

  template <typename... Arguments>
  static int Run(void* self, Arguments...) {
    AKHandler handler(nullptr);
    statuses.push_back(handler.AddObject(victim, nullptr, 0));
    statuses.push_back(handler.DeleteObject(static_cast<AKObject*>(self)));
    statuses.push_back(handler.ReviseObject(static_cast<AKObject*>(self)));
    AKClass::DeleteObject(static_cast<AKObject*>(self));
    return 0;
  }
};

TEST_F(HandlerTest, ChangesFromWithin_MethodsThatOnlyLook_AreRefused) {
  AGBitmap bitmap(AGSize{20, 20}, 0);
  int status = 0;
  const DocumentObject& first = session_->Doc().ObjectAt(0);
  const AKMemoryBlock record = first.record;
  const struct {
    unsigned int slot;
    std::uintptr_t function;
    std::function<void()> call;
  } cases[] = {
      {kAKMethodDraw, reinterpret_cast<std::uintptr_t>(&Meddler::Run<const AGContext&, const AKDrawEvent&>),
       [&] { DrawObject(first, bitmap.GetContextOfBitmap(), first.brush, first.pen); }},
      {kAKMethodWriteToFile, reinterpret_cast<std::uintptr_t>(&Meddler::Run<AKFile&>),
       [&] { std::ignore = ProvenRecord(first); }},
      {kAKMethodGetObjectProperties, reinterpret_cast<std::uintptr_t>(&Meddler::Run<AKDictionary*>),
       [&] { PropertiesOf(first); }},
      {kAKMethodInitFromFile, reinterpret_cast<std::uintptr_t>(&Meddler::Run<const AKFile&, unsigned int>),
       [&] { MakeInstance(first.classID, record, &status); }},
      {kAKMethodInitWithArgs, reinterpret_cast<std::uintptr_t>(&Meddler::Run<const AKArgs&>),
       [&] { std::ignore = Document::NewObject(first.classID, ""); }},
      {kAKMethodDelete, reinterpret_cast<std::uintptr_t>(&Meddler::Run<>), [&] { Instance(NewInstance("")).reset(); }},
  };
  const Instance victim(NewInstance(""));
  Meddler::victim = victim.get();
  const std::string before = Bytes(*session_);
  AKClass* cls = Host::Instance().Classes().Find(AKClassID("stdRect"));
  for (const auto& [slot, function, call] : cases) {
    SCOPED_TRACE(MethodName(slot));
    log_.clear();
    Meddler::statuses.clear();
    const AKMethodSlot old = std::exchange(cls->methods[slot], {function, 0});
    call();
    cls->methods[slot] = old;
    EXPECT_EQ(Meddler::statuses, std::vector<int>(Meddler::statuses.size(), -733));
    ASSERT_FALSE(log_.empty());
    EXPECT_EQ(log_[0], std::string("StdRectangle.so: class \"stdRect\": AddObjects within ") + MethodName(slot) +
                           " was refused: call it from akmInspector, akmSetObjectProperties or a dialog's procedure");
    const auto tells = [](const std::string& line) { return line.find("refused: call it") != std::string::npos; };
    EXPECT_EQ(std::count_if(log_.begin(), log_.end(), tells), 1);
    EXPECT_EQ(Bytes(*session_), before);
  }
  AKClass::DeleteObject(InstanceAt(0));
  EXPECT_EQ(Bytes(*session_), before) << "an object of the document is ended with it";
}

// Methods that reach themselves through the host, which would go on until the stack ends.
struct Endless {
  static inline unsigned int calls = 0;
  static inline std::vector<AKObject*> chain;

  static int Read(void* self, const AKFile& file, unsigned int) {
    ++calls;
    file.SetPos(0);
    return AKClass::ReinitObjectFromFile(static_cast<AKObject*>(self), file);
  }
  static int Write(void* self, AKFile& file) {
    ++calls;
    return AKClass::WriteObjectToFile(static_cast<AKObject*>(self), file);
  }
  static int Init(void*, const AKArgs&) {
    ++calls;
    return NewInstance("") == nullptr ? AKClass::GetErrorNew() : 0;
  }
  static int Delete(void*) {
    ++calls;
    if (chain.empty()) return 0;
    AKObject* next = chain.back();
    chain.pop_back();
    AKClass::DeleteObject(next);
    return 0;
  }
};

TEST_F(HandlerTest, MethodsThatCallThemselvesThroughTheHost_ComeToAnEnd) {
  const AKMemoryBlock record = session_->Doc().ObjectAt(0).record;
  const AKClassID id("stdRect");
  int status = 0;
  AKMemoryBlock written;
  AKMethodSlot old;
  AKClass* cls = Host::Instance().Classes().Find(id);

  Replace(kAKMethodInitFromFile, &Endless::Read, &old);
  EXPECT_EQ(MakeInstance(id, record, &status), nullptr);
  EXPECT_EQ(status, InstanceCall::kStatusRefused);
  cls->methods[kAKMethodInitFromFile] = old;
  Replace(kAKMethodWriteToFile, &Endless::Write, &old);
  EXPECT_EQ(WriteRecord(*InstanceAt(0), &written), InstanceCall::kStatusRefused);
  cls->methods[kAKMethodWriteToFile] = old;
  Replace(kAKMethodInitWithArgs, &Endless::Init, &old);
  EXPECT_EQ(NewInstance(""), nullptr);
  cls->methods[kAKMethodInitWithArgs] = old;
  EXPECT_LE(Endless::calls, 3 * InstanceCall::kDeepest);
  EXPECT_EQ(log_.size(), 3U) << "one line each";

  Endless::calls = 0;
  constexpr unsigned int kLong = 100000;
  for (unsigned int i = 0; i < kLong; ++i) Endless::chain.push_back(NewInstance(""));
  Replace(kAKMethodDelete, &Endless::Delete, &old);
  AKClass::DeleteObject(NewInstance(""));
  cls->methods[kAKMethodDelete] = old;
  EXPECT_EQ(Endless::calls, kLong + 1) << "none is left";
}

TEST_F(HandlerTest, DeletionFromWithin_WhileInspected_IsDoneAfterwards_AndUndone) {
  AKMethodSlot old;
  const std::string before = Bytes(*session_);
  Inspector inspector;
  ASSERT_TRUE(inspector.Open(session_.get(), {ID(*session_, 0), ID(*session_, 1)}));
  Replace(kAKMethodInspector, &Suicidal::Inspect, &old);
  EXPECT_TRUE(inspector.Change(2, 0.5, nullptr));
  EXPECT_EQ(Suicidal::status, 0);
  Host::Instance().Classes().Find(AKClassID("stdRect"))->methods[kAKMethodInspector] = old;
  EXPECT_EQ(session_->Doc().ObjectCount(), 1U);
  EXPECT_EQ(session_->Steps().Known().Count(), 1U);
  EXPECT_LT(session_->Steps().UndoTitle().size(), 300U) << "a name for a menu";
  ASSERT_TRUE(session_->Steps().Undo());
  EXPECT_EQ(Bytes(*session_), before);
}

}  // namespace
}  // namespace host
