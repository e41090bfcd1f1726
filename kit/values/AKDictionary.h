// AKDictionary: an ordered map from key text to AKValue.
//
// Entries are kept in ascending byte order of their keys, whatever the order in which they came; keys are unique. The
// dictionary owns its keys and values; copying copies them deeply. An empty dictionary allocates nothing.
//
// Entries are addressed by key paths: one or more names joined by single dots ("Brush.Color"). A name consists of ASCII
// letters, digits and underscores. A path of several names leads through entries that are dictionaries themselves.
//
// Dictionaries and arrays nest at most 512 deep, in memory as on file: what would lie deeper is not stored (-881). A
// caller that nests values by hand, without the functions below, keeps the limit itself.
//
// Errors: 0 or a negative status; failures other than those of files are not logged.
#pragma once

#include <string_view>

#include "kit/values/AKValue.h"

class AKDictionaryNode;
class AKDictionaryStore;
class AKFile;
class AKFilePath;

inline constexpr int kAKDictionaryStatusExists = -872;       ///< the entry exists
inline constexpr int kAKDictionaryStatusMissing = -873;      ///< there is no such entry
inline constexpr int kAKDictionaryStatusInvalidPath = -874;  ///< no path, or one through a value that is no dictionary

class AKDictionary {
 public:
  // Creating, assigning, comparing

  /// Empty, without an allocation.
  constexpr AKDictionary() noexcept = default;
  ///@{
  /// A deep copy; or the other's content, which is empty then.
  AKDictionary(const AKDictionary& other);
  AKDictionary(AKDictionary&& other) noexcept : store_(other.store_) { other.store_ = nullptr; }
  ///@}
  /// Frees keys and values, however deep they nest.
  ~AKDictionary() { Free(); }
  ///@{
  /// The other dictionary may be part of this one.
  AKDictionary& operator=(const AKDictionary& other);
  AKDictionary& operator=(AKDictionary&& other) noexcept;
  ///@}

  ///@{
  /// Removes and frees all entries.
  void Clear() { Free(); }
  void Free();
  ///@}
  /// Exchanges two dictionaries; nothing is copied.
  void Swap(AKDictionary* other) noexcept;
  /// As the assignment of a copy.
  void Assign(const AKDictionary& other) { *this = other; }
  ///@{
  /// The same keys with equal values.
  bool IsEqual(const AKDictionary& other) const;
  bool operator==(const AKDictionary& other) const { return IsEqual(other); }
  ///@}
  /// True when there are no entries.
  bool IsEmpty() const { return Count() == 0; }
  /// The number of entries, those of dictionaries in it not counted.
  unsigned int Count() const;

  // Looking up

  /// The one key of a dictionary with exactly one entry, else the empty text.
  AKString GetUniqueSubKey() const;
  /// True when there is a value at `path`.
  bool ContainsKey(const AKString& path) const;
  /// The value at `path`, or the empty value: valid until the dictionary is modified.
  const AKValue& GetValue(const AKString& path) const;
  /// 0, -874 for an invalid path or one through a value that is no dictionary, -873 when there is no such entry; then
  /// `value` is left alone.
  int GetValueCopy(const AKString& path, AKValue* value) const;

  // Changing

  /// Only a new entry: -872 when it exists. Missing dictionaries on the way are created. These three fail with -881,
  /// and change nothing, where the entry or something in it would lie too deep.
  int AddValue(const AKString& path, const AKValue& value);
  /// A new entry or a replaced one. A value on the way that is no dictionary is replaced by `value` itself.
  int SetValue(const AKString& path, const AKValue& value);
  /// Only an existing entry: -873 when there is none.
  int ReplaceValue(const AKString& path, const AKValue& value);
  /// -873 when there is no such entry, -874 for a path through a value that is no dictionary.
  int RemoveValue(const AKString& path);

  /// Adds the other dictionary's entries; of two with the same key the other's wins, or this one's. Entries are taken
  /// whole: dictionaries in them are not merged.
  void Merge(const AKDictionary& other, bool otherWins);

  // Files (AKValueRecord.cpp)

  ///@{
  /// The "dict" record. A failed read leaves the dictionary empty. Dictionaries and arrays nested more than 512 deep
  /// fail with -881 in both directions.
  int ReadFromFile(const AKFile& file);
  int WriteToFile(AKFile& file) const;
  static int SkipFromFile(const AKFile& file);
  ///@}
  ///@{
  /// A file that holds one "dict" record and nothing else. Saving replaces the file whole or not at all.
  int LoadFromBinFile(const AKFilePath& path);
  int SaveToBinFile(const AKFilePath& path) const;
  ///@}

  // Walking

  /// Calls visit(key, value) for each entry in the order of the keys. The dictionary must not be modified meanwhile.
  template <typename Visitor>
  void ForEach(Visitor visit) const;

  /// One entry in the order of the keys: the walk that ForEach makes.
  class Cursor {
   public:
    /// On the first entry; the dictionary is borrowed.
    explicit Cursor(const AKDictionary& dictionary);
    /// False behind the last entry.
    bool IsValid() const { return key_ != nullptr; }
    ///@{
    /// Of the entry that the cursor is on; only while it is valid.
    const AKString& Key() const { return *key_; }
    const AKValue& Value() const { return *value_; }
    ///@}
    /// On to the next entry.
    void Next();

   private:
    void Load();

    const AKDictionaryNode* leaf_ = nullptr;
    unsigned int index_ = 0;
    const AKString* key_ = nullptr;
    const AKValue* value_ = nullptr;
  };

 private:
  friend class AKRecordReader;
  friend struct AKLayout;
  static constexpr unsigned int kMayAdd = 1;
  static constexpr unsigned int kMayReplace = 2;

  AKDictionaryStore& MutableStore();
  /// Adds or replaces the entry of exactly this key, which need not be a name.
  void PutEntry(const AKString& key, AKValue&& value);
  AKValue* FindToStore(std::string_view name, const AKString& path, bool mayAdd, bool* added);
  const AKValue* Find(const AKString& path, int* status) const;
  int Store(const AKString& path, const AKValue& value, unsigned int mode);
  bool WouldNestTooDeep(std::string_view path, const AKValue& value, unsigned int mode) const;

  AKDictionaryStore* store_ = nullptr;
};

template <typename Visitor>
void AKDictionary::ForEach(Visitor visit) const {
  for (Cursor cursor(*this); cursor.IsValid(); cursor.Next()) visit(cursor.Key(), cursor.Value());
}

/// The shared empty dictionary.
extern const AKDictionary kAKNullDictionary;
