#include "torture/Entries.h"

#include <cstring>
#include <set>
#include <string>
#include <type_traits>

#include "torture/Call.h"

namespace torture {
namespace {

#define ENTRY(id, prefix, Table, member) \
  { prefix "." #member, TableID::id, offsetof(Table, member), !std::is_pointer_v<decltype(Table::member)> }
#define MAYBE(id, prefix, Table, member) \
  { prefix "." #member, TableID::id, offsetof(Table, member), !std::is_pointer_v<decltype(Table::member)>, true }
#define GENERAL(member) ENTRY(kGeneral, "general", AKGeneralTable, member)
#define DIALOG(member) MAYBE(kGeneral, "general", AKGeneralTable, member)
#define CLASS(member) ENTRY(kClass, "class", AKClassTable, member)
#define HANDLER(member) ENTRY(kHandler, "handler", AKHandlerTable, member)
#define CONTROL(member) ENTRY(kControl, "control", AKControlTable, member)
#define PANEL(member) ENTRY(kPanel, "panel", AKPanelTable, member)

constexpr Entry kEntries[] = {
    GENERAL(getApplicationProperty),
    GENERAL(getStandardPath),
    GENERAL(localeSetDomain),
    GENERAL(localeGetString),
    GENERAL(logMessage),
    DIALOG(dialogSaveFile),
    DIALOG(dialogOpenFile),
    DIALOG(windowProgress),
    CLASS(classSetup),
    CLASS(setClassName),
    CLASS(setClassComments),
    CLASS(addInspectorGUIDesc),
    CLASS(getTopClass),
    CLASS(getClassOfID),
    CLASS(getClassCollection),
    CLASS(newObjectWithArgs),
    CLASS(newObjectFromFile),
    CLASS(newObjectFromDictionary),
    CLASS(newObjectFromOriginal),
    CLASS(writeObjectToFile),
    CLASS(writeObjectToDictionary),
    CLASS(reinitObjectFromFile),
    CLASS(deleteObject),
    CLASS(getErrorNew),
    HANDLER(construct),
    HANDLER(destruct),
    HANDLER(isActive),
    HANDLER(setActionName),
    HANDLER(actionName),
    HANDLER(getMasterLayer),
    HANDLER(addObjects),
    HANDLER(deleteObjects),
    HANDLER(reviseObjects),
    CONTROL(construct),
    CONTROL(destruct),
    CONTROL(setProperty),
    CONTROL(getProperty),
    CONTROL(setBounds),
    CONTROL(getBounds),
    CONTROL(setTitle),
    CONTROL(getTitle),
    CONTROL(setRange),
    CONTROL(getRange),
    CONTROL(setXPMIcon),
    CONTROL(getXPMIcon),
    CONTROL(setMenuItemList),
    CONTROL(getMenuItemAtIndex),
    CONTROL(getMenuItemCount),
    CONTROL(setMenuIndex),
    CONTROL(getMenuIndex),
    CONTROL(setMenuItem),
    CONTROL(getMenuItem),
    CONTROL(getValuePrecision),
    CONTROL(getValueAsString),
    CONTROL(getValueAsBool),
    CONTROL(getValueAsSInt),
    CONTROL(getValueAsUInt),
    CONTROL(getValueAsFloat32),
    CONTROL(getValueAsFloat64),
    CONTROL(getValueAsTimeHMS),
    CONTROL(getValueAsAGColor),
    CONTROL(setValuePrecision),
    CONTROL(setValueAsString),
    CONTROL(setValueAsBool),
    CONTROL(setValueAsSInt),
    CONTROL(setValueAsUInt),
    CONTROL(setValueAsFloat32),
    CONTROL(setValueAsFloat64),
    CONTROL(setValueAsTimeHMS),
    CONTROL(setValueAsAGColor),
    CONTROL(refresh),
    PANEL(construct),
    PANEL(destruct),
    PANEL(setProperty),
    PANEL(getProperty),
    PANEL(setPanelSize),
    PANEL(getPanelSize),
    PANEL(setPanelTitle),
    PANEL(getPanelTitle),
    PANEL(addController),
    PANEL(getController),
    PANEL(getControllerCount),
    PANEL(openModalDialog),
    PANEL(closeDialog),
};

std::set<std::string_view> gUncallable;
const void* gTables[5] = {};

void CheckOne(const Entry& entry, const void* table) {
  AKMemberWords words;
  std::memcpy(&words, static_cast<const char*>(table) + entry.offset, entry.isMember ? sizeof(words) : sizeof(void*));
  if (words.function == 0 && entry.mayBeNull) {
    gUncallable.insert(entry.name);
    return;
  }
  const bool isThere = words.function != 0;
  const bool isEven = entry.isMember ? AKIsCallable(words) : (words.function & 1) == 0;
  if (!isThere || !isEven) gUncallable.insert(entry.name);
  Call call(entry.name, "look at its words in the table", kTablesSection);
  call.Expect(isThere, "a function: only the dialogs and the progress window may be null", "null");
  call.Expect(isEven, "a function at an even address, or a place in a virtual table", "an odd address");
}

}  // namespace

std::span<const Entry> AllEntries() { return kEntries; }

void CheckEntries(const AKHostServiceRecord& record) {
  const void* const tables[] = {record.generalTable, record.classTable, record.handlerTable, record.controlTable,
                                record.panelTable};
  std::memcpy(gTables, tables, sizeof(gTables));
  for (const Entry& entry : kEntries) {
    const void* const table = gTables[static_cast<int>(entry.table)];
    if (table != nullptr) CheckOne(entry, table);
  }
}

bool HasTable(TableID table) { return gTables[static_cast<int>(table)] != nullptr; }

bool IsCallable(std::string_view entry) {
  if (gUncallable.contains(entry)) return false;
  const std::string_view prefix = entry.substr(0, entry.find('.'));
  for (const Entry& known : kEntries) {
    if (known.name.starts_with(prefix)) return HasTable(known.table);
  }
  return true;
}

}  // namespace torture
