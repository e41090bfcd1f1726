// A file of the report, in which what is in progress stands at a fixed place of a fixed width, so that it can be put in
// before every call.
#pragma once

#include <cstddef>
#include <string>

namespace torture {

class ReportFile {
 public:
  /// JSON for a name that ends in ".json", text otherwise. What can't be opened is told, and stays without content.
  explicit ReportFile(const std::string& path);
  ReportFile(ReportFile&& other) noexcept;
  ReportFile(const ReportFile&) = delete;
  ReportFile& operator=(const ReportFile&) = delete;
  ~ReportFile();

  bool IsJson() const { return isJson_; }
  /// Replaces the content: what stands in front of the field, the field's text, and what stands behind it.
  void Write(const std::string& front, const std::string& progress, const std::string& behind);
  /// Puts another text into the field.
  void Progress(const std::string& progress);

 private:
  std::string Field(const std::string& progress) const;

  bool isJson_;
  int file_;
  char* page_ = nullptr;  // the beginning of the file in memory, which outlives the process
  std::size_t fieldAt_ = 0;
};

/// In quotes; the text is printable ASCII.
std::string JsonQuoted(const std::string& text);

}  // namespace torture
