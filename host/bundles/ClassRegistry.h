// The host's registry of object classes: the host's own chain of base classes, and what bundles registered.
//
// The registry owns the class records and the panels that bundles attached to them. Class IDs are unique. An entry
// stays where it is until it is removed.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_map>

#include "kit/objects/AKClass.h"
#include "kit/panels/AKGUIDesc.h"

namespace host {

struct RegisteredClass {
  AKClassID id;  ///< as it was registered: the record lies open to its bundle
  std::unique_ptr<AKClass> record;
  std::unique_ptr<AKGUIDesc> panel;  ///< null for a class without an inspector
  bool fromBundle;                   ///< false for the host's own base classes
};

class ClassRegistry {
 public:
  // Statuses of a refused registration.
  static constexpr int kStatusBadInfo = -701;    ///< no ID, no name, no constructor or destructor, or no size
  static constexpr int kStatusDuplicate = -702;  ///< a class of that ID exists
  static constexpr int kStatusNoParent = -703;   ///< the parent class does not exist

  /// With the host's own classes in it.
  ClassRegistry();

  /// Makes a record from a bundle's description. Logs and returns a status above on failure.
  int Register(const AKClassInfo& info, AKClass** out);
  void AttachPanel(AKClass* cls, AKGUIDesc* panel);

  /// Null when there is none.
  AKClass* Find(AKClassID id) const;
  const RegisteredClass* FindEntry(AKClassID id) const;
  /// True for the record of a registered class.
  bool Has(const AKClass* record) const { return byRecord_.contains(record); }
  AKClass* Top() const { return classes_.front().record.get(); }
  const std::deque<RegisteredClass>& Classes() const { return classes_; }

  /// Forgets the classes registered after the first `count`, the last first; their instances must be gone.
  void RemoveAfter(std::size_t count);

 private:
  void AddOwn(AKClassID id, AKClassID parent, const char* name);
  void Add(std::unique_ptr<AKClass> record, bool fromBundle);

  std::deque<RegisteredClass> classes_;
  std::unordered_map<std::uint64_t, RegisteredClass*> byID_;  // by the bytes of the ID
  std::unordered_map<const AKClass*, RegisteredClass*> byRecord_;
};

/// The name that users see: what the bundle set, or the class name.
const AKString& DisplayName(const AKClass& cls);

}  // namespace host
