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
  std::uint64_t value = 0;
};
struct AKNSClientFG {
  std::uint64_t value = 0;
};
inline constexpr AKNSClientID kAKNullNSClientID{};
inline constexpr AKNSClientFG kAKNullNSClientFG{};

using AKClassCtor = AKObject* (*)();
using AKClassDtor = void (*)(AKObject*);

/// What a plug-in says of its class. The name is borrowed while the set-up runs.
struct AKClassInfo {
  AKClassID classID;
  AKClassID parentClassID;
  AKClassCtor constructor = nullptr;
  AKClassDtor destructor = nullptr;
  std::uint32_t instanceSize = 0;  ///< bytes of one instance
  const char* className = nullptr;
};

/// One method of a class, in the form of a member entry of the host's tables.
using AKMethodSlot = AKMemberWords;

/// The method slots that this kit knows by number; the others belong to the host.
enum AKMethodIndex : unsigned int {
  kAKMethodInitWithArgs = 0,
  kAKMethodInitFromFile = 1,
  kAKMethodWriteToFile = 2,
  kAKMethodDelete = 3,
  kAKMethodSetObjectProperties = 7,
  kAKMethodGetObjectProperties = 8,
  kAKMethodDraw = 11,
  kAKMethodGetNaturalBounds = 13,
  kAKMethodInspector = 23,
  kAKMethodCount = 64,
};

/// The functions of those slots, as members of a class. A slot without one is the host's.
template <unsigned int index>
struct AKMethodSignature {};
template <>
struct AKMethodSignature<kAKMethodInitWithArgs> {
  using Type = int(const AKArgs& args);
};
template <>
struct AKMethodSignature<kAKMethodInitFromFile> {
  using Type = int(const AKFile& file, unsigned int version);
};
template <>
struct AKMethodSignature<kAKMethodWriteToFile> {
  using Type = int(AKFile& file) const;
};
template <>
struct AKMethodSignature<kAKMethodDelete> {
  using Type = int();
};
template <>
struct AKMethodSignature<kAKMethodSetObjectProperties> {
  using Type = int(const AKDictionary& properties);
};
template <>
struct AKMethodSignature<kAKMethodGetObjectProperties> {
  using Type = int(AKDictionary* properties) const;
};
template <>
struct AKMethodSignature<kAKMethodDraw> {
  using Type = int(const AGContext& context, const AKDrawEvent& event) const;
};
template <>
struct AKMethodSignature<kAKMethodGetNaturalBounds> {
  using Type = AGRect() const;
};
template <>
struct AKMethodSignature<kAKMethodInspector> {
  using Type = int(AKGUIDesc& panel, AKGUIEvent& event);
};

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

class AKClass {
 public:
  /// Flags word. A host sets Locked when a plug-in must leave the method slots alone.
  static constexpr std::uint32_t kFlagLocked = 0x01;
  static constexpr std::uint32_t kFlagNoConstructor = 0x10;
  static constexpr std::uint32_t kFlagHasConstructor = 0x20;
  static constexpr std::uint32_t kFlagNotMarked = 0x40;
  static constexpr std::uint32_t kFlagMarked = 0x80;

  /// A record as a host builds it: the description's fields, the quick-cast function twice, the name four times, zeros
  /// elsewhere; flags 0x80 or 0x40 by `marked`, with 0x20 or 0x10 by whether there is a constructor.
  AKClass(const AKClassInfo& info, bool marked, AKClassQCast quickCast);

  /// Writes a function of `Class`, the class of the instances, into a slot. The function is virtual or not.
  template <unsigned int index, typename Class, typename Method>
  requires AKFunctionOfTheSlot<Method, Class, index>
  void SetMethod(Method method) { methods[index] = AKMemberWordsOf(method); }

  AKClassID classID;                      // 0
  AKClassID parentClassID;                // 8
  void* parentLink = nullptr;             // 16, the host's
  AKClassCtor constructor;                // 24
  AKClassDtor destructor;                 // 32
  AKClassQCast quickCast;                 // 40
  AKClassQCast instanceQCast;             // 48, copied into each new instance
  std::uint32_t flags;                    // 56
  std::uint32_t flagsPadding = 0;         // 60
  AKString names[4];                      // 64, 72, 80, 88
  AKString comments;                      // 96
  std::uint32_t instanceSize;             // 104
  std::uint32_t instanceSizePadding = 0;  // 108
  AKClassID furtherClassID;               // 112, copied into each new instance
  std::uint64_t hostWords[3] = {};        // 120, the host's
  AKMethodSlot methods[kAKMethodCount];   // 144

  // The host's class services. Each call is forwarded to the entry of its name; without a class table nothing is called
  // and the result is -1 for a status, null or nothing otherwise.

  static const AKClassTable* sWrapper;  ///< the class service table, owned by the host

  /// The host makes the record and stores it through `out`. Without a class table it also logs.
  static int ClassSetup(const AKClassInfo& info, unsigned int setupWord, AKClass** out);
  /// The panel goes over to the host.
  static void SetClassName(AKClass* cls, const AKString& name, const AKString& second);
  static void SetClassComments(AKClass* cls, const AKString& comments);
  static void AddInspectorGUIDesc(AKClass* cls, AKGUIDesc* panel);

  static AKClass* GetTopClass();
  static AKClass* GetClassOfID(AKClassID id);
  static void GetClassCollection(AKClassArray* out, const AKClass* cls, unsigned int selection);
  /// New objects, null on failure (GetErrorNew tells why).
  static AKObject* NewObjectWithArgs(const AKContextObject* context, AKClassID id, const char* format, va_list list);
  static AKObject* NewObjectFromFile(const AKContextObject* context, const AKFile& file, unsigned int version);
  static AKObject* NewObjectFromDictionary(const AKContextObject* context, const AKDictionary& dictionary);
  static AKObject* NewObjectFromOriginal(const AKContextObject* context, const AKObject* original);

  static int WriteObjectToFile(const AKObject* object, AKFile& file);
  static int WriteObjectToDictionary(const AKObject* object, AKDictionary& dictionary);
  static int ReinitObjectFromFile(AKObject* object, const AKFile& file);
  static void DeleteObject(AKObject* object);
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
