// A document of one page, for tests of what validation says of its content and fonts:
//
//   PaintedPage page("/Plain gs 0 0 9 9 re f");
//   page.Resources("/ExtGState<</Plain 20 0 R>>").pdf().Object(20, "<</CA 1>>");
//   EXPECT_EQ(page.BrokenRules(Level::k2b), "6.2.4.3-4");
#ifndef TARNIX_TESTS_ENGINES_PDFA_CHECKS_PAINTEDPAGE_H_
#define TARNIX_TESTS_ENGINES_PDFA_CHECKS_PAINTEDPAGE_H_

#include <string>
#include <vector>

#include "engines/pdfa/Level.h"
#include "engines/pdfa/rules/FindingList.h"
#include "support/RawPdf.h"

namespace TarnixTools::testing {

// The header of a colour profile, which is all that rules look at.
std::string ProfileHeader(const std::string& color_space, char version = 2,
                          const std::string& device_class = "mntr");

class PaintedPage {
 public:
  explicit PaintedPage(const std::string& content);

  // What is between << and >>.
  PaintedPage& Resources(const std::string& entries);
  PaintedPage& PageEntries(const std::string& entries);
  PaintedPage& PageTreeEntries(const std::string& entries);
  PaintedPage& CatalogEntries(const std::string& entries);
  // The document has an output intent with a profile of this colour space.
  PaintedPage& Output(const std::string& color_space);

  // Takes objects from 20 on.
  RawPdf& pdf() { return pdf_; }

  // "6.2.2-1 6.2.9-2": of the rules about content and fonts those that do not hold.
  std::string BrokenRules(engines::pdfa::Level level) const;

  // What each level finds in content and fonts, as TextOfLevels of Findings.h tells it.
  std::string FindingsText() const;

 private:
  std::vector<engines::pdfa::Finding> FindingsAt(engines::pdfa::Level level) const;

  RawPdf pdf_;
  std::string content_;
  std::string resources_;
  std::string page_entries_;
  std::string tree_entries_;
  std::string catalog_entries_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_PDFA_CHECKS_PAINTEDPAGE_H_
