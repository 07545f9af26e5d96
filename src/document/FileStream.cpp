#include "document/FileStream.h"

#include <cerrno>
#include <cstdio>
#include <utility>

#include "foundation/JobWatch.h"

namespace TarnixTools {
namespace {

FileStream* StreamOf(void* handle) {
  return static_cast<FileStream*>(handle);
}

}  // namespace

engines::TPdfStream FileStream::Descriptor() {
  engines::TPdfStream stream;
  stream.get_length = &GetLength;
  stream.seek = &Seek;
  stream.tell = &Tell;
  stream.read = &Read;
  stream.write = &Write;
  stream.release = &Release;
  stream.handle = this;
  return stream;
}

std::int64_t FileStream::GetLength(void* handle) {
  std::FILE* file = StreamOf(handle)->file_.get();
  const std::int64_t position = platform::Tell(file);
  if (position < 0 || !platform::SeekToEnd(file)) {
    return -1;
  }
  const std::int64_t length = platform::Tell(file);
  return platform::Seek(file, position) ? length : -1;
}

int FileStream::Seek(void* handle, std::int64_t position) {
  return platform::Seek(StreamOf(handle)->file_.get(), position) ? 1 : 0;
}

std::int64_t FileStream::Tell(void* handle) {
  return platform::Tell(StreamOf(handle)->file_.get());
}

std::int64_t FileStream::Read(void* handle, void* buffer, std::int64_t size) {
  if (size < 0) {
    return -1;
  }
  std::FILE* file = StreamOf(handle)->file_.get();
  const std::size_t count = std::fread(buffer, 1, static_cast<std::size_t>(size), file);
  if (count < static_cast<std::size_t>(size) && std::ferror(file) != 0) {
    std::clearerr(file);  // the next read is judged by itself
    return -1;
  }
  return static_cast<std::int64_t>(count);
}

std::int64_t FileStream::Write(void* handle, const void* buffer, std::int64_t size) {
  if (size < 0 || JobWatch::IsCancelled()) {
    return -1;
  }
  const std::size_t count =
      std::fwrite(buffer, 1, static_cast<std::size_t>(size), StreamOf(handle)->file_.get());
  return count == static_cast<std::size_t>(size) ? size : -1;
}

void FileStream::Release(void* handle) {
  FileStream* stream = StreamOf(handle);
  std::FILE* file = stream->file_.release();
  if (file != nullptr && std::fclose(file) != 0) {
    stream->close_error_ = errno;
  }
}

}  // namespace TarnixTools
