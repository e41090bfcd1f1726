// The picture's inspector. It is for one object at a time: its buttons open dialogs.
#include <memory>

#include "CStdPicture.h"
#include "ImageBytes.h"

namespace {

// Control IDs of the panel.
constexpr unsigned int kChooseButton = 1;
constexpr unsigned int kSaveButton = 2;
constexpr unsigned int kFitMenu = 3;
constexpr unsigned int kSmoothBox = 4;
constexpr unsigned int kSizeText = 5;

// A button's icon: a picture as lines of text, compiled in, which outlives every panel.
const char* kFolderIcon[] = {"12 8 2 1",     "  c None",     "# c #7A6A3A",  "   ##       ",
                             "  ######### ", "  #       # ", "  #       # ", "  #       # ",
                             "  #       # ", "  ######### ", "            "};

}  // namespace

AKGUIDesc* CStdPicture::BuildInspectorGUIDesc() {
  NKLocaleSetDomain(kLocaleDomain);
  auto panel = std::make_unique<AKGUIDesc>("-multisel:0");
  AKGUICtrl* choose = panel->NewController("-id:%u -type:Button -pos:(010;004) -dim:(106;024) -title:\"%s\"",
                                           kChooseButton, NKLocaleGetString("Choose File..."));
  if (choose->HasFeatureIcon()) choose->SetXPMIcon(kFolderIcon);
  panel->NewController("-id:%u -type:Button -pos:(122;004) -dim:(106;024) -title:\"%s\"", kSaveButton,
                       NKLocaleGetString("Save a Copy..."));
  panel->NewController("-type:StaticText -pos:(010;037) -dim:(060;016) -title:\"%s\"", NKLocaleGetString("Fit"));
  AKString items(NKLocaleGetString("Whole Picture"));
  items.Append(';').Append(NKLocaleGetString("Stretched"));
  panel->NewController("-id:%u -type:PopUp -pos:(074;032) -dim:(154;022) -items:\"%s\"", kFitMenu, items.CStr());
  panel->NewController("-id:%u -type:CheckBox -pos:(074;060) -dim:(154;022) -title:\"%s\"", kSmoothBox,
                       NKLocaleGetString("Smooth"));
  panel->NewController("-id:%u -type:StaticText -pos:(010;088) -dim:(218;016) -title:\"-\"", kSizeText);
  panel->SetPanelSize(0, 110);
  return panel.release();
}

void CStdPicture::ShowIn(AKGUIDesc& panel) const {
  const AGImage& image = Image();
  panel.SetMenuIndex(kFitMenu, fit_);
  panel.SetValueAsBool(kSmoothBox, smooth_);
  AKString size(NKLocaleGetString("No picture"));
  if (!image.IsEmpty()) {
    const char* format = ImageBytes::FormatName(ImageBytes::FormatOf(data_));
    size.Assignf("%s: %u x %u", format, image.Width(), image.Height());
  }
  panel.SetTitle(kSizeText, size);
}

// What the user chose, and what the step is called; null for a control that is not the picture's.
const char* CStdPicture::TakeFrom(const AKGUIDesc& panel, unsigned int control) {
  switch (control) {
    case kChooseButton:
      ChooseFile();
      return NKLocaleGetString("Choose Picture");
    case kSaveButton:
      SaveCopy();
      return NKLocaleGetString("Save a Copy of Picture");
    case kFitMenu:
      if (const unsigned int index = panel.GetMenuIndex(control); index <= kStretch) fit_ = index;
      return NKLocaleGetString("Change Picture Fit");
    case kSmoothBox:
      smooth_ = panel.GetValueAsBool(control);
      return NKLocaleGetString("Change Picture Smoothness");
    default:
      return nullptr;
  }
}

int CStdPicture::akmInspector(AKGUIDesc& panel, AKGUIEvent& event) {
  NKLocaleSetDomain(kLocaleDomain);
  if (event.kind == AKGUIEvent::kFillControls) ShowIn(panel);
  if (event.kind != AKGUIEvent::kControlChanged) return 0;
  const char* name = TakeFrom(panel, event.ctrlID);
  if (name == nullptr) return 0;
  event.actionName = AKString(name);
  ShowIn(panel);
  return 0;
}

// Without a window, and where the user chose nothing, the dialogs give 0. What fails is in the log.
void CStdPicture::ChooseFile() {
  AKFilePath path;
  AKMemoryBlock data;
  if (AKGUIDialogOpenFile(path, NKLocaleGetString("Choose a Picture"), "png;jpg;jpeg;tif;tiff") != 1) return;
  if (ImageBytes::Load(path, &data) != 0) return;
  if (ImageBytes::FormatOf(data) == AGImageFileFormat::kNone) {
    AKLogError(-1, "\"%s\" is no PNG, JPEG or TIFF file", path.Text().CStr());
    return;
  }
  SetData(data);
}

void CStdPicture::SaveCopy() const {
  if (data_.IsEmpty()) return;
  AKFilePath path("picture");
  path.SetExtension(AKString(ImageBytes::FormatName(ImageBytes::FormatOf(data_))).ToLowerCase());
  AKString extension = path.Extension();
  extension.RemoveBegin(".");
  if (AKGUIDialogSaveFile(path, NKLocaleGetString("Save a Copy"), extension) == 1) ImageBytes::Save(path, data_);
}
