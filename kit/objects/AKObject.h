// The base of all instances that a host keeps in its documents, and the memory that they live in.
//
// Every instance stands behind a hidden pointer to its class record:
//
//   block + 0   const AKClass*
//   block + 8   the instance (what an AKObject* points to)
//
// The host owns instances: it asks the class constructor for them and gives them to the class destructor.
#pragma once

#include "kit/containers/ATArray.h"
#include "kit/text/AKClassID.h"

class AKClass;
class AKObject;

/// Casts an object to the class of an ID, or returns null. Hosts supply it; the kit only carries it.
using AKClassQCast = void* (*)(AKObject* object, AKClassID classID);
///@{
/// No quick cast; and the most of them that there can be.
inline constexpr AKClassQCast kAKNullClassQCast = nullptr;
inline constexpr unsigned int kAKClassQCastMaxCount = 64;
///@}

/// A block of 8 + `size` zero bytes with `cls` in front; returns the address behind it, or null when there is no
/// memory. Freed by _AKClassObjectDealloc.
void* _AKClassObjectAlloc(const AKClass* cls, unsigned long size);
/// Frees the block of an instance; null is ignored.
void _AKClassObjectDealloc(void* object);
/// The class record in front of a non-null instance.
const AKClass* _AKClassObjectGetHiddenClassPtr(const AKObject* object);

/// Concrete classes derive from AKObjectClass, or implement _PureVirtualMethod as a no-op and declare AK_OBJECT_MEMORY,
/// so that their deleting destructor releases the block. The base's own operator delete stops the program: no plain
/// AKObject is destroyed.
class AKObject {
 public:
  AKObject(const AKObject&) = delete;
  AKObject& operator=(const AKObject&) = delete;

  static AKClassID _ClassID();  ///< "_object"
  /// The host's record of the class, found by ID once and kept; every class has its own.
  static AKClass* _Class();

  /// Makes the class abstract; does nothing in the classes that have it.
  virtual void _PureVirtualMethod() const = 0;
  /// Called by the class destructor, never by a bundle.
  virtual ~AKObject() = default;

  ///@{
  /// The header, as it was copied from the class record when the instance was made.
  const AKClass* Class() const { return class_; }
  AKClassID ClassID() const { return classID_; }
  AKClassQCast QCast() const { return qcast_; }
  AKClassID FurtherClassID() const { return furtherClassID_; }
  ///@}

  /// Stops the program.
  static void operator delete(void* memory);

 protected:
  /// Fills the header from the hidden class pointer, so an instance is only ever built in a block of
  /// _AKClassObjectAlloc.
  AKObject();

 private:
  const AKClass* class_;
  AKClassID classID_;
  AKClassQCast qcast_;
  AKClassID furtherClassID_;
};

/// The allocation functions of a concrete class, for its public section.
#define AK_OBJECT_MEMORY                                                           \
  static void* operator new(std::size_t, void* memory) noexcept { return memory; } \
  static void operator delete(void*, void*) noexcept {}                            \
  static void operator delete(void* memory) noexcept { _AKClassObjectDealloc(memory); }

/// The host's class chain of drawn objects. Their fields belong to the host; a plug-in's class only keeps their place.
class AKObjectShape : public AKObject {
 public:
  static AKClassID _ClassID();  ///< "_shape"
  /// The host's record of the class.
  static AKClass* _Class();
};
/// Below AKObjectShape.
class AKObjectSymbol : public AKObjectShape {
 public:
  static AKClassID _ClassID();  ///< "_symbol"
  /// The host's record of the class.
  static AKClass* _Class();
};
/// What drawn objects derive from.
class AKObjectSymbolVect : public AKObjectSymbol {
 public:
  static AKClassID _ClassID();  ///< "_syVect"
  /// The host's record of the class.
  static AKClass* _Class();

 protected:
  /// Bytes of the parents' fields behind the header.
  static constexpr unsigned int kHostFieldsSize = 312;

 private:
  [[maybe_unused]] unsigned char hostFields_[kHostFieldsSize] = {};
};

static_assert(sizeof(AKObject) == 40);
static_assert(sizeof(AKObjectSymbolVect) == 352);

/// Objects in an order; the array owns none of them.
using AKObjectArray = ATArray<AKObject*>;

/// Deletes every object with AKClass::DeleteObject, the last first, and empties the array, whose storage stays.
void AKDeletes(AKObjectArray& objects);
