#include "host/storage/MarksChunk.h"

#include <unordered_map>

#include "host/model/ObjectRecord.h"
#include "host/text/Localisation.h"
#include "kit/streams/AKFileNumbers.h"

namespace host {
namespace {

constexpr std::uint32_t kMarksSignature = 0x484D726B;  // "HMrk"
constexpr unsigned int kHidden = 1;
constexpr unsigned int kLocked = 2;

// Groups by their numbers in the chunk, which begin with 1; 0 is none.
struct NumberedGroups {
  std::vector<unsigned int> parents;
  std::unordered_map<GroupID, unsigned int> numbers;

  unsigned int NumberOf(const std::vector<GroupID>& path) {
    unsigned int parent = 0;
    for (const GroupID group : path) {
      const auto [found, isNew] = numbers.try_emplace(group, static_cast<unsigned int>(parents.size() + 1));
      if (isNew) parents.push_back(parent);
      parent = found->second;
    }
    return parent;
  }
};

// The numbers of a chunk, all of which must be there.
class Numbers {
 public:
  Numbers(const AKFile& file, const AKFileChunk& chunk) : file_(file), left_(chunk.size / 4) {}

  bool Next(unsigned int* number) { return left_-- > 0 && AKFileReadUInt32(file_, number) == 0; }
  /// How many of so many numbers each something has; false when there are fewer.
  bool NextCount(unsigned int numbersEach, unsigned int* count) { return Next(count) && *count <= left_ / numbersEach; }

 private:
  const AKFile& file_;
  long long left_;
};

// The groups of a chunk; a path is only made for who is in it, since a few bytes of a group may stand for a long one.
class GroupTable {
 public:
  bool Read(Numbers* numbers) {
    unsigned int count = 0;
    if (!numbers->NextCount(1, &count)) return false;
    for (unsigned int i = 0; i < count; ++i) {
      unsigned int parent = 0;
      if (!numbers->Next(&parent) || parent > i || depths_[parent] == kMostGroups) return false;
      parents_.push_back(parent);
      depths_.push_back(depths_[parent] + 1);
    }
    return true;
  }
  bool Has(unsigned int group) const { return group < parents_.size(); }
  std::vector<GroupID> PathOf(unsigned int group, GroupID firstGroup) const {
    std::vector<GroupID> path(depths_[group]);
    for (auto place = path.rbegin(); place != path.rend(); ++place, group = parents_[group]) {
      *place = firstGroup + group - 1;
    }
    return path;
  }

 private:
  std::vector<unsigned int> parents_{0};  ///< the first is that of no group
  std::vector<unsigned int> depths_{0};
};

bool ReadObjects(Numbers* numbers, const GroupTable& groups, GroupID firstGroup, std::vector<ObjectMarks>* marks) {
  unsigned int count = 0;
  if (!numbers->NextCount(3, &count)) return false;
  for (unsigned int i = 0; i < count; ++i) {
    unsigned int index = 0;
    unsigned int flags = 0;
    unsigned int group = 0;
    if (!numbers->Next(&index) || !numbers->Next(&flags) || !numbers->Next(&group)) return false;
    if (index >= marks->size() || !groups.Has(group)) return false;
    (*marks)[index] = {(flags & kHidden) != 0, (flags & kLocked) != 0, groups.PathOf(group, firstGroup)};
  }
  return true;
}

}  // namespace

int WriteMarks(AKFile& file, const std::vector<const ObjectMarks*>& objects) {
  NumberedGroups groups;
  std::vector<unsigned int> marked;
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const ObjectMarks& marks = *objects[i];
    if (marks.IsLoose()) continue;
    marked.push_back(static_cast<unsigned int>(i));
    marked.push_back((marks.hidden ? kHidden : 0) | (marks.locked ? kLocked : 0));
    marked.push_back(groups.NumberOf(marks.groups));
  }
  std::vector<unsigned int> numbers{static_cast<unsigned int>(groups.parents.size())};
  numbers.insert(numbers.end(), groups.parents.begin(), groups.parents.end());
  numbers.push_back(static_cast<unsigned int>(marked.size() / 3));
  numbers.insert(numbers.end(), marked.begin(), marked.end());
  AKFileChunk chunk{kMarksSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  for (const unsigned int number : numbers) {
    if (status == 0) status = AKFileWriteUInt32(file, number);
  }
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

Result<std::vector<ObjectMarks>> ReadMarks(const AKFile& file, const AKFileChunk& outer, std::size_t count,
                                           GroupID firstGroup) {
  ObjectChunkReader reader(file);
  AKFileChunk chunk;
  if (!reader.ReadHeader(outer, kMarksSignature, &chunk)) return *reader.Why();
  std::vector<ObjectMarks> marks(count);
  GroupTable groups;
  Numbers numbers(file, chunk);
  if (groups.Read(&numbers) && ReadObjects(&numbers, groups, firstGroup, &marks)) return marks;
  return Problem(N_("the groups at position %s are damaged"), {std::to_string(chunk.pos)});
}

}  // namespace host
