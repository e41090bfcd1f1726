// What the fuzz targets of the host share: a host with the rectangle's bundle, streams over the input, documents as
// bytes.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/HostLog.h"
#include "host/bundles/Bundle.h"
#include "host/session/DocumentSession.h"
#include "host/storage/DocumentFile.h"

namespace host_fuzz {

inline void Require(bool condition) {
  if (!condition) std::abort();
}

/// Loads the bundle at the first call; nothing is logged from then on.
inline void Start() {
  [[maybe_unused]] static const auto* const bundle = [] {
    host::HostLog::Instance().sink = [](const std::string&) {};
    auto loaded = host::Bundle::Load(AK_BUNDLE);
    Require(static_cast<bool>(loaded));
    return loaded->release();
  }();
}

/// The document as a file, with the records that the host keeps.
inline std::string Bytes(const host::Document& document) {
  AKFile stream(AKFile::kModeMemory);
  const void* data = nullptr;
  unsigned long long size = 0;
  Require(stream.CreateForReadWrite() == 0 && host::WriteDocument(document, stream, nullptr) == 0);
  Require(stream.GetMemoryStreamDataPtr(&data, &size) == 0);
  return {static_cast<const char*>(data), size};
}

inline host::Result<std::unique_ptr<host::Document>> Read(const void* data, std::size_t size) {
  AKFile stream(data, static_cast<unsigned int>(size));
  stream.OpenForRead();
  return host::ReadDocument(stream, "input");
}

/// A document that was read is the same when it is written and read again.
inline void CheckDocument(const host::Document& document) {
  const std::string first = Bytes(document);
  const auto again = Read(first.data(), first.size());
  Require(again && Bytes(**again) == first);
}

/// A session with `count` rectangles.
inline std::unique_ptr<host::DocumentSession> MakeSession(int count) {
  auto document = std::make_unique<host::Document>(AGSize{200, 100});
  for (int i = 0; i < count; ++i) {
    auto object = host::Document::NewObject(AKClassID("stdRect"), "-default");
    Require(static_cast<bool>(object));
    (*object)->bounds = {20.0 * i, 0, 20.0 * i + 10, 10};
    document->AppendObject(std::move(*object));
  }
  return std::make_unique<host::DocumentSession>(std::move(document));
}

}  // namespace host_fuzz
