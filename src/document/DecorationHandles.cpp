#include "document/DecorationHandles.h"

#include <utility>

#include "PdfException.h"
#include "document/SystemFont.h"
#include "foundation/Platform.h"

namespace TarnixTools {
namespace {

constexpr std::int32_t kRgb = 2;

[[noreturn]] void ThrowEngineError(const char* message) {
  throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(), "%s", message);
}

void ReportReplacedFont(const PdfTransformation& transformation, PdfReport& report) {
  const std::string& style = transformation.GetFontStyle();
  report.Add({PdfReportKind::Font, PdfReportOutcome::Replaced, 1, 0,
              transformation.GetFontName() + (style.empty() ? "" : " ") + style +
                  " cannot be used, " + kFallbackFont + " is used instead"});
}

// A style that the family lacks is replaced by its closest.
void ReportReplacedStyle(const PdfTransformation& transformation, PdfReport& report) {
  report.Add({PdfReportKind::Font, PdfReportOutcome::Replaced, 1, 0,
              transformation.GetFontName() + " has no style " + transformation.GetFontStyle() +
                  ", the closest is used instead"});
}

FontPtr GetTransformationFont(engines::TPdfDocument* target,
                              const PdfTransformation& transformation, PdfReport& report) {
  const std::string& style = transformation.GetFontStyle();
  SystemFont made = MakeSystemFont(target, transformation.GetFontName(), style);
  if (made.is_fallback) {
    ReportReplacedFont(transformation, report);
  } else if (!style.empty() && engines::PdfFontHasStyleA(made.font.get(), style.c_str()) == 0) {
    ReportReplacedStyle(transformation, report);
  }
  return std::move(made.font);
}

DecorationHandles TextHandles(engines::TPdfDocument* target,
                              const PdfTransformation& transformation,
                              const DecorationMessages& messages, PdfReport& report) {
  DecorationHandles handles;
  handles.font = GetTransformationFont(target, transformation, report);
  handles.color_space.reset(engines::PdfDocumentCreateDeviceColorSpace(target, kRgb));
  if (handles.color_space == nullptr) {
    ThrowEngineError(messages.no_color_space);
  }
  const auto& colors = transformation.GetColors();
  handles.paint.reset(engines::PdfDocumentCreateAlphaPaint(
      target, handles.color_space.get(), transformation.GetTextOpacity() / 100.0, colors.data(),
      static_cast<std::int32_t>(colors.size())));
  if (handles.paint == nullptr) {
    ThrowEngineError(messages.no_paint);
  }
  return handles;
}

DecorationHandles ImageHandles(engines::TPdfDocument* target,
                               const PdfTransformation& transformation) {
  const std::string& path = transformation.GetInputImage();
  platform::FilePtr file = platform::OpenForReading(path);
  if (file == nullptr) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to open image file [%s]",
                       path.c_str());
  }
  DecorationHandles handles;
  handles.image_stream = std::make_unique<FileStream>(std::move(file));
  const engines::TPdfStream stream = handles.image_stream->Descriptor();
  handles.image.reset(engines::PdfDocumentCreateImage(target, &stream));
  if (handles.image == nullptr) {
    const std::int32_t error = engines::PdfGetLastError();
    throw PdfException(PdfExceptionCode::EngineError, error,
                       "Unable to create image object from file [%s]. ERROR [%d]", path.c_str(),
                       error);
  }
  return handles;
}

bool IsImage(const PdfTransformation& transformation) {
  return transformation.GetType() == PdfTransformType::StampImage;
}

// All that the handles of a decoration are made from.
std::string KeyOf(const PdfTransformation& transformation) {
  if (transformation.GetType() == PdfTransformType::PdfA) {
    return "";
  }
  if (IsImage(transformation)) {
    return "image " + transformation.GetInputImage();
  }
  std::string key = "text " + std::to_string(transformation.GetTextOpacity());
  for (const double color : transformation.GetColors()) {
    key += " " + std::to_string(color);
  }
  return key + " " + transformation.GetFontName() + '\n' + transformation.GetFontStyle();
}

}  // namespace

const DecorationMessages kPageNumberMessages = {
    .no_color_space = "Unable to get color space for document page number",
    .no_paint = "Unable to get colors for document page number",
};

const DecorationMessages kTextStampMessages = {
    .no_color_space = "Unable to get color space for text stamp",
    .no_paint = "Unable to get colors for text stamp",
};

DecorationHandles MakeDecorationHandles(engines::TPdfDocument* target,
                                        const PdfTransformation& transformation,
                                        const DecorationMessages& messages, PdfReport& report) {
  switch (transformation.GetType()) {
    case PdfTransformType::AddPageNumber:
    case PdfTransformType::StampText:
      return TextHandles(target, transformation, messages, report);
    case PdfTransformType::StampImage:
      return ImageHandles(target, transformation);
    case PdfTransformType::PdfA:
      break;
  }
  return {};
}

const DecorationHandles& DecorationHandleStore::Get(std::size_t index,
                                                    const PdfTransformation& transformation) {
  if (index >= of_decoration_.size()) {
    of_decoration_.resize(index + 1);
  }
  const DecorationHandles*& handles = of_decoration_[index];
  if (handles != nullptr) {
    return *handles;
  }
  const std::string key = KeyOf(transformation);
  auto found = handles_.find(key);
  if (found == handles_.end()) {
    if (IsImage(transformation) && image_count_++ == kMaxImages) {
      DropImages();
    }
    found =
        handles_.emplace(key, MakeDecorationHandles(target_, transformation, messages_, report_))
            .first;
  }
  handles = &found->second;
  return *handles;
}

void DecorationHandleStore::DropImages() {
  std::erase_if(handles_, [](const auto& entry) { return entry.second.image != nullptr; });
  of_decoration_.assign(of_decoration_.size(), nullptr);
  image_count_ = 1;  // the one that takes their place
}

}  // namespace TarnixTools
