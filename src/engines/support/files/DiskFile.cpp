#include "engines/support/files/DiskFile.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

constexpr std::uint64_t kToldBytes = std::uint64_t{64} << 10;

}  // namespace

DiskSource::DiskSource(std::shared_ptr<std::FILE> file) : file_(std::move(file)) {
  struct stat info {};

  if (fstat(fileno(file_.get()), &info) != 0 || info.st_size < 0) {
    throw pdf::Error(pdf::ErrorCode::kReadFailed, "the length of the file cannot be had", errno);
  }
  size_ = static_cast<std::uint64_t>(info.st_size);
}

std::size_t DiskSource::ReadAt(std::uint64_t offset, char* buffer, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count =
        pread(fileno(file_.get()), buffer + done, size - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count < 0) {
      throw pdf::Error(pdf::ErrorCode::kReadFailed, "the file cannot be read", errno);
    }
    if (count == 0) {
      break;
    }
    done += static_cast<std::size_t>(count);
  }
  return done;
}

std::shared_ptr<std::FILE> OpenShared(const platform::WidePath& path) {
  platform::FilePtr file = platform::OpenForReading(path);
  return file != nullptr ? std::shared_ptr<std::FILE>(std::move(file)) : nullptr;
}

void DiskSink::Write(std::string_view bytes) {
  if (JobWatch::IsCancelled()) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the job is to stop");
  }
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the file cannot be written", errno);
  }
}

ToldSink::ToldSink(pdf::ByteSink& sink, std::uint64_t expected)
    : sink_(&sink), steps_(static_cast<std::int64_t>(expected / kToldBytes)) {}

void ToldSink::Write(std::string_view bytes) {
  sink_->Write(bytes);
  for (untold_ += bytes.size(); untold_ >= kToldBytes; untold_ -= kToldBytes) {
    steps_.Done();
  }
}

std::shared_ptr<std::FILE> OpenScratchFile() {
  platform::FilePtr file(std::tmpfile());
  if (file == nullptr) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "no temporary file can be made", errno);
  }
  return std::shared_ptr<std::FILE>(std::move(file));
}

std::shared_ptr<std::FILE> WriteScratchFile(const std::function<void(pdf::ByteSink&)>& write) {
  std::shared_ptr<std::FILE> file = OpenScratchFile();
  DiskSink sink(file.get());
  write(sink);
  if (std::fflush(file.get()) != 0) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the file cannot be completed", errno);
  }
  return file;
}

}  // namespace TarnixTools::engines
