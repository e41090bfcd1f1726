// What the tests of files share: a folder that goes away, collected log lines, bytes written by hand.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cctype>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "kit/log/AKLog.h"
#include "kit/streams/AKFile.h"

namespace file_test {

class TempFolder {
 public:
  TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "ak_test_XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  ~TempFolder() { std::filesystem::remove_all(path_); }
  std::string Path(const std::string& name) const { return path_ + "/" + name; }
  AKFilePath KitPath(const std::string& name) const { return AKFilePath(Path(name).c_str()); }
  std::size_t EntryCount() const {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator()));
  }

 private:
  std::string path_;
};

/// Collects log lines, without their ends, while it lives.
class LogLines {
 public:
  LogLines() {
    Lines().clear();
    AKSetCustomLogMessageProc([](const char* line) { Lines().emplace_back(line, std::string(line).find('\n')); }, true);
  }
  ~LogLines() { AKSetCustomLogMessageProc(nullptr, false); }
  static std::vector<std::string> Take() { return std::exchange(Lines(), {}); }

 private:
  static std::vector<std::string>& Lines() {
    static std::vector<std::string> lines;
    return lines;
  }
};

inline std::string ReadBytes(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}
inline void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

/// Bytes in notation: pairs of hexadecimal digits, and text between single quotes; spaces are ignored.
inline std::string Bytes(const std::string& notation) {
  std::string bytes;
  for (std::size_t i = 0; i < notation.size(); ++i) {
    if (notation[i] == '\'') {
      const std::size_t end = notation.find('\'', i + 1);
      bytes += notation.substr(i + 1, end - i - 1);
      i = end;
    } else if (std::isxdigit(static_cast<unsigned char>(notation[i])) != 0) {
      bytes += static_cast<char>(std::stoi(notation.substr(i, 2), nullptr, 16));
      ++i;
    }
  }
  return bytes;
}

inline std::string StreamContent(const AKFile& file) {
  const void* data = nullptr;
  unsigned long long size = 0;
  file.GetMemoryStreamDataPtr(&data, &size);
  return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

inline unsigned long long PositionOf(const AKFile& file) {
  unsigned long long position = 0;
  EXPECT_EQ(file.GetPos(&position), 0);
  return position;
}

}  // namespace file_test
