// The writers of numbers, memory sizes, geometry and colours, and the formatters for messages.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "kit/text/AKTextConversions.h"
#include "kit/text/AKTextNumber_p.h"

namespace {

template <typename Integer>
char* WriteInteger(char* buffer, Integer value) {
  char text[24];
  char* const end = std::to_chars(text, text + sizeof(text), value).ptr;
  const auto length = static_cast<std::size_t>(end - text);
  std::memcpy(buffer, text, length);
  buffer[length] = '\0';
  return buffer;
}

/// "(a;b;...)".
char* WriteComponents(char* buffer, std::initializer_list<double> components, int decimals) {
  char* out = buffer;
  for (const double component : components) {
    *out = out == buffer ? '(' : ';';
    out = aktext::WriteFixed(out + 1, component, decimals);
  }
  *out++ = ')';
  *out = '\0';
  return buffer;
}

/// Buffers that are handed out in turn.
template <unsigned int size>
class Ring {
 public:
  const char* Keep(const char* text) {
    char* const buffer = buffers_[next_];
    next_ = (next_ + 1) % kCount;
    const std::size_t length = strnlen(text, size - 1);
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
    return buffer;
  }

 private:
  static constexpr unsigned int kCount = 8;
  char buffers_[kCount][size] = {};
  unsigned int next_ = 0;
};

}  // namespace

char* strSetasBool(char* buffer, bool value) { return WriteInteger(buffer, value ? 1 : 0); }
char* strSetasSInt(char* buffer, int value) { return WriteInteger(buffer, value); }
char* strSetasSInt32(char* buffer, int value) { return WriteInteger(buffer, value); }
char* strSetasSInt64(char* buffer, long long value) { return WriteInteger(buffer, value); }
char* strSetasUInt(char* buffer, unsigned int value) { return WriteInteger(buffer, value); }
char* strSetasUInt32(char* buffer, unsigned int value) { return WriteInteger(buffer, value); }
char* strSetasUInt64(char* buffer, unsigned long long value) { return WriteInteger(buffer, value); }

char* strSetasFloat32(char* buffer, float value, int decimals) { return strSetasFloat64(buffer, value, decimals); }

char* strSetasFloat64(char* buffer, double value, int decimals) {
  aktext::WriteFixed(buffer, value, decimals);
  return buffer;
}

char* strSetasMemory(char* buffer, long long bytes) {
  if (bytes < 1) return std::strcpy(buffer, "0 Byte");
  constexpr const char* kUnits[] = {" KB", " MB", " GB", " TB"};
  double sizes[4];
  double size = static_cast<double>(bytes);
  for (double& inUnit : sizes) inUnit = size *= 0.001;  // decimal units, as disks are sold
  for (int unit = 3; unit >= 0; --unit) {
    if (sizes[unit] < 1) continue;
    std::strcpy(aktext::WriteFixed(buffer, sizes[unit], sizes[unit] > 10 ? 0 : 1), kUnits[unit]);
    return buffer;
  }
  std::strcpy(aktext::WriteFixed(buffer, static_cast<double>(bytes), 0), " Bytes");
  return buffer;
}

char* strSetasChannCount(char* buffer, int channels) {
  if (channels < 1) return std::strcpy(buffer, "<None>");
  if (channels == 1) return std::strcpy(buffer, "Mono");
  if (channels == 2) return std::strcpy(buffer, "Stereo");
  return std::strcat(WriteInteger(buffer, channels), "Ch");
}

char* strSetasAGPoint(char* buffer, const AGPoint& value, int decimals) {
  return WriteComponents(buffer, {value.x, value.y}, decimals);
}

char* strSetasAGSize(char* buffer, const AGSize& value, int decimals) {
  return WriteComponents(buffer, {value.width, value.height}, decimals);
}

char* strSetasAGInterval(char* buffer, const AGInterval& value, int decimals) {
  return WriteComponents(buffer, {value.start, value.end}, decimals);
}

char* strSetasAGRect(char* buffer, const AGRect& value, int decimals) {
  return WriteComponents(buffer, {value.x0, value.y0, value.x1, value.y1}, decimals);
}

char* strSetasAGColor(char* buffer, AGColor value, bool withAlpha) {
  if (withAlpha) {
    std::sprintf(buffer, "(%03u;%03u;%03u;%03u)", value.Red(), value.Green(), value.Blue(), value.Alpha());
  } else {
    std::sprintf(buffer, "(%03u;%03u;%03u)", value.Red(), value.Green(), value.Blue());
  }
  return buffer;
}

char* strSetasAGColorHex(char* buffer, AGColor value, bool withAlpha) {
  const unsigned int rgba = __builtin_bswap32(value.rgba);
  if (withAlpha) {
    std::sprintf(buffer, "%08X", rgba);
  } else {
    std::sprintf(buffer, "%06X", rgba >> 8);
  }
  return buffer;
}

const char* _akstr(const AGColor& color) {
  static Ring<32> ring;
  char text[32];
  return ring.Keep(strSetasAGColor(text, color, true));
}

const char* _akstr(const AGPoint& point, int decimals) {
  static Ring<32> ring;
  char text[2 * aktext::kNumberSize];
  return ring.Keep(strSetasAGPoint(text, point, decimals));
}

const char* _akstr(const AGSize& size, int decimals) {
  static Ring<32> ring;
  char text[2 * aktext::kNumberSize];
  return ring.Keep(strSetasAGSize(text, size, decimals));
}

const char* _akstr(const AGRect& rect, int decimals) {
  static Ring<64> ring;
  char text[4 * aktext::kNumberSize];
  return ring.Keep(strSetasAGRect(text, rect, decimals));
}
