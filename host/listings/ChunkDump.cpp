#include "host/listings/ChunkDump.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "host/commands/Command.h"
#include "host/storage/WholeFiles.h"
#include "host/terminal/Output.h"
#include "host/text/Printable.h"
#include "host/text/Utf8Check.h"

namespace host {
namespace {

constexpr std::uint64_t kHeaderSize = 8;
constexpr unsigned int kMaxNesting = 512;
constexpr std::size_t kShownBytes = 16;
constexpr std::size_t kShownText = 200;

// Chunks that begin with fields and go on with chunks.
struct KnownChunk {
  const char* signature;
  const char* fields;  // one letter a field: u UInt32, d Float64, c colour, i class identifier; :N: N bytes
};
constexpr KnownChunk kKnownChunks[] = {{"HDoc", "uddcu"}, {"HLay", "uu"}, {"HObj", "iddddd:40::80:"}};

std::string Formatted(const char* format, unsigned long long number) {
  char text[32];
  std::snprintf(text, sizeof(text), format, number);
  return text;
}

std::string Hexadecimal(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes.substr(0, kShownBytes)) {
    text += Formatted(text.empty() ? "%02llx" : " %02llx", static_cast<unsigned char>(byte));
  }
  return bytes.size() > kShownBytes ? text + " ..." : text;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char byte : text.substr(0, kShownText)) {
    if (byte == '"' || byte == '\\') quoted += '\\';
    quoted += byte;
  }
  return Printable(quoted) + (text.size() > kShownText ? "\" ..." : "\"");
}

template <typename Number>
std::string Shortest(Number number) {
  char text[40];
  return {text, std::to_chars(text, text + sizeof(text), number).ptr};
}

bool IsSignature(std::string_view signature) {
  const bool empty = signature == std::string_view("\0\0\0\0", 4);
  return empty || std::all_of(signature.begin(), signature.end(), [](char byte) { return byte >= 32 && byte < 127; });
}

class Dumper {
 public:
  Dumper(std::string_view bytes, const ChunkLines& take) : bytes_(bytes), take_(take) {}

  ChunkDamage Run() {
    if (bytes_.empty()) Damage(0, "the file is empty");
    std::uint64_t offset = 0;
    while (offset < bytes_.size() && ReadChunk(&offset, bytes_.size(), "")) {
    }
    return damage_;
  }

 private:
  // A chunk whose header has been read. `limit` is the end of what it lies in.
  struct Chunk {
    std::uint64_t offset;
    std::uint64_t body;
    std::uint64_t size;
    std::uint64_t limit;
    std::string label;  // "key": before an entry of a dictionary

    std::uint64_t End() const { return body + size; }
    // Where reading has to stop: a size that is too large is only reported when the content agrees with it.
    std::uint64_t ReadEnd() const { return std::min(End(), limit); }
  };

  bool Damage(std::uint64_t offset, const std::string& reason) {
    if (!damage_.found) damage_ = {true, offset, reason};
    return false;
  }

  bool Has(std::uint64_t offset, std::uint64_t count, std::uint64_t end, const char* what) {
    if (offset <= end && count <= end - offset) return true;
    const bool cut = end == bytes_.size();
    return Damage(end, std::string(cut ? "the file ends" : "the chunk ends") + " within " + what);
  }

  template <typename Number>
  Number Get(std::uint64_t offset) const {
    Number number;
    std::memcpy(&number, bytes_.data() + offset, sizeof(number));
    return number;
  }

  void Print(const Chunk& chunk, const std::string& kind, const std::string& value) {
    if (!take_) return;
    take_(Formatted("%08llx  ", chunk.offset) + std::string(std::size_t{2} * depth_, ' ') + chunk.label + kind + ", " +
          Shortest(chunk.size) + " bytes" + (value.empty() ? "" : ", " + value) + "\n");
  }

  bool ReadChunk(std::uint64_t* offset, std::uint64_t limit, const std::string& label) {
    if (!Has(*offset, kHeaderSize, limit, "a chunk's header")) return false;
    const std::string_view signature = bytes_.substr(*offset, 4);
    if (!IsSignature(signature)) return Damage(*offset, "no chunk begins here");
    const Chunk chunk{*offset, *offset + kHeaderSize, Get<std::uint32_t>(*offset + 4), limit, label};
    if (!ReadBody(chunk, signature)) return false;
    *offset = chunk.End();
    return true;
  }

  bool ReadBody(const Chunk& chunk, std::string_view signature) {
    if (signature == "bool") return ReadNumber<std::uint32_t>(chunk, "bool");
    if (signature == "intg") return ReadNumber<std::int64_t>(chunk, "intg");
    if (signature == "real") return ReadNumber<double>(chunk, "real");
    if (signature == "strg") return ReadString(chunk);
    if (signature == "bina") return ReadBlock(chunk);
    if (signature == "arry") return ReadItems(chunk, "arry", false);
    if (signature == "dict") return ReadItems(chunk, "dict", true);
    if (signature[0] == '\0') {
      Print(chunk, "empty", "");
      return HasSize(chunk, 0);
    }
    return ReadOther(chunk, std::string(signature));
  }

  bool HasSize(const Chunk& chunk, std::uint64_t size) {
    if (chunk.size == size) return true;
    return Damage(chunk.offset + 4, "the size is " + Shortest(chunk.size) + " and should be " + Shortest(size));
  }

  template <typename Number>
  bool ReadNumber(const Chunk& chunk, const char* kind) {
    if (!HasSize(chunk, sizeof(Number)) || !Has(chunk.body, chunk.size, chunk.limit, "a number")) return false;
    const Number number = Get<Number>(chunk.body);
    const bool isBool = std::is_same_v<Number, std::uint32_t>;
    Print(chunk, kind, isBool ? (number != 0 ? "true" : "false") : Shortest(number));
    if (isBool && number > 1) return Damage(chunk.body, "a bool is neither 0 nor 1");
    return true;
  }

  // A string record at `offset`, whose count is followed by as many bytes.
  bool ReadText(std::uint64_t offset, std::uint64_t limit, std::string_view* text) {
    if (!Has(offset, 4, limit, "a text's count")) return false;
    const std::uint64_t count = Get<std::uint32_t>(offset);
    if (count % 4 != 0) return Damage(offset, "a text's count is no multiple of 4");
    if (!Has(offset + 4, count, limit, "a text")) return false;
    *text = bytes_.substr(offset + 4, count);
    text->remove_suffix(text->size() - std::min(text->size(), text->find_last_not_of('\0') + 1));
    const std::size_t bad = FindInvalidUtf8(*text);
    return bad == text->size() || Damage(offset + 4 + bad, "a text is no UTF-8");
  }

  bool ReadString(const Chunk& chunk) {
    std::string_view text;
    if (!ReadText(chunk.offset + 4, chunk.limit, &text)) return false;
    Print(chunk, "strg", Quoted(text));
    return true;
  }

  bool ReadBlock(const Chunk& chunk) {
    if (!Has(chunk.body, 4, chunk.ReadEnd(), "a block's count")) return false;
    const std::uint64_t count = Get<std::uint32_t>(chunk.body);
    if (!Has(chunk.body, chunk.size, chunk.limit, "a block")) return false;
    if (!HasSize(chunk, 4 + (count + 3) / 4 * 4)) return false;
    Print(chunk, "bina", Shortest(count) + ": " + Hexadecimal(bytes_.substr(chunk.body + 4, count)));
    return true;
  }

  // An array, or a dictionary, whose values have keys before them.
  bool ReadItems(const Chunk& chunk, const char* kind, bool keys) {
    if (depth_ == kMaxNesting) return Damage(chunk.offset, "more than 512 levels are nested");
    if (!Has(chunk.body, 4, chunk.ReadEnd(), "a count")) return false;
    const std::uint32_t count = Get<std::uint32_t>(chunk.body);
    Print(chunk, kind, Shortest(count) + (keys ? " entries" : " values"));
    ++depth_;
    std::uint64_t offset = chunk.body + 4;
    bool sound = true;
    for (std::uint32_t i = 0; i < count && sound; ++i) {
      std::string label;
      sound = (!keys || ReadKey(&offset, chunk.ReadEnd(), &label)) && ReadChunk(&offset, chunk.ReadEnd(), label);
    }
    --depth_;
    return sound && HasSize(chunk, offset - chunk.body);
  }

  bool ReadKey(std::uint64_t* offset, std::uint64_t limit, std::string* label) {
    std::string_view key;
    if (!ReadText(*offset, limit, &key)) return false;
    *offset += 4 + Get<std::uint32_t>(*offset);
    *label = Quoted(key) + ": ";
    return true;
  }

  bool ReadOther(const Chunk& chunk, const std::string& kind) {
    const auto* const known = std::find_if(std::begin(kKnownChunks), std::end(kKnownChunks),
                                           [&](const KnownChunk& row) { return kind == row.signature; });
    const std::uint64_t end = chunk.ReadEnd();
    if (known != std::end(kKnownChunks)) return ReadFields(chunk, *known);
    if (chunk.End() > chunk.limit) {
      Print(chunk, kind, "");
      return Has(chunk.body, chunk.size, chunk.limit, "a chunk");
    }
    if (chunk.size > 0 && IsChunks(chunk.body, end)) {
      Print(chunk, kind, "");
      return ReadNested(chunk.body, end);
    }
    Print(chunk, kind, Hexadecimal(bytes_.substr(chunk.body, chunk.size)));
    return true;
  }

  bool ReadFields(const Chunk& chunk, const KnownChunk& known) {
    std::string values;
    std::uint64_t offset = chunk.body;
    for (const char* field = known.fields; *field != '\0'; ++field) {
      const std::uint64_t size = FieldSize(&field);
      if (!Has(offset, size, chunk.ReadEnd(), "a chunk's fields")) return false;
      values += (values.empty() ? "" : " ") + FieldText(*field, bytes_.substr(offset, size));
      offset += size;
    }
    Print(chunk, known.signature, values);
    if (!ReadNested(offset, chunk.ReadEnd())) return false;
    return Has(chunk.body, chunk.size, chunk.limit, "a chunk");
  }

  // A field that is a number of bytes is written ":N:" and leaves the pointer on its last character.
  static std::uint64_t FieldSize(const char** field) {
    switch (**field) {
      case 'u':
      case 'c':
        return 4;
      case ':': {
        std::uint64_t size = 0;
        const char* const digits = *field + 1;
        *field = std::from_chars(digits, digits + std::strlen(digits), size).ptr;
        return size;
      }
      default:
        return 8;
    }
  }

  static std::string FieldText(char field, std::string_view bytes) {
    switch (field) {
      case 'u': {
        std::uint32_t number = 0;
        std::memcpy(&number, bytes.data(), sizeof(number));
        return Shortest(number);
      }
      case 'd': {
        double number = 0;
        std::memcpy(&number, bytes.data(), sizeof(number));
        return Shortest(number);
      }
      case 'i':
        return Quoted(bytes.substr(0, bytes.find('\0')));
      default:
        return "[" + Hexadecimal(bytes) + "]";
    }
  }

  bool ReadNested(std::uint64_t offset, std::uint64_t end) {
    ++depth_;
    bool sound = depth_ < kMaxNesting || offset == end || Damage(offset, "more than 512 levels are nested");
    while (sound && offset < end) sound = ReadChunk(&offset, end, "");
    --depth_;
    return sound;
  }

  // Whether a body consists of chunks: headers with signatures, each ending where the next begins.
  bool IsChunks(std::uint64_t offset, std::uint64_t end) const {
    while (end - offset >= kHeaderSize) {
      if (!IsSignature(bytes_.substr(offset, 4))) return false;
      const std::uint64_t size = Get<std::uint32_t>(offset + 4);
      if (size > end - offset - kHeaderSize) return false;
      offset += kHeaderSize + size;
    }
    return offset == end;
  }

  std::string_view bytes_;
  const ChunkLines& take_;
  ChunkDamage damage_;
  unsigned int depth_ = 0;
};

int RunOnFile(const std::string& path, const ChunkLines& take) {
  std::string bytes;
  if (const auto done = ReadWholeFile(path, &bytes); !done) return Fail(done.Why());
  const ChunkDamage damage = DumpChunks(bytes, take);
  if (!damage.found) return 0;
  Output::Flush();
  return Fail(path + " is damaged at offset " + Shortest(damage.offset) + Formatted(" (0x%08llx): ", damage.offset) +
              damage.reason);
}

}  // namespace

ChunkDamage DumpChunks(std::string_view bytes, const ChunkLines& take) { return Dumper(bytes, take).Run(); }

int DumpChunkFile(const std::string& path) { return RunOnFile(path, &Output::Write); }

int CheckChunkFile(const std::string& path) { return RunOnFile(path, nullptr); }

}  // namespace host
