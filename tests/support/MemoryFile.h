// A file in memory behind the document engine's stream descriptor, with faults on demand.
#ifndef TARNIX_TESTS_SUPPORT_MEMORY_FILE_H_
#define TARNIX_TESTS_SUPPORT_MEMORY_FILE_H_

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "engines/toolbox/Toolbox.h"

namespace TarnixTools::engines {

struct MemoryFile {
  std::string bytes;
  std::size_t position = 0;
  std::size_t room = static_cast<std::size_t>(-1);  // bytes that may still be written
  bool reads_fail = false;
  int releases = 0;

  TPdfStream Descriptor() {
    TPdfStream stream;
    stream.handle = this;
    stream.get_length = [](void* handle) {
      return static_cast<std::int64_t>(Of(handle).bytes.size());
    };
    stream.seek = [](void* handle, std::int64_t to) {
      Of(handle).position = static_cast<std::size_t>(to);
      return 1;
    };
    stream.tell = [](void* handle) { return static_cast<std::int64_t>(Of(handle).position); };
    stream.read = &Read;
    stream.write = &Write;
    stream.release = [](void* handle) { ++Of(handle).releases; };
    return stream;
  }

 private:
  static MemoryFile& Of(void* handle) { return *static_cast<MemoryFile*>(handle); }

  static std::int64_t Read(void* handle, void* buffer, std::int64_t size) {
    MemoryFile& file = Of(handle);
    if (file.reads_fail) {
      return -1;
    }
    const std::size_t left = file.bytes.size() - std::min(file.position, file.bytes.size());
    const std::size_t count = std::min(left, static_cast<std::size_t>(size));
    std::memcpy(buffer, file.bytes.data() + file.position, count);
    file.position += count;
    return static_cast<std::int64_t>(count);
  }

  static std::int64_t Write(void* handle, const void* buffer, std::int64_t size) {
    MemoryFile& file = Of(handle);
    if (static_cast<std::size_t>(size) > file.room) {
      return -1;
    }
    file.room -= static_cast<std::size_t>(size);
    file.bytes.append(static_cast<const char*>(buffer), static_cast<std::size_t>(size));
    return size;
  }
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_SUPPORT_MEMORY_FILE_H_
