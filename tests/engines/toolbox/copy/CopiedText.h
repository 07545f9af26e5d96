// Copies of pages as text, to compare as a whole: what was reported of them, then the document.
//
//   EXPECT_TRUE(IsAsExpected("copy/links.txt", CopiedText({{bytes, {0, 2}}})));
//   EXPECT_TRUE(IsAsExpected("copy/links_as_written.txt", WrittenText({{bytes, {0, 2}}})));
#ifndef TARNIX_TESTS_ENGINES_TOOLBOX_COPY_COPIEDTEXT_H_
#define TARNIX_TESTS_ENGINES_TOOLBOX_COPY_COPIEDTEXT_H_

#include <array>
#include <cstdio>
#include <regex>
#include <string>
#include <vector>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "pdf/write/DocumentText.h"
#include "support/Expected.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::toolbox {

// "Link dropped 2 page 1: leads nowhere"
inline std::string ReportText(const std::vector<ReportedEntry>& entries) {
  constexpr std::array kKinds = {
      "Link",           "Annotation",       "NamedDestination", "OutlineItem", "PageLabel",
      "FormField",      "Signature",        "XfaForm",          "Script",      "Layer",
      "Attachment",     "StructureElement", "ArticleThread",    "Thumbnail",   "OutputIntent",
      "ViewerSettings", "Resource",         "Damage",           "Language",    "MetadataValue",
      "XmpPacket",      "PdfAClaim"};
  constexpr std::array kOutcomes = {"kept", "renamed", "dropped"};
  std::string text;
  for (const ReportedEntry& entry : entries) {
    text += std::string(kKinds.at(static_cast<std::size_t>(entry.kind))) + ' ' +
            kOutcomes.at(static_cast<std::size_t>(entry.outcome)) + ' ' +
            std::to_string(entry.count);
    text += entry.page == 0 ? "" : " page " + std::to_string(entry.page);
    text += (entry.reason.empty() ? "" : ": " + entry.reason) + '\n';
  }
  return text;
}

inline std::string CopiedText(const std::vector<PagesOf>& parts, int options = 15) {
  std::vector<ReportedEntry> report;
  const std::string bytes = CopyAll(parts, options, &report);
  const testing::TempDir directory;
  const std::string path = testing::WriteBytes(directory.Path("copy.pdf"), bytes);
  return ReportText(report) + testing::ObjectsText(path);
}

// A document's objects as they are spelled, without dates: the order of their entries, and of what
// kind their strings are, which qpdf's text of them doesn't tell. Other bytes than ASCII as "{ff}".
inline std::string SpelledText(const std::string& bytes) {
  std::string text;
  for (const char c : testing::DocumentText(bytes)) {
    char number[8];
    std::snprintf(number, sizeof number, "{%02x}", static_cast<unsigned char>(c));
    text += (c >= ' ' && c < 127) || c == '\n' ? std::string(1, c) : number;
  }
  text = std::regex_replace(text, std::regex(R"(\(D:[0-9]{14}[^)]*\))"), "(DATE)");
  return std::regex_replace(text, std::regex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[-+:.0-9Z]+"), "DATE");
}

inline std::string WrittenText(const std::vector<PagesOf>& parts, int options = 15) {
  return SpelledText(CopyAll(parts, options));
}

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_TESTS_ENGINES_TOOLBOX_COPY_COPIEDTEXT_H_
