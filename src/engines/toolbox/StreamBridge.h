// The core's byte source and sink over a stream descriptor.
#ifndef TARNIX_ENGINES_TOOLBOX_STREAMBRIDGE_H_
#define TARNIX_ENGINES_TOOLBOX_STREAMBRIDGE_H_

#include <cstdint>

#include "engines/toolbox/Toolbox.h"
#include "pdf/file/ByteSink.h"
#include "pdf/file/ByteSource.h"

namespace TarnixTools::engines::toolbox {

// Reads through the callbacks. Does not release the stream.
class StreamSource : public pdf::ByteSource {
 public:
  // Throws pdf::Error(kReadFailed) when the length cannot be had.
  explicit StreamSource(const TPdfStream& stream);

  std::uint64_t Size() const override { return size_; }

  std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override;

 private:
  TPdfStream stream_;
  std::uint64_t size_ = 0;
  std::uint64_t position_;  // of the stream, where known
};

// Writes through the callbacks, from the stream's start. Does not release the stream.
class StreamSink : public pdf::ByteSink {
 public:
  explicit StreamSink(const TPdfStream& stream) : stream_(stream) {}

  void Write(std::string_view bytes) override;

 private:
  TPdfStream stream_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_STREAMBRIDGE_H_
