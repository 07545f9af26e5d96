#include "foundation/FileCopy.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TarnixTools::platform {
namespace {

constexpr std::size_t kBlock = std::size_t{256} << 10;

struct DirectoryCloser {
  void operator()(DIR* directory) const noexcept { closedir(directory); }
};

bool IsSameFile(const struct stat& first, const struct stat& second) {
  return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

bool WriteAll(int to, const char* bytes, std::size_t size, off_t offset) {
  while (size > 0) {
    const ssize_t written = pwrite(to, bytes, size, offset);
    if (written < 0 && errno != EINTR) {
      return false;
    }
    const auto done = static_cast<std::size_t>(written < 0 ? 0 : written);
    bytes += done;
    size -= done;
    offset += static_cast<off_t>(done);
  }
  return true;
}

bool CopyBytes(int from, int to) {
  std::vector<char> block(kBlock);
  off_t offset = 0;
  while (true) {
    const ssize_t count = pread(from, block.data(), block.size(), offset);
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count <= 0) {
      return count == 0;
    }
    if (!WriteAll(to, block.data(), static_cast<std::size_t>(count), offset)) {
      return false;
    }
    offset += count;
  }
}

}  // namespace

bool IsOpenElsewhere(int descriptor) {
  struct stat file {};

  const std::unique_ptr<DIR, DirectoryCloser> open_files(opendir("/proc/self/fd"));
  if (open_files == nullptr || fstat(descriptor, &file) != 0) {
    return true;
  }
  while (const dirent* entry = readdir(open_files.get())) {
    struct stat other {};

    const long number = std::strtol(entry->d_name, nullptr, 10);
    if (entry->d_name[0] != '.' && number != descriptor &&
        fstat(static_cast<int>(number), &other) == 0 && IsSameFile(file, other)) {
      return true;
    }
  }
  return false;
}

bool CopyOver(int from, int to) {
  struct stat source {};

  struct stat target {};

  if (fstat(from, &source) != 0 || fstat(to, &target) != 0) {
    return false;
  }
  if (source.st_size > target.st_size) {
    const int error = posix_fallocate(to, 0, source.st_size);
    if (error != 0) {
      static_cast<void>(ftruncate(to, target.st_size) == 0);
      errno = error;
      return false;
    }
  }
  return CopyBytes(from, to) && ftruncate(to, source.st_size) == 0 && fsync(to) == 0;
}

}  // namespace TarnixTools::platform
