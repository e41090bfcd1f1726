// When the host called: the methods that run now, one within the other.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

class AKObject;

namespace torture {

enum class MomentID {
  kStart,
  kConstructor,
  kInitWithArgs,
  kInitFromFile,
  kWriteToFile,
  kGetProperties,
  kSetPropertiesMaking,
  kSetProperties,
  kNaturalBounds,
  kDraw,
  kFill,
  kIdle,
  kChange,
  kDialog,
  kDelete,
  kDestructor,
};
inline constexpr std::size_t kMomentCount = static_cast<std::size_t>(MomentID::kDestructor) + 1;

/// "akmDraw"
std::string_view NameOf(MomentID moment);

/// A method begins, and ends with this.
class Moment {
 public:
  /// The object may be null.
  Moment(MomentID id, const AKObject* object);
  Moment(const Moment&) = delete;
  Moment& operator=(const Moment&) = delete;
  ~Moment();

  /// The innermost; null when none runs.
  static const Moment* Current();
  /// How many run within each other.
  static unsigned int Depth();
  /// "akmDraw within akmInspector, a change"
  static std::string Where();
  /// True when documents may be changed: all methods that run are there to change something.
  static bool MayEdit();

  MomentID ID() const { return id_; }
  const AKObject* Object() const { return object_; }
  /// True when the host is to be asked everything now: the first times of each moment, and not within the same. Counts
  /// as one of them.
  bool TakesRound() const;

 private:
  MomentID id_;
  const AKObject* object_;
  const Moment* outer_;
};

}  // namespace torture
