// An image file in memory, opened, and what it gives.
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_IMAGEFILES_OPENEDIMAGE_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_IMAGEFILES_OPENEDIMAGE_H_

#include <memory>
#include <optional>
#include <string>

#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/pictures/ImageError.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::testing {

class OpenedImage {
 public:
  explicit OpenedImage(std::string bytes)
      : bytes_(std::move(bytes)), source_(bytes_), file_(engines::ImageFile::Open(source_)) {}

  engines::ImageFile& file() { return *file_; }

  pdf::ByteSource& source() { return source_; }

  const engines::ImageFrame& frame(std::size_t index = 0) const { return file_->frame(index); }

  engines::EncodedImage Embed(std::size_t index = 0) { return file_->Embed(index); }

  // The stream's data as it is to be written.
  std::string DataOf(const engines::ImageStream& stream) const {
    std::string data;
    for (const auto& piece : stream.data) {
      data += piece.held.data != nullptr ? std::string(piece.held.view())
                                         : bytes_.substr(static_cast<std::size_t>(piece.offset),
                                                         static_cast<std::size_t>(piece.length));
    }
    return data;
  }

  // The rows that flate-coded data stands for.
  std::string SamplesOf(const engines::ImageStream& stream) const {
    pdf::FilterStep step{pdf::FilterKind::kFlate, {}};
    step.parameters.predictor = 15;
    step.parameters.bits_per_component = stream.bits;
    step.parameters.columns = stream.width;
    step.parameters.colors = stream.space == engines::PictureSpace::kRgb    ? 3
                             : stream.space == engines::PictureSpace::kCmyk ? 4
                                                                            : 1;
    return pdf::Decode({step}, DataOf(stream), std::size_t{1} << 28).data;
  }

 private:
  std::string bytes_;
  pdf::MemorySource source_;
  std::unique_ptr<engines::ImageFile> file_;
};

// Why a file cannot be opened or embedded; nothing when it can.
inline std::optional<engines::ImageErrorCode> ImageCodeOf(const std::string& bytes) {
  try {
    OpenedImage(bytes).Embed();
  } catch (const engines::ImageError& error) {
    return error.code();
  }
  return std::nullopt;
}

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_IMAGEFILES_OPENEDIMAGE_H_
