#include "engines/support/images/DynamicLibrary.h"

#include <string>

#include <dlfcn.h>

#include "engines/support/images/ImageError.h"

namespace TarnixTools::engines::images {

DynamicLibrary::DynamicLibrary(const char* name) : handle_(dlopen(name, RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) {
    throw ImageError(ImageErrorCode::kUnsupported, std::string(name) + " is not installed");
  }
}

void* DynamicLibrary::Find(const char* name) const {
  void* function = dlsym(handle_, name);
  if (function == nullptr) {
    throw ImageError(ImageErrorCode::kUnsupported,
                     std::string("a library for images has no ") + name);
  }
  return function;
}

}  // namespace TarnixTools::engines::images
