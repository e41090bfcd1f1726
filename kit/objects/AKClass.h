// Class descriptions and class records.
//
// A plug-in describes its class with an AKClassInfo; the host makes the class record from it (ClassSetup), keeps it,
// and drives every instance through the record's method slots. The record's layout is part of the host interface and
// is asserted below.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "kit/containers/ATArray.h"
#include "kit/host/AKHostTables.h"
#include "kit/objects/AKObject.h"
#include "kit/text/AKString.h"

class AGContext;
class AKArgs;
struct AGRect;
struct AKDrawEvent;

/// Identifiers of the host's network clients; the kit only carries the null ones.
struct AKNSClientID {
  std::uint64_t value = 0;  ///< the host's number; 0 is none
};
/// The second kind of such an identifier.
struct AKNSClientFG {
  std::uint64_t value = 0;  ///< the host's number; 0 is none
};
///@{
/// No client and no group.
inline constexpr AKNSClientID kAKNullNSClientID{};
inline constexpr AKNSClientFG kAKNullNSClientFG{};
///@}

/// Makes an instance; null when there is no memory.
using AKClassCtor = AKObject* (*)();
/// Ends an instance; null is ignored.
using AKClassDtor = void (*)(AKObject*);

/// What a plug-in says of its class. The name is borrowed while the set-up runs.
struct AKClassInfo {
  AKClassID classID;                  ///< at most 7 characters, unique among all bundles
  AKClassID parentClassID;            ///< of a class that the host has
  AKClassCtor constructor = nullptr;  ///< makes an instance
  AKClassDtor destructor = nullptr;   ///< ends one
  std::uint32_t instanceSize = 0;     ///< bytes of one instance
  const char* className = nullptr;    ///< for programs; users see what SetClassName sets
};

/// One method of a class, in the form of a member entry of the host's tables.
using AKMethodSlot = AKMemberWords;

/// The method slots that this kit knows by number; the others belong to the host.
enum AKMethodIndex : unsigned int {
  kAKMethodInitWithArgs = 0,         ///< a new object, from argument text
  kAKMethodInitFromFile = 1,         ///< a new object, from its record
  kAKMethodWriteToFile = 2,          ///< writes the record
  kAKMethodDelete = 3,               ///< before the destructor
  kAKMethodSetObjectProperties = 7,  ///< takes properties from a dictionary
  kAKMethodGetObjectProperties = 8,  ///< gives them
  kAKMethodDraw = 11,                ///< draws
  kAKMethodGetNaturalBounds = 13,    ///< the size that the object has by itself
  kAKMethodInspector = 23,           ///< answers the events of its panel
  kAKMethodCount = 64,               ///< how many slots a record has
};

/// The functions of those slots, as members of a class. A slot without one is the host's.
template <unsigned int index>
struct AKMethodSignature {};
/// Reads arguments of a new object.
template <>
struct AKMethodSignature<kAKMethodInitWithArgs> {
  using Type = int(const AKArgs& args);  ///< parameters, result and constness
};
/// Reads the record.
template <>
struct AKMethodSignature<kAKMethodInitFromFile> {
  using Type = int(const AKFile& file, unsigned int version);  ///< parameters, result and constness
};
/// Writes the record.
template <>
struct AKMethodSignature<kAKMethodWriteToFile> {
  using Type = int(AKFile& file) const;  ///< parameters, result and constness
};
/// Runs before the destructor.
template <>
struct AKMethodSignature<kAKMethodDelete> {
  using Type = int();  ///< parameters, result and constness
};
/// Takes properties.
template <>
struct AKMethodSignature<kAKMethodSetObjectProperties> {
  using Type = int(const AKDictionary& properties);  ///< parameters, result and constness
};
/// Gives properties.
template <>
struct AKMethodSignature<kAKMethodGetObjectProperties> {
  using Type = int(AKDictionary* properties) const;  ///< parameters, result and constness
};
/// Draws.
template <>
struct AKMethodSignature<kAKMethodDraw> {
  using Type = int(const AGContext& context, const AKDrawEvent& event) const;  ///< parameters, result and constness
};
/// Gives the size that the object has by itself.
template <>
struct AKMethodSignature<kAKMethodGetNaturalBounds> {
  using Type = AGRect() const;  ///< parameters, result and constness
};
/// Answers an event of the panel.
template <>
struct AKMethodSignature<kAKMethodInspector> {
  using Type = int(AKGUIDesc& panel, AKGUIEvent& event);  ///< parameters, result and constness
};

/// Whether a member pointer's class is `Class` itself, not one of its bases.
template <typename Method, typename Class>
inline constexpr bool kAKIsMemberOf = false;
template <typename Function, typename Class>
inline constexpr bool kAKIsMemberOf<Function Class::*, Class> = true;

/// A member function that `Class` declares itself. One that it inherits may need another address of the object, which
/// the host does not know: declare a function in the class that calls it.
template <typename Method, typename Class>
concept AKFunctionOfTheClassItself = std::is_member_function_pointer_v<Method> && kAKIsMemberOf<Method, Class>;

/// A function of `Class` itself that has the parameters, the result and the constness of the slot.
template <typename Method, typename Class, unsigned int index>
concept AKFunctionOfTheSlot =
    (index < kAKMethodCount) && AKFunctionOfTheClassItself<Method, Class>&& std::is_convertible_v<
                                    Method, typename AKMethodSignature<index>::Type Class::*>;

/// The record of a class, which the host makes and keeps.
class AKClass {
 public:
  /// Flags word. A host sets Locked when a plug-in must leave the method slots alone.
  static constexpr std::uint32_t kFlagLocked = 0x01;
  /// Whether the class has a constructor: one of the two is set.
  static constexpr std::uint32_t kFlagNoConstructor = 0x10;
  /// See kFlagNoConstructor.
  static constexpr std::uint32_t kFlagHasConstructor = 0x20;
  /// The builder's mark; one of the two is set.
  static constexpr std::uint32_t kFlagNotMarked = 0x40;
  /// See kFlagNotMarked.
  static constexpr std::uint32_t kFlagMarked = 0x80;

  /// A record as a host builds it: the description's fields, the quick-cast function twice, the name four times, zeros
  /// elsewhere; flags 0x80 or 0x40 by `marked`, with 0x20 or 0x10 by whether there is a constructor.
  AKClass(const AKClassInfo& info, bool marked, AKClassQCast quickCast);

  /// Writes a function of `Class`, the class of the instances, into a slot. The function is virtual or not.
  template <unsigned int index, typename Class, typename Method>
  requires AKFunctionOfTheSlot<Method, Class, index>
  void SetMethod(Method method) { methods[index] = AKMemberWordsOf(method); }

  AKClassID classID;                      ///< 0; the class
  AKClassID parentClassID;                ///< 8; the class above it
  void* parentLink = nullptr;             ///< 16, the host's
  AKClassCtor constructor;                ///< 24; makes an instance
  AKClassDtor destructor;                 ///< 32; ends one
  AKClassQCast quickCast;                 ///< 40; the host's cast
  AKClassQCast instanceQCast;             ///< 48, copied into each new instance
  std::uint32_t flags;                    ///< 56; a sum of the constants above
  std::uint32_t flagsPadding = 0;         ///< 60; not used
  AKString names[4];                      ///< 64, 72, 80, 88; the second one is what users see
  AKString comments;                      ///< 96; what users are told about the class
  std::uint32_t instanceSize;             ///< 104; bytes of an instance, without the pointer in front of it
  std::uint32_t instanceSizePadding = 0;  ///< 108; not used
  AKClassID furtherClassID;               ///< 112, copied into each new instance
  std::uint64_t hostWords[3] = {};        ///< 120, the host's
  AKMethodSlot methods[kAKMethodCount];   ///< 144; by AKMethodIndex

  // The host's class services. Each call is forwarded to the entry of its name; without a class table nothing is called
  // and the result is -1 for a status, null or nothing otherwise.

  static const AKClassTable* sWrapper;  ///< the class service table, owned by the host

  /// The host makes the record and stores it through `out`. Without a class table it also logs.
  static int ClassSetup(const AKClassInfo& info, unsigned int setupWord, AKClass** out);
  /// Sets the name that users see; `second` is the host's to use. Both are copied.
  static void SetClassName(AKClass* cls, const AKString& name, const AKString& second);
  /// Sets what the host tells users about the class, which is copied.
  static void SetClassComments(AKClass* cls, const AKString& comments);
  /// Gives the class its panel, which is the host's from then on, in any case.
  static void AddInspectorGUIDesc(AKClass* cls, AKGUIDesc* panel);

  /// The class that all others are below of; the record is the host's.
  static AKClass* GetTopClass();
  /// The record of an ID, the host's; null when there is none.
  static AKClass* GetClassOfID(AKClassID id);
  /// Fills the array with the classes from `cls` down, all for null. The array is the caller's, the records the host's.
  static void GetClassCollection(AKClassArray* out, const AKClass* cls, unsigned int selection);
  ///@{
  /// New objects, null on failure (GetErrorNew tells why).
  static AKObject* NewObjectWithArgs(const AKContextObject* context, AKClassID id, const char* format, va_list list);
  static AKObject* NewObjectFromFile(const AKContextObject* context, const AKFile& file, unsigned int version);
  static AKObject* NewObjectFromDictionary(const AKContextObject* context, const AKDictionary& dictionary);
  static AKObject* NewObjectFromOriginal(const AKContextObject* context, const AKObject* original);
  ///@}

  /// Writes an object so that NewObjectFromFile makes it again: its class ID and its record. A status.
  static int WriteObjectToFile(const AKObject* object, AKFile& file);
  /// Adds the object's properties to the dictionary; a status.
  static int WriteObjectToDictionary(const AKObject* object, AKDictionary& dictionary);
  /// Has an object read what WriteObjectToFile wrote; a status.
  static int ReinitObjectFromFile(AKObject* object, const AKFile& file);
  /// Ends an object that is in no document; null is ignored.
  static void DeleteObject(AKObject* object);
  /// Why the last of the four NewObject functions failed, 0 when it did not.
  static int GetErrorNew();
};

static_assert(sizeof(AKClassInfo) == 48);
static_assert(offsetof(AKClassInfo, classID) == 0);
static_assert(offsetof(AKClassInfo, parentClassID) == 8);
static_assert(offsetof(AKClassInfo, constructor) == 16);
static_assert(offsetof(AKClassInfo, destructor) == 24);
static_assert(offsetof(AKClassInfo, instanceSize) == 32);
static_assert(offsetof(AKClassInfo, className) == 40);

static_assert(sizeof(AKClass) == 1168);
static_assert(offsetof(AKClass, classID) == 0);
static_assert(offsetof(AKClass, parentClassID) == 8);
static_assert(offsetof(AKClass, parentLink) == 16);
static_assert(offsetof(AKClass, constructor) == 24);
static_assert(offsetof(AKClass, destructor) == 32);
static_assert(offsetof(AKClass, quickCast) == 40);
static_assert(offsetof(AKClass, instanceQCast) == 48);
static_assert(offsetof(AKClass, flags) == 56);
static_assert(offsetof(AKClass, flagsPadding) == 60);
static_assert(offsetof(AKClass, names) == 64 && sizeof(AKClass::names) == 32);
static_assert(offsetof(AKClass, comments) == 96);
static_assert(offsetof(AKClass, instanceSize) == 104);
static_assert(offsetof(AKClass, instanceSizePadding) == 108);
static_assert(offsetof(AKClass, furtherClassID) == 112);
static_assert(offsetof(AKClass, hostWords) == 120);
static_assert(offsetof(AKClass, methods) == 144);

/// AKClass::GetClassOfID(id).
AKClass* AKClassOfID(AKClassID id);
/// What a class's _Class() keeps: the record of an ID.
AKClass* _AKClassInitStaticPtr(AKClassID id);
/// The quick-cast function (first copy) of the record of an ID; null without a record.
AKClassQCast _AKClassInitStaticQCastF(AKClassID id);
