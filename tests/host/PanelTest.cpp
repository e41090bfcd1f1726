// Panels that a plug-in describes, as the host understands them, reached through the service tables.
#include <gtest/gtest.h>

#include "host/Host.h"
#include "host/panels/HostPanel.h"
#include "kit/AKGUIDesc.h"

namespace host {
namespace {

class PanelTest : public testing::Test {
 protected:
  void SetUp() override { Host::Instance().collectedLog = &log_; }
  void TearDown() override { Host::Instance().collectedLog = nullptr; }
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

TEST_F(PanelTest, Description_Strange_IsNamedInOneLine) {
  AKGUIDesc panel("-multisel:1 -shape:round");
  panel.NewController("-id:x -type:Dial -pos:(1,2) -dim:(1;2 -range:(0;inf) -prec:2.5 loose");
  ASSERT_EQ(log_.size(), 2U);
  EXPECT_NE(log_[0].find("-shape:round"), std::string::npos);
  for (const char* item : {"-id:x", "-type:Dial", "-pos:(1,2)", "-dim:(1;2", "-range:(0;inf)", "-prec:2.5", "loose"}) {
    EXPECT_NE(log_[1].find(item), std::string::npos) << item;
  }
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
}

}  // namespace
}  // namespace host
