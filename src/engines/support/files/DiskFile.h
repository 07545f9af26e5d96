// Files as the core's byte sources and sinks.
#ifndef TARNIX_ENGINES_SUPPORT_FILES_DISKFILE_H_
#define TARNIX_ENGINES_SUPPORT_FILES_DISKFILE_H_

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "foundation/JobWatch.h"
#include "foundation/Platform.h"
#include "pdf/file/ByteSink.h"
#include "pdf/file/ByteSource.h"

namespace TarnixTools::engines {

// Reads a file, whatever its position: several may share one.
class DiskSource : public pdf::ByteSource {
 public:
  // Throws pdf::Error(kReadFailed) when the size cannot be had.
  explicit DiskSource(std::shared_ptr<std::FILE> file);

  std::uint64_t Size() const override { return size_; }

  std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override;

 private:
  std::shared_ptr<std::FILE> file_;
  std::uint64_t size_ = 0;
};

// Null, with errno, when the file cannot be opened.
std::shared_ptr<std::FILE> OpenShared(const platform::WidePath& path);

// Writes to a file that somebody else keeps open, from its position on.
class DiskSink : public pdf::ByteSink {
 public:
  explicit DiskSink(std::FILE* file) : file_(file) {}

  void Write(std::string_view bytes) override;

 private:
  std::FILE* file_;
};

// Passes on what is written, and tells the host of the job how far that is.
class ToldSink : public pdf::ByteSink {
 public:
  // expected: bytes, more or less. The other sink outlives this one.
  ToldSink(pdf::ByteSink& sink, std::uint64_t expected);

  // Throws what the sink throws, and PdfException when the host has the job stop.
  void Write(std::string_view bytes) override;

 private:
  pdf::ByteSink* sink_;
  JobSteps steps_;
  std::uint64_t untold_ = 0;
};

// A file without a name in the system's directory for such files, gone when the last user closes
// it. Throws pdf::Error(kWriteFailed).
std::shared_ptr<std::FILE> OpenScratchFile();

// Such a file with what the function writes; it is complete on the disk. Throws what the function
// throws, too.
std::shared_ptr<std::FILE> WriteScratchFile(const std::function<void(pdf::ByteSink&)>& write);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_FILES_DISKFILE_H_
