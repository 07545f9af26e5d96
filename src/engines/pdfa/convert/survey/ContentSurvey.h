// What the content of a document uses, looked at once before anything is changed: which codes are
// shown in which font, whether CMYK of the device is used, which content borrows resources, and what
// is not as it should be.
//
//   const ContentSurvey survey(document, pages);
//   for (const auto& [number, use] : survey.fonts()) ...
#ifndef TARNIX_ENGINES_PDFA_CONVERT_SURVEY_CONTENTSURVEY_H_
#define TARNIX_ENGINES_PDFA_CONVERT_SURVEY_CONTENTSURVEY_H_

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engines/support/fonts/DocumentFont.h"
#include "pdf/content/ContentVisitor.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines::pdfa {

// A font that shows text.
struct FontUse {
  // The advance that the document says for the code, in thousandths; nothing where it leaves that to
  // the program.
  std::optional<double> WidthOf(std::uint32_t code) const;

  std::shared_ptr<const fonts::DocumentFont> font;
  std::set<std::uint32_t> codes;
  bool is_seen = false;  // false: all of its text is invisible
  bool is_sure = true;   // false: some strings do not surely fall into codes
};

class ContentSurvey : private pdf::ContentVisitor {
 public:
  // Goes through all pages, on all layers, and all that they lead to. Both are used only here.
  // Throws pdf::Error for a document that cannot be read any more.
  ContentSurvey(pdf::Document& document, const pdf::PageTree& pages);

  // By object number.
  const std::map<std::uint32_t, FontUse>& fonts() const { return fonts_; }

  // Whether there is a colour in CMYK of the device, by an operator or in a colour space that
  // content names.
  bool uses_cmyk() const { return uses_cmyk_; }

  // Content with operators that the standard does not know, or with inline images that ask for
  // interpolation: numbers of streams, and indices of
  // pages.
  const std::set<std::uint32_t>& damaged_contents() const { return damaged_contents_; }

  const std::set<std::size_t>& damaged_pages() const { return damaged_pages_; }

  // Content with real numbers that are too large for PDF/A-1.
  const std::set<std::uint32_t>& contents_with_large_reals() const { return large_contents_; }

  const std::set<std::size_t>& pages_with_large_reals() const { return large_pages_; }

  // Content that has no resources of its own, with those that it uses, by number of its stream.
  const std::map<std::uint32_t, std::string>& borrowed() const { return borrowed_; }

 private:
  void WalkPages(pdf::Document& document, const pdf::PageTree& pages);
  void WalkRest(pdf::Document& document, const pdf::PageTree& pages);
  void NoteUnknown(const pdf::Operation& operation);
  void NoteRunning(std::set<std::size_t>& pages, std::set<std::uint32_t>& contents) const;
  bool Split(const fonts::DocumentFont& font, std::string_view bytes);

  bool EnterContent(const pdf::ContentEntry& entry) override;
  void LeaveContent(const pdf::ContentEntry& entry) override;
  void Operator(const pdf::Operation& operation, std::size_t offset) override;
  void DrawImage(const pdf::ImageUse& image) override;
  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override;

  pdf::Document* document_;
  std::map<std::uint32_t, FontUse> fonts_;
  bool uses_cmyk_ = false;
  std::set<std::uint32_t> damaged_contents_;
  std::set<std::size_t> damaged_pages_;
  std::set<std::uint32_t> large_contents_;
  std::set<std::size_t> large_pages_;
  std::map<std::uint32_t, std::string> borrowed_;
  std::unordered_set<std::uint32_t> entered_;  // content other than pages
  std::vector<std::uint32_t> running_;         // 0 for the page
  std::size_t page_ = 0;
  std::vector<std::uint32_t> split_;  // codes of the string that is noted
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_SURVEY_CONTENTSURVEY_H_
