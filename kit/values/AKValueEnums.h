// Enumerations and flag sets as words in values.
//
// A table is an array of rows of a number and a word, ended by a row with an empty word; a null table has no rows. The
// caller owns it and its words.
#pragma once

#include "kit/values/AKValue.h"

/// A row of a table.
struct AKValueEnums {
  unsigned int number;  ///< a number, or the bits of a flag
  const char* word;     ///< its word; empty in the last row
};

/// The index of the first row with this number; kAKNotFound and false when there is none. `index` may be null.
bool AKValueEnumsFindEnum(const AKValueEnums* table, unsigned int number, unsigned int* index);
/// The same by word, compared exactly. The empty word is never found.
bool AKValueEnumsFindWord(const AKValueEnums* table, const AKString& word, unsigned int* index);

///@{
/// "strg": the word of the number, empty when the table lacks it. The getter fails for a word that the table lacks.
void AKValueSetasEnum(AKValue* value, unsigned int content, const AKValueEnums* table);
AKValue AKValueSetasEnum(unsigned int content, const AKValueEnums* table);
bool AKValueGetasEnum(const AKValue& value, unsigned int* content, const AKValueEnums* table);
unsigned int AKValueGetasEnum(const AKValue& value, const AKValueEnums* table);
///@}

///@{
/// "strg": the words of all rows whose bits are contained in the set, a row numbered 0 always among them, in the order
/// of the table with single spaces between them; for the empty set the word of the row numbered 0. The getter ignores
/// words that the table lacks.
void AKValueSetasFlags(AKValue* value, unsigned int content, const AKValueEnums* table);
AKValue AKValueSetasFlags(unsigned int content, const AKValueEnums* table);
bool AKValueGetasFlags(const AKValue& value, unsigned int* content, const AKValueEnums* table);
unsigned int AKValueGetasFlags(const AKValue& value, const AKValueEnums* table);
///@}
