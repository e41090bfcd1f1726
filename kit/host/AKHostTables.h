// The tables through which a bundle reaches its host, and the record that hands them over.
//
// A host fills the tables by member name and keeps them; the kit calls them by member name. A pointer to a function is
// a plain entry, an AKHostMember is called on the host object behind one of the kit's wrappers (AKWrapper.h). Numbers
// beside the members are byte offsets; what lies between belongs to the host.
//
// Thread: all entries are called on the main thread, the one that pluginMain was called on, and none waits for another;
// log lines of other threads are dropped (AKLog.h). Lifetime: a table stays where it is and as it is until the bundle
// is unloaded. What an argument points or refers to is borrowed until the entry returns, and what an entry returns by
// value is the caller's, unless it says otherwise beside the member. Statuses are 0 for success.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>

#include "kit/geometry/AGColor.h"
#include "kit/host/AKHostCall.h"
#include "kit/text/AKClassID.h"

class AKClass;
class AKContextObject;
class AKDictionary;
class AKFile;
class AKFilePath;
class AKGUICtrl;
class AKGUIDesc;
class AKHandler;
class AKObject;
class AKString;
class AKStringArray;
class AKValue;
class NKTreeHandler;
struct AKClassInfo;
struct AKGUIEvent;
template <typename T>
class ATArray;

/// Class records, which are the host's.
using AKClassArray = ATArray<AKClass*>;
/// Objects in an order; the array owns none of them.
using AKObjectArray = ATArray<AKObject*>;

/// How added objects are linked to their parent; the numbers are the host's.
using AKHandlerLinkMode = std::uint32_t;

/// A method of an object that takes the events of a modal dialog.
using AKModalProc = int (AKObject::*)(AKGUIDesc& panel, AKGUIEvent& event);

/// The general services. The host may leave the whole table out (null).
struct AKGeneralTable {
  std::uintptr_t unused0[4] = {};  ///< 0; the host's
  /// 32; a property of the application; status, `*out` is the caller's
  int (*getApplicationProperty)(const AKString& key, AKValue* out) = nullptr;
  /// 40; the path stays the host's and valid as long as the table
  const AKFilePath& (*getStandardPath)(unsigned int kind) = nullptr;
  void (*localeSetDomain)(const char* domain) = nullptr;  ///< 48; the host copies the name
  /// 56; the host's translation, valid as long as the table, or `text`
  const char* (*localeGetString)(const char* text) = nullptr;
  std::uintptr_t unused64[4] = {};                 ///< 64; the host's
  void (*logMessage)(const char* line) = nullptr;  ///< 96; a finished line, borrowed; null: the log is silent
  std::uintptr_t unused104[3] = {};                ///< 104; the host's
  /// 128; may be null; `path` goes in and comes back
  int (*dialogSaveFile)(AKFilePath& path, const AKString& title, const AKString& extensions) = nullptr;
  /// 136; may be null; as above
  int (*dialogOpenFile)(AKFilePath& path, const AKString& title, const AKString& extensions) = nullptr;
  /// 144; may be null
  int (*windowProgress)(unsigned int command, double fraction, const AKString& text) = nullptr;
};

/// The class services. Class records are the host's and live as long as the bundle that registered them. All
/// entries exist. Behind the offset stands the number of the entry, an eighth of it.
struct AKClassTable {
  std::uintptr_t unused0[4] = {};  ///< 0; the host's
  /// 32; 4: status; the record is stored only with 0
  int (*classSetup)(const AKClassInfo& info, unsigned int setupWord, AKClass** out) = nullptr;
  void (*setClassName)(AKClass* cls, const AKString& name, const AKString& second) = nullptr;  ///< 40; 5
  void (*setClassComments)(AKClass* cls, const AKString& comments) = nullptr;                  ///< 48; 6
  /// 56; 7: the panel becomes the host's, in any case
  void (*addInspectorGUIDesc)(AKClass* cls, AKGUIDesc* panel) = nullptr;
  std::uintptr_t unused64[4] = {};                   ///< 64; the host's
  AKClass* (*getTopClass)() = nullptr;               ///< 96; 12: the host's
  AKClass* (*getClassOfID)(AKClassID id) = nullptr;  ///< 104; 13: null when there is none
  /// 112; 14: the array is the caller's, the records the host's
  void (*getClassCollection)(AKClassArray* out, const AKClass* cls, unsigned int selection) = nullptr;
  std::uintptr_t unused120[5] = {};  ///< 120; the host's
  /// 160; 20: the new object is the caller's; null on failure
  AKObject* (*newObjectWithArgs)(const AKContextObject* context, AKClassID id, const char* format,
                                 va_list list) = nullptr;
  /// 168; 21: the same
  AKObject* (*newObjectFromFile)(const AKContextObject* context, const AKFile& file, unsigned int version) = nullptr;
  /// 176; 22: the same
  AKObject* (*newObjectFromDictionary)(const AKContextObject* context, const AKDictionary& dictionary) = nullptr;
  /// 184; 23: the same
  AKObject* (*newObjectFromOriginal)(const AKContextObject* context, const AKObject* original) = nullptr;
  int (*writeObjectToFile)(const AKObject* object, AKFile& file) = nullptr;  ///< 192; 24: status
  /// 200; 25: status
  int (*writeObjectToDictionary)(const AKObject* object, AKDictionary& dictionary) = nullptr;
  int (*reinitObjectFromFile)(AKObject* object, const AKFile& file) = nullptr;  ///< 208; 26: status
  void (*deleteObject)(AKObject* object) = nullptr;  ///< 216; 27: ends the object; null is ignored
  int (*getErrorNew)() = nullptr;                    ///< 224; 28: status of the last of 20 to 23
};

/// What a bundle may do to the open document. The host object is made by `construct` and lives until `destruct`.
struct AKHandlerTable {
  std::uintptr_t unused0[4] = {};                                               ///< 0; the host's
  void (*construct)(AKHandler* wrapper, NKTreeHandler* treeHandler) = nullptr;  ///< 32; fills the wrapper
  void (*destruct)(AKHandler* wrapper) = nullptr;                               ///< 40; ends the host's object
  std::uintptr_t unused48[6] = {};                                              ///< 48; the host's
  AKHostMember<bool()> isActive;                                                ///< 96; a document is there
  AKHostMember<void(const AKString& name)> setActionName;                       ///< 112; the host copies the name
  AKHostMember<AKString()> actionName;       ///< 128; what was set; empty without a document
  AKHostMember<AKObject*()> getMasterLayer;  ///< 144; the host's; null without a document
  std::uintptr_t unused160[8] = {};          ///< 160; the host's
  /// 224; the objects become the document's with 0
  AKHostMember<int(const AKObjectArray& objects, AKObject* parent, AKHandlerLinkMode mode)> addObjects;
  AKHostMember<int(const AKObjectArray& objects)> deleteObjects;  ///< 240; the document ends them with 0
  AKHostMember<int(const AKObjectArray& objects)> reviseObjects;  ///< 256
};

/// The controls of panels. A control's host object is made by `construct` and lives until `destruct`. Strings and
/// arrays that are set are copied.
struct AKControlTable {
  std::uintptr_t unused0[4] = {};  ///< 0; the host's
  /// 32; formats, fills the wrapper
  void (*construct)(AKGUICtrl* wrapper, AKGUIDesc* panel, const char* format, va_list list) = nullptr;
  void (*destruct)(AKGUICtrl* wrapper) = nullptr;                             ///< 40; ends the host's object
  std::uintptr_t unused48[6] = {};                                            ///< 48; the host's
  AKHostMember<void(unsigned int selector, unsigned int value)> setProperty;  ///< 96; selectors: AKGUIProperty
  AKHostMember<unsigned int(unsigned int selector)> getProperty;              ///< 112; 0 for unknown selectors
  AKHostMember<void(int x0, int y0, int x1, int y1)> setBounds;               ///< 128; panel units, y down
  AKHostMember<void(int* x0, int* y0, int* x1, int* y1)> getBounds;           ///< 144; outputs may be null
  AKHostMember<void(const AKString& title)> setTitle;                         ///< 160; copied
  AKHostMember<AKString()> getTitle;                                          ///< 176
  AKHostMember<void(double minimum, double maximum)> setRange;                ///< 192; values are not held to it
  AKHostMember<void(double* minimum, double* maximum)> getRange;              ///< 208; outputs may be null
  AKHostMember<void(const char** icon)> setXPMIcon;                ///< 224; kept, not copied: it outlives the control
  AKHostMember<const char**()> getXPMIcon;                         ///< 240; what was set, or null
  std::uintptr_t unused256[12] = {};                               ///< 256; the host's
  AKHostMember<void(const AKStringArray& items)> setMenuItemList;  ///< 352; replaces all items
  AKHostMember<AKString(unsigned int index)> getMenuItemAtIndex;   ///< 368; empty behind the last
  AKHostMember<unsigned int()> getMenuItemCount;                   ///< 384
  AKHostMember<void(unsigned int index)> setMenuIndex;             ///< 400; any number
  AKHostMember<unsigned int()> getMenuIndex;                       ///< 416
  AKHostMember<void(const AKString& item)> setMenuItem;            ///< 432; a text that is no item changes nothing
  AKHostMember<AKString()> getMenuItem;                            ///< 448; the chosen one
  std::uintptr_t unused464[2] = {};                                ///< 464; the host's
  AKHostMember<int()> getValuePrecision;                           ///< 480; decimals
  AKHostMember<AKString()> getValueAsString;                       ///< 496
  AKHostMember<bool()> getValueAsBool;                             ///< 512
  AKHostMember<int()> getValueAsSInt;                              ///< 528
  AKHostMember<unsigned int()> getValueAsUInt;                     ///< 544
  AKHostMember<float()> getValueAsFloat32;                         ///< 560
  AKHostMember<double()> getValueAsFloat64;                        ///< 576
  AKHostMember<double()> getValueAsTimeHMS;                        ///< 592; seconds
  AKHostMember<AGColor()> getValueAsAGColor;                       ///< 608
  std::uintptr_t unused624[14] = {};                               ///< 624; the host's
  AKHostMember<void(int decimals)> setValuePrecision;              ///< 736
  AKHostMember<void(const AKString& value)> setValueAsString;      ///< 752
  AKHostMember<void(bool value)> setValueAsBool;                   ///< 768
  AKHostMember<void(int value)> setValueAsSInt;                    ///< 784
  AKHostMember<void(unsigned int value)> setValueAsUInt;           ///< 800
  AKHostMember<void(float value)> setValueAsFloat32;               ///< 816
  AKHostMember<void(double value)> setValueAsFloat64;              ///< 832
  AKHostMember<void(double seconds)> setValueAsTimeHMS;            ///< 848
  AKHostMember<void(AGColor value)> setValueAsAGColor;             ///< 864
  std::uintptr_t unused880[14] = {};                               ///< 880; the host's
  AKHostMember<void()> refresh;                                    ///< 992; draws the control anew
};

/// Inspector panels. A panel's host object is made by `construct` and lives until `destruct`.
struct AKPanelTable {
  std::uintptr_t unused0[4] = {};  ///< 0; the host's
  /// 32; fills the wrapper; `format` and `list` may be null
  void (*construct)(AKGUIDesc* wrapper, const char* format, va_list list) = nullptr;
  void (*destruct)(AKGUIDesc* wrapper) = nullptr;                             ///< 40; ends its controls too
  std::uintptr_t unused48[6] = {};                                            ///< 48; the host's
  AKHostMember<void(unsigned int selector, unsigned int value)> setProperty;  ///< 96; selectors: AKGUIProperty
  AKHostMember<unsigned int(unsigned int selector)> getProperty;              ///< 112; 0 for unknown selectors
  AKHostMember<void(int width, int height)> setPanelSize;                     ///< 128; panel units
  AKHostMember<void(int* width, int* height)> getPanelSize;                   ///< 144; outputs may be null
  AKHostMember<void(const AKString& title)> setPanelTitle;                    ///< 160; the host copies the title
  AKHostMember<AKString()> getPanelTitle;                                     ///< 176
  std::uintptr_t unused192[20] = {};                                          ///< 192; the host's
  AKHostMember<void(AKGUICtrl* control)> addController;  ///< 352; the control becomes the panel's, unless this throws
  AKHostMember<AKGUICtrl*(unsigned int id)> getController;  ///< 368; the panel's; null when there is none
  AKHostMember<unsigned int()> getControllerCount;          ///< 384
  std::uintptr_t unused400[10] = {};                        ///< 400; the host's
  /// 480; returns when the dialog is closed
  AKHostMember<int(AKModalProc proc, AKObject* object, int* result)> openModalDialog;
  AKHostMember<void(int result)> closeDialog;  ///< 496
};

/// What a host hands to pluginMain: owned by the host, read only during that call. Little-endian.
struct AKHostServiceRecord {
  /// What `magic` is.
  static constexpr std::uint32_t kMagic = 0x41434F53;

  std::uint32_t magic;                 ///< kMagic
  std::uint32_t apiVersion;            ///< high 16 bits major, low 16 bits minor
  std::uint32_t setupWord;             ///< passed on to AKClass::ClassSetup
  std::uint32_t padding;               ///< not read
  double displayScale;                 ///< display pixels a map unit
  const AKGeneralTable* generalTable;  ///< kept as gAKWrap; may be null
  const AKClassTable* classTable;      ///< kept as AKClass::sWrapper
  const AKHandlerTable* handlerTable;  ///< kept as AKHandler::sWrapper
  const AKControlTable* controlTable;  ///< kept as AKGUICtrl::sWrapper
  const AKPanelTable* panelTable;      ///< kept as AKGUIDesc::sWrapper
};

// The tables' layout is the interface between host and bundle.
static_assert(offsetof(AKGeneralTable, getApplicationProperty) == 32);
static_assert(offsetof(AKGeneralTable, getStandardPath) == 40);
static_assert(offsetof(AKGeneralTable, localeSetDomain) == 48);
static_assert(offsetof(AKGeneralTable, localeGetString) == 56);
static_assert(offsetof(AKGeneralTable, logMessage) == 96);
static_assert(offsetof(AKGeneralTable, dialogSaveFile) == 128);
static_assert(offsetof(AKGeneralTable, dialogOpenFile) == 136);
static_assert(offsetof(AKGeneralTable, windowProgress) == 144);
static_assert(sizeof(AKGeneralTable) == 152);

static_assert(offsetof(AKClassTable, classSetup) == 32);
static_assert(offsetof(AKClassTable, setClassName) == 40);
static_assert(offsetof(AKClassTable, setClassComments) == 48);
static_assert(offsetof(AKClassTable, addInspectorGUIDesc) == 56);
static_assert(offsetof(AKClassTable, getTopClass) == 96);
static_assert(offsetof(AKClassTable, getClassOfID) == 104);
static_assert(offsetof(AKClassTable, getClassCollection) == 112);
static_assert(offsetof(AKClassTable, newObjectWithArgs) == 160);
static_assert(offsetof(AKClassTable, newObjectFromFile) == 168);
static_assert(offsetof(AKClassTable, newObjectFromDictionary) == 176);
static_assert(offsetof(AKClassTable, newObjectFromOriginal) == 184);
static_assert(offsetof(AKClassTable, writeObjectToFile) == 192);
static_assert(offsetof(AKClassTable, writeObjectToDictionary) == 200);
static_assert(offsetof(AKClassTable, reinitObjectFromFile) == 208);
static_assert(offsetof(AKClassTable, deleteObject) == 216);
static_assert(offsetof(AKClassTable, getErrorNew) == 224);
static_assert(sizeof(AKClassTable) == 232);

static_assert(offsetof(AKHandlerTable, construct) == 32);
static_assert(offsetof(AKHandlerTable, destruct) == 40);
static_assert(offsetof(AKHandlerTable, isActive) == 96);
static_assert(offsetof(AKHandlerTable, setActionName) == 112);
static_assert(offsetof(AKHandlerTable, actionName) == 128);
static_assert(offsetof(AKHandlerTable, getMasterLayer) == 144);
static_assert(offsetof(AKHandlerTable, addObjects) == 224);
static_assert(offsetof(AKHandlerTable, deleteObjects) == 240);
static_assert(offsetof(AKHandlerTable, reviseObjects) == 256);
static_assert(sizeof(AKHandlerTable) == 272);

static_assert(offsetof(AKControlTable, construct) == 32);
static_assert(offsetof(AKControlTable, destruct) == 40);
static_assert(offsetof(AKControlTable, setProperty) == 96);
static_assert(offsetof(AKControlTable, getProperty) == 112);
static_assert(offsetof(AKControlTable, setBounds) == 128);
static_assert(offsetof(AKControlTable, getBounds) == 144);
static_assert(offsetof(AKControlTable, setTitle) == 160);
static_assert(offsetof(AKControlTable, getTitle) == 176);
static_assert(offsetof(AKControlTable, setRange) == 192);
static_assert(offsetof(AKControlTable, getRange) == 208);
static_assert(offsetof(AKControlTable, setXPMIcon) == 224);
static_assert(offsetof(AKControlTable, getXPMIcon) == 240);
static_assert(offsetof(AKControlTable, setMenuItemList) == 352);
static_assert(offsetof(AKControlTable, getMenuItemAtIndex) == 368);
static_assert(offsetof(AKControlTable, getMenuItemCount) == 384);
static_assert(offsetof(AKControlTable, setMenuIndex) == 400);
static_assert(offsetof(AKControlTable, getMenuIndex) == 416);
static_assert(offsetof(AKControlTable, setMenuItem) == 432);
static_assert(offsetof(AKControlTable, getMenuItem) == 448);
static_assert(offsetof(AKControlTable, getValuePrecision) == 480);
static_assert(offsetof(AKControlTable, getValueAsString) == 496);
static_assert(offsetof(AKControlTable, getValueAsBool) == 512);
static_assert(offsetof(AKControlTable, getValueAsSInt) == 528);
static_assert(offsetof(AKControlTable, getValueAsUInt) == 544);
static_assert(offsetof(AKControlTable, getValueAsFloat32) == 560);
static_assert(offsetof(AKControlTable, getValueAsFloat64) == 576);
static_assert(offsetof(AKControlTable, getValueAsTimeHMS) == 592);
static_assert(offsetof(AKControlTable, getValueAsAGColor) == 608);
static_assert(offsetof(AKControlTable, setValuePrecision) == 736);
static_assert(offsetof(AKControlTable, setValueAsString) == 752);
static_assert(offsetof(AKControlTable, setValueAsBool) == 768);
static_assert(offsetof(AKControlTable, setValueAsSInt) == 784);
static_assert(offsetof(AKControlTable, setValueAsUInt) == 800);
static_assert(offsetof(AKControlTable, setValueAsFloat32) == 816);
static_assert(offsetof(AKControlTable, setValueAsFloat64) == 832);
static_assert(offsetof(AKControlTable, setValueAsTimeHMS) == 848);
static_assert(offsetof(AKControlTable, setValueAsAGColor) == 864);
static_assert(offsetof(AKControlTable, refresh) == 992);
static_assert(sizeof(AKControlTable) == 1008);

static_assert(offsetof(AKPanelTable, construct) == 32);
static_assert(offsetof(AKPanelTable, destruct) == 40);
static_assert(offsetof(AKPanelTable, setProperty) == 96);
static_assert(offsetof(AKPanelTable, getProperty) == 112);
static_assert(offsetof(AKPanelTable, setPanelSize) == 128);
static_assert(offsetof(AKPanelTable, getPanelSize) == 144);
static_assert(offsetof(AKPanelTable, setPanelTitle) == 160);
static_assert(offsetof(AKPanelTable, getPanelTitle) == 176);
static_assert(offsetof(AKPanelTable, addController) == 352);
static_assert(offsetof(AKPanelTable, getController) == 368);
static_assert(offsetof(AKPanelTable, getControllerCount) == 384);
static_assert(offsetof(AKPanelTable, openModalDialog) == 480);
static_assert(offsetof(AKPanelTable, closeDialog) == 496);
static_assert(sizeof(AKPanelTable) == 512);

static_assert(offsetof(AKHostServiceRecord, magic) == 0);
static_assert(offsetof(AKHostServiceRecord, apiVersion) == 4);
static_assert(offsetof(AKHostServiceRecord, setupWord) == 8);
static_assert(offsetof(AKHostServiceRecord, displayScale) == 16);
static_assert(offsetof(AKHostServiceRecord, generalTable) == 24);
static_assert(offsetof(AKHostServiceRecord, classTable) == 32);
static_assert(offsetof(AKHostServiceRecord, handlerTable) == 40);
static_assert(offsetof(AKHostServiceRecord, controlTable) == 48);
static_assert(offsetof(AKHostServiceRecord, panelTable) == 56);
static_assert(sizeof(AKHostServiceRecord) == 64);
