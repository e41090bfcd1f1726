// Panels that a plug-in describes, as the host understands them, reached through the service tables.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <new>

#include "host/Host.h"
#include "host/HostLog.h"
#include "host/UserInterface.h"
#include "host/panels/HostPanel.h"
#include "kit/host/AKHostServices.h"
#include "kit/objects/AKClass.h"
#include "kit/panels/AKGUIDesc.h"

namespace host {
namespace {

class PanelTest : public testing::Test {
 protected:
  void SetUp() override {
    Host::Instance();  // its tables
    HostLog::Instance().sink = [this](const std::string& line) { log_.push_back(line); };
  }
  void TearDown() override { HostLog::Instance().sink = nullptr; }
  std::vector<std::string> log_;
};

TEST_F(PanelTest, Description_AllKeys_AreUnderstood) {
  AKGUIDesc panel("-multisel:%d -title:\"A panel\"", 1);
  panel.NewController("-id:%d -type:StaticText  -pos:(010;%d) -dim:(068;016) -title:\"%s\"", 7, -5, "two words");
  panel.NewController("-id:8 -type:Slider -range:(-1.5;2)   -dim:(098;020)\t-pos:(130;2)  ");
  panel.SetPanelSize(0, 28);
  EXPECT_TRUE(log_.empty()) << log_[0];
  EXPECT_TRUE(HostPanel::Of(&panel)->AllowsMultipleSelection());
  EXPECT_TRUE(panel.GetPanelTitle() == "A panel");
  EXPECT_EQ(panel.GetControllerCount(), 2U);
  EXPECT_TRUE(panel.GetTitle(7) == "two words");
  int b[4] = {};
  panel.GetBounds(7, &b[0], &b[1], &b[2], &b[3]);
  EXPECT_EQ(std::vector<int>(b, b + 4), (std::vector<int>{10, -5, 78, 11}));
  panel.GetBounds(8, &b[0], &b[1], &b[2], &b[3]);
  EXPECT_EQ(std::vector<int>(b, b + 4), (std::vector<int>{130, 2, 228, 22}));
  double lo = 0;
  double hi = 0;
  panel.GetRange(8, &lo, &hi);
  EXPECT_EQ(lo, -1.5);
  EXPECT_EQ(hi, 2);
  EXPECT_TRUE(panel.HasFeatureRange(8));
  EXPECT_FALSE(panel.HasFeatureRange(7));
}

// What is set by a control's ID is the control's, and no other's; an ID that nobody has takes nothing and has nothing.
#define EXPECT_BOTH_WAYS(Set, Get, value, none)         \
  {                                                     \
    const auto before = controls[1]->Get();             \
    panel.Set(3, value);                                \
    EXPECT_TRUE(panel.Get(3) == (value)) << #Get;       \
    EXPECT_TRUE(controls[0]->Get() == (value)) << #Get; \
    EXPECT_TRUE(panel.Get(5) == before) << #Get;        \
    controls[1]->Set(value);                            \
    EXPECT_TRUE(panel.Get(5) == (value)) << #Get;       \
    panel.Set(77, value);                               \
    EXPECT_TRUE(panel.Get(77) == (none)) << #Get;       \
  }

TEST_F(PanelTest, ByIDAndByControl_AreTheSame) {
  AKGUIDesc panel("-multisel:1");
  AKGUICtrl* controls[] = {panel.NewController("-id:3 -type:PopUp -items:\"a;b;c\""),
                           panel.NewController("-id:5 -type:PopUp -items:\"c;a;b\"")};
  const char* icon[] = {"1 1 1 1"};
  const char** const icons = icon;
  EXPECT_BOTH_WAYS(SetVisible, IsVisible, false, false);
  EXPECT_BOTH_WAYS(SetEnable, IsEnable, false, false);
  EXPECT_BOTH_WAYS(SetTitle, GetTitle, AKString("title"), AKString());
  EXPECT_BOTH_WAYS(SetXPMIcon, GetXPMIcon, icons, nullptr);
  EXPECT_BOTH_WAYS(SetMenuIndex, GetMenuIndex, 2U, 0U);
  EXPECT_BOTH_WAYS(SetMenuItem, GetMenuItem, AKString("b"), AKString());
  EXPECT_BOTH_WAYS(SetValuePrecision, GetValuePrecision, 4, 0);
  EXPECT_BOTH_WAYS(SetValueAsBool, GetValueAsBool, true, false);
  EXPECT_BOTH_WAYS(SetValueAsSInt, GetValueAsSInt, -7, 0);
  EXPECT_BOTH_WAYS(SetValueAsUInt, GetValueAsUInt, 4000000000U, 0U);
  EXPECT_BOTH_WAYS(SetValueAsFloat32, GetValueAsFloat32, 1.5F, 0.0F);
  EXPECT_BOTH_WAYS(SetValueAsFloat64, GetValueAsFloat64, 1.1, 0.0);
  EXPECT_BOTH_WAYS(SetValueAsTimeHMS, GetValueAsTimeHMS, 3723.5, 0.0);
  EXPECT_BOTH_WAYS(SetValueAsAGColor, GetValueAsAGColor, AGColor(1, 2, 3, 4), kAGColorBlack);
  panel.SetFlag(3, 6, true);
  panel.SetFlag(3, 2, false);
  panel.SetFlag(77, 6, true);
  EXPECT_TRUE(panel.HasFlag(3, 4) && !panel.HasFlag(3, 2) && !panel.HasFlag(5, 4) && !panel.HasFlag(77, 4));
  panel.SetMenuItemList(5, AKStringArray{"x,y", "z"});
  EXPECT_TRUE(panel.GetMenuItemAtIndex(5, 0) == "x,y" && panel.GetMenuItemAtIndex(5, 2).IsEmpty());
  EXPECT_TRUE(panel.GetMenuItemAtIndex(77, 0).IsEmpty() && panel.GetMenuItemCount(3) == 3);
  double range[2] = {9, 9};
  panel.SetRange(3, -1, 2);
  controls[0]->GetRange(&range[0], &range[1]);
  EXPECT_TRUE(range[0] == -1 && range[1] == 2);
  panel.Refresh(3);
  panel.Refresh(77);
}

AKObject* NoInstance() { return nullptr; }

TEST_F(PanelTest, Description_Strange_IsReportedWithBundleClassAndControl) {
  AKClassInfo info;
  info.classID = AKClassID("strange");
  info.parentClassID = AKClassID("_object");
  info.constructor = &NoInstance;
  info.destructor = [](AKObject*) {};
  info.instanceSize = sizeof(void*);
  info.className = "Strange";
  AKClass* record = nullptr;
  const std::size_t before = Host::Instance().Classes().Classes().size();
  ASSERT_EQ(AKClass::ClassSetup(info, 0, &record), 0);
  auto* panel = new AKGUIDesc("-multisel:1 -shape:round");
  panel->NewController("-id:x -type:Dial -pos:(1,2) -dim:(1;2 -range:(0;inf) -prec:2.5 loose");
  EXPECT_TRUE(log_.empty()) << "the class is not known yet";
  AKClass::AddInspectorGUIDesc(record, panel);
  panel->NewController("-id:4 -type:CheckBox -visible:maybe -value:3");
  const std::vector<std::string> expected = {
      "host_tests: class Strange, panel: not understood in its description: -shape:round",
      "host_tests: class Strange, control 0: not understood in its description: "
      "-id:x -type:Dial -pos:(1,2) -dim:(1;2 -range:(0;inf) -prec:2.5 loose",
      "host_tests: class Strange, control 4: not understood in its description: -visible:maybe -value:3"};
  EXPECT_EQ(log_, expected);
  Host::Instance().Classes().RemoveAfter(before);
  { const AKGUIDesc alone("-shape:round"); }
  EXPECT_EQ(log_.back(), "a panel of no class, panel: not understood in its description: -shape:round");
}

TEST_F(PanelTest, Description_InAnyOrder_GivesTheSameControl) {
  std::vector<std::string> items = {"-prec:1", "-tip:help", "-title:\"a title\"", "-type:EditNum", "-value:1.25"};
  int orders = 0;
  do {
    std::string description;
    for (const std::string& item : items) description += item + " ";
    const HostControl control{AKString(description)};
    EXPECT_EQ(control.Type(), ControlType::kEditNum) << description;
    EXPECT_TRUE(control.GetTitle() == "a title") << description;
    EXPECT_TRUE(control.Tip() == "help") << description;
    EXPECT_EQ(control.GetValueAsFloat64(), 1.25) << description;
    EXPECT_EQ(control.GetValuePrecision(), 1) << description;
    ++orders;
  } while (std::next_permutation(items.begin(), items.end()));
  EXPECT_EQ(orders, 120);
}

TEST_F(PanelTest, Items_AreSplitAtSemicolonsThatNoBackslashStandsBefore) {
  const struct {
    const char* text;
    std::vector<std::string> items;
  } cases[] = {{"red; light blue ;2", {"red", "light blue", "2"}},
               {"red, light;blue", {"red, light", "blue"}},
               {R"(a\;b;c\\;\n)", {"a;b", R"(c\)", R"(\n)"}},
               {"a;;", {"a", "", ""}},
               {"", {}}};
  for (const auto& c : cases) {
    const HostControl control{AKString(std::string("-type:PopUp \"-items:") + c.text + "\"")};
    std::vector<std::string> items;
    for (unsigned int i = 0; i < control.GetMenuItemCount(); ++i)
      items.emplace_back(control.GetMenuItemAtIndex(i).CStr());
    EXPECT_EQ(items, c.items) << c.text;
  }
}

// The first argument is a literal 0, which is a null pointer of any kind too.
TEST_F(PanelTest, Control_OfAFormatAndZero_TakesTheZeroForItsArgument) {
  AKGUIDesc panel;
  const AKGUICtrl alone(&panel, "-id:%d -type:Slider", 0);
  EXPECT_EQ(alone.CtrlID(), 0U);
  EXPECT_EQ(alone.CtrlType(), 3U);
}

// Ten times the controls may take about ten times the time, not a hundred: the factor in between leaves room for noise.
// A search of all controls at each access would take minutes.
TEST_F(PanelTest, HundredThousandControls_AreFilled_TheFirstOfAnIDWins) {
  constexpr unsigned int kCount = 100000;
  AKGUIDesc panel;
  for (unsigned int id = 0; id < kCount; ++id) panel.NewController("-id:%u -type:EditNum -prec:3", id);
  panel.NewController("-id:5 -type:CheckBox");
  for (unsigned int id = 0; id < kCount; ++id) panel.SetValueAsFloat64(id, id * 0.5);
  double sum = 0;
  for (unsigned int id = 0; id < kCount; ++id) sum += panel.GetValueAsFloat64(id);
  EXPECT_EQ(sum, 0.25 * kCount * (kCount - 1));
  EXPECT_EQ(panel.CtrlType(5), 2U);
  EXPECT_EQ(panel.GetControllerCount(), kCount + 1);
  EXPECT_TRUE(log_.empty());
}

TEST_F(PanelTest, Values_ThroughTheTables_AreWhatWasSet) {
  AKGUIDesc panel("-id:5");
  panel.NewController("-id:1 -type:EditNum -prec:2");
  panel.SetValueAsFloat64(1, 0.125);
  EXPECT_EQ(panel.GetValueAsFloat64(1), 0.125);
  EXPECT_EQ(panel.GetValueAsFloat32(1), 0.125F);
  EXPECT_TRUE(panel.GetValueAsString(1) == "0.12" || panel.GetValueAsString(1) == "0.13");
  panel.SetValueAsSInt(1, -40);
  EXPECT_EQ(panel.GetValueAsSInt(1), -40);
  EXPECT_EQ(panel.GetValueAsUInt(1), 0U);
  panel.SetValueAsString(1, "2.5");
  EXPECT_EQ(panel.GetValueAsFloat64(1), 2.5);
  panel.SetValueAsAGColor(1, kAGColorViolet);
  EXPECT_TRUE(panel.GetValueAsAGColor(1) == kAGColorViolet);
  panel.SetMenuItemList(1, "one, two;three");
  EXPECT_EQ(panel.GetMenuItemCount(1), 3U);
  panel.SetMenuItem(1, "two");
  EXPECT_EQ(panel.GetMenuIndex(1), 1U);
  EXPECT_EQ(panel.DescID(), 5U);
}

TEST_F(PanelTest, EveryType_SaysWhatItOffers) {
  const struct {
    const char* type;
    unsigned int number;
    const char* features;  // value, range, title, items, icon
  } cases[] = {{"StaticText", 1, "t"}, {"EditNum", 2, "v"}, {"Slider", 3, "vr"}, {"CheckBox", 4, "vt"},
               {"PopUp", 5, "vi"},     {"Button", 6, "tx"}, {"Color", 7, "v"},   {"EditText", 8, "v"}};
  for (const auto& c : cases) {
    AKGUIDesc panel;
    panel.NewController("-id:1 -type:%s", c.type);
    std::string features;
    if (panel.HasFeatureValue(1)) features += 'v';
    if (panel.HasFeatureRange(1)) features += 'r';
    if (panel.HasFeatureTitle(1)) features += 't';
    if (panel.HasFeatureItems(1)) features += 'i';
    if (panel.HasFeatureIcon(1)) features += 'x';
    EXPECT_EQ(features, c.features) << c.type;
    EXPECT_EQ(panel.CtrlType(1), c.number);
  }
  EXPECT_TRUE(log_.empty());
}

TEST_F(PanelTest, Enter_TakesWhatAUserMayType) {
  const struct {
    const char* description;
    const char* text;
    bool taken;
    const char* shown;
  } cases[] = {
      {"-type:EditNum -prec:2", "0.125", true, "0.13|0.12"},
      {"-type:EditNum -prec:1 -value:3", "three", false, "3.0"},
      {"-type:EditNum -prec:0 -range:(-5;5)", "-17", true, "-5"},
      {"-type:EditNum -value:1", "inf", false, "1.00"},
      {"-type:Slider -range:(10;20) -value:12", "90", true, "20.000000"},
      {"-type:Slider", "1.7", true, "1.000000"},
      {"-type:CheckBox", "on", true, "on"},
      {"-type:CheckBox -value:yes", "0", true, "off"},
      {"-type:CheckBox", "maybe", false, "off"},
      {"-type:PopUp -items:\"red;light blue;2\"", "light blue", true, "light blue"},
      {"-type:PopUp -items:\"red;light blue;2\"", "2", true, "2"},
      {"-type:PopUp -items:\"red;blue\"", "1", true, "blue"},
      {"-type:PopUp -items:\"red;blue\" -value:blue", "2", false, "blue"},
      {"-type:Color", "(1;2;3;4)", true, "(001;002;003;004)"},
      {"-type:Color", "FF8000", true, "(255;128;000;255)"},
      {"-type:Color -value:\"(1;2;3)\"", "pink", false, "(001;002;003;255)"},
      {"-type:EditText", "two words", true, "two words"},
      {"-type:Button -title:\"Press me\"", "", true, "Press me"},
      {"-type:StaticText -title:fixed", "other", false, "fixed"},
  };
  for (const auto& c : cases) {
    HostControl control{AKString(c.description)};
    EXPECT_EQ(control.Enter(c.text), c.taken) << c.description << " " << c.text;
    const std::string shown = control.DisplayedValue().CStr();
    EXPECT_NE(("|" + std::string(c.shown) + "|").find("|" + shown + "|"), std::string::npos) << shown;
  }
  EXPECT_TRUE(log_.empty()) << log_[0];
}

TEST_F(PanelTest, ValueSetAsTime_IsShownAndEnteredAsTime) {
  HostControl control{AKString("-type:EditNum -prec:0")};
  control.SetValueAsTimeHMS(3725);
  EXPECT_TRUE(control.DisplayedValue() == "1:02:05");
  EXPECT_TRUE(control.Enter("2:30"));
  EXPECT_EQ(control.GetValueAsFloat64(), 150);
}

// Answers a dialog by pressing control 1, and closing with 7 from the object's own hand.
struct Answering final : UserInterface {
  bool ChooseFileToSave(AKFilePath* path, const std::string&, const std::string&) override {
    path->SetFileName("chosen.akd");
    return true;
  }
  bool ChooseFileToOpen(AKFilePath*, const std::string&, const std::string&) override { return false; }
  bool ShowProgress(double fraction, const std::string& text) override {
    progress.push_back(fraction);
    return text == "enough";
  }
  int RunDialog(HostPanel&, const std::function<int(AKGUIEvent&)>& send) override {
    AKGUIEvent event;
    event.kind = AKGUIEvent::kControlChanged;
    event.ctrlID = 1;
    send(event);
    return closedWith;
  }
  void CloseDialog(HostPanel&, int result) override { closedWith = result; }

  int closedWith = 0;
  std::vector<double> progress;
};

struct DialogObject : AKObject {
  AK_OBJECT_MEMORY
  void _PureVirtualMethod() const override {}
  int TakeEvent(AKGUIDesc& panel, AKGUIEvent& event) {
    kinds.push_back(event.kind);
    if (event.kind == AKGUIEvent::kControlChanged) panel.CloseDialog(7);
    return 0;
  }
  std::vector<unsigned int> kinds;
};

TEST_F(PanelTest, ModalDialog_SendsEventsUntilItIsClosed) {
  AKClassInfo info;
  info.classID = AKClassID("dialog");
  info.className = "Dialog";
  const AKClass record(info, false, kAKNullClassQCast);
  const std::unique_ptr<DialogObject> object(new (_AKClassObjectAlloc(&record, sizeof(DialogObject))) DialogObject);
  AKGUIDesc panel;
  panel.NewController("-id:1 -type:Button -title:OK");
  int result = -5;
  const auto proc = static_cast<AKGUIDesc::ModalProc>(&DialogObject::TakeEvent);
  EXPECT_EQ(panel.OpenModalDialog(proc, object.get(), &result), -1) << "nobody is there";
  EXPECT_EQ(result, -5);
  Answering user;
  Host::Instance().userInterface = &user;
  EXPECT_EQ(panel.OpenModalDialog(proc, object.get(), &result), 0);
  Host::Instance().userInterface = nullptr;
  EXPECT_EQ(result, 7);
  EXPECT_EQ(object->kinds, (std::vector<unsigned int>{1, 3}));
}

TEST_F(PanelTest, FilesAndProgress_AreTheUsers) {
  AKFilePath path("/tmp/first.akd");
  EXPECT_EQ(AKGUIDialogSaveFile(path, "Save", "akd"), 0);
  EXPECT_EQ(AKGUIWindowProgress(0, 0.5, "enough"), 0);
  Answering user;
  Host::Instance().userInterface = &user;
  EXPECT_EQ(AKGUIDialogSaveFile(path, "Save", "akd"), 1);
  EXPECT_TRUE(path.Text() == "/tmp/chosen.akd");
  EXPECT_EQ(AKGUIDialogOpenFile(path, "Open", ""), 0);
  EXPECT_EQ(AKGUIWindowProgress(0, 0.5, "more"), 0);
  EXPECT_EQ(AKGUIWindowProgress(0, 7, "enough"), 1);
  EXPECT_EQ(AKGUIWindowProgress(1, 0, ""), 0);
  Host::Instance().userInterface = nullptr;
  EXPECT_EQ(user.progress, (std::vector<double>{0.5, 1, 2}));
}

TEST_F(PanelTest, Flags_AreReadModifiedWritten) {
  AKGUIDesc panel;
  AKGUICtrl* control = panel.NewController("-id:1 -type:Slider");
  control->SetFlag(0xF, true);
  control->SetFlag(0x6, false);
  EXPECT_TRUE(control->HasFlag(0x9));
  EXPECT_FALSE(control->HasFlag(0xB));
  panel.SetIdling(true);
  panel.SetYielding(true);
  panel.SetIdling(false);
  EXPECT_FALSE(panel.IsIdling());
  EXPECT_TRUE(panel.IsYielding());
}

TEST_F(PanelTest, UnknownControl_IsNeutral) {
  AKGUIDesc panel;
  panel.SetValueAsFloat64(3, 1);
  EXPECT_EQ(panel.GetController(3), nullptr);
  EXPECT_EQ(panel.GetValueAsFloat64(3), 0.0);
  EXPECT_FALSE(panel.IsVisible(3));
  EXPECT_TRUE(panel.GetTitle(3).IsEmpty());
  EXPECT_TRUE(panel.GetValueAsAGColor(3) == kAGColorBlack);
  int bounds[4] = {7, 7, 7, 7};
  panel.GetBounds(3, &bounds[0], &bounds[1], nullptr, &bounds[3]);
  EXPECT_EQ(std::vector<int>(bounds, bounds + 4), (std::vector<int>{0, 0, 7, 0}));
  double range[2] = {7, 7};
  panel.GetRange(3, &range[0], &range[1]);
  EXPECT_EQ(range[0] + range[1], 0);
}

int sLivingControls = 0;

// A host whose panels take no control.
struct FullPanel {
  void AddController(AKGUICtrl*) { throw std::bad_alloc(); }
};

TEST_F(PanelTest, Control_ThatThePanelCanNotTake_IsEnded) {
  const auto* controls = AKGUICtrl::sWrapper;
  const auto* panels = AKGUIDesc::sWrapper;
  static FullPanel sFull;
  AKControlTable controlTable;
  controlTable.construct = [](AKGUICtrl*, AKGUIDesc*, const char*, va_list) { ++sLivingControls; };
  controlTable.destruct = [](AKGUICtrl*) { --sLivingControls; };
  AKPanelTable panelTable;
  panelTable.construct = [](AKGUIDesc* wrapper, const char*, va_list) { wrapper->SetHostObject(&sFull); };
  panelTable.destruct = [](AKGUIDesc*) {};
  panelTable.addController.Set<FullPanel>(&FullPanel::AddController);
  AKGUICtrl::sWrapper = &controlTable;
  AKGUIDesc::sWrapper = &panelTable;
  {
    AKGUIDesc panel;
    EXPECT_THROW(panel.NewController("-id:%d", 1), std::bad_alloc);
  }
  EXPECT_EQ(sLivingControls, 0);
  AKGUICtrl::sWrapper = controls;
  AKGUIDesc::sWrapper = panels;
}

}  // namespace
}  // namespace host
