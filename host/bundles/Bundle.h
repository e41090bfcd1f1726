// A loaded plug-in bundle.
//
// A bundle is a shared library that exports pluginMain. It is loaded by dlopen, its entry is called once with the host
// service record, and from then on it is known only by the classes that it registered. Destroying the bundle takes its
// classes out of the registry and unloads it; instances of them must be gone before.
#pragma once

#include <memory>
#include <string>

#include "host/Host.h"
#include "host/text/Problem.h"

namespace host {

class Bundle {
 public:
  /// Fails when the bundle can't be used.
  static Result<std::unique_ptr<Bundle>> Load(const std::string& path) {
    return Load(path, Host::Instance().ServiceRecord());
  }
  /// The same with services of the caller's own, whose tables outlive the bundle.
  static Result<std::unique_ptr<Bundle>> Load(const std::string& path, AKHostServiceRecord services);

  Bundle(const Bundle&) = delete;
  Bundle& operator=(const Bundle&) = delete;
  ~Bundle();

  const std::string& Path() const { return path_; }
  /// The classes that the bundle registered while it started.
  std::vector<const RegisteredClass*> Classes() const;

 private:
  Bundle(std::string path, void* library);

  std::string path_;
  void* library_;
  std::size_t firstClass_;
  std::size_t classCount_ = 0;
};

}  // namespace host
