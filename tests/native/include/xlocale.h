#pragma once
// The prelude takes these names away from who did not include this.
#undef newlocale
#undef duplocale
#undef freelocale
extern "C" double other_strtod_l(const char* text, char** end, locale_t locale);
extern "C" float other_strtof_l(const char* text, char** end, locale_t locale);
extern "C" int snprintf_l(char* text, size_t size, locale_t locale, const char* format, ...);
#define strtod_l other_strtod_l
#define strtof_l other_strtof_l
