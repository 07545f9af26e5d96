#include "engines/pdfa/checks/PaintedPage.h"

#include "engines/pdfa/Findings.h"
#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/ContentCheck.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::testing {

using engines::pdfa::FindingList;

std::string ProfileHeader(const std::string& color_space, char version,
                          const std::string& device_class) {
  std::string header(128, '\0');
  header[8] = version;
  header.replace(12, 4, device_class);
  header.replace(16, 4, color_space);
  return header;
}

PaintedPage::PaintedPage(const std::string& content) : content_(content) {}

PaintedPage& PaintedPage::Resources(const std::string& entries) {
  resources_ = "/Resources<<" + entries + ">>";
  return *this;
}

PaintedPage& PaintedPage::PageEntries(const std::string& entries) {
  page_entries_ = entries;
  return *this;
}

PaintedPage& PaintedPage::PageTreeEntries(const std::string& entries) {
  tree_entries_ = entries;
  return *this;
}

PaintedPage& PaintedPage::CatalogEntries(const std::string& entries) {
  catalog_entries_ += entries;
  return *this;
}

PaintedPage& PaintedPage::Output(const std::string& color_space) {
  catalog_entries_ += "/OutputIntents[<</S/GTS_PDFA1/DestOutputProfile 5 0 R>>]";
  pdf_.Stream(5, "/N 3", ProfileHeader(color_space));
  return *this;
}

std::vector<engines::pdfa::Finding> PaintedPage::FindingsAt(engines::pdfa::Level level) const {
  RawPdf pdf = pdf_;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog_entries_ + ">>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1" + tree_entries_ + ">>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 4 0 R" + resources_ +
                     page_entries_ + ">>")
      .Stream(4, "", content_);
  const auto document = OpenBytes(pdf.Table());
  FindingList findings(level);
  engines::pdfa::CheckedDocument checked(*document, findings);
  engines::pdfa::ContentCheck content(checked);
  content.CheckPage(0);
  content.CheckFonts();
  return findings.Take();
}

std::string PaintedPage::FindingsText() const {
  return TextOfLevels([this](const std::string& level) {
    return TextOf(FindingsAt(*engines::pdfa::LevelOf(level[0] - '0', level[1])));
  });
}

std::string PaintedPage::BrokenRules(engines::pdfa::Level level) const {
  std::string rules;
  std::string last;
  for (const engines::pdfa::Finding& finding : FindingsAt(level)) {
    const std::string rule =
        std::string(finding.rule.clause) + "-" + std::to_string(finding.rule.test);
    if (rule != last) {
      rules += (rules.empty() ? "" : " ") + rule;
    }
    last = rule;
  }
  return rules;
}

}  // namespace TarnixTools::testing
