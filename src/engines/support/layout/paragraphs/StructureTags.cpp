#include "engines/support/layout/paragraphs/StructureTags.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace TarnixTools::engines {

namespace {

struct TagRole {
  std::string_view tag;
  ParagraphRole role;
  std::uint8_t level;
};

// The innermost of these that stands around a text tells its role (ISO 32000-2, 14.8.4).
constexpr std::array<TagRole, 15> kTagRoles = {{{"H1", ParagraphRole::kHeading, 1},
                                                {"H2", ParagraphRole::kHeading, 2},
                                                {"H3", ParagraphRole::kHeading, 3},
                                                {"H4", ParagraphRole::kHeading, 4},
                                                {"H5", ParagraphRole::kHeading, 5},
                                                {"H6", ParagraphRole::kHeading, 6},
                                                {"H", ParagraphRole::kHeading, 1},
                                                {"Title", ParagraphRole::kTitle, 0},
                                                {"LI", ParagraphRole::kListItem, 0},
                                                {"Caption", ParagraphRole::kCaption, 0},
                                                {"TOCI", ParagraphRole::kContents, 0},
                                                {"BlockQuote", ParagraphRole::kQuote, 0},
                                                {"Code", ParagraphRole::kCode, 0},
                                                {"P", ParagraphRole::kBody, 0},
                                                {"TD", ParagraphRole::kBody, 0}}};

const TagRole* Find(std::string_view tag) {
  const auto found = std::find_if(kTagRoles.begin(), kTagRoles.end(),
                                  [tag](const TagRole& known) { return known.tag == tag; });
  return found == kTagRoles.end() ? nullptr : &*found;
}

}  // namespace

void ReadTag(const PageModel& page, const TextRow& first, Paragraph& paragraph) {
  for (const PlacedGlyph& glyph : first.first().words.back().glyphs) {
    const StructureRole* role = RoleOf(page, glyph);
    if (role == nullptr) {
      continue;
    }
    for (auto tag = role->path.rbegin(); tag != role->path.rend(); ++tag) {
      const TagRole* known = Find(*tag);
      if (known != nullptr && (known->role != ParagraphRole::kBody || *tag == role->path.back())) {
        paragraph.role = known->role;
        paragraph.level = known->level;
        paragraph.is_tagged = true;
        return;
      }
    }
    return;
  }
}

}  // namespace TarnixTools::engines
