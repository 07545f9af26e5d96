// Copies of documents of which something small is another one, as text: whatever a copy looks at in
// its source shows then.
//
//   EXPECT_TRUE(IsAsExpected("copy/links_with_other_keys.txt", KeysChangedText(bytes)));
//   ExpectNumbersNotToMatter(bytes);
//   ExpectEncryptionNotToMatter(bytes);
//   ExpectLayoutNotToMatter(bytes);
#ifndef TARNIX_TESTS_ENGINES_TOOLBOX_COPY_CHANGEDSOURCES_H_
#define TARNIX_TESTS_ENGINES_TOOLBOX_COPY_CHANGEDSOURCES_H_

#include <cctype>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedText.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Damage.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {

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

// The same for the digits of a document. References lead elsewhere then.
inline std::string DigitsChangedText(const std::string& bytes) {
  const auto outcome_of = [](const std::string& changed) {
    const auto [report, copy] = OutcomeOf(changed);
    return report + copy;
  };
  return testing::DigitsText(bytes, outcome_of, bytes.rfind("xref\n0 1"));
}

// The text with one number of an object for another, and the other way round, in references.
inline std::string WithNumbersSwapped(const std::string& text, int first, int second) {
  std::string swapped;
  std::size_t done = 0;
  for (std::size_t at = 0; (at = text.find(" 0 R", at)) != std::string::npos; ++at) {
    std::size_t start = at;
    while (start > done && std::isdigit(static_cast<unsigned char>(text[start - 1])) != 0) {
      --start;
    }
    const int number = std::stoi(text.substr(start, at - start));
    swapped += text.substr(done, start - done) + std::to_string(number == first    ? second
                                                                : number == second ? first
                                                                                   : number);
    done = at;
  }
  return swapped + text.substr(done);
}

// The document with object `number` as object 1, and the other way round.
inline std::string WithFirstObject(const std::string& bytes, int number) {
  testing::RawPdf pdf;
  const std::size_t end = bytes.rfind("xref\n0 1");
  for (std::size_t at = bytes.find('\n') + 1; at < end;) {
    const int own = std::stoi(bytes.substr(at));
    const std::size_t body = bytes.find(" 0 obj\n", at) + 7;
    const std::size_t next = bytes.find("\nendobj\n", body);
    pdf.Object(own == 1        ? number
               : own == number ? 1
                               : own,
               WithNumbersSwapped(bytes.substr(body, next - body), 1, number));
    at = next + 8;
  }
  return pdf.Table("/Root " + std::to_string(number) + " 0 R");
}

// Whichever object of a document is the first one, the copy is the same.
inline void ExpectNumbersNotToMatter(const std::string& bytes) {
  const auto sound = OutcomeOf(bytes);
  for (int number = 2; number < 100; ++number) {
    if (bytes.find("\n" + std::to_string(number) + " 0 obj\n") != std::string::npos) {
      const auto outcome = OutcomeOf(WithFirstObject(bytes, number));
      EXPECT_EQ(outcome.first, sound.first) << number;
      EXPECT_EQ(outcome.second, sound.second) << number;
    }
  }
}

// The document without its version, which is another one where it is encrypted, and decrypted.
inline std::string WithoutVersion(const std::string& bytes) {
  testing::RewriteCase test(bytes);
  test.rewriter().RemoveEntry(test.rewriter().catalog(), "Version");
  test.Write();
  return test.bytes();
}

inline std::string DifferenceBetween(const std::string& first, const std::string& second) {
  const std::string first_bytes = WithoutVersion(first);
  const std::string second_bytes = WithoutVersion(second);
  return testing::DifferenceOf(*testing::OpenBytes(first_bytes), *testing::OpenBytes(second_bytes));
}

// A copy that is encrypted says the same as one that is not, and so does a copy of it.
inline void ExpectEncryptionNotToMatter(const std::string& bytes) {
  const TPdfEncryption encryption{.user_password = L"", .owner_password = L"owner"};
  const std::string plain = CopyAll({{bytes}});
  const std::string encrypted = CopyAll({{bytes}}, 15, nullptr, &encryption);
  EXPECT_TRUE(testing::OpenBytes(encrypted)->is_encrypted());
  EXPECT_EQ(DifferenceBetween(plain, encrypted), "");
  EXPECT_EQ(DifferenceBetween(CopyAll({{plain}}), CopyAll({{encrypted}})), "");
}

// The copy is the same when the source's objects are in object streams, or in a table.
inline void ExpectLayoutNotToMatter(const std::string& bytes) {
  const std::string copy = CopyAll({{bytes}});
  for (const pdf::FileLayout layout : {pdf::FileLayout::kObjectStreams, pdf::FileLayout::kTable}) {
    testing::RewriteCase source(bytes);
    source.Write({.layout = layout});
    EXPECT_EQ(DifferenceBetween(copy, CopyAll({{source.bytes()}})), "");
  }
}

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_TESTS_ENGINES_TOOLBOX_COPY_CHANGEDSOURCES_H_
