#include "engines/support/files/DynamicLibrary.h"

#include <dlfcn.h>

namespace TarnixTools::engines {

DynamicLibrary::DynamicLibrary(std::initializer_list<const char*> names) noexcept {
  for (const char* name : names) {
    if (name != nullptr && *name != '\0' && handle_ == nullptr) {
      handle_ = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    }
  }
}

void* DynamicLibrary::Find(const char* name) const noexcept {
  return handle_ != nullptr ? dlsym(handle_, name) : nullptr;
}

}  // namespace TarnixTools::engines
