// Finds the conversion library when it is first needed: beside this library, else where the system
// looks for libraries.
#include <stdexcept>
#include <string>

#include <dlfcn.h>

#include "engines/office/Office.h"
#include "engines/office/loading/HostServices.h"
#include "engines/support/files/DynamicLibrary.h"

namespace ConversionSdk {
namespace {

using TarnixTools::engines::DynamicLibrary;
using TarnixTools::engines::PdfiumLock;
namespace office = TarnixTools::engines::office;

constexpr const char* kFileName = TARNIX_OFFICE_LIBRARY;

// Empty when the system does not tell where this library is.
std::string PathBesideThis() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&GetConversionServices), &info) == 0) {
    return {};
  }
  const std::string path = info.dli_fname;
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1) + kFileName;
}

ConversionServices& Load() {
  const DynamicLibrary library({PathBesideThis().c_str(), kFileName});
  if (!library.is_loaded()) {
    throw std::runtime_error(std::string(kFileName) + " is not installed");
  }
  office::ConversionLibraryEntry* entry = nullptr;
  ConversionServices* services = nullptr;
  if (library.Resolve(office::kConversionLibraryEntry, entry)) {
    services = entry(office::kConversionLibraryVersion, {PdfiumLock::Share()});
  }
  if (services == nullptr) {
    throw std::runtime_error(std::string(kFileName) + " is of another version");
  }
  return *services;
}

}  // namespace

// Where loading fails it is tried again the next time.
ConversionServices& GetConversionServices() {
  static ConversionServices& services = Load();
  return services;
}

}  // namespace ConversionSdk
