#include "document/TemporaryFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <utility>

#include "PdfException.h"
#include "foundation/Platform.h"

namespace TarnixTools {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;

bool CopyBytes(std::FILE* from, std::FILE* to) {
  std::string block(kBlock, '\0');
  while (true) {
    const std::size_t count = std::fread(block.data(), 1, block.size(), from);
    if (std::fwrite(block.data(), 1, count, to) != count) {
      return false;
    }
    if (count < block.size()) {
      return std::ferror(from) == 0;
    }
  }
}

}  // namespace

TemporaryFiles::~TemporaryFiles() {
  for (const std::string& path : paths_) {
    platform::RemoveFile(path);
  }
}

const std::string& TemporaryFiles::Reserve(const std::string& path) {
  std::string free = path;
  for (int i = 1; platform::Exists(free); ++i) {
    free = path + "." + std::to_string(i);
  }
  return paths_.emplace_back(std::move(free));
}

void TemporaryFiles::Keep(const std::string& path) {
  paths_.erase(std::remove(paths_.begin(), paths_.end(), path), paths_.end());
}

void CopyWhole(const std::string& from, const std::string& to) {
  const platform::FilePtr source = platform::OpenForReading(from);
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(to);
  platform::FilePtr target = output ? output->TakeStream() : nullptr;
  const bool is_copied = source != nullptr && target != nullptr &&
                         CopyBytes(source.get(), target.get()) &&
                         std::fclose(target.release()) == 0 && output->Commit();
  if (!is_copied) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to create new file [%s] (%s)",
                       to.c_str(), platform::ErrorText(errno).c_str());
  }
}

}  // namespace TarnixTools
