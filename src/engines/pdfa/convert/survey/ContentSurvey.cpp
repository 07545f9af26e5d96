#include "engines/pdfa/convert/survey/ContentSurvey.h"

#include <string>

#include "engines/pdfa/convert/contents/Interpolation.h"
#include "engines/pdfa/convert/contents/LargeReals.h"
#include "foundation/JobWatch.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/content/Operators.h"
#include "pdf/content/UnshownContent.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;

namespace {

constexpr pdf::WalkOptions kOptions = {.images = true,
                                       .text = true,
                                       .operators = true,
                                       .forms = true,
                                       .patterns = true,
                                       .soft_masks = true,
                                       .glyphs = true,
                                       .appearances = true};

}  // namespace

std::optional<double> FontUse::WidthOf(std::uint32_t code) const {
  if (font->is_composite()) {
    return font->WidthOfCid(font->CidOf(code));
  }
  const auto width = font->WidthOf(static_cast<std::uint8_t>(code));
  return width ? width : font->descriptor().missing_width;
}

ContentSurvey::ContentSurvey(pdf::Document& document, const pdf::PageTree& pages)
    : document_(&document) {
  WalkPages(document, pages);
  WalkRest(document, pages);
}

void ContentSurvey::WalkPages(pdf::Document& document, const pdf::PageTree& pages) {
  pdf::ContentWalker walker(document, *this, kOptions);
  JobSteps steps(static_cast<std::int64_t>(pages.pages().size()));
  for (page_ = 0; page_ < pages.pages().size(); ++page_) {
    walker.BeginPage(pages, page_);
    walker.Run();
    steps.Done();
  }
}

void ContentSurvey::WalkRest(pdf::Document& document, const pdf::PageTree& pages) {
  pdf::ContentWalker walker(document, *this, kOptions);
  pdf::WalkUnshown(document, pages, walker, entered_, [this](std::size_t page) { page_ = page; });
}

// What was gone into once tells nothing new.
bool ContentSurvey::EnterContent(const pdf::ContentEntry& entry) {
  const bool is_page = entry.kind == pdf::ResourceKind::kPage;
  if (!is_page && !entered_.insert(entry.number).second) {
    return false;
  }
  running_.push_back(is_page ? 0 : entry.number);
  if (!is_page && entry.kind != pdf::ResourceKind::kGlyph && !entry.dictionary.Has("Resources")) {
    std::string& resources = borrowed_[entry.number];
    pdf::AppendObject(resources, entry.scope.resources.IsDictionary() ? entry.scope.resources
                                                                      : Object::Dictionary({}));
  }
  return true;
}

void ContentSurvey::LeaveContent(const pdf::ContentEntry& /*entry*/) {
  running_.pop_back();
}

void ContentSurvey::Operator(const pdf::Operation& operation, std::size_t /*offset*/) {
  NoteUnknown(operation);
  switch (operation.code) {
    case pdf::OperatorCode("k"):
    case pdf::OperatorCode("K"):
      uses_cmyk_ = true;
      break;
    case pdf::OperatorCode("cs"):
    case pdf::OperatorCode("CS"):
      uses_cmyk_ = uses_cmyk_ || operation.operands.find("/DeviceCMYK") != std::string_view::npos;
      break;
    default:
      break;
  }
}

// The parts of an inline image never stand by themselves.
void ContentSurvey::NoteUnknown(const pdf::Operation& operation) {
  const bool interpolates = InterpolationOf(operation.image_entries) != std::string_view::npos;
  if (!pdf::IsOperator(operation.code) || interpolates) {
    NoteRunning(damaged_pages_, damaged_contents_);
  } else if (HasLargeReal(operation.operands)) {
    NoteRunning(large_pages_, large_contents_);
  }
}

// What is running goes to one of the two.
void ContentSurvey::NoteRunning(std::set<std::size_t>& pages,
                                std::set<std::uint32_t>& contents) const {
  if (running_.empty() || running_.back() == 0) {
    pages.insert(page_);
  } else {
    contents.insert(running_.back());
  }
}

void ContentSurvey::DrawImage(const pdf::ImageUse& image) {
  if (image.number == 0) {
    const Object space = image.dictionary.Get("CS");
    const Object full = image.dictionary.Get("ColorSpace");
    uses_cmyk_ = uses_cmyk_ || space.IsName("CMYK") || full.IsName("CMYK") ||
                 space.IsName("DeviceCMYK") || full.IsName("DeviceCMYK");
  }
}

std::optional<pdf::TextAdvance> ContentSurvey::ShowText(const pdf::StringUse& string) {
  const Object& font = string.state.text.font;
  if (!font.IsReference()) {
    return std::nullopt;
  }
  FontUse& use = fonts_[font.AsReference().number];
  if (use.font == nullptr) {
    use.font = std::make_shared<const fonts::DocumentFont>(*document_, font);
  }
  use.is_seen = use.is_seen || string.state.text.mode != pdf::TextMode::kInvisible;
  split_.clear();
  if (!Split(*use.font, string.bytes)) {
    use.is_sure = false;
  }
  use.codes.insert(split_.begin(), split_.end());
  return std::nullopt;
}

// Maps that readers know without a file have codes of two bytes where those are Unicode.
bool ContentSurvey::Split(const fonts::DocumentFont& font, std::string_view bytes) {
  if (font.codes() != nullptr) {
    return font.codes()->Split(bytes, split_);
  }
  if (!font.has_unicode_codes()) {
    return false;
  }
  return fonts::CodeMap::Identity().Split(bytes, split_);
}

}  // namespace TarnixTools::engines::pdfa
