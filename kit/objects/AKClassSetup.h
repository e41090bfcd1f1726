// The set-up of a plug-in's class: check the host service record, keep the host's tables, have the class made.
#pragma once

#include <cstdint>

#include "kit/objects/AKClass.h"

/// True for major version 3 with at least one of bits 11 to 15 set. The test is a mask, not a comparison of the minor
/// number.
constexpr bool AKIsAPIVersionAccepted(std::uint32_t version) {
  return (version ^ 0x30000U) <= 0xFFFFU && (version & 0xF800U) > 0x7FFU;
}

/// The status of the checks that come before anything is stored; a failure is logged.
int _AKClassSetupCheck(const AKHostServiceRecord* record, const AKClassInfo& info, AKClass* const* classOut);

/// Stores the record's tables, log procedure and display scale into the kit's globals.
void AKStoreHostServices(const AKHostServiceRecord& record);

/// Sets up the class that `info` describes and stores its record through `classOut`. Returns 0; -1 for a null record or
/// `classOut`, a class that is set up already or a wrong magic; -792 for a version that is not accepted; or what
/// AKClass::ClassSetup returns. The first two log an error and store nothing. `Class` tells set-ups apart by the class
/// that they are for.
template <typename Class>
int _AKClassSetupT(void* hostServiceRecord, const AKClassInfo& info, AKClass** classOut) {
  const auto* record = static_cast<const AKHostServiceRecord*>(hostServiceRecord);
  const int status = _AKClassSetupCheck(record, info, classOut);
  if (status != 0) return status;
  AKStoreHostServices(*record);
  return AKClass::ClassSetup(info, record->setupWord, classOut);
}
