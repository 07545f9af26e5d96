// Libraries that are loaded when they are first needed, so that the jobs that do without them start
// without them: DynamicLibrary where it is good enough to know that one is missing, RequiredLibrary
// where nothing can be done without.
#ifndef TARNIX_ENGINES_SUPPORT_FILES_DYNAMICLIBRARY_H_
#define TARNIX_ENGINES_SUPPORT_FILES_DYNAMICLIBRARY_H_

#include <initializer_list>
#include <string>

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

// A library that has to be there with every function that is asked for.
//   Throw - throws what tells of it that something is missing, which the text says
template <void (*Throw)(const std::string& text)>
class RequiredLibrary {
 public:
  explicit RequiredLibrary(const char* name) : name_(name), library_({name}) {
    if (!library_.is_loaded()) {
      Throw(name_ + " is not installed");
    }
  }

  template <typename Function>
  void Resolve(Function*& function, const char* name) const {
    if (!library_.Resolve(name, function)) {
      Throw(name_ + " has no " + name);
    }
  }

 private:
  std::string name_;
  DynamicLibrary library_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_FILES_DYNAMICLIBRARY_H_
