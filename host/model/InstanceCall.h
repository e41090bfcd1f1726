// Marks the time in which a method of an instance runs: which one, and what a plug-in may ask for meanwhile.
//
// A plug-in may call the host from within its methods. It may change documents only in those that are there to change
// something: the inspector method, the procedure of a dialog and the one that sets properties. All others are called
// while the host walks through a document, writes it, undoes a step or makes the very object. docs/abi.md has the
// table.
//
// Instances that leave a document while methods run are kept until the outermost call has returned.
#pragma once

#include "host/bundles/Instance.h"
#include "host/model/CallWatch.h"

namespace host {

class InstanceCall {
 public:
  /// What runs that is no method slot.
  static constexpr unsigned int kConstructor = kAKMethodCount;
  static constexpr unsigned int kDialog = kAKMethodCount + 1;
  /// How many calls may run within each other: a bundle that calls itself through the host comes to an end.
  static constexpr unsigned int kDeepest = 64;

  /// What a call returns that was refused: it would run too deep, or may not be made from within a method.
  static constexpr int kStatusRefused = -736;

  /// The method `slot` of `object` begins; the object may be null, and lives longer than this.
  InstanceCall(const AKClass& cls, unsigned int slot, const AKObject* object);
  InstanceCall(const InstanceCall&) = delete;
  InstanceCall& operator=(const InstanceCall&) = delete;
  ~InstanceCall();

  /// False when it runs too deep within others: then the method must not be called. That is logged.
  bool MayRun() const;

  /// Who is told of all calls from now on; null for nobody.
  static void SetWatch(CallWatch* watch);
  static CallWatch* Watch();

  /// False within a method from which documents can't be changed. It is logged then, once while the outermost method
  /// runs, with the name of what the plug-in called.
  static bool MayEdit(const char* entry);
  /// The same for what can't be called from within any method.
  static bool IsOutside(const char* entry);
  /// True while a method of the object runs.
  static bool IsRunning(const AKObject* object);
  static bool IsTooDeep();
  /// True for one that Destroy keeps.
  static bool IsLeaving(const AKObject* object);
  /// Destroys the instance, now or when the outermost call ends.
  static void Destroy(Instance instance);

 private:
  void Refuse(const char* what, const char* advice) const;

  const AKClass& class_;
  unsigned int slot_;
  const AKObject* object_;
  InstanceCall* outer_;
  unsigned int depth_;
  bool mayEdit_;
};

}  // namespace host
