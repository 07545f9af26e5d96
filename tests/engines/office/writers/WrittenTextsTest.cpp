// Every tag, attribute and number of what is written for documents that have all that writers can be
// given.
#include <algorithm>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "engines/office/writers/PackageText.h"
#include "engines/office/writers/RichDocuments.h"
#include "engines/office/writers/WriterDocuments.h"
#include "support/Expected.h"

namespace TarnixTools::engines::office {
namespace {

using TarnixTools::testing::IsAsExpected;

const OfficeDocument& Plain() {
  static const OfficeDocument plain =
      DocumentOf({PageWith({Block{TextAt(72, 100, {"Plain text"})}})});
  return plain;
}

std::string FileName(std::string name, const std::string& ending) {
  std::ranges::replace(name, ' ', '-');
  return "office/" + name + ending + ".txt";
}

// Without pages that are as those before.
std::map<std::string, OfficeDocument> Documents() {
  std::map<std::string, OfficeDocument> documents = RichDocuments();
  documents.at("images").pages.resize(1);
  return documents;
}

TEST(WrittenTexts, AreThoseOfDocuments) {
  const Parts plain = PartsOf(WordBytesOf(Plain()));
  EXPECT_TRUE(IsAsExpected("office/plain.docx.txt", PackageText(plain)));
  for (const auto& [name, document] : Documents()) {
    EXPECT_TRUE(
        IsAsExpected(FileName(name, ".docx"), PackageText(PartsOf(WordBytesOf(document)), plain)));
  }
}

TEST(WrittenTexts, AreThoseOfPresentations) {
  const Parts plain = PartsOf(SlideBytesOf(Plain()));
  EXPECT_TRUE(IsAsExpected("office/plain.pptx.txt", PackageText(plain)));
  for (const auto& [name, document] : Documents()) {
    EXPECT_TRUE(
        IsAsExpected(FileName(name, ".pptx"), PackageText(PartsOf(SlideBytesOf(document)), plain)));
  }
}

}  // namespace
}  // namespace TarnixTools::engines::office
