#include "torture/ReportFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

namespace torture {
namespace {

constexpr std::size_t kFieldWidth = 600;
constexpr std::size_t kPage = 4096;

}  // namespace

std::string JsonQuoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char byte : text) {
    if (byte == '"' || byte == '\\') quoted += '\\';
    quoted += byte;
  }
  return quoted + '"';
}

ReportFile::ReportFile(const std::string& path)
    : isJson_(path.ends_with(".json")), file_(open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0644)) {
  if (file_ < 0) std::fprintf(stderr, "HostTorture: the report \"%s\" can't be written\n", path.c_str());
}

ReportFile::ReportFile(ReportFile&& other) noexcept
    : isJson_(other.isJson_),
      file_(std::exchange(other.file_, -1)),
      page_(std::exchange(other.page_, nullptr)),
      fieldAt_(other.fieldAt_) {}

ReportFile::~ReportFile() {
  if (page_ != nullptr) munmap(page_, kPage);
  if (file_ >= 0) close(file_);
}

std::string ReportFile::Field(const std::string& progress) const {
  std::string text = progress.substr(0, kFieldWidth / 2 - 4);  // twice as long where all is escaped
  if (isJson_) text = JsonQuoted(text) + ",";
  text.resize(kFieldWidth, ' ');
  return text;
}

void ReportFile::Write(const std::string& front, const std::string& progress, const std::string& behind) {
  if (file_ < 0) return;
  fieldAt_ = front.size();
  const std::string text = front + Field(progress) + behind;
  for (std::size_t at = 0; at < text.size();) {
    const ssize_t wrote = pwrite(file_, text.data() + at, text.size() - at, static_cast<off_t>(at));
    if (wrote <= 0) return;  // there may be room again next time
    at += static_cast<std::size_t>(wrote);
  }
  if (ftruncate(file_, static_cast<off_t>(text.size())) != 0 || page_ != nullptr) return;
  void* const memory = mmap(nullptr, kPage, PROT_READ | PROT_WRITE, MAP_SHARED, file_, 0);
  if (memory != MAP_FAILED) page_ = static_cast<char*>(memory);
}

void ReportFile::Progress(const std::string& progress) {
  if (page_ == nullptr || fieldAt_ + kFieldWidth > kPage) return;
  const std::string field = Field(progress);
  std::memcpy(page_ + fieldAt_, field.data(), field.size());
}

}  // namespace torture
