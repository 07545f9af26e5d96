#include "engines/toolbox/content/TargetContent.h"

#include "engines/toolbox/ToolboxFailure.h"
#include "engines/toolbox/content/ContentText.h"
#include "engines/toolbox/content/StreamText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using fonts::EmbeddingRight;
using fonts::FontCatalog;
using fonts::FontFace;
using fonts::InstalledFace;
using fonts::ShapedLine;

namespace {

constexpr std::size_t kMaxKeptCharacters = std::size_t{32} << 10;
constexpr std::size_t kMaxKeptStreams = 256;
constexpr std::size_t kMaxKeptStream = std::size_t{16} << 10;

}  // namespace

const InstalledFace& TargetContent::FindFace(const std::string& family, const std::string& style) {
  const InstalledFace*& found = found_faces_[{family, style}];
  if (found != nullptr) {
    return *found;
  }
  const InstalledFace* face = FontCatalog::Get().Find(family, style);
  if (face == nullptr) {
    throw ToolboxFailure(kToolboxFontNotFoundError);
  }
  const FontFace* loaded = faces_.Load(*face);
  if (loaded == nullptr || loaded->embedding_right() == EmbeddingRight::kNone) {
    throw ToolboxFailure(kToolboxFontEmbeddingError);
  }
  found = face;
  return *face;
}

std::shared_ptr<const ShapedLine> TargetContent::Shape(const InstalledFace& face,
                                                       const std::u32string& text) {
  // The face's address as one more character or two: no text has such characters.
  const auto address = reinterpret_cast<std::uintptr_t>(&face);
  std::u32string key = text;
  key += static_cast<char32_t>(address);
  key += static_cast<char32_t>(static_cast<std::uint64_t>(address) >> 32);
  if (const auto known = lines_.find(key); known != lines_.end()) {
    return known->second;
  }
  kept_characters_ += key.size();
  if (kept_characters_ > kMaxKeptCharacters) {
    lines_.clear();
    kept_characters_ = key.size();
  }
  const auto line = std::make_shared<const ShapedLine>(ShapeLine(faces_, face, text));
  lines_.emplace(std::move(key), line);
  return line;
}

EmbeddedFont& TargetContent::FontOf(FontFace& face) {
  std::unique_ptr<EmbeddedFont>& font = fonts_by_face_[&face];
  if (font == nullptr) {
    AddedResource resource{pdf::ResourceCategory::kFont, "F" + std::to_string(fonts_.size()),
                           writer_->Reserve()};
    font = std::make_unique<EmbeddedFont>(face, std::move(resource));
    fonts_.push_back(font.get());
  }
  return *font;
}

AddedResource TargetContent::GraphicsStateOf(double alpha) {
  const auto [place, is_new] = graphics_states_.try_emplace(alpha);
  AddedResource& resource = place->second;
  if (is_new) {
    resource = {pdf::ResourceCategory::kExtGState,
                "G" + std::to_string(graphics_states_.size() - 1), writer_->Reserve()};
    std::string text = "<</Type/ExtGState/ca";
    pdf::AppendNumber(text, alpha, 4);
    Write([&] { writer_->WriteObject(resource.number, text + ">>"); });
  }
  return resource;
}

std::uint32_t TargetContent::StreamOf(const std::string& text) {
  if (text.size() > kMaxKeptStream) {
    return WriteStreamText(*writer_, "", text);
  }
  if (const auto known = streams_.find(text); known != streams_.end()) {
    return known->second;
  }
  const std::uint32_t number = WriteStreamText(*writer_, "", text);
  if (streams_.size() < kMaxKeptStreams) {
    streams_.emplace(text, number);
  }
  return number;
}

void TargetContent::Finish() {
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  for (const EmbeddedFont* font : fonts_) {
    font->Write(*writer_);
  }
}

}  // namespace TarnixTools::engines::toolbox
