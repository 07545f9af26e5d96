// Copies of pages as text, to compare as a whole: what was reported of them, then the document.
//
//   EXPECT_TRUE(IsAsExpected("copy/links.txt", CopiedText({{bytes, {0, 2}}})));
//   EXPECT_TRUE(IsAsExpected("copy/links as written.txt", WrittenText({{bytes, {0, 2}}})));
#ifndef TARNIX_TESTS_ENGINES_TOOLBOX_COPY_COPIEDTEXT_H_
#define TARNIX_TESTS_ENGINES_TOOLBOX_COPY_COPIEDTEXT_H_

#include <array>
#include <cctype>
#include <cstdio>
#include <regex>
#include <string>
#include <utility>
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

// What is reported of a copy of all pages, and a checksum of its objects as they are spelled. There
// are no dates in them.
inline std::pair<std::string, std::string> OutcomeOf(const std::string& source) {
  std::vector<ReportedEntry> report;
  const std::string copy = CopyAll({{source}}, 15, &report);
  return {ReportText(report), testing::DataText(testing::DocumentText(copy) + '\0')};
}

// What becomes of the copy of a document when any one of its keys is another one, key by key; "same"
// where nothing does.
inline std::string KeysChangedText(const std::string& bytes) {
  const auto [sound_report, sound_copy] = OutcomeOf(bytes);
  std::string text = sound_report + sound_copy + "\n";
  std::string changed = bytes;
  for (std::size_t at = 0; (at = bytes.find('/', at)) != std::string::npos; ++at) {
    if (bytes.size() - at < 2 || std::isupper(static_cast<unsigned char>(bytes[at + 1])) == 0) {
      continue;
    }
    changed[at + 1] = 'x';
    const auto [report, copy] = OutcomeOf(changed);
    changed[at + 1] = bytes[at + 1];
    const std::size_t end = bytes.find_first_of("/ []<>()\n", at + 1);
    text += std::to_string(at) + bytes.substr(at, end - at) + ": ";
    text += copy == sound_copy ? "same" : copy;
    text += report == sound_report ? "\n" : "\n" + report;
  }
  return text;
}

// The same for the digits of a document, line by line: how many of them change nothing, and a
// checksum of what the others do. References lead elsewhere then.
inline std::string DigitsChangedText(const std::string& bytes) {
  const auto sound = OutcomeOf(bytes);
  std::string text;
  std::string changed = bytes;
  const std::size_t table = bytes.rfind("xref\n0 1");
  for (std::size_t start = 0; start < table; start = bytes.find('\n', start) + 1) {
    std::string outcomes;
    int same = 0;
    for (std::size_t at = start; bytes[at] != '\n'; ++at) {
      if (std::isdigit(static_cast<unsigned char>(bytes[at])) == 0) {
        continue;
      }
      changed[at] = bytes[at] == '9' ? '8' : static_cast<char>(bytes[at] + 1);
      const auto outcome = OutcomeOf(changed);
      changed[at] = bytes[at];
      same += outcome == sound ? 1 : 0;
      outcomes += outcome == sound ? "" : outcome.first + outcome.second + '\0';
    }
    text += std::to_string(start) + ": " + std::to_string(same) + " same";
    text += outcomes.empty() ? "\n" : ", " + testing::DataText(outcomes) + "\n";
  }
  return text;
}

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_TESTS_ENGINES_TOOLBOX_COPY_COPIEDTEXT_H_
