#include "engines/pdfa/checks/ContentCheck.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/checks/FontCheck.h"
#include "engines/pdfa/checks/GraphicsStateCheck.h"
#include "engines/pdfa/checks/PaintedObjectCheck.h"
#include "engines/pdfa/rules/ContentFacts.h"
#include "engines/pdfa/rules/GraphicsFacts.h"
#include "engines/support/images/DocumentImage.h"
#include "pdf/content/Appearances.h"
#include "pdf/content/Operands.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;
using pdf::OperatorCode;
using pdf::ResourceCategory;
using pdf::ResourceKind;

namespace {

constexpr pdf::WalkOptions kOptions = {.images = true,
                                       .text = true,
                                       .paths = true,
                                       .shadings = true,
                                       .style = true,
                                       .marks = true,
                                       .names = true,
                                       .operators = true,
                                       .forms = true,
                                       .patterns = true,
                                       .glyphs = true};

constexpr std::int64_t kShadingPattern = 2;
constexpr std::uint64_t kImageKey = std::uint64_t{1} << 32;  // beyond numbers of colour spaces

bool IsForm(ResourceKind kind) {
  return kind == ResourceKind::kForm || kind == ResourceKind::kAppearance;
}

Object SpaceOf(const pdf::Color& color) {
  return color.space.IsNull() ? Object::Name("DeviceGray") : color.space;
}

// What tells one colour space of the resources from another while content runs.
std::uint64_t KeyOf(const Object& space) {
  if (space.IsReference()) {
    return space.AsReference().number;
  }
  return space.IsArray() ? std::hash<const void*>()(space.Items().data())
                         : std::hash<std::string_view>()(space.Text());
}

}  // namespace

ContentCheck::ContentCheck(CheckedDocument& checked)
    : checked_(&checked),
      colors_(checked),
      tokens_(checked.findings()),
      fonts_(checked.document()),
      texts_(checked.document()),
      walker_(checked.document(), *this, kOptions) {}

void ContentCheck::CheckPage(std::size_t page_index) {
  page_number_ = page_index + 1;
  page_is_transparent_ = false;
  frames_.clear();
  pdf::Arena arena;
  const Object page = checked_->LoadPage(page_index, arena);
  const pdf::ResourceScope scope =
      pdf::ScopeOfPage(checked_->document(), checked_->pages(), page_index, arena);
  is_in_page_space_ = true;
  walker_.BeginPage(checked_->pages(), page_index);
  walker_.Run();
  is_in_page_space_ = false;
  CheckAppearances(page, scope);
  CheckPageGroup(page, scope);
}

// Glyphs of a Type 3 font that are not shown may show text in other fonts, which come to the end.
void ContentCheck::CheckFonts() {
  for (std::size_t i = 0; i < fonts_.fonts().size(); ++i) {
    CheckGlyphContents(fonts_.fonts()[i]);
    CheckFont(*checked_, fonts_.fonts()[i]);
  }
}

void ContentCheck::CheckGlyphContents(const ShownFonts::Font& font) {
  pdf::Arena arena;
  const Object dictionary = checked_->document().Resolve(font.object, arena);
  if (!checked_->Get(dictionary, "Subtype", arena).IsName("Type3")) {
    return;
  }
  page_number_ = font.page_number;
  const pdf::ResourceScope scope =
      pdf::ScopeOf(checked_->document(), dictionary, font.object.AsReference().number, {}, arena);
  for (const std::uint32_t glyph : pdf::GlyphsOf(checked_->document(), dictionary)) {
    walker_.BeginContent({ResourceKind::kGlyph, glyph}, scope);
    walker_.Run();
  }
}

void ContentCheck::CheckAppearances(const Object& page, const pdf::ResourceScope& scope) {
  pdf::Arena arena;
  for (const Object& item : checked_->Get(page, "Annots", arena).Items()) {
    const Object annotation = checked_->document().Resolve(item, arena);
    for (const std::uint32_t number : pdf::AppearancesOf(checked_->document(), annotation)) {
      walker_.BeginContent({ResourceKind::kAppearance, number}, scope);
      walker_.Run();
    }
  }
}

void ContentCheck::CheckPageGroup(const Object& page, const pdf::ResourceScope& scope) {
  pdf::Arena arena;
  const Object group = checked_->Get(page, "Group", arena);
  const Place place = {.page_number = page_number_, .subject = "page"};
  checked_->findings().Check(GroupFacts{checked_->Get(group, "S", arena).IsName("Transparency")},
                             place);
  const Object space = checked_->Get(group, "CS", arena);
  if (!space.IsNull()) {
    colors_.Check(space, scope.resources.Get("ColorSpace"), {.place = place});
  }
  checked_->findings().Check(
      PageTransparencyFacts{.has_transparency = page_is_transparent_,
                            .has_blending_space = !space.IsNull(),
                            .has_output_intent = !checked_->output_space().empty()},
      place);
}

bool ContentCheck::EnterContent(const pdf::ContentEntry& entry) {
  const bool is_page = entry.kind == ResourceKind::kPage;
  if (!is_page) {
    const auto [known, is_new] = known_contents_.try_emplace(entry.number, false);
    if (!is_new) {
      (frames_.empty() ? page_is_transparent_ : frames_.back().is_transparent) |= known->second;
      return false;
    }
  }
  Frame frame;
  frame.number = entry.number;
  frame.state = entry.state;
  frame.spaces = entry.scope.resources.Get("ColorSpace");
  frame.has_own_resources = HasOwnResources(entry);
  pdf::Arena arena;
  frame.structure_parents = checked_->Get(entry.dictionary, "StructParents", arena).IntegerOr(-1);
  frames_.push_back(std::move(frame));
  if (IsForm(entry.kind)) {
    CheckXObject(Object::Ref({entry.number, 0}));
    const Object group = checked_->Get(entry.dictionary, "Group", arena);
    if (group.Has("CS")) {
      const Object& frame_spaces = frames_.back().spaces;
      colors_.Check(group.Get("CS"), frame_spaces, {.place = PlaceHere()});
    }
  }
  return true;
}

void ContentCheck::LeaveContent(const pdf::ContentEntry& entry) {
  const bool is_transparent = frames_.back().is_transparent;
  frames_.pop_back();
  if (entry.kind != ResourceKind::kPage) {
    known_contents_[entry.number] = is_transparent;
  }
  (frames_.empty() ? page_is_transparent_ : frames_.back().is_transparent) |= is_transparent;
}

// Glyphs look names up in the resources of their font.
bool ContentCheck::HasOwnResources(const pdf::ContentEntry& entry) {
  if (entry.kind != ResourceKind::kGlyph) {
    return entry.dictionary.Has("Resources");
  }
  pdf::Arena arena;
  const Object font = checked_->document().Load({entry.user, 0}, arena);
  return entry.dictionary.Has("Resources") || entry.user == 0 || font.Has("Resources");
}

void ContentCheck::Operator(const pdf::Operation& operation, std::size_t offset) {
  if (!pdf::IsOperator(operation.code)) {
    Place place = PlaceHere();
    const std::string subject = "operator " + std::string(operation.name);
    place.subject = subject;
    checked_->findings().Check(OperatorFacts{.is_defined = false}, place);
  }
  if (!operation.operands.empty()) {
    tokens_.SetPlace(PlaceHere());
    pdf::ObserveTokens(operation.operands, offset, tokens_);
  }
  CheckStates(operation);
  CheckSetColor(operation);
}

// A colour counts where it is set, whether something is painted in it or not.
void ContentCheck::CheckSetColor(const pdf::Operation& operation) {
  const pdf::GraphicsState& state = *frames_.back().state;
  Object space;
  switch (operation.code) {
    case OperatorCode("g"):
    case OperatorCode("G"):
      space = Object::Name("DeviceGray");
      break;
    case OperatorCode("rg"):
    case OperatorCode("RG"):
      space = Object::Name("DeviceRGB");
      break;
    case OperatorCode("k"):
    case OperatorCode("K"):
      space = Object::Name("DeviceCMYK");
      break;
    case OperatorCode("sc"):
    case OperatorCode("scn"):
      space = SpaceOf(state.fill);
      break;
    case OperatorCode("SC"):
    case OperatorCode("SCN"):
      space = SpaceOf(state.stroke);
      break;
    case OperatorCode("d1"):
      frames_.back().has_own_colors = false;
      return;
    default:
      return;
  }
  if (frames_.back().has_own_colors) {
    CheckSpace(space, {.place = PlaceHere()});
  }
}

void ContentCheck::CheckStates(const pdf::Operation& operation) {
  std::size_t& saved = frames_.back().saved_states;
  if (operation.code == OperatorCode("q")) {
    ++saved;
    checked_->findings().Check(SavedStateFacts{saved}, PlaceHere());
  } else if (operation.code == OperatorCode("Q") && saved > 0) {
    --saved;
  } else if (operation.code == OperatorCode("ri")) {
    pdf::Arena arena;
    const auto name = pdf::LastName(operation, arena);
    CheckRenderingIntent(*checked_, name ? Object::Name(*name) : Object(), PlaceHere());
  }
}

void ContentCheck::LookUp(ResourceCategory category, std::string_view name, const Object& entry) {
  if (entry.IsNull()) {
    return;
  }
  if (!frames_.back().has_own_resources) {
    Place place = PlaceHere();
    place.subject = name;
    checked_->findings().Check(ResourceNamesFacts{.are_its_own = false}, place);
  }
  if (category == ResourceCategory::kXObject) {
    CheckXObject(entry);
  } else if (category == ResourceCategory::kExtGState) {
    CheckState(entry);
  }
}

void ContentCheck::CheckXObject(const Object& entry) {
  pdf::Arena arena;
  const pdf::Followed object = checked_->document().Follow(entry, arena);
  frames_.back().is_transparent |= IsTransparent(*checked_, object.value);
  if (object.number != 0 && known_objects_.insert(object.number).second) {
    const bool is_image = checked_->Get(object.value, "Subtype", arena).IsName("Image");
    Place place = is_image ? PlaceOfImage() : PlaceHere();
    place.object = object.number;
    CheckPaintedObject(*checked_, object.value, object.number, place);
  }
}

void ContentCheck::CheckState(const Object& entry) {
  const std::uint32_t number = entry.AsReference().number;
  const auto known = known_states_.find(number);
  if (known != known_states_.end()) {
    frames_.back().is_transparent |= known->second;
    return;
  }
  pdf::Arena arena;
  const pdf::Followed state = checked_->document().Follow(entry, arena);
  Place place = PlaceHere();
  place.object = state.number != 0 ? state.number : place.object;
  place.subject = "graphics state";
  const bool is_transparent = CheckGraphicsState(*checked_, state.value, place);
  frames_.back().is_transparent |= is_transparent;
  if (number != 0) {
    known_states_.emplace(number, is_transparent);
  }
}

void ContentCheck::DrawImage(const pdf::ImageUse& image) {
  pdf::Arena arena;
  Object dictionary = image.dictionary;
  if (image.number == 0) {
    dictionary =
        FullInlineDictionary(checked_->document(), image.dictionary, image.scope.resources, arena);
    Place place = PlaceOfImage();
    place.subject = "inline image";
    CheckInlineImage(*checked_, dictionary, image.dictionary, place);
  }
  if (checked_->Get(dictionary, "ImageMask", arena).BooleanOr(false)) {
    CheckColors(image.state, true, false);
    return;
  }
  const Object space = dictionary.Get("ColorSpace");
  const pdf::RenderingParameters& rendering = image.state.rendering;
  const ColorUse use = {.place = PlaceOfImage(),
                        .overprints = rendering.overprints_fills,
                        .overprint_mode = rendering.overprint_mode};
  const bool is_overprinted = use.overprints && use.overprint_mode != 0;
  if (!space.IsNull() && (image.number == 0 || IsNew({kImageKey + image.number, is_overprinted}))) {
    colors_.Check(space, frames_.back().spaces, use);
  }
}

std::optional<pdf::TextAdvance> ContentCheck::ShowText(const pdf::StringUse& string) {
  fonts_.Note(string, static_cast<std::uint32_t>(page_number_), actual_texts_ > 0);
  const pdf::TextMode mode = string.state.text.mode;
  CheckColors(string.state, pdf::Fills(mode), pdf::Strokes(mode));
  return std::nullopt;
}

void ContentCheck::PaintPath(const pdf::PathUse& path) {
  CheckColors(path.state, path.fills, path.strokes);
}

void ContentCheck::PaintShading(const pdf::ShadingUse& shading) {
  colors_.Check(shading.dictionary.Get("ColorSpace"), frames_.back().spaces,
                {.place = PlaceHere()});
}

void ContentCheck::BeginMarked(const pdf::MarkedContent& mark) {
  marks_.push_back(HasActualText(mark));
  actual_texts_ += marks_.back() ? 1 : 0;
}

bool ContentCheck::HasActualText(const pdf::MarkedContent& mark) {
  if (!Contains(kTaggedLevels, checked_->level())) {
    return false;
  }
  return mark.properties.Has("ActualText") ||
         (mark.id && texts_.Has(frames_.back().structure_parents, *mark.id));
}

void ContentCheck::EndMarked(const pdf::MarkedContent& /*mark*/) {
  actual_texts_ -= marks_.back() ? 1 : 0;
  marks_.pop_back();
}

void ContentCheck::CheckColors(const pdf::GraphicsState& state, bool fills, bool strokes) {
  if (fills) {
    CheckColor(state.fill, state, false);
  }
  if (strokes) {
    CheckColor(state.stroke, state, true);
  }
}

// Of a pattern, the shading has the colours, which no resources stand in for: a pattern of shadings has
// none. The cell of a tiling one is content of its own.
void ContentCheck::CheckColor(const pdf::Color& color, const pdf::GraphicsState& state,
                              bool is_stroke) {
  const pdf::RenderingParameters& rendering = state.rendering;
  const ColorUse use = {
      .place = PlaceHere(),
      .overprints = is_stroke ? rendering.overprints_strokes : rendering.overprints_fills,
      .overprint_mode = rendering.overprint_mode};
  CheckSpace(SpaceOf(color), use);
  if (color.pattern.IsNull()) {
    return;
  }
  pdf::Arena arena;
  const Object pattern = checked_->document().Resolve(color.pattern, arena);
  if (checked_->Get(pattern, "PatternType", arena).IntegerOr(0) == kShadingPattern) {
    const Object shading = checked_->Get(pattern, "Shading", arena);
    colors_.Check(shading.Get("ColorSpace"), Object(), use);
  }
}

void ContentCheck::CheckSpace(const Object& space, const ColorUse& use) {
  const bool is_overprinted = use.overprints && use.overprint_mode != 0;
  if (IsNew({KeyOf(space), is_overprinted})) {
    colors_.Check(space, frames_.back().spaces, use);
  }
}

bool ContentCheck::IsNew(const std::pair<std::uint64_t, bool>& color) {
  auto& known = frames_.back().colors;
  const bool is_new = std::find(known.begin(), known.end(), color) == known.end();
  if (is_new && known.size() < limits::kMaxUsedColors) {
    known.push_back(color);
  }
  return is_new;
}

// An image fills the unit square.
Place ContentCheck::PlaceOfImage() const {
  Place place = PlaceHere();
  if (is_in_page_space_) {
    place.box = pdf::Box{0, 0, 1, 1}.Through(frames_.back().state->matrix);
  }
  return place;
}

Place ContentCheck::PlaceHere() const {
  return {.object = frames_.back().number, .page_number = page_number_};
}

}  // namespace TarnixTools::engines::pdfa
