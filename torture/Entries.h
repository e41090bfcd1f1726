// The entries of the host's tables: what can be called, where it stands, and whether it stands there.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "kit/host/AKHostTables.h"

namespace torture {

enum class TableID { kGeneral, kClass, kHandler, kControl, kPanel };

struct Entry {
  std::string_view name;  ///< "class.getClassOfID", as the member of the table is called
  TableID table;
  std::size_t offset;  ///< bytes from the start of the table
  bool isMember;       ///< two words instead of one
  bool mayBeNull = false;
};

std::span<const Entry> AllEntries();

/// Looks at the words of every entry of the tables that are there. What can't be called is told, and never called.
void CheckEntries(const AKHostServiceRecord& record);
/// False for an entry whose table is not there, or that can't be called.
bool IsCallable(std::string_view entry);
/// True when the host has the table.
bool HasTable(TableID table);

}  // namespace torture
