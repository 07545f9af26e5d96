// Images in a document, for the tests of what reads them.
//
//   ImagesInDocument images;
//   images.Add(5, "/Width 2/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8", "00FF");
//   EXPECT_EQ(RowsOf(*images.Samples(5)), ...);
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_IMAGES_IMAGESINDOCUMENT_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_IMAGES_IMAGESINDOCUMENT_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/ImageAlpha.h"
#include "engines/support/images/ImageSamples.h"
#include "engines/support/images/Picture.h"
#include "engines/support/pictures/RowSource.h"
#include "pdf/file/ByteSource.h"
#include "pdf/file/Document.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {

using Bytes = std::vector<std::uint8_t>;

class ImagesInDocument {
 public:
  ImagesInDocument() { file_.Pages(1); }

  // An image; its data in hexadecimal, behind the filter that is named, if any.
  ImagesInDocument& Add(int number, const std::string& entries, const std::string& hex,
                        const std::string& filter = "") {
    return AddStream(
        number, entries + "/Filter[/ASCIIHexDecode" + (filter.empty() ? "" : "/" + filter) + "]",
        hex + ">");
  }

  ImagesInDocument& AddStream(int number, const std::string& entries, const std::string& data) {
    file_.Stream(number, "/Subtype/Image" + entries, data);
    return *this;
  }

  ImagesInDocument& AddObject(int number, const std::string& body) {
    file_.Object(number, body);
    return *this;
  }

  // All of these may be called when nothing is added any more. Whoever reads rows keeps this.
  pdf::Document& document() {
    if (document_ == nullptr) {
      bytes_ = file_.Table();
      document_ = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes_), "");
    }
    return *document_;
  }

  DocumentImage Image(std::uint32_t number) { return ImageObjectOf(document(), number, arena_); }

  ImageFacts Facts(std::uint32_t number) { return FactsOf(Image(number), arena_); }

  std::optional<ImageSamples> Samples(std::uint32_t number) {
    return OpenSamples(Image(number), Facts(number));
  }

  std::optional<ImageAlpha> Alpha(std::uint32_t number) {
    return OpenAlpha(Image(number), Facts(number));
  }

  RowSourcePtr Picture(std::uint32_t number) { return OpenPicture(Image(number), Facts(number)); }

 private:
  testing::RawPdf file_;
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  pdf::Arena arena_;
};

inline std::vector<Bytes> RowsOf(const ImageSamples& samples) {
  std::vector<Bytes> rows;
  for (std::uint32_t y = 0; y < samples.rows->format().height; ++y) {
    const auto row = samples.rows->ReadRow();
    rows.emplace_back(row.begin(), row.end());
  }
  return rows;
}

inline std::vector<Bytes> RowsOf(RowSource& picture) {
  std::vector<Bytes> rows(picture.height(), Bytes(picture.row_bytes()));
  for (Bytes& row : rows) {
    picture.ReadRow(row.data());
  }
  return rows;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_IMAGES_IMAGESINDOCUMENT_H_
