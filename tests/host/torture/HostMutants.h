// Hosts that are wrong in one way each: the reference host's tables with one entry in another's place.
#pragma once

#include <string>
#include <vector>

#include "host/Host.h"
#include "kit/AKClassBasicTypes.h"

namespace host {

struct HostTables {
  AKHostServiceRecord record;
  AKGeneralTable general;
  AKClassTable classes;
  AKHandlerTable handler;
  AKControlTable control;
  AKPanelTable panel;
};

/// The reference host's own.
extern const HostTables gReal;

struct HostMutant {
  const char* entry;  ///< what the report has to name
  const char* fault;  ///< in words
  void (*make)(HostTables* tables);
};

/// Puts a function of (host object, arguments) in the place of a member entry.
template <auto function, typename Result, typename... Parameters>
void Put(AKHostMember<Result(Parameters...)>* entry) {
  struct Shim {
    Result Call(Parameters... arguments) { return function(static_cast<void*>(this), arguments...); }
  };
  entry->template Set<Shim>(&Shim::Call);
}

inline AKString WithoutLast(const AKString& text) {
  return text.IsEmpty() ? text : AKString(text.CStr(), text.Length() - 1);
}

std::vector<HostMutant> GeneralMutants();
std::vector<HostMutant> ClassMutants();
std::vector<HostMutant> HandlerMutants();
std::vector<HostMutant> ControlMutants();
std::vector<HostMutant> PanelMutants();

}  // namespace host
