// A class whose methods do as they are told: what the host makes, writes, reads and ends when it is asked to.
#pragma once

#include <functional>
#include <string>

#include "kit/AKClassBasicTypes.h"
#include "kit/text/AKString.h"

class AKArgs;
class AKDictionary;
class AKFile;

namespace torture {

class Puppet final : public AKObjectClass<Puppet, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "akPuppt";

  /// What its methods return from now on, and what they do meanwhile.
  struct Orders {
    bool refusesConstruction = false;
    int init = 0;
    int read = 0;
    int write = 0;
    int set = 0;
    int get = 0;
    std::function<void()> within{};  ///< called by akmInitWithArgs
  };
  /// What the host did, counted since it was last cleared.
  struct Seen {
    AKString arguments;  ///< of the last akmInitWithArgs, separated by a bar
    unsigned int version = 0;
    unsigned int reads = 0;
    unsigned int deletions = 0;
    unsigned int destructions = 0;
    Puppet* made = nullptr;  ///< the last one
  };
  static Orders orders;
  static Seen seen;

  /// Orders hold as long as this lives.
  class Ordered {
   public:
    explicit Ordered(Orders given) {
      orders = std::move(given);
      seen = {};
    }
    Ordered(const Ordered&) = delete;
    Ordered& operator=(const Ordered&) = delete;
    ~Ordered() { orders = {}; }
  };

  static AKObject* Construct();

  Puppet();
  ~Puppet() override;

  int akmInitWithArgs(const AKArgs& args);
  int akmInitFromFile(const AKFile& file, unsigned int version);
  int akmWriteToFile(AKFile& file) const;
  int akmDelete();
  int akmSetObjectProperties(const AKDictionary& properties);
  int akmGetObjectProperties(AKDictionary* properties) const;

  double number = 0;
  AKString text;
};

/// A class without any method.
class Bare final : public AKObjectClass<Bare, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "akBare";

  Bare();
  ~Bare() override;
};

}  // namespace torture
