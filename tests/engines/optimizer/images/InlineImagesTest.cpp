#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/optimizer/images/InlineImages.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"
#include "support/TestImage.h"
#include "support/TestScene.h"

namespace TarnixTools::engines::optimizer {
namespace {

using ::testing::HasSubstr;
using testing::SceneSamples;

constexpr testing::SceneSize kSize{100, 80};

std::string Content(const std::string& entries, const std::string& data) {
  return "q 50 0 0 40 5 5 cm BI/W 100/H 80" + entries + " ID " + data + "\nEI Q 0 0 5 5 re f";
}

// The content when images are coded again, without its own filter.
std::string Recoded(const std::string& content) {
  testing::RewriteCase test(testing::RawPdf()
                                .Pages(1, "/MediaBox[0 0 60 60]/Contents 9 0 R")
                                .Stream(9, "", content)
                                .Table());
  DataStore store(1'000'000);
  RecodeInlineImages(test.source(), 9, GoalsOf(*ProfileSettings(kImageProfile), false), store,
                     test.rewriter());
  if (!test.rewriter().IsChanged(9)) {
    return content;
  }
  pdf::Document& written = test.Write();
  for (std::uint32_t number = 1; number < 20; ++number) {
    const auto decoded = written.TryDecodeStream(number, 1'000'000);
    if (decoded && decoded->data.find("0 0 5 5 re f") != std::string::npos) {
      return decoded->data;
    }
  }
  return "";
}

TEST(InlineImages, AreCodedByWhatTheyAre) {
  EXPECT_THAT(Recoded(Content("/BPC 8/CS/RGB", SceneSamples(kSize, 3, 8))),
              HasSubstr("/F/DCTDecode"));
  EXPECT_THAT(Recoded(Content("/BPC 8/CS/G/I true", SceneSamples(kSize, 1, 8))),
              HasSubstr("/CS/G/I true/W 100/H 80/BPC 8/F/DCTDecode"));
  const std::string table(768, '\x30');
  EXPECT_THAT(Recoded(Content("/BPC 8/CS[/I/RGB 255<" + table + ">]", SceneSamples(kSize, 1, 8))),
              HasSubstr("/BPC 8/F/FlateDecode"));
}

TEST(InlineImages, KeepWhatStandsAroundThem) {
  const std::string content = Recoded(Content("/BPC 8/CS/RGB", SceneSamples(kSize, 3, 8)));
  EXPECT_EQ(content.find("q 50 0 0 40 5 5 cm BI"), 0U);
  EXPECT_THAT(content, ::testing::EndsWith("EI Q 0 0 5 5 re f"));
}

TEST(InlineImages, StayWhereNothingIsGained) {
  for (const std::string& content :
       {Content("/BPC 8/CS/NamedOnPage", SceneSamples(kSize, 3, 8)),
        Content("/BPC 8/CS/RGB", SceneSamples(kSize, 3, 8).substr(0, 9000)),
        Content("/BPC 8/CS/RGB/F/Unknown", SceneSamples(kSize, 3, 8))}) {
    EXPECT_TRUE(Recoded(content) == content) << content.substr(0, 60);
  }
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
