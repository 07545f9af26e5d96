#include "engines/support/images/ImageHeaders.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "engines/support/images/ImageLimits.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines {
namespace {

constexpr std::uint64_t kFirstPiece = 4096;
constexpr std::uint64_t kGrowth = 16;

// Reads ever larger pieces until one has the whole header, or is no larger than the one before: of
// encrypted data less comes out than was asked for.
//   read - makes a header of a piece; nothing where there is none
//   is_whole - whether a larger piece could not say more
template <typename Header>
std::optional<Header> ReadHeader(const DocumentImage& image,
                                 std::optional<Header> (*read)(std::string_view piece),
                                 bool (*is_whole)(const Header& header)) {
  std::optional<Header> header;
  std::size_t before = 0;
  for (std::uint64_t most = kFirstPiece; most <= limits::kMaxHeaderBytes; most *= kGrowth) {
    pdf::StringSink start;
    CopyEncoded(image, start, most);
    header = read(start.bytes());
    if ((header && is_whole(*header)) || start.bytes().size() == before) {
      break;
    }
    before = start.bytes().size();
  }
  return header;
}

}  // namespace

std::optional<JpegHeader> JpegHeaderOf(const DocumentImage& image) {
  return ReadHeader<JpegHeader>(image, &ReadJpegHeader,
                                [](const JpegHeader& header) { return header.scan_start != 0; });
}

std::optional<JpxHeader> JpxHeaderOf(const DocumentImage& image) {
  return ReadHeader<JpxHeader>(image, &ReadJpxHeader, [](const JpxHeader&) { return true; });
}

}  // namespace TarnixTools::engines
