#include "engines/toolbox/StreamBridge.h"

#include <cerrno>

#include "pdf/Error.h"

namespace TarnixTools::engines::toolbox {

namespace {
constexpr std::uint64_t kUnknownPosition = ~std::uint64_t{0};
}  // namespace

StreamSource::StreamSource(const TPdfStream& stream)
    : stream_(stream), position_(kUnknownPosition) {
  const std::int64_t length = stream_.get_length(stream_.handle);
  if (length < 0) {
    throw pdf::Error(pdf::ErrorCode::kReadFailed, "the length of the file cannot be had");
  }
  size_ = static_cast<std::uint64_t>(length);
}

std::size_t StreamSource::ReadAt(std::uint64_t offset, char* buffer, std::size_t size) {
  if (position_ != offset && stream_.seek(stream_.handle, static_cast<std::int64_t>(offset)) == 0) {
    position_ = kUnknownPosition;
    throw pdf::Error(pdf::ErrorCode::kReadFailed, "the file cannot be positioned");
  }
  const std::int64_t count = stream_.read(stream_.handle, buffer, static_cast<std::int64_t>(size));
  if (count < 0) {
    position_ = kUnknownPosition;
    throw pdf::Error(pdf::ErrorCode::kReadFailed, "the file cannot be read");
  }
  position_ = offset + static_cast<std::uint64_t>(count);
  return static_cast<std::size_t>(count);
}

void StreamSink::Write(std::string_view bytes) {
  const auto size = static_cast<std::int64_t>(bytes.size());
  if (stream_.write(stream_.handle, bytes.data(), size) != size) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the file cannot be written", errno);
  }
}

}  // namespace TarnixTools::engines::toolbox
