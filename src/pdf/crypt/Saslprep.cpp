#include "pdf/crypt/Saslprep.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

#include <dlfcn.h>

namespace TarnixTools::pdf::crypt {
namespace {

// int stringprep_profile(const char* in, char** out, const char* profile, Stringprep_profile_flags
// flags), the same since libidn 0.4. Flags 0 let characters through that Unicode 3.2 did not know.
// `out` is the caller's to free.
using PrepareFunction = int (*)(const char* in, char** out, const char* profile, int flags);
constexpr int kPrepared = 0;       // STRINGPREP_OK
constexpr int kOutOfMemory = 201;  // STRINGPREP_MALLOC_ERROR

struct Freer {
  void operator()(char* text) const noexcept { std::free(text); }
};

// Null when no libidn is installed. It stays loaded.
PrepareFunction LoadPrepareFunction() {
  for (const char* name : {"libidn.so.12", "libidn.so.11"}) {
    if (void* library = dlopen(name, RTLD_NOW | RTLD_LOCAL)) {
      return reinterpret_cast<PrepareFunction>(dlsym(library, "stringprep_profile"));
    }
  }
  return nullptr;
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

std::optional<std::string> PreparePassword(std::string_view password) {
  std::string given(password);
  // A zero byte, which the library would take for the end, is a control character that the profile
  // refuses.
  if (IsAscii(password) || password.find('\0') != std::string_view::npos) {
    return given;
  }
  static const PrepareFunction prepare = LoadPrepareFunction();
  if (prepare == nullptr) {
    return std::nullopt;
  }
  char* out = nullptr;
  const int result = prepare(given.c_str(), &out, "SASLprep", 0);
  const std::unique_ptr<char, Freer> prepared(out);
  if (result == kOutOfMemory) {
    throw std::bad_alloc();
  }
  return result == kPrepared && prepared ? std::string(prepared.get()) : given;
}

}  // namespace TarnixTools::pdf::crypt
