#include "engines/office/sdk/ConversionLog.h"

#include <fstream>
#include <utility>

#include "foundation/Platform.h"

namespace TarnixTools::engines::office {

void ConversionLog::SetFile(std::string path) {
  const std::lock_guard lock(mutex_);
  path_ = std::move(path);
}

// Opened for each line, so that nothing of it is lost however the process ends.
void ConversionLog::Write(std::string_view text) {
  const std::lock_guard lock(mutex_);
  if (path_.empty()) {
    return;
  }
  std::ofstream file(platform::NativePath(path_), std::ios::app | std::ios::binary);
  file << text << '\n';
}

}  // namespace TarnixTools::engines::office
