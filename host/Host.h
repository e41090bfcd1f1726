// The host as bundles meet it: its services behind tables, its class registry, and the bundles that are loaded.
//
// There is one host in a process, since the tables' entries are plain functions. Everything runs on the main thread.
#pragma once

#include <string>
#include <vector>

#include "host/bundles/ClassRegistry.h"
#include "host/session/SessionRegistry.h"
#include "kit/files/AKFilePath.h"
#include "kit/objects/AKClassSetup.h"

namespace host {

class UserInterface;

class Host {
 public:
  static constexpr std::uint32_t kAPIVersion = 0x00030800;

  /// The process's host, made on first use.
  static Host& Instance();

  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  ClassRegistry& Classes() { return classes_; }
  SessionRegistry& Sessions() { return sessions_; }
  /// What a bundle is given.
  AKHostServiceRecord ServiceRecord() const;

  /// The person to ask on behalf of a bundle; null when there is none. Not owned.
  UserInterface* userInterface = nullptr;

 private:
  Host();

  ClassRegistry classes_;
  SessionRegistry sessions_;
};

/// The host's tables, each made once.
const AKGeneralTable* GeneralTable();
const AKClassTable* ClassTable();
const AKHandlerTable* HandlerTable();

}  // namespace host
