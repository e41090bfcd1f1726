// What every class of a bundle repeats: its ID, its record, the memory of its instances, its method slots and its
// registration. A class derives from AKObjectClass<itself, its parent> and says the rest:
//
//   class Star final : public AKObjectClass<Star, AKObjectSymbolVect> {
//    public:
//     static constexpr char kClassID[] = "exStar";    // at most 7 characters, unique among all bundles
//     static constexpr char kClassName[] = "Star";
//     static constexpr char kLocaleDomain[] = "Star";  // of the translations
//     static const char* DisplayName() { return NKLocaleGetString("Star"); }  // what users see
//
//     static AKGUIDesc* BuildInspectorGUIDesc();  // without it there is no inspector
//     int akmDraw(const AGContext& context, const AKDrawEvent& event) const;
//     ...                                         // as many of the akm functions below as the class needs, public
//   };
//
// and pluginMain is `return Star::Register(hostServiceRecord, &record);`.
#pragma once

#include <new>

#include "kit/host/AKHostServices.h"
#include "kit/objects/AKClass.h"
#include "kit/objects/AKClassSetup.h"
#include "kit/objects/AKObject.h"

/// The constructor of `Derived` takes no arguments. Its memory is zero before that.
template <typename Derived, typename Parent>
class AKObjectClass : public Parent {
 public:
  AK_OBJECT_MEMORY

  /// The ID that the class chose, kClassID.
  static AKClassID _ClassID() {
    static_assert(sizeof(Derived::kClassID) <= sizeof(AKClassID), "kClassID: a class ID has at most 7 characters");
    static const AKClassID id(Derived::kClassID);
    return id;
  }
  /// The class record, found by ID once and kept.
  static AKClass* _Class() {
    static AKClass* const record = _AKClassInitStaticPtr(_ClassID());
    return record;
  }
  /// A new instance; null when there is no memory.
  static AKObject* _ClassCtor() {
    void* memory = _AKClassObjectAlloc(_Class(), sizeof(Derived));
    return memory == nullptr ? nullptr : new (memory) Derived;
  }
  /// Destroys and frees an instance; null is ignored.
  static void _ClassDtor(AKObject* object) { delete static_cast<Derived*>(object); }

  /// Makes the class one of which there are instances.
  void _PureVirtualMethod() const override {}

  /// For a class without an inspector.
  static AKGUIDesc* BuildInspectorGUIDesc() { return nullptr; }

  /// Writes the akm functions that `Derived` has into the record's slots, unless the host has locked them. The other
  /// slots stay as they are.
  static void FillMethodSlots(AKClass* record) {
    if (record == nullptr || (record->flags & AKClass::kFlagLocked) != 0) return;
    Fill<kAKMethodInitWithArgs>(record, &Derived::akmInitWithArgs);
    Fill<kAKMethodInitFromFile>(record, &Derived::akmInitFromFile);
    Fill<kAKMethodWriteToFile>(record, &Derived::akmWriteToFile);
    Fill<kAKMethodDelete>(record, &Derived::akmDelete);
    Fill<kAKMethodSetObjectProperties>(record, &Derived::akmSetObjectProperties);
    Fill<kAKMethodGetObjectProperties>(record, &Derived::akmGetObjectProperties);
    Fill<kAKMethodDraw>(record, &Derived::akmDraw);
    Fill<kAKMethodGetNaturalBounds>(record, &Derived::akmGetNaturalBounds);
    Fill<kAKMethodInspector>(record, &Derived::akmInspector);
  }

  /// All that pluginMain does for the class: sets it up, names it, fills its slots and attaches its inspector. Returns
  /// 0 with the class record in `*record`, which was null before, or the status of the set-up, after which the class
  /// has no name, slot or panel.
  static int Register(void* hostServiceRecord, AKClass** record) {
    AKClassInfo info;
    info.classID = _ClassID();
    info.parentClassID = Parent::_ClassID();
    info.constructor = &_ClassCtor;
    info.destructor = &_ClassDtor;
    info.instanceSize = sizeof(Derived);
    info.className = Derived::kClassName;
    const int status = _AKClassSetupT<Derived>(hostServiceRecord, info, record);
    if (status != 0) return status;

    NKLocaleSetDomain(Derived::kLocaleDomain);
    AKClass::SetClassName(*record, AKString(Derived::DisplayName()), kAKNullString);
    FillMethodSlots(*record);
    if (AKGUIDesc* panel = Derived::BuildInspectorGUIDesc()) AKClass::AddInspectorGUIDesc(*record, panel);
    return 0;
  }

 protected:
  /// The type of a function that the class does not have.
  struct NoMethod {};
  ///@{
  /// Stands for the function of its name where the class has none.
  static constexpr NoMethod akmInitWithArgs{};
  static constexpr NoMethod akmInitFromFile{};
  static constexpr NoMethod akmWriteToFile{};
  static constexpr NoMethod akmDelete{};
  static constexpr NoMethod akmSetObjectProperties{};
  static constexpr NoMethod akmGetObjectProperties{};
  static constexpr NoMethod akmDraw{};
  static constexpr NoMethod akmGetNaturalBounds{};
  static constexpr NoMethod akmInspector{};
  ///@}

 private:
  template <unsigned int index, typename Method>
  static void Fill(AKClass* record, Method method) {
    constexpr bool isOwn = AKFunctionOfTheClassItself<Method, Derived>;
    static_assert(isOwn, "an inherited akm function: declare it in the class itself, where it may call the base's");
    if constexpr (isOwn) {
      constexpr bool fits = AKFunctionOfTheSlot<Method, Derived, index>;
      static_assert(fits, "an akm function of the wrong parameters, result or constness: see AKMethodSignature");
      if constexpr (fits) record->SetMethod<index, Derived>(method);
    }
  }
  template <unsigned int index>
  static void Fill(AKClass*, const NoMethod*) {}
};
