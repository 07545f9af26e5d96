// Images written into a document, and what readers see of them.
//
//   const WrittenImage written(EncodeRaster(std::move(raster)));
//   EXPECT_EQ(written.Rows(), "00 FF\n");
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_IMAGES_WRITTENIMAGE_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_IMAGES_WRITTENIMAGE_H_

#include <string>
#include <string_view>

#include "engines/support/images/ImageInDocument.h"
#include "engines/support/images/ImageWriter.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines {

// A document whose only page draws the images, which are called I0, I1, ... there.
inline std::string DocumentOf(const std::vector<const EncodedImage*>& images,
                              std::string_view file = {}, const pdf::Security* security = nullptr) {
  pdf::StringSink sink;
  pdf::FileWriter writer(sink, security);
  ImageWriter image_writer(writer);
  pdf::MemorySource source(file);
  const std::uint32_t catalog = writer.Reserve();
  const std::uint32_t pages = writer.Reserve();
  const std::uint32_t page = writer.Reserve();
  const std::uint32_t content = writer.Reserve();
  std::string resources;
  std::string drawing;
  for (std::size_t i = 0; i < images.size(); ++i) {
    resources += "/I" + std::to_string(i) + " " +
                 std::to_string(image_writer.Write(*images[i], source)) + " 0 R";
    drawing += "/I" + std::to_string(i) + " Do ";
  }
  writer.BeginStream(content, "<<", drawing.size());
  writer.AppendStream(drawing);
  writer.EndStream();
  const auto reference = [](std::uint32_t number) { return std::to_string(number) + " 0 R"; };
  writer.WriteObject(catalog, "<</Type/Catalog/Pages " + reference(pages) + ">>");
  writer.WriteObject(pages, "<</Type/Pages/Count 1/Kids[" + reference(page) + "]>>");
  writer.WriteObject(page, "<</Type/Page/Parent " + reference(pages) +
                               "/MediaBox[0 0 9 9]/Contents " + reference(content) +
                               "/Resources<</XObject<<" + resources + ">>>>>>");
  writer.Finish(catalog, 0);
  return sink.Take();
}

class WrittenImage {
 public:
  // file: what the picture's data may lie in.
  explicit WrittenImage(const EncodedImage& image, std::string_view file = {})
      : bytes_(DocumentOf({&image}, file)), document_(testing::OpenBytes(bytes_)) {
    const pdf::PageTree pages(*document_);
    const pdf::Object page = pages.Load(pages.pages().at(0), arena_);
    number_ = page.Get("Resources").Get("XObject").Get("I0").AsReference().number;
    dictionary_ = document_->Load({.number = number_, .generation = 0}, arena_);
  }

  const std::string& bytes() const { return bytes_; }

  pdf::Document& document() { return *document_; }

  std::uint32_t number() const { return number_; }

  // An entry of the image's dictionary as text, all references followed.
  std::string Entry(std::string_view key) {
    return testing::Expanded(*document_, dictionary_.Get(key));
  }

  // The picture as it is read back, its soft mask left out where that is not wanted.
  Pixels Read(bool with_mask = true) {
    const DocumentImage image{.document = document_.get(),
                              .number = number_,
                              .dictionary = dictionary_,
                              .data = {},
                              .color_spaces = {}};
    ImageFacts facts = FactsOf(image, arena_);
    facts.soft_mask = with_mask ? facts.soft_mask : 0;
    const RowSourcePtr picture = OpenPicture(image, facts);
    return picture != nullptr ? ReadAll(*picture) : Pixels();
  }

  std::string Rows() { return Read().Text(); }

  // The images of the document in order as poppler sees them: the picture, then its soft mask.
  testing::PnmImage ReadByPoppler(int index = 0) const {
    return testing::ImageByPoppler(bytes_, index);
  }

 private:
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  pdf::Arena arena_;
  std::uint32_t number_ = 0;
  pdf::Object dictionary_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_IMAGES_WRITTENIMAGE_H_
