#include "engines/img2pdf/ImageDocument.h"

#include <cstdio>
#include <utility>

#include "pdf/Error.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::img2pdf {

namespace {

constexpr int kDecimals = 5;  // finer than any device shows

}  // namespace

FileSource::FileSource(platform::FilePtr file) : file_(std::move(file)) {
  const std::int64_t length = platform::SeekToEnd(file_.get()) ? platform::Tell(file_.get()) : -1;
  if (length < 0) {
    throw pdf::Error(pdf::ErrorCode::kReadFailed, "the length of the file cannot be had");
  }
  size_ = static_cast<std::uint64_t>(length);
}

std::size_t FileSource::ReadAt(std::uint64_t offset, char* buffer, std::size_t size) {
  if (!platform::Seek(file_.get(), static_cast<std::int64_t>(offset))) {
    throw pdf::Error(pdf::ErrorCode::kReadFailed, "the file cannot be positioned");
  }
  const std::size_t count = std::fread(buffer, 1, size, file_.get());
  if (count < size && std::ferror(file_.get()) != 0) {
    throw pdf::Error(pdf::ErrorCode::kReadFailed, "the file cannot be read");
  }
  std::clearerr(file_.get());
  return count;
}

ImageDocument::ImageDocument(platform::OutputFile output, std::optional<pdf::Security> security)
    : file_(std::move(output)),
      security_(std::move(security)),
      writer_(file_.sink(), security_ ? &*security_ : nullptr),
      pages_(writer_),
      images_(writer_) {}

bool ImageDocument::AddPages(ImageFile& file, pdf::ByteSource& source,
                             const PageSettings& settings) {
  for (std::size_t i = 0; i < file.frame_count(); ++i) {
    const std::optional<PageLayout> layout = LayOut(file.frame(i), settings);
    if (!layout) {
      return false;
    }
    AddPage(file.Embed(i), source, *layout);
  }
  return true;
}

void ImageDocument::AddPage(const EncodedImage& image, pdf::ByteSource& source,
                            const PageLayout& layout) {
  const std::uint32_t picture = images_.Write(image, source);
  const std::uint32_t content = WriteContent(layout.matrix);
  const pdf::PageTreeWriter::Leaf leaf = pages_.AddPage();
  std::string text = "<</Type/Page/Parent";
  pdf::AppendReference(text, leaf.parent);
  text += "/MediaBox";
  pdf::AppendBox(text, {0, 0, layout.width, layout.height});
  if (layout.user_unit != 1) {
    text += "/UserUnit";
    pdf::AppendInteger(text, layout.user_unit);
  }
  text += "/Resources<</XObject<</Im0";
  pdf::AppendReference(text, picture);
  text += ">>>>/Contents";
  pdf::AppendReference(text, content);
  writer_.WriteObject(leaf.page, text + ">>");
}

std::uint32_t ImageDocument::WriteContent(const pdf::Matrix& matrix) {
  std::string text = "q";
  for (const double value : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
    pdf::AppendNumber(text, value, kDecimals);
  }
  text += " cm/Im0 Do Q";
  const std::uint32_t number = writer_.Reserve();
  writer_.BeginStream(number, "<<", text.size());
  writer_.AppendStream(text);
  writer_.EndStream();
  return number;
}

void ImageDocument::Close() {
  const std::uint32_t catalog = writer_.Reserve();
  std::string text = "<</Type/Catalog/Pages";
  pdf::AppendReference(text, pages_.Finish());
  writer_.WriteObject(catalog, text + ">>");
  writer_.Finish(catalog, 0);
  file_.Complete();
}

}  // namespace TarnixTools::engines::img2pdf
