// The instances of the bundle's classes: whether the host calls them in the order that it promises, on the thread that
// it promises, and ends each of them once.
//
// An instance is made by its class's constructor, initialised once, used, ended by akmDelete and destroyed.
#pragma once

#include <cstddef>
#include <string_view>

class AKObject;

namespace torture {

class Lives {
 public:
  /// The constructor of the instance runs.
  static void Made(const AKObject* object);
  /// A method of it begins: `slot` is its name as the report has it, "slot.akmDraw".
  static void Initialises(const AKObject* object, std::string_view slot);
  static void Uses(const AKObject* object, std::string_view slot);
  static void Ends(const AKObject* object);
  static void Destroyed(const AKObject* object);

  static bool IsAlive(const AKObject* object);
  static bool IsInitialised(const AKObject* object);
  static std::size_t Count();
  /// The host has taken it out of its document: it is gone when the outermost method has returned.
  static void ExpectToLeave(const AKObject* object);
  static void ExpectLeftAreGone();
  /// At the end of the bundle.
  static void ExpectAllAreGone();
};

}  // namespace torture
