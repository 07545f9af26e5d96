#include "engines/pdfa/checks/CompositeFontCheck.h"

#include <string>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/checks/GlyphSets.h"
#include "engines/pdfa/rules/FontFacts.h"
#include "engines/support/fonts/PredefinedMaps.h"
#include "engines/support/fonts/SubsetTag.h"

namespace TarnixTools::engines::pdfa {

using fonts::CharacterCollection;
using fonts::CMapFile;
using pdf::Object;

namespace {

bool IsPredefined(std::string_view name) {
  return fonts::IsIdentityMap(name) || fonts::PredefinedMapOf(name).has_value();
}

class CompositeFontJudge {
 public:
  CompositeFontJudge(CheckedDocument& checked, const CheckedFont& font)
      : checked_(&checked),
        font_(&font),
        map_(checked.document().Follow(font.dictionary.Get("Encoding"), arena_)) {}

  void Run(fonts::FontProgram* program) {
    ReadMap();
    CheckMap();
    CheckUsedMaps();
    CheckCollections();
    CheckCidFont(program);
  }

 private:
  Object Get(const Object& dictionary, std::string_view key) {
    return checked_->Get(dictionary, key, arena_);
  }

  bool is_embedded() const { return map_.value.IsDictionary(); }

  void ReadMap() {
    name_ = is_embedded() ? Get(map_.value, "CMapName").Text() : map_.value.Text();
    const auto stream =
        is_embedded() ? checked_->document().TryDecodeStream(map_.number, limits::kMaxFontMapBytes)
                      : std::nullopt;
    if (stream) {
      file_ = CMapFile::Read(stream->data);
    }
  }

  void CheckMap() {
    checked_->findings().Check(
        CodeMapFacts{.is_identity = !is_embedded() && fonts::IsIdentityMap(name_),
                     .is_predefined = !is_embedded() && IsPredefined(name_),
                     .is_embedded = is_embedded(),
                     .write_mode = file_.write_mode(),
                     .stated_write_mode = Get(map_.value, "WMode").IntegerOr(0),
                     .highest_cid = file_.highest_cid()},
        font_->place);
  }

  // The map that one builds on is named in its dictionary, in the file, or both.
  void CheckUsedMaps() {
    const Object used = Get(map_.value, "UseCMap");
    if (!used.IsNull()) {
      const std::string_view name = used.IsName() ? used.Text() : Get(used, "CMapName").Text();
      checked_->findings().Check(UsedMapFacts{IsPredefined(name)}, font_->place);
    }
    if (!file_.used_map().empty()) {
      checked_->findings().Check(UsedMapFacts{IsPredefined(file_.used_map())}, font_->place);
    }
  }

  void CheckCollections() {
    CollectionFacts facts;
    facts.has_identity_map = fonts::IsIdentityMap(name_);
    facts.of_font = CollectionOf(*checked_, font_->descendant);
    if (is_embedded()) {
      facts.of_map =
          file_.collection().registry ? file_.collection() : CollectionOf(*checked_, map_.value);
    } else if (const auto predefined = fonts::PredefinedMapOf(name_);
               predefined && !Contains(kPart1, checked_->level())) {
      facts.of_map = {"Adobe", std::string(predefined->ordering), predefined->supplement};
    }
    checked_->findings().Check(facts, font_->place);
  }

  // A stream, or the name of the identity.
  bool HasGlyphMap() {
    const Object map = Get(font_->descendant, "CIDToGIDMap");
    return map.IsDictionary() || map.IsName("Identity");
  }

  // Which identifiers a TrueType program has, only a map of glyphs tells.
  void CheckCidFont(fonts::FontProgram* program) {
    const bool is_true_type = Get(font_->descendant, "Subtype").IsName("CIDFontType2");
    const bool can_compare = !is_true_type || HasGlyphMap();
    const pdf::Followed set =
        checked_->document().Follow(Get(font_->descendant, "FontDescriptor").Get("CIDSet"), arena_);
    const auto bits = set.number == 0 ? std::nullopt
                                      : checked_->document().TryDecodeStream(
                                            set.number, limits::kMaxFontMapBytes);
    const SetAgreement agreement =
        bits && can_compare ? CompareCidSet(bits->data, font_->font, program) : SetAgreement{};
    checked_->findings().Check(
        CidFontFacts{
            .has_true_type_outlines = is_true_type,
            .has_glyph_map = HasGlyphMap(),
            .is_rendered = font_->shown.is_rendered,
            .has_program = font_->font.descriptor().program != 0,
            .is_subset = fonts::HasSubsetTag(Get(font_->descendant, "BaseFont").Text()),
            .has_cid_set = bits.has_value(),
            .cid_set_is_true = agreement.is_true,
            .cid_set_is_whole = agreement.is_whole,
            .cid_set_has_shown = !bits || CidSetHasShown(bits->data, font_->font, font_->shown)},
        font_->place);
  }

  CheckedDocument* checked_;
  const CheckedFont* font_;
  pdf::Arena arena_;
  pdf::Followed map_;  // a name, or the dictionary of a stream
  std::string name_;
  CMapFile file_;
};

}  // namespace

void CheckCompositeFont(CheckedDocument& checked, const CheckedFont& font,
                        fonts::FontProgram* program) {
  CompositeFontJudge(checked, font).Run(program);
}

CharacterCollection CollectionOf(CheckedDocument& checked, const Object& dictionary) {
  pdf::Arena arena;
  const Object info = checked.Get(dictionary, "CIDSystemInfo", arena);
  const Object registry = checked.Get(info, "Registry", arena);
  const Object ordering = checked.Get(info, "Ordering", arena);
  const Object supplement = checked.Get(info, "Supplement", arena);
  CharacterCollection collection;
  if (registry.IsString()) {
    collection.registry = registry.Text();
  }
  if (ordering.IsString()) {
    collection.ordering = ordering.Text();
  }
  if (supplement.IsInteger()) {
    collection.supplement = supplement.IntegerOr(0);
  }
  return collection;
}

}  // namespace TarnixTools::engines::pdfa
