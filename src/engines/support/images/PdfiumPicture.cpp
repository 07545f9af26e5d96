#include "engines/support/images/PdfiumPicture.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "engines/support/images/ImageLimits.h"
#include "engines/support/pdfium/PdfiumFile.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "pdf/file/ByteSource.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/ObjectCopier.h"

namespace TarnixTools::engines {
namespace {

// A document with one page, which the image fills, one pixel to a unit.
class OneImageDocument {
 public:
  OneImageDocument(const DocumentImage& image, const ImageFacts& facts)
      : image_(&image),
        writer_(sink_, nullptr),
        objects_(*image.document, writer_, numbers_, [](std::uint32_t) { return false; }) {
    const std::uint32_t catalog = writer_.Reserve();
    const std::uint32_t pages = writer_.Reserve();
    const std::uint32_t page = writer_.Reserve();
    const std::uint32_t content = writer_.Reserve();
    const std::uint32_t picture = WriteImage();
    const std::string width = std::to_string(facts.width);
    const std::string height = std::to_string(facts.height);
    const auto reference = [](std::uint32_t number) { return std::to_string(number) + " 0 R"; };
    writer_.WriteObject(catalog, "<</Type/Catalog/Pages " + reference(pages) + ">>");
    writer_.WriteObject(pages, "<</Type/Pages/Count 1/Kids[" + reference(page) + "]>>");
    writer_.WriteObject(page, "<</Type/Page/Parent " + reference(pages) + "/MediaBox[0 0 " + width +
                                  " " + height + "]/Contents " + reference(content) +
                                  "/Resources<</XObject<</I " + reference(picture) + ">>>>>>");
    WriteStream(content, "<<", "0 g " + width + " 0 0 " + height + " 0 0 cm /I Do");
    writer_.Finish(catalog, 0);
  }

  std::string Take() { return sink_.bytes(); }

 private:
  std::uint32_t WriteImage() {
    if (image_->number != 0) {
      const std::uint32_t number = objects_.Map(image_->number);
      objects_.CopyPending();
      return number;
    }
    const std::uint32_t number = writer_.Reserve();
    std::string dictionary = "<</Type/XObject/Subtype/Image";
    for (const pdf::DictionaryEntry& entry : image_->dictionary.Entries()) {
      if (entry.Key() != "Length" && entry.Key() != "Type" && entry.Key() != "Subtype") {
        pdf::AppendName(dictionary, entry.Key());
        objects_.Append(dictionary, entry.value);
      }
    }
    WriteStream(number, dictionary, image_->data);
    objects_.CopyPending();
    return number;
  }

  void WriteStream(std::uint32_t number, const std::string& dictionary, std::string_view data) {
    writer_.BeginStream(number, dictionary, data.size());
    writer_.AppendStream(data);
    writer_.EndStream();
  }

  const DocumentImage* image_;
  pdf::StringSink sink_;
  pdf::FileWriter writer_;
  pdf::NumberMap numbers_;
  pdf::ObjectCopier objects_;
};

class PdfiumRows : public RowSource {
 public:
  PdfiumRows(std::uint32_t width, std::uint32_t height, PixelLayout layout, std::string document)
      : RowSource(width, height, layout), bytes_(std::move(document)) {
    band_height_ = static_cast<std::uint32_t>(
        std::clamp<std::size_t>(kBandBytes / (std::size_t{4} * width), 1, height));
  }

  ~PdfiumRows() override {
    const PdfiumLock pdfium;
    if (page_ != nullptr) {
      file_->ClosePage(page_);
    }
    file_.reset();
  }

  bool Open() {
    PdfiumLock pdfium;
    if (!pdfium.is_available()) {
      return false;
    }
    bool needs_password = false;
    file_ =
        PdfiumFile::Open(pdfium, std::make_unique<pdf::MemorySource>(bytes_), "", needs_password);
    page_ = file_ != nullptr ? file_->LoadPage(0) : nullptr;
    return page_ != nullptr;
  }

  bool ReadRow(std::uint8_t* row) override {
    if (next_ == band_end_) {
      DrawBand();
    }
    const std::size_t stride = std::size_t{4} * width();
    const std::uint8_t* source = band_.data() + (next_ - (band_end_ - rows_in_band_)) * stride;
    ++next_;
    if (layout() == PixelLayout::kGray) {
      for (std::size_t x = 0; x < width(); ++x) {
        row[x] = source[4 * x + 1];
      }
    } else {
      for (std::size_t x = 0; x < width(); ++x) {
        row[3 * x] = source[4 * x + 2];
        row[3 * x + 1] = source[4 * x + 1];
        row[3 * x + 2] = source[4 * x];
      }
    }
    return true;
  }

  std::uint64_t held_bytes() const override { return bytes_.size() + band_.size(); }

 private:
  static constexpr std::size_t kBandBytes = std::size_t{16} << 20;

  void DrawBand() {
    rows_in_band_ = std::min(band_height_, height() - band_end_);
    band_.assign(std::size_t{4} * width() * rows_in_band_, 0xFF);
    PdfiumLock pdfium;
    const PdfiumBitmapPtr bitmap(
        pdfium->FPDFBitmap_CreateEx(static_cast<int>(width()), static_cast<int>(rows_in_band_),
                                    pdfium::kBgrx, band_.data(), static_cast<int>(4 * width())),
        {pdfium.operator->()});
    if (bitmap != nullptr) {
      pdfium->FPDF_RenderPageBitmap(bitmap.get(), page_, 0, -static_cast<int>(band_end_),
                                    static_cast<int>(width()), static_cast<int>(height()), 0, 0);
    }
    band_end_ += rows_in_band_;
  }

  std::string bytes_;  // outlives the file
  std::unique_ptr<PdfiumFile> file_;
  pdfium::Page* page_ = nullptr;
  std::uint32_t band_height_ = 0;
  std::uint32_t rows_in_band_ = 0;
  std::uint32_t band_end_ = 0;
  std::uint32_t next_ = 0;
  std::vector<std::uint8_t> band_;
};

}  // namespace

RowSourcePtr OpenWithPdfium(const DocumentImage& image, const ImageFacts& facts, bool is_gray) {
  if (static_cast<std::uint64_t>(facts.width) * facts.height * 3 > limits::kMaxSampleBytes) {
    return nullptr;
  }
  auto rows = std::make_unique<PdfiumRows>(facts.width, facts.height,
                                           is_gray ? PixelLayout::kGray : PixelLayout::kRgb,
                                           OneImageDocument(image, facts).Take());
  return rows->Open() ? std::move(rows) : nullptr;
}

}  // namespace TarnixTools::engines
