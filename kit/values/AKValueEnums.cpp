#include "kit/values/AKValueEnums.h"

#include "kit/text/AKStringArray.h"

namespace {

bool IsEnd(const AKValueEnums& row) { return row.word == nullptr || row.word[0] == '\0'; }

template <typename Matches>
bool FindRow(const AKValueEnums* table, Matches matches, unsigned int* index) {
  for (unsigned int i = 0; table != nullptr && !IsEnd(table[i]); ++i) {
    if (!matches(table[i])) continue;
    if (index != nullptr) *index = i;
    return true;
  }
  if (index != nullptr) *index = kAKNotFound;
  return false;
}

}  // namespace

bool AKValueEnumsFindEnum(const AKValueEnums* table, unsigned int number, unsigned int* index) {
  return FindRow(
      table, [&](const AKValueEnums& row) { return row.number == number; }, index);
}

bool AKValueEnumsFindWord(const AKValueEnums* table, const AKString& word, unsigned int* index) {
  return FindRow(
      table, [&](const AKValueEnums& row) { return word == row.word; }, index);
}

void AKValueSetasEnum(AKValue* value, unsigned int content, const AKValueEnums* table) {
  unsigned int index = 0;
  value->SetasAKString(AKValueEnumsFindEnum(table, content, &index) ? AKString(table[index].word) : kAKNullString);
}

AKValue AKValueSetasEnum(unsigned int content, const AKValueEnums* table) {
  AKValue value;
  AKValueSetasEnum(&value, content, table);
  return value;
}

bool AKValueGetasEnum(const AKValue& value, unsigned int* content, const AKValueEnums* table) {
  const AKString* const word = value.GetasAKString();
  unsigned int index = 0;
  if (word == nullptr || !AKValueEnumsFindWord(table, *word, &index)) return false;
  *content = table[index].number;
  return true;
}

unsigned int AKValueGetasEnum(const AKValue& value, const AKValueEnums* table) {
  unsigned int content = 0;
  AKValueGetasEnum(value, &content, table);
  return content;
}

void AKValueSetasFlags(AKValue* value, unsigned int content, const AKValueEnums* table) {
  if (content == 0) return AKValueSetasEnum(value, 0, table);
  AKString words;
  for (const AKValueEnums* row = table; row != nullptr && !IsEnd(*row); ++row) {
    if ((row->number & content) != row->number) continue;
    if (!words.IsEmpty()) words.Append(' ');
    words.Append(row->word);
  }
  value->SetasAKString(words);
}

AKValue AKValueSetasFlags(unsigned int content, const AKValueEnums* table) {
  AKValue value;
  AKValueSetasFlags(&value, content, table);
  return value;
}

bool AKValueGetasFlags(const AKValue& value, unsigned int* content, const AKValueEnums* table) {
  const AKString* const words = value.GetasAKString();
  if (words == nullptr) return false;
  unsigned int flags = 0;
  for (const AKString& word : words->SplitToArray(" ", "")) {
    unsigned int index = 0;
    if (AKValueEnumsFindWord(table, word, &index)) flags |= table[index].number;
  }
  *content = flags;
  return true;
}

unsigned int AKValueGetasFlags(const AKValue& value, const AKValueEnums* table) {
  unsigned int content = 0;
  AKValueGetasFlags(value, &content, table);
  return content;
}
