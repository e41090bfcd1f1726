// Typed adapters: the fixed conventions by which kit types travel in values.
//
// Each setter fills a given value or returns a new one. Each getter takes an output and returns success, leaving the
// output alone on failure, or returns the result itself, zero or empty on failure. `convert` allows the conversions of
// AKValue's scalar getters (a text that reads as a number, a double to an integer, …); kinds without a conversion
// ignore it. Geometry, colours, enumerations and class identifiers have headers of their own, gathered here.
#pragma once

#include "kit/containers/ATNumberArray.h"
#include "kit/files/AKFilePathArray.h"
#include "kit/text/AKStringArray.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueArray.h"
#include "kit/values/AKValueClassID.h"
#include "kit/values/AKValueEnums.h"
#include "kit/values/AKValueGeometry.h"

///@{
/// "bool".
void AKValueSetasBool(AKValue* value, bool content);
AKValue AKValueSetasBool(bool content);
bool AKValueGetasBool(const AKValue& value, bool* content, bool convert);
bool AKValueGetasBool(const AKValue& value, bool convert);
///@}

///@{
/// "intg". A narrower output takes the low bits, without a range check.
void AKValueSetasSInt(AKValue* value, long long content);
AKValue AKValueSetasSInt(long long content);
bool AKValueGetasSInt(const AKValue& value, signed char* content, bool convert);
bool AKValueGetasSInt(const AKValue& value, short* content, bool convert);
bool AKValueGetasSInt(const AKValue& value, int* content, bool convert);
bool AKValueGetasSInt(const AKValue& value, long long* content, bool convert);
long long AKValueGetasSInt(const AKValue& value, bool convert);
void AKValueSetasUInt(AKValue* value, unsigned long long content);
AKValue AKValueSetasUInt(unsigned long long content);
bool AKValueGetasUInt(const AKValue& value, unsigned char* content, bool convert);
bool AKValueGetasUInt(const AKValue& value, unsigned short* content, bool convert);
bool AKValueGetasUInt(const AKValue& value, unsigned int* content, bool convert);
bool AKValueGetasUInt(const AKValue& value, unsigned long long* content, bool convert);
unsigned long long AKValueGetasUInt(const AKValue& value, bool convert);
///@}

///@{
/// "real".
void AKValueSetasFloat32(AKValue* value, float content);
AKValue AKValueSetasFloat32(float content);
bool AKValueGetasFloat32(const AKValue& value, float* content, bool convert);
float AKValueGetasFloat32(const AKValue& value, bool convert);
void AKValueSetasFloat64(AKValue* value, double content);
AKValue AKValueSetasFloat64(double content);
bool AKValueGetasFloat64(const AKValue& value, double* content, bool convert);
double AKValueGetasFloat64(const AKValue& value, bool convert);
///@}

///@{
/// "strg".
void AKValueSetasAKString(AKValue* value, const AKString& content);
AKValue AKValueSetasAKString(const AKString& content);
bool AKValueGetasAKString(const AKValue& value, AKString* content, bool convert);
AKString AKValueGetasAKString(const AKValue& value, bool convert);
///@}

///@{
/// The path's own value form.
void AKValueSetasAKFilePath(AKValue* value, const AKFilePath& content);
AKValue AKValueSetasAKFilePath(const AKFilePath& content);
bool AKValueGetasAKFilePath(const AKValue& value, AKFilePath* content, bool convert);
AKFilePath AKValueGetasAKFilePath(const AKValue& value, bool convert);
///@}

///@{
/// "strg": each unit as four upper-case hexadecimal digits, separated by ";". A text of any other form fails.
void AKValueSetasAKUniChars(AKValue* value, const AKUniChars& content);
AKValue AKValueSetasAKUniChars(const AKUniChars& content);
bool AKValueGetasAKUniChars(const AKValue& value, AKUniChars* content, bool convert);
AKUniChars AKValueGetasAKUniChars(const AKValue& value, bool convert);
///@}

///@{
/// "arry" of the elements; an element of another kind fails.
void AKValueSetasAKStringArray(AKValue* value, const AKStringArray& content);
AKValue AKValueSetasAKStringArray(const AKStringArray& content);
bool AKValueGetasAKStringArray(const AKValue& value, AKStringArray* content, bool convert);
AKStringArray AKValueGetasAKStringArray(const AKValue& value, bool convert);
void AKValueSetasAKFilePathArray(AKValue* value, const AKFilePathArray& content);
AKValue AKValueSetasAKFilePathArray(const AKFilePathArray& content);
bool AKValueGetasAKFilePathArray(const AKValue& value, AKFilePathArray* content, bool convert);
AKFilePathArray AKValueGetasAKFilePathArray(const AKValue& value, bool convert);
///@}

///@{
/// "arry", "dict" and "bina".
void AKValueSetasAKValueArray(AKValue* value, const AKValueArray& content);
AKValue AKValueSetasAKValueArray(const AKValueArray& content);
bool AKValueGetasAKValueArray(const AKValue& value, AKValueArray* content, bool convert);
AKValueArray AKValueGetasAKValueArray(const AKValue& value, bool convert);
void AKValueSetasAKDictionary(AKValue* value, const AKDictionary& content);
AKValue AKValueSetasAKDictionary(const AKDictionary& content);
bool AKValueGetasAKDictionary(const AKValue& value, AKDictionary* content, bool convert);
AKDictionary AKValueGetasAKDictionary(const AKValue& value, bool convert);
void AKValueSetasBinary(AKValue* value, const AKMemoryBlock& content);
AKValue AKValueSetasBinary(const AKMemoryBlock& content);
bool AKValueGetasBinary(const AKValue& value, AKMemoryBlock* content, bool convert);
AKMemoryBlock AKValueGetasBinary(const AKValue& value, bool convert);
///@}
