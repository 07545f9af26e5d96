// A C file as the document engine reaches it.
#ifndef TARNIX_DOCUMENT_FILE_STREAM_H_
#define TARNIX_DOCUMENT_FILE_STREAM_H_

#include "engines/toolbox/Toolbox.h"
#include "foundation/Platform.h"

namespace TarnixTools {

// Owns the file until the engine releases the stream, which closes it. The descriptor refers to
// this object, which therefore stays where it is and outlives the engine's document.
class FileStream {
 public:
  explicit FileStream(platform::FilePtr file) : file_(std::move(file)) {}

  FileStream(const FileStream&) = delete;
  FileStream& operator=(const FileStream&) = delete;

  engines::TPdfStream Descriptor();

  // Null when it is closed.
  std::FILE* File() const { return file_.get(); }

  // The errno value of a close that failed, which is where some file systems report lost writes; 0
  // otherwise.
  int CloseError() const { return close_error_; }

 private:
  static std::int64_t GetLength(void* handle);
  static int Seek(void* handle, std::int64_t position);
  static std::int64_t Tell(void* handle);
  static std::int64_t Read(void* handle, void* buffer, std::int64_t size);
  static std::int64_t Write(void* handle, const void* buffer, std::int64_t size);
  static void Release(void* handle);

  platform::FilePtr file_;
  int close_error_ = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_FILE_STREAM_H_
