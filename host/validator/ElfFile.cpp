#include "host/validator/ElfFile.h"

#include <cxxabi.h>
#include <elf.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "host/storage/WholeFiles.h"

namespace host::validator {
namespace {

// The bytes of the file; what lies outside of it is not there.
class Reader {
 public:
  explicit Reader(std::string bytes) : bytes_(std::move(bytes)) {
    const auto header = At<Elf64_Ehdr>(0);
    if (!header) return;
    for (std::uint64_t i = 0; i < header->e_shnum; ++i) {
      if (const auto section = At<Elf64_Shdr>(header->e_shoff + i * sizeof(Elf64_Shdr))) sections_.push_back(*section);
    }
    for (std::uint64_t i = 0; i < header->e_phnum; ++i) {
      if (const auto segment = At<Elf64_Phdr>(header->e_phoff + i * sizeof(Elf64_Phdr))) segments_.push_back(*segment);
    }
  }

  template <typename T>
  std::optional<T> At(std::uint64_t offset) const {
    if (offset > bytes_.size() || sizeof(T) > bytes_.size() - offset) return std::nullopt;
    T value;
    std::memcpy(&value, bytes_.data() + offset, sizeof(T));
    return value;
  }

  const std::vector<Elf64_Phdr>& Segments() const { return segments_; }
  const std::vector<Elf64_Shdr>& Sections() const { return sections_; }

  // A text of the string table that a section is linked with.
  std::string TextOf(const Elf64_Shdr& section, std::uint64_t offset) const {
    if (section.sh_link >= sections_.size()) return "";
    const Elf64_Shdr& table = sections_[section.sh_link];
    if (offset >= table.sh_size || table.sh_offset > bytes_.size()) return "";
    const std::uint64_t begin = table.sh_offset + offset;
    if (begin >= bytes_.size()) return "";
    return {bytes_.data() + begin, strnlen(bytes_.data() + begin, bytes_.size() - begin)};
  }

  // Calls f with each entry of the sections of a kind.
  template <typename Entry, typename F>
  void ForEach(std::uint32_t type, F f) const {
    for (const Elf64_Shdr& section : sections_) {
      if (section.sh_type != type) continue;
      for (std::uint64_t at = 0; at + sizeof(Entry) <= section.sh_size; at += sizeof(Entry)) {
        const auto entry = At<Entry>(section.sh_offset + at);
        if (!entry) break;
        f(section, *entry);
      }
    }
  }

 private:
  std::string bytes_;
  std::vector<Elf64_Shdr> sections_;
  std::vector<Elf64_Phdr> segments_;
};

// A program has the name of its loader.
bool IsLibrary(const Reader& reader) {
  for (const Elf64_Phdr& segment : reader.Segments()) {
    if (segment.p_type == PT_INTERP) return false;
  }
  const auto header = reader.At<Elf64_Ehdr>(0);
  return header && std::memcmp(header->e_ident, ELFMAG, SELFMAG) == 0 && header->e_ident[EI_CLASS] == ELFCLASS64 &&
         header->e_machine == EM_X86_64 && header->e_type == ET_DYN;
}

ElfFile::Symbol SymbolOf(const Reader& reader, const Elf64_Shdr& section, const Elf64_Sym& entry) {
  ElfFile::Symbol symbol;
  symbol.name = reader.TextOf(section, entry.st_name);
  symbol.address = entry.st_value;
  symbol.size = entry.st_size;
  symbol.binding = ELF64_ST_BIND(entry.st_info);
  symbol.type = ELF64_ST_TYPE(entry.st_info);
  symbol.isDefined = entry.st_shndx != SHN_UNDEF;
  return symbol;
}

void AddPaths(const std::string& list, std::vector<std::string>* paths) {
  for (std::size_t begin = 0; begin <= list.size();) {
    const std::size_t end = std::min(list.find(':', begin), list.size());
    paths->push_back(list.substr(begin, end - begin));
    begin = end + 1;
  }
}

void TakeDynamic(const Reader& reader, const Elf64_Shdr& section, const Elf64_Dyn& entry, ElfFile* file) {
  switch (entry.d_tag) {
    case DT_NEEDED:
      file->needed.push_back(reader.TextOf(section, entry.d_un.d_val));
      break;
    case DT_RPATH:
    case DT_RUNPATH:
      AddPaths(reader.TextOf(section, entry.d_un.d_val), &file->runPath);
      break;
    case DT_TEXTREL:
      file->hasTextRelocations = true;
      break;
    case DT_FLAGS:
      if ((entry.d_un.d_val & DF_TEXTREL) != 0) file->hasTextRelocations = true;
      break;
    default:
      break;
  }
}

}  // namespace

Result<ElfFile> ElfFile::Read(const std::string& path) {
  std::string bytes;
  if (const auto done = ReadWholeFile(path, &bytes); !done) {
    return Problem(N_("\"%s\" is no bundle: %s"), {path, done.Why()});
  }
  const Reader reader(std::move(bytes));
  if (!IsLibrary(reader)) {
    return Problem(N_("\"%s\" is no bundle: %s"), {path, "it is no shared library for x86-64"});
  }
  ElfFile file;
  reader.ForEach<Elf64_Sym>(SHT_DYNSYM, [&](const Elf64_Shdr& section, const Elf64_Sym& entry) {
    const Symbol symbol = SymbolOf(reader, section, entry);
    if (symbol.isDefined && symbol.binding != STB_LOCAL) file.exported.push_back(symbol);
  });
  reader.ForEach<Elf64_Sym>(SHT_SYMTAB, [&](const Elf64_Shdr& section, const Elf64_Sym& entry) {
    file.symbols.push_back(SymbolOf(reader, section, entry));
  });
  reader.ForEach<Elf64_Dyn>(SHT_DYNAMIC, [&](const Elf64_Shdr& section, const Elf64_Dyn& entry) {
    TakeDynamic(reader, section, entry, &file);
  });
  for (const Elf64_Phdr& segment : reader.Segments()) {
    if (segment.p_type == PT_GNU_STACK && (segment.p_flags & PF_X) != 0) file.hasExecutableStack = true;
  }
  return file;
}

std::string FunctionAt(const ElfFile& file, std::uint64_t address) {
  for (const auto* table : {&file.symbols, &file.exported}) {
    for (const ElfFile::Symbol& symbol : *table) {
      if (symbol.type != STT_FUNC || address < symbol.address || address - symbol.address >= symbol.size) continue;
      int status = 0;
      const std::unique_ptr<char, decltype(&std::free)> name(
          abi::__cxa_demangle(symbol.name.c_str(), nullptr, nullptr, &status), &std::free);
      return status == 0 ? name.get() : symbol.name;
    }
  }
  return "";
}

}  // namespace host::validator
