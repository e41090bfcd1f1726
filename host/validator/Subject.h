// A bundle that has started, and its classes as the host calls them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/Host.h"
#include "host/bundles/Instance.h"
#include "host/panels/HostPanel.h"
#include "host/validator/Library.h"
#include "kit/values/AKDictionary.h"

namespace host::validator {

/// Bytes of a record, without the class ID in front.
using Bytes = std::string;

/// A class of the bundle. Each call says first what it does (Trial::Do). Calls of a slot that the class has not got do
/// nothing and return 0.
class ClassCalls {
 public:
  ClassCalls(Trial& trial, const RegisteredClass& entry) : trial_(trial), entry_(entry) {}

  const AKClass& Record() const { return *entry_.record; }
  /// Null for a class without an inspector.
  HostPanel* Panel() const;
  bool Has(unsigned int slot) const;

  /// A new object, initialised from arguments. Null, with the status, when its class refuses.
  Instance Make(const std::string& arguments, int* status) const;
  /// The same; a refusal fails the check.
  Instance Make(const std::string& arguments = "-default") const;
  /// The constructor alone; null fails the check.
  Instance Construct() const;

  int Set(const Instance& object, const AKDictionary& properties) const;
  int Set(const Instance& object, const AKString& key, const AKValue& value) const;
  /// The properties; a status that is not 0 fails the check.
  AKDictionary Get(const Instance& object) const;
  /// The record; a status that is not 0 fails the check.
  Bytes Write(const Instance& object) const;
  int WriteTo(const Instance& object, AKFile& file) const;
  /// Reads a record into the object; `*rest` receives how many bytes were left, and may be null.
  int Read(const Instance& object, const Bytes& record, unsigned int version = kRecordVersion,
           std::size_t* rest = nullptr) const;
  int ReadFrom(const Instance& object, const AKFile& file, unsigned int version = kRecordVersion) const;
  /// A new object that has read the record; a status that is not 0 fails the check.
  Instance MakeFrom(const Bytes& record) const;
  int Draw(const Instance& object, const AGContext& context, const AKDrawEvent& event) const;
  /// An event of the panel, which the class must have. `*actionName` may be null.
  int Send(const Instance& object, unsigned int kind, unsigned int control, AKString* actionName = nullptr) const;

  /// "of an object of class "exStar"".
  std::string Of() const;

 private:
  void Do(const std::string& what) const;

  Trial& trial_;
  const RegisteredClass& entry_;
};

/// What is called before each call into the bundle; empty for nothing.
extern std::function<void()> gBeforeCall;
/// What bundles are started with; null for the host's services. Outlives them.
extern const AKHostServiceRecord* gServices;

/// A bundle that was loaded and started. When it does not start, or registers no class, the check fails. It stays as
/// long as the process.
class Subject {
 public:
  explicit Subject(Trial& trial);
  /// With services of the check's own, which outlive it, and perhaps from another file.
  Subject(Trial& trial, const AKHostServiceRecord& record) : Subject(trial, record, trial.Bundle()) {}
  Subject(Trial& trial, const AKHostServiceRecord& record, const std::string& file);

  const Library& File() const { return library_; }
  const std::vector<ClassCalls>& Classes() const { return classes_; }

 private:
  Library library_;
  std::vector<ClassCalls> classes_;
};

/// Calls f with each class of the started bundle that has all the slots; the check is skipped when there is none.
void ForEachClass(Trial& trial, std::initializer_list<unsigned int> slots,
                  const std::function<void(const ClassCalls& cls)>& f);
/// The same for classes with an inspector panel.
void ForEachPanel(Trial& trial, const std::function<void(const ClassCalls& cls, HostPanel& panel)>& f);

/// Whether the properties are the same; a NaN equals a NaN.
bool IsSame(const AKDictionary& one, const AKDictionary& other);
/// "{Points=5}", at most 300 bytes of it.
std::string TextOfAll(const AKDictionary& properties);
/// "12 bytes: 00 01 ..."
std::string TextOfBytes(const Bytes& bytes);
std::string StatusText(int status);

/// What the class has to say of the object's state: its record, its properties, or both.
struct State {
  Bytes record;
  AKDictionary properties;
  /// A NaN equals a NaN.
  bool operator==(const State& other) const;
};
State StateOf(const ClassCalls& cls, const Instance& object);
std::string TextOfState(const State& state);

}  // namespace host::validator
