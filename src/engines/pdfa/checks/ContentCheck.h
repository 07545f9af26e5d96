// Goes through what a document paints, page by page with its annotations, and checks it: operators,
// colours, graphics states, images and forms as they are used, and at the end the fonts with the
// codes that were shown in them (ISO 19005-1, 6.2 to 6.4; -2 and -3, 6.2).
//
//   ContentCheck content(checked);
//   for (std::size_t i = 0; i < checked.pages().pages().size(); ++i) {
//     content.CheckPage(i);
//   }
//   content.CheckFonts();
//
// Forms and other content that several pages paint are gone through once. The groups of soft masks are
// left out: what they paint is no colour on the page.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_CONTENTCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_CONTENTCHECK_H_

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "engines/pdfa/checks/ActualTexts.h"
#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/ColorCheck.h"
#include "engines/pdfa/checks/ShownFonts.h"
#include "engines/pdfa/checks/TokenCheck.h"
#include "pdf/content/ContentWalker.h"

namespace TarnixTools::engines::pdfa {

class ContentCheck : private pdf::ContentVisitor {
 public:
  // What is checked outlives this.
  explicit ContentCheck(CheckedDocument& checked);

  // Each throws pdf::Error for a document that cannot be read any more.
  void CheckPage(std::size_t page_index);
  // The fonts of all pages that were checked.
  void CheckFonts();

 private:
  // Content that is running.
  struct Frame {
    const pdf::GraphicsState* state = nullptr;  // that is in force
    std::uint32_t number = 0;                   // of its object
    pdf::Object spaces;                         // /ColorSpace of its resources
    std::int64_t structure_parents = -1;        // /StructParents
    bool has_own_resources = true;
    bool has_own_colors = true;   // false: those of a glyph that is only a shape do not count
    bool is_transparent = false;  // something in it is, so far
    std::size_t saved_states = 0;
    // Colour spaces and images that were checked in it, and whether they overprint.
    std::vector<std::pair<std::uint64_t, bool>> colors;
  };

  bool EnterContent(const pdf::ContentEntry& entry) override;
  void LeaveContent(const pdf::ContentEntry& entry) override;
  void Operator(const pdf::Operation& operation, std::size_t offset) override;
  void LookUp(pdf::ResourceCategory category, std::string_view name,
              const pdf::Object& entry) override;
  void DrawImage(const pdf::ImageUse& image) override;
  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override;
  void PaintPath(const pdf::PathUse& path) override;
  void PaintShading(const pdf::ShadingUse& shading) override;
  void BeginMarked(const pdf::MarkedContent& mark) override;
  void EndMarked(const pdf::MarkedContent& mark) override;

  void CheckGlyphContents(const ShownFonts::Font& font);
  bool HasActualText(const pdf::MarkedContent& mark);
  void CheckAppearances(const pdf::Object& page, const pdf::ResourceScope& scope);
  void CheckPageGroup(const pdf::Object& page, const pdf::ResourceScope& scope);
  void CheckStates(const pdf::Operation& operation);
  void CheckSetColor(const pdf::Operation& operation);
  void CheckXObject(const pdf::Object& entry);
  void CheckState(const pdf::Object& entry);
  void CheckColors(const pdf::GraphicsState& state, bool fills, bool strokes);
  void CheckColor(const pdf::Color& color, const pdf::GraphicsState& state, bool is_stroke);
  void CheckSpace(const pdf::Object& space, const ColorUse& use);
  bool IsNew(const std::pair<std::uint64_t, bool>& color);
  Place PlaceHere() const;
  Place PlaceOfImage() const;
  bool HasOwnResources(const pdf::ContentEntry& entry);

  CheckedDocument* checked_;
  ColorCheck colors_;
  TokenCheck tokens_;
  ShownFonts fonts_;
  ActualTexts texts_;
  pdf::ContentWalker walker_;
  std::size_t page_number_ = 0;    // one-based
  bool is_in_page_space_ = false;  // what runs is a page or what it paints
  std::vector<Frame> frames_;
  bool page_is_transparent_ = false;
  std::unordered_map<std::uint32_t, bool> known_contents_;  // by number: whether it is transparent
  std::unordered_map<std::uint32_t, bool> known_states_;
  std::unordered_set<std::uint32_t> known_objects_;  // images and forms
  std::vector<bool> marks_;                          // open ones: whether they have an /ActualText
  std::size_t actual_texts_ = 0;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_CONTENTCHECK_H_
