// Opens any bytes as an image file and puts its pictures into a document. Nothing worse may come of
// it than an ImageError or an Error.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/images/ImageWriter.h"
#include "engines/support/pictures/ImageError.h"
#include "pdf/Error.h"
#include "pdf/write/FileWriter.h"

namespace {

using namespace TarnixTools;

constexpr std::size_t kMaxFrames = 4;
constexpr std::uint64_t kMaxPixels = std::uint64_t{1} << 20;  // larger ones are slow, not different

class NoSink : public pdf::ByteSink {
 public:
  void Write(std::string_view) override {}
};

void Embed(std::string_view bytes) {
  pdf::MemorySource source(bytes);
  const auto file = engines::ImageFile::Open(source);
  NoSink sink;
  pdf::FileWriter writer(sink, nullptr);
  engines::ImageWriter images(writer);
  for (std::size_t i = 0; i < std::min(file->frame_count(), kMaxFrames); ++i) {
    const engines::ImageFrame& frame = file->frame(i);
    if (std::uint64_t{frame.width} * frame.height <= kMaxPixels) {
      images.Write(file->Embed(i), source);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    Embed({reinterpret_cast<const char*>(data), size});
  } catch (const engines::ImageError&) {
  } catch (const pdf::Error&) {
  }
  return 0;
}
