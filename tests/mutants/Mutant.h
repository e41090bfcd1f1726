// A class that is right, but for one fault, which the name of the bundle's file tells: Mutant-FAULT.so. A file of any
// other name has none. Which check has to find which fault stands in mutants.txt.
#pragma once

#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"

class AKArgs;
class AKDictionary;
class AKFile;

/// Whether this bundle has the fault.
bool Has(const char* fault);
void CrashIf(bool crashes);
/// Takes memory that nobody gives back.
void Leak(std::size_t size);

class Mutant : public AKObjectClass<Mutant, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "tMutant";
  static constexpr char kClassName[] = "Mutant";
  static constexpr char kLocaleDomain[] = "Mutant";
  static const char* DisplayName() { return Has("no-name") ? "" : NKLocaleGetString("Mutant"); }

  static AKGUIDesc* BuildInspectorGUIDesc();
  static AKObject* Construct();
  static void Destroy(AKObject* object);

  Mutant();
  ~Mutant() override;

  int akmInitWithArgs(const AKArgs& args);
  int akmInitFromFile(const AKFile& file, unsigned int version);
  int akmWriteToFile(AKFile& file) const;
  int akmDelete();
  int akmSetObjectProperties(const AKDictionary& properties);
  int akmGetObjectProperties(AKDictionary* properties) const;
  int akmDraw(const AGContext& context, const AKDrawEvent& event) const;
  AGRect akmGetNaturalBounds() const;
  int akmInspector(AKGUIDesc& panel, AKGUIEvent& event);

 private:
  void SetAlpha(double alpha);
  void SetCount(double count);
  void Show(AKGUIDesc& panel) const;
  void Take(AKGUIDesc& panel, unsigned int control);
  void TakeFaulty(const AKDictionary& properties);
  int ReadFields(const AKFile& file);
  AGRect FaultyBounds(const AKDrawEvent& event) const;
  void PrepareFaulty(AGContext* copy, const AGContext& context, const AKDrawEvent& event) const;

  double alpha_ = 0.5;
  int count_ = 5;
  bool on_ = true;
  bool isInitialised_ = false;
  AKString label_;
  double shown_ = 0.5;    // what a panel that lags behind shows
  double told_ = 0.5;     // what properties that lag behind tell
  void* kept_ = nullptr;  // memory of its own
  mutable int setsSinceDrawn_ = -1;
  double room_[2] = {};  // so that the allocator's block is longer than the instance
};

static_assert(sizeof(Mutant) % 16 == 8, "the fault of writing behind the end needs room there");

/// In files of the fault that copies share: one for all of them. Others have none.
extern "C" __attribute__((weak, visibility("default"))) long mutantUnique;

/// What the bundle was started with, for the fault of keeping it.
extern const AKHostServiceRecord* gKeptRecord;
/// What all objects share in the fault of sharing.
extern double gShared;
/// Of the fault of ending what all objects need.
bool IsResourceThere();
