// The label's inspector.
#include <memory>

#include "Label.h"

namespace {

// Control IDs of the panel.
constexpr unsigned int kTextField = 1;
constexpr unsigned int kFontMenu = 2;
constexpr unsigned int kBoldBox = 3;
constexpr unsigned int kItalicBox = 4;
constexpr unsigned int kAlignmentMenu = 5;
constexpr unsigned int kPaperColor = 6;
constexpr unsigned int kUpperCaseButton = 7;
constexpr unsigned int kCopyButton = 8;

void AddTitle(AKGUIDesc* panel, int y, const char* title) {
  panel->NewController("-type:StaticText -pos:(010;%d) -dim:(060;016) -title:\"%s\"", y + 5, title);
}

// The families that are installed, and the label's own in front of them where it is none of these.
AKStringArray FontMenu(const AKString& name) {
  AKStringArray names;
  bool isInstalled = false;
  for (const AKString& family : AGFont::GetFontNameList()) {
    names.Append(family);
    isInstalled = isInstalled || family == name;
  }
  if (isInstalled) return names;
  AKStringArray more{name};
  for (const AKString& family : names) more.Append(family);
  return more;
}

}  // namespace

AKGUIDesc* Label::BuildInspectorGUIDesc() {
  NKLocaleSetDomain(kLocaleDomain);
  auto panel = std::make_unique<AKGUIDesc>("-multisel:1");
  AddTitle(panel.get(), 2, NKLocaleGetString("Text"));
  panel->NewController("-id:%u -type:EditText -pos:(074;002) -dim:(154;022)", kTextField);
  AddTitle(panel.get(), 30, NKLocaleGetString("Font"));
  panel->NewController("-id:%u -type:PopUp -pos:(074;030) -dim:(154;022) -items:\"-\"", kFontMenu);
  panel->NewController("-id:%u -type:CheckBox -pos:(074;058) -dim:(074;022) -title:\"%s\"", kBoldBox,
                       NKLocaleGetString("Bold"));
  panel->NewController("-id:%u -type:CheckBox -pos:(152;058) -dim:(076;022) -title:\"%s\"", kItalicBox,
                       NKLocaleGetString("Italic"));
  AddTitle(panel.get(), 86, NKLocaleGetString("Alignment"));
  // Texts in a description are arguments, never the format; each is looked up right before it is used.
  AKString items(NKLocaleGetString("Left"));
  items.Append(';').Append(NKLocaleGetString("Center")).Append(';').Append(NKLocaleGetString("Right"));
  panel->NewController("-id:%u -type:PopUp -pos:(074;086) -dim:(154;022) -items:\"%s\"", kAlignmentMenu, items.CStr());
  AddTitle(panel.get(), 114, NKLocaleGetString("Paper"));
  panel->NewController("-id:%u -type:Color -pos:(074;114) -dim:(060;022)", kPaperColor);
  panel->NewController("-id:%u -type:Button -pos:(010;144) -dim:(106;024) -title:\"%s\"", kUpperCaseButton,
                       NKLocaleGetString("Upper Case"));
  panel->NewController("-id:%u -type:Button -pos:(122;144) -dim:(106;024) -title:\"%s\"", kCopyButton,
                       NKLocaleGetString("Add a Copy"));
  panel->SetPanelSize(0, 174);
  return panel.release();
}

void Label::ShowIn(AKGUIDesc& panel) const {
  panel.SetValueAsString(kTextField, text_);
  panel.SetMenuItemList(kFontMenu, FontMenu(fontName_));
  panel.SetMenuItem(kFontMenu, fontName_);
  panel.SetValueAsBool(kBoldBox, (style_ & kAGFontStyleBold) != 0);
  panel.SetValueAsBool(kItalicBox, (style_ & kAGFontStyleItalic) != 0);
  panel.SetMenuIndex(kAlignmentMenu, alignment_ - kAGTextAlignmentLeft);
  panel.SetValueAsAGColor(kPaperColor, paper_);
}

// What the user chose, and what the step is called; null for a control that is not the label's.
const char* Label::TakeFrom(const AKGUIDesc& panel, unsigned int control) {
  switch (control) {
    case kTextField:
      SetText(panel.GetValueAsString(control));
      return "Change Label Text";
    case kFontMenu:
      // A number behind the last item has the empty one.
      if (const AKString name = panel.GetMenuItem(control); !name.IsEmpty()) SetFontName(name);
      return "Change Label Font";
    case kBoldBox:
      SetStyleBit(kAGFontStyleBold, panel.GetValueAsBool(control));
      return "Change Label Style";
    case kItalicBox:
      SetStyleBit(kAGFontStyleItalic, panel.GetValueAsBool(control));
      return "Change Label Style";
    case kAlignmentMenu:
      if (const unsigned int index = panel.GetMenuIndex(control); index <= 2) alignment_ = kAGTextAlignmentLeft + index;
      return "Change Label Alignment";
    case kPaperColor:
      paper_ = panel.GetValueAsAGColor(control);
      return "Change Label Paper";
    case kUpperCaseButton:
      MakeUpperCase();
      return "Make Label Upper Case";
    case kCopyButton:
      AddCopy();
      return "Add a Copy of Label";
    default:
      return nullptr;
  }
}

int Label::akmInspector(AKGUIDesc& panel, AKGUIEvent& event) {
  NKLocaleSetDomain(kLocaleDomain);
  if (event.kind == AKGUIEvent::kFillControls) ShowIn(panel);
  if (event.kind != AKGUIEvent::kControlChanged) return 0;
  const char* name = TakeFrom(panel, event.ctrlID);
  if (name == nullptr) return 0;
  event.actionName = AKString(NKLocaleGetString(name));
  ShowIn(panel);
  return 0;
}

// Of letters that are bytes of their own in Mac OS Roman and UTF-8 alike.
void Label::MakeUpperCase() {
  char* bytes = text_.MutableData();
  for (unsigned int i = 0; i < text_.Length(); ++i) {
    if (bytes[i] >= 'a' && bytes[i] <= 'z') bytes[i] = static_cast<char>(bytes[i] - 'a' + 'A');
  }
}

// The inspector is one of the methods from which documents may be changed. The host makes the change part of the step
// that the button is.
void Label::AddCopy() {
  AKHandler handler(nullptr);
  if (!handler.IsActive()) return;
  AKObject* copy = AKClass::NewObjectFromOriginal(nullptr, this);
  if (copy == nullptr) {
    AKLogError(AKClass::GetErrorNew(), "No copy of the label could be made");
  } else if (const int status = handler.AddObject(copy, this, 0); status != 0) {
    AKLogError(status, "The copy of the label could not be added");
    AKClass::DeleteObject(copy);  // after a failure it is still the caller's
  }
}
