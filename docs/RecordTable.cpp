// Prints docs/abi-records.md from the layouts that the compiler gives the kit's types. A test compares its output with
// the file:
//   build/debug/bin/record_table > docs/abi-records.md
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "graphics/context/AGContext.h"
#include "graphics/context/AKDrawEvent.h"
#include "graphics/images/AGImage.h"
#include "graphics/paths/AGPath.h"
#include "graphics/text/AGFont.h"
#include "kit/AKClassBasicTypes.h"
#include "kit/containers/AKMemoryBlock.h"
#include "kit/files/AKFilePath.h"
#include "kit/streams/AKFile.h"
#include "kit/text/AKArgs.h"
#include "kit/text/AKStringArray.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueArray.h"

// Most types have fields of both accesses: their layout is that of this platform's compilers.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

struct Field {
  std::size_t offset;
  std::size_t size;
  std::string name;
  const char* meaning;
};

std::string WithoutUnderscore(std::string name) {
  if (name.back() == '_') name.pop_back();
  return name;
}

/// The fields in the order of their offsets, with the bytes between them; fields that share an offset share a place.
void Print(const char* title, std::size_t size, const char* note, const std::vector<Field>& fields) {
  std::printf("\n## %s, %zu bytes\n\n%s\n\n| Offset | Size | Field | Meaning |\n|---|---|---|---|\n", title, size,
              note);
  std::size_t end = 0;
  for (const Field& field : fields) {
    if (field.offset > end) std::printf("| %zu | %zu | | not used |\n", end, field.offset - end);
    std::printf("| %zu | %zu | %s | %s |\n", field.offset, field.size, WithoutUnderscore(field.name).c_str(),
                field.meaning);
    end = std::max(end, field.offset + field.size);
  }
  if (end < size) std::printf("| %zu | %zu | | not used |\n", end, size - end);
}

#define AK_FIELD(Type, field, meaning) \
  { offsetof(Type, field), sizeof(Type::field), #field, meaning }

void PrintBuffers() {
  Print("AKSharedBuffer", sizeof(AKSharedBuffer),
        "In front of the bytes of every string and memory block, from malloc. The bytes follow, then a NUL that no "
        "length\ncounts; the last owner frees the buffer.",
        {AK_FIELD(AKSharedBuffer, length, "u32, bytes"),
         AK_FIELD(AKSharedBuffer, capacity, "u32, bytes that fit, without the NUL"),
         AK_FIELD(AKSharedBuffer, owners, "u32, atomic: how many handles lead here"),
         AK_FIELD(AKSharedBuffer, mark,
                  "u32: 0 from malloc; 0x53544154 the empty buffer of a program or bundle, never counted, freed or "
                  "written")});
  std::printf(
      "\nAn `AKString`, an `AKMemoryBlock` and an `AKFilePath` (which is its text) are %zu bytes: the address of such "
      "a\n"
      "buffer, never null. Text in memory is Mac OS Roman.\n",
      sizeof(AKString));
  static_assert(sizeof(AKString) == sizeof(AKMemoryBlock) && sizeof(AKString) == sizeof(AKFilePath));
}

/// Where an array keeps its three addresses is looked up in an array.
void PrintArrays() {
  ATArray<std::uint64_t> array;
  for (std::uint64_t i = 0; i < 3; ++i) array.Append(i);
  const std::uint64_t addresses[3] = {reinterpret_cast<std::uintptr_t>(array.begin()),
                                      reinterpret_cast<std::uintptr_t>(array.end()),
                                      reinterpret_cast<std::uintptr_t>(array.begin() + array.Capacity())};
  std::uint64_t words[sizeof(array) / 8];
  std::memcpy(words, &array, sizeof(array));
  const auto place = [&words](std::uint64_t address) {
    return static_cast<std::size_t>(std::find(std::begin(words), std::end(words), address) - words) * 8;
  };
  Print("ATArray<T>", sizeof(array),
        "Also `AKStringArray`, `AKValueArray`, `AKObjectArray`, `AKClassArray` and `AKArgs`, which is an array of "
        "strings. "
        "The\nelements are from operator new; a new array has three nulls.",
        {{place(addresses[0]), 8, "begin", "the first element"},
         {place(addresses[1]), 8, "end", "behind the last element"},
         {place(addresses[2]), 8, "capacity", "behind the last place"}});
  static_assert(sizeof(AKArgs) == sizeof(array) && sizeof(AKValueArray) == sizeof(array));
}

}  // namespace

// The types name these as their friends.

struct AKLayout {
  static void Print() {
    ::Print(
        "AKValue", sizeof(AKValue), "The types are big-endian names: 0x626F6F6C is \"bool\".",
        {AK_FIELD(AKValue, type_, "u32: 0 empty, \"bool\", \"intg\", \"real\", \"strg\", \"bina\", \"arry\", \"dict\""),
         AK_FIELD(AKValue, bool_, "of a \"bool\": 0 or 1"), AK_FIELD(AKValue, integer_, "of an \"intg\": i64"),
         AK_FIELD(AKValue, float_, "of a \"real\": f64"), AK_FIELD(AKValue, string_, "of a \"strg\": an `AKString`"),
         AK_FIELD(AKValue, binary_, "of a \"bina\": an `AKMemoryBlock`"),
         AK_FIELD(AKValue, array_, "of an \"arry\": an `AKValueArray` of its own, from operator new"),
         AK_FIELD(AKValue, dictionary_, "of a \"dict\": an `AKDictionary` of its own, from operator new")});
    ::Print("AKDictionary", sizeof(AKDictionary),
            "The entries are a tree that only the kit's functions read and write (`kit/values/AKDictionaryNode_p.h`).",
            {AK_FIELD(AKDictionary, store_, "the tree, from operator new, or null when there is no entry")});
    ::Print("AKFile", sizeof(AKFile),
            "Only the kit's functions read and write it; `kit/streams/AKFile.h` has the bits of the flags.",
            {AK_FIELD(AKFile, descriptor_, "i32: of the open disk file, else -1"),
             AK_FIELD(AKFile, path_, "an `AKFilePath`"), AK_FIELD(AKFile, name_, "an `AKString`, for log lines"),
             AK_FIELD(AKFile, flags_, "u32: byte order, mode, what is open"),
             AK_FIELD(AKFile, memoryOpened_, "u8: 1 while a memory stream is open"),
             AK_FIELD(AKFile, memoryPosition_, "u32: position in the memory stream"),
             AK_FIELD(AKFile, memorySize_, "u32: bytes of the memory stream"),
             AK_FIELD(AKFile, memory_, "begin, end and capacity of the memory stream's bytes, from operator new"),
             AK_FIELD(AKFile, map_, "the file's map, or null"),
             AK_FIELD(AKFile, buffer_, "the window through which a disk file is read and written")});
  }
};

struct AGPathLayout {
  static void Print() {
    ::Print("AGPath", sizeof(AGPath), "Points of the native path are relative to the origin.",
            {AK_FIELD(AGPath, native_, "the native path, of its own"),
             AK_FIELD(AGPath, flags_, "u32: 1 the origin is set, 2 the bounds are known, 4 the flat bounds are"),
             AK_FIELD(AGPath, origin_, "2 × f64: x, y"), AK_FIELD(AGPath, bounds_, "4 × f64: x0, y0, x1, y1"),
             AK_FIELD(AGPath, flatBounds_, "the same, of the flattened path"),
             AK_FIELD(AGPath, text_, "an `AKString` that the path carries along")});
  }
};

struct AGLayout {
  static void Print() {
    ::Print("AGContext", sizeof(AGContext), "A copy draws on the same port.",
            {AK_FIELD(AGContext, port_, "the native context, which the caller of `akmDraw` owns"),
             AK_FIELD(AGContext, antialias, "u8: 1 with smooth edges"), AK_FIELD(AGContext, alpha, "f64, 0 to 1"),
             AK_FIELD(AGContext, colorFactor, "f64: multiplies red, green and blue of brush and pen"),
             AK_FIELD(AGContext, size_, "2 × f64: width, height of the port"),
             AK_FIELD(AGContext, transform, "6 × f64: a, b, c, d, tx, ty"), AK_FIELD(AGContext, brush, "an `AGBrush`"),
             AK_FIELD(AGContext, pen, "an `AGPen`"),
             AK_FIELD(AGContext, patternOrigin, "2 × f64: phase of pattern brushes"),
             AK_FIELD(AGContext, clipPath_, "an `AGPath` of its own, or null")});
    ::Print(
        "AGBrush", sizeof(AGBrush), "Colours are bytes in the order red, green, blue, alpha.",
        {AK_FIELD(AGBrush, style_, "u16: 0 none, 1 solid, 2 pattern, 3 linear, 4 radial gradient"),
         AK_FIELD(AGBrush, fillMode_, "u16: 0 even-odd, 1 non-zero"), AK_FIELD(AGBrush, patternIndex_, "u16: 1 to 53"),
         AK_FIELD(AGBrush, color_, "colour"), AK_FIELD(AGBrush, color2_, "colour at the other end of a gradient"),
         AK_FIELD(AGBrush, blend_, "f32, 0 to 1"), AK_FIELD(AGBrush, angle_, "f32, radians"),
         AK_FIELD(AGBrush, centerX_, "f32, 0 to 1"), AK_FIELD(AGBrush, centerY_, "f32, 0 to 1"),
         AK_FIELD(AGBrush, customGradient_, "a gradient of its own, or null")});
    ::Print("AGPen", sizeof(AGPen), "Enumerations as in `graphics/paint/AGPen.h`.",
            {AK_FIELD(AGPen, sizeMode_, "u16"), AK_FIELD(AGPen, lineCap_, "u16: 0 to 2"),
             AK_FIELD(AGPen, lineJoin_, "u16: 0 to 2"), AK_FIELD(AGPen, size_, "f32, 0 to 96"),
             AK_FIELD(AGPen, ratio_, "f32, 0 to 1: of an elliptical nib"), AK_FIELD(AGPen, angle_, "f32, radians"),
             AK_FIELD(AGPen, brush_, "an `AGBrush`"), AK_FIELD(AGPen, customArrow_, "arrows of its own, or null")});
    ::Print("AGFont", sizeof(AGFont),
            "Options and the cache of native fonts belong to each copy of the kit: a bundle has none set, and draws "
            "with fonts\nthat are installed or that the host has bound.",
            {AK_FIELD(AGFont, native_, "the native font, a reference of its own, or null"),
             AK_FIELD(AGFont, computed_, "u8: 1 when binding was tried"),
             AK_FIELD(AGFont, name_, "an `AKString`: the family"), AK_FIELD(AGFont, size_, "f64, points"),
             AK_FIELD(AGFont, style_, "u32: 1 bold, 2 italic, 4 underline"),
             AK_FIELD(AGFont, lineHeight_, "f64, negative while it is not known")});
    ::Print(
        "AGImage", sizeof(AGImage),
        "Shared images and counters belong to the copy of the kit that an image was set up by; the same copy has to "
        "clear\nit.",
        {AK_FIELD(AGImage, native_, "the native image, or null"),
         AK_FIELD(AGImage, kind_, "u32: 0 empty, 1 owned, 2 shared by name"), AK_FIELD(AGImage, width_, "u32, pixels"),
         AK_FIELD(AGImage, height_, "u32, pixels"), AK_FIELD(AGImage, name_, "an `AKString`: the resource")});
  }
};

namespace {

void PrintEvents() {
  Print("AKDrawEvent", sizeof(AKDrawEvent), "Passed to `akmDraw`.",
        {AK_FIELD(AKDrawEvent, bounds, "4 × f64: x0, y0, x1, y1"), AK_FIELD(AKDrawEvent, angle, "f64, radians"),
         AK_FIELD(AKDrawEvent, recommendedBrush, "an `AGBrush` of the host, or null"),
         AK_FIELD(AKDrawEvent, recommendedPen, "an `AGPen` of the host, or null"),
         AK_FIELD(AKDrawEvent, flags, "u32: 0x10 or 0x20 asks for full opacity")});
  Print("AKGUIEvent", sizeof(AKGUIEvent), "Passed to `akmInspector`.",
        {AK_FIELD(AKGUIEvent, kind, "u32: 1 fill the controls, 2 idle, 3 a control was changed"),
         AK_FIELD(AKGUIEvent, ctrlID, "u32: the control"), AK_FIELD(AKGUIEvent, hostWords, "the host's"),
         AK_FIELD(AKGUIEvent, actionName, "an `AKString`: what the object calls the change")});
}

}  // namespace

int main() {
  std::printf(
      "# Records that cross between host and bundle\n\n"
      "Made by docs/RecordTable.cpp from the compiler's layouts; do not edit. [abi.md](abi.md) has the tables and the "
      "class\nrecord. Numbers are little-endian; an address is 8 bytes. Objects are made, copied and ended by the "
      "functions of the\nkit, of either copy: what lies behind an address is from the C library's allocator, which "
      "both "
      "share.\n");
  PrintBuffers();
  PrintArrays();
  AKLayout::Print();
  AGLayout::Print();
  AGPathLayout::Print();
  PrintEvents();
  return 0;
}
