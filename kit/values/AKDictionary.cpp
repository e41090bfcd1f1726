#include "kit/values/AKDictionary.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileReplacer.h"
#include "kit/values/AKDictionaryStore_p.h"
#include "kit/values/AKValueArray.h"
#include "kit/values/AKValueRecord.h"

const AKDictionary kAKNullDictionary;

namespace {

std::string_view ViewOf(const AKString& text) { return {text.CStr(), text.Length()}; }

constexpr std::array<bool, 256> kIsNameByte = [] {
  std::array<bool, 256> isName{};
  for (const char byte : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_")) {
    isName[static_cast<unsigned char>(byte)] = true;
  }
  return isName;
}();

bool IsValidPath(std::string_view path) {
  bool inName = false;
  for (const char byte : path) {
    const bool isName = kIsNameByte[static_cast<unsigned char>(byte)];
    if (!isName && !(byte == '.' && inName)) return false;
    inName = isName;
  }
  return inName;
}

// Takes the first name off a valid path; false when it was the last.
bool TakeName(std::string_view* path, std::string_view* name) {
  const std::size_t dot = path->find('.');
  *name = path->substr(0, dot);
  if (dot == std::string_view::npos) return false;
  path->remove_prefix(dot + 1);
  return true;
}

// Whether arrays and dictionaries nest deeper in the value than `levels`.
bool NestsDeeper(const AKValue& value, unsigned int levels) {
  if (const AKValueArray* const array = value.GetasAKValueArray(); array != nullptr) {
    return levels == 0 || std::any_of(array->begin(), array->end(),
                                      [&](const AKValue& item) { return NestsDeeper(item, levels - 1); });
  }
  const AKDictionary* const dictionary = value.GetasAKDictionary();
  if (dictionary == nullptr) return false;
  bool deeper = levels == 0;
  for (AKDictionary::Cursor cursor(*dictionary); !deeper && cursor.IsValid(); cursor.Next()) {
    deeper = NestsDeeper(cursor.Value(), levels - 1);
  }
  return deeper;
}

std::size_t CountNames(std::string_view path) {
  return 1 + static_cast<std::size_t>(std::count(path.begin(), path.end(), '.'));
}

}  // namespace

AKDictionary::AKDictionary(const AKDictionary& other)
    : store_(other.IsEmpty() ? nullptr : new AKDictionaryStore(*other.store_)) {}

AKDictionary& AKDictionary::operator=(const AKDictionary& other) {
  AKDictionary copy(other);  // before the old entries go: `other` may be part of them
  Swap(&copy);
  return *this;
}

AKDictionary& AKDictionary::operator=(AKDictionary&& other) noexcept {
  AKDictionary taken(std::move(other));
  Swap(&taken);
  return *this;
}

void AKDictionary::Free() {
  delete store_;
  store_ = nullptr;
}

void AKDictionary::Swap(AKDictionary* other) noexcept { std::swap(store_, other->store_); }

unsigned int AKDictionary::Count() const { return store_ == nullptr ? 0 : store_->Count(); }

bool AKDictionary::IsEqual(const AKDictionary& other) const {
  if (this == &other) return true;
  if (Count() != other.Count()) return false;
  Cursor others(other);
  for (Cursor own(*this); own.IsValid(); own.Next(), others.Next()) {
    if (own.Key() != others.Key() || !own.Value().IsEqual(others.Value())) return false;
  }
  return true;
}

AKString AKDictionary::GetUniqueSubKey() const { return Count() == 1 ? Cursor(*this).Key() : kAKNullString; }

bool AKDictionary::ContainsKey(const AKString& path) const {
  int status = 0;
  return Find(path, &status) != nullptr;
}

const AKValue& AKDictionary::GetValue(const AKString& path) const {
  int status = 0;
  const AKValue* const value = Find(path, &status);
  return value == nullptr ? kAKNullValue : *value;
}

int AKDictionary::GetValueCopy(const AKString& path, AKValue* value) const {
  int status = 0;
  if (const AKValue* const found = Find(path, &status); found != nullptr) *value = *found;
  return status;
}

const AKValue* AKDictionary::Find(const AKString& path, int* status) const {
  *status = kAKDictionaryStatusInvalidPath;
  std::string_view rest = ViewOf(path);
  if (!IsValidPath(rest)) return nullptr;
  const AKDictionary* dictionary = this;
  for (;;) {
    std::string_view name;
    const bool descends = TakeName(&rest, &name);
    const AKValue* const value = dictionary->store_ == nullptr ? nullptr : dictionary->store_->Find(name);
    if (value == nullptr) {
      *status = kAKDictionaryStatusMissing;
      return nullptr;
    }
    if (!descends) {
      *status = 0;
      return value;
    }
    dictionary = value->GetasAKDictionary();
    if (dictionary == nullptr) return nullptr;
  }
}

AKDictionaryStore& AKDictionary::MutableStore() {
  if (store_ == nullptr) store_ = new AKDictionaryStore;
  return *store_;
}

void AKDictionary::PutEntry(const AKString& key, AKValue&& value) {
  bool added = false;
  *MutableStore().FindOrAdd(ViewOf(key), key, &added) = std::move(value);
}

// The entry of one name of a path, added when it is missing and may be.
AKValue* AKDictionary::FindToStore(std::string_view name, const AKString& path, bool mayAdd, bool* added) {
  if (mayAdd) return MutableStore().FindOrAdd(name, path, added);
  return store_ == nullptr ? nullptr : store_->Find(name);
}

int AKDictionary::AddValue(const AKString& path, const AKValue& value) { return Store(path, value, kMayAdd); }
int AKDictionary::SetValue(const AKString& path, const AKValue& value) {
  return Store(path, value, kMayAdd | kMayReplace);
}
int AKDictionary::ReplaceValue(const AKString& path, const AKValue& value) { return Store(path, value, kMayReplace); }

// Whether a store that otherwise succeeds would nest too deep. A path of many names may end early, at a value in its
// way, so the dictionaries that it leads through are counted only where their number matters.
bool AKDictionary::WouldNestTooDeep(std::string_view path, const AKValue& value, unsigned int mode) const {
  std::size_t levels = CountNames(path);
  const auto isTooDeep = [&] {
    return levels > kAKRecordMaxNesting || NestsDeeper(value, kAKRecordMaxNesting - static_cast<unsigned int>(levels));
  };
  if (!isTooDeep()) return false;
  const AKDictionary* dictionary = this;
  bool exists = true;
  for (levels = 1;; ++levels) {
    std::string_view name;
    const bool descends = TakeName(&path, &name);
    const AKValue* const entry = dictionary->store_ == nullptr ? nullptr : dictionary->store_->Find(name);
    exists = entry != nullptr;
    dictionary = exists && descends ? entry->GetasAKDictionary() : nullptr;
    if (!exists && descends) levels += CountNames(path);
    if (dictionary == nullptr) break;
  }
  return (mode & (exists ? kMayReplace : kMayAdd)) != 0 && isTooDeep();
}

int AKDictionary::Store(const AKString& path, const AKValue& value, unsigned int mode) {
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
  const AKString pathCopy = path;  // path and value may be part of an entry that is replaced below
  std::string_view rest = ViewOf(pathCopy);
  if (!IsValidPath(rest)) return kAKDictionaryStatusInvalidPath;
  if (WouldNestTooDeep(rest, value, mode)) return kAKFileStatusTooBig;
  AKValue content = value;
  AKDictionary* dictionary = this;
  for (;;) {
    std::string_view name;
    const bool descends = TakeName(&rest, &name);
    bool added = false;
    AKValue* const entry = dictionary->FindToStore(name, pathCopy, (mode & kMayAdd) != 0, &added);
    if (entry == nullptr) return kAKDictionaryStatusMissing;
    if (added && descends) {
      entry->SetasAKDictionary(AKDictionary());
    } else if (!added && !(descends && entry->GetasAKDictionary() != nullptr) && (mode & kMayReplace) == 0) {
      return kAKDictionaryStatusExists;
    }
    dictionary = descends ? entry->GetasAKDictionary() : nullptr;
    if (dictionary == nullptr) {  // the last name, or a value in the way, which gives place to the new one
      *entry = std::move(content);
      return 0;
    }
  }
}

int AKDictionary::RemoveValue(const AKString& path) {
  std::string_view rest = ViewOf(path);
  if (!IsValidPath(rest)) return kAKDictionaryStatusInvalidPath;
  AKDictionary* dictionary = this;
  for (;;) {
    std::string_view name;
    const bool descends = TakeName(&rest, &name);
    AKValue* const entry = dictionary->store_ == nullptr ? nullptr : dictionary->store_->Find(name);
    if (entry == nullptr) return kAKDictionaryStatusMissing;
    if (!descends) {
      dictionary->store_->Remove(name);
      if (dictionary->IsEmpty()) dictionary->Free();
      return 0;
    }
    dictionary = entry->GetasAKDictionary();
    if (dictionary == nullptr) return kAKDictionaryStatusInvalidPath;
  }
}

void AKDictionary::Merge(const AKDictionary& other, bool otherWins) {
  if (this == &other) return;
  const AKDictionary added(other);  // `other` may be part of an entry that is replaced
  added.ForEach([&](const AKString& key, const AKValue& value) {
    bool isNew = false;
    AKValue* const own = MutableStore().FindOrAdd(ViewOf(key), key, &isNew);
    if (isNew || otherWins) *own = value;
  });
}

int AKDictionary::LoadFromBinFile(const AKFilePath& path) {
  Clear();
  AKFile file(path);
  if (const int status = file.OpenForRead(); status != 0) return status;
  return ReadFromFile(file);
}

int AKDictionary::SaveToBinFile(const AKFilePath& path) const {
  AKFileReplacer replacer(path);
  if (const int status = replacer.Open(); status != 0) return status;
  if (const int status = WriteToFile(replacer.File()); status != 0) return status;
  return replacer.Commit();
}

AKDictionary::Cursor::Cursor(const AKDictionary& dictionary) {
  if (dictionary.store_ != nullptr) leaf_ = dictionary.store_->FirstLeaf();
  Load();
}

void AKDictionary::Cursor::Next() {
  ++index_;
  Load();
}

void AKDictionary::Cursor::Load() {
  if (leaf_ != nullptr && index_ == leaf_->Count()) {
    leaf_ = leaf_->Next();
    index_ = 0;
  }
  const bool valid = leaf_ != nullptr && index_ < leaf_->Count();
  key_ = valid ? &leaf_->Leaf(index_).key : nullptr;
  value_ = valid ? &leaf_->Leaf(index_).value : nullptr;
}
