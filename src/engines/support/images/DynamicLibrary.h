// A shared library that is loaded when something of it is needed for the first time: programs that
// convert no such image do not pay for it when they start.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_DYNAMICLIBRARY_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_DYNAMICLIBRARY_H_

namespace TarnixTools::engines::images {

class DynamicLibrary {
 public:
  // Throws ImageError(kUnsupported) when it is not installed. It stays loaded.
  explicit DynamicLibrary(const char* name);

  // Throws as above when the library has no such function.
  template <typename Function>
  void Resolve(Function*& function, const char* name) const {
    function = reinterpret_cast<Function*>(Find(name));
  }

 private:
  void* Find(const char* name) const;

  void* handle_;
};

}  // namespace TarnixTools::engines::images

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_DYNAMICLIBRARY_H_
