#include "engines/toolbox/content/TargetContent.h"

#include "engines/support/pictures/StandardProfiles.h"
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

std::uint32_t TargetContent::StreamOf(const std::string& text, const std::string& entries) {
  if (text.size() > kMaxKeptStream) {
    return WriteStreamText(*writer_, entries, text);
  }
  std::string key = entries + text;
  if (const auto known = streams_.find(key); known != streams_.end()) {
    return known->second;
  }
  const std::uint32_t number = WriteStreamText(*writer_, entries, text);
  if (streams_.size() < kMaxKeptStreams) {
    streams_.emplace(std::move(key), number);
  }
  return number;
}

// Ghostscript passes over a default that is the device's space itself. Where there is no other way
// to say it, as of process colours, the other readers take it for what it is.
std::string TargetContent::PlainSpaceOf(std::string_view default_name) {
  if (const auto known = plain_spaces_.find(default_name); known != plain_spaces_.end()) {
    return known->second;
  }
  std::string space = default_name == "DefaultRGB"    ? WriteProfile(3, SrgbProfile())
                      : default_name == "DefaultGray" ? WriteProfile(1, GrayProfile())
                                                      : "/DeviceCMYK";
  return plain_spaces_.emplace(default_name, std::move(space)).first->second;
}

std::string TargetContent::WriteProfile(int components, const std::string& profile) {
  std::string space = "[/ICCBased";
  pdf::AppendReference(space,
                       WriteStreamText(*writer_, "/N " + std::to_string(components), profile));
  return space + ']';
}

void TargetContent::Finish() {
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  for (const EmbeddedFont* font : fonts_) {
    font->Write(*writer_);
  }
}

void AppendAlpha(double alpha, TargetContent& target, std::string& out, PageContent& resources) {
  if (alpha < 1) {
    const AddedResource state = target.GraphicsStateOf(alpha);
    resources.Add(state);
    out += '/';
    out += kNamePrefix;
    out += state.name + " gs";
  }
}

}  // namespace TarnixTools::engines::toolbox
