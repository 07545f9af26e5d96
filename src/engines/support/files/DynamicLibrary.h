// Libraries that are loaded when they are first needed, so that the jobs that do without them start
// without them.
#ifndef TARNIX_ENGINES_SUPPORT_FILES_DYNAMICLIBRARY_H_
#define TARNIX_ENGINES_SUPPORT_FILES_DYNAMICLIBRARY_H_

#include <initializer_list>

namespace TarnixTools::engines {

// Stays loaded for the life of the process once it is found.
class DynamicLibrary {
 public:
  // The first of the names, file names or paths, that can be loaded. Empty and null names are
  // passed over.
  DynamicLibrary(std::initializer_list<const char*> names) noexcept;

  bool is_loaded() const { return handle_ != nullptr; }

  // Sets the function pointer. False when the library is not loaded or lacks the function.
  template <typename Function>
  bool Resolve(const char* name, Function*& function) const noexcept {
    function = reinterpret_cast<Function*>(Find(name));
    return function != nullptr;
  }

 private:
  void* Find(const char* name) const noexcept;

  void* handle_ = nullptr;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_FILES_DYNAMICLIBRARY_H_
