#include "Pdf2ImgTask.h"

#include <algorithm>

#include "PdfCommonUtils.h"
#include "PdfException.h"

namespace TarnixTools {

Pdf2ImgTask::Pdf2ImgTask() {
  SetDefaults();
}

Pdf2ImgTask::Pdf2ImgTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

Pdf2ImgTask::Pdf2ImgTask(const std::list<PdfDoc>& documents) : PdfTask(documents) {
  SetDefaults();
}

Pdf2ImgTask::Pdf2ImgTask(const std::list<PdfDoc>& documents, Pdf2ImgMode mode)
    : PdfTask(documents) {
  SetDefaults();
  SetMode(mode);
}

Pdf2ImgTask::Pdf2ImgTask(const Pdf2ImgTask& other) = default;
Pdf2ImgTask::Pdf2ImgTask(Pdf2ImgTask&& other) noexcept = default;
Pdf2ImgTask& Pdf2ImgTask::operator=(const Pdf2ImgTask& other) = default;
Pdf2ImgTask& Pdf2ImgTask::operator=(Pdf2ImgTask&& other) noexcept = default;
Pdf2ImgTask::~Pdf2ImgTask() = default;

void Pdf2ImgTask::SetMode(Pdf2ImgMode mode) {
  if (mode > Pdf2ImgExtractImages) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid pdf2img mode [%d] (expected [%d] or [%d])", static_cast<int>(mode),
                       static_cast<int>(Pdf2ImgRenderPages),
                       static_cast<int>(Pdf2ImgExtractImages));
  }
  mode_ = mode;
}

void Pdf2ImgTask::SetImgFormat(Pdf2ImgFormat format) {
  if (format > Pdf2ImgPng) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid img format [%d] (expected [%d] or [%d])", static_cast<int>(format),
                       static_cast<int>(Pdf2ImgJpeg), static_cast<int>(Pdf2ImgPng));
  }
  img_format_ = format;
}

void Pdf2ImgTask::SetQuality(int quality) {
  constexpr int kBest = 100;
  if (quality < 1 || quality > kBest) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid img quality [%d] (expected [1-%d] value)", quality, kBest);
  }
  quality_ = quality;
}

void Pdf2ImgTask::SetImgPrefix(const std::string& prefix) {
  if (!prefix.empty()) {
    img_prefix_ = prefix;
  }
}

void Pdf2ImgTask::SetOutImgSize(int width, int height) {
  out_img_width_ = width;
  out_img_height_ = height;
  out_img_size_set_ = true;
}

void Pdf2ImgTask::Execute() {
  RunJob(mode_ == Pdf2ImgRenderPages ? "pages to images" : "extract images", [this] { Run(); });
}

void Pdf2ImgTask::Run() {
  images_.clear();
  if (documents_.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "None file defined at task");
  }
  if (mode_ == Pdf2ImgRenderPages) {
    ConvertPages2Img();
  } else {
    ExtractImages();
  }
}

void Pdf2ImgTask::SetDefaults() {
  mode_ = Pdf2ImgRenderPages;
  img_prefix_.clear();
  doc_name_in_img_ = true;
  pages_to_export_.clear();
  dpi_ = 100.0F;
  img_size_units_ = Pdf2ImgPixels;
  out_img_size_set_ = false;
  output_path_.clear();
}

// The path that the pattern gives.
std::string Pdf2ImgTask::PatternName(const std::string& doc_name, int number) const {
  return output_path_ + PdfCommonUtils::FormName(name_pattern_, doc_name, number);
}

bool Pdf2ImgTask::IsPageExported(int page_number) const {
  return pages_to_export_.empty() || std::find(pages_to_export_.begin(), pages_to_export_.end(),
                                               page_number) != pages_to_export_.end();
}

}  // namespace TarnixTools
