// Numbers with a decimal dot, whatever the locale.
#pragma once

/// Writes `value` with `precision` digits behind the dot, rounded to nearest, between `begin` and `end`, which must be
/// room enough; returns where it ends. No NUL follows. What is not finite is "inf" or "nan", with its sign.
char* AKWriteFixedNumber(char* begin, char* end, double value, int precision);

/// Reads [start, stop), all of which must be digits with at most one sign in front, one dot and one exponent. False,
/// leaving `*value` alone, when that is beyond the type's range.
bool AKReadDecimal(const char* start, const char* stop, double* value);
bool AKReadDecimal(const char* start, const char* stop, float* value);
