// Which levels are tried for a document, one after the other.
#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/LevelChoice.h"
#include "engines/pdfa/convert/OpenedConversion.h"
#include "support/TestPackets.h"

namespace TarnixTools::engines::pdfa {
namespace {

// "2u 2b", of a document whose catalog has the entries, and which may claim something.
std::string Tried(const std::string& catalog, std::optional<Level> wanted,
                  const std::string& claim = "") {
  testing::RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 4 0 R" + catalog + ">>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]>>");
  file.Stream(4, "/Type/Metadata/Subtype/XML", testing::TestPacket(claim));
  OpenedConversion opened(file);
  std::string text;
  for (const Level level : LevelsToTry(opened.document(), wanted)) {
    text += std::string(text.empty() ? "" : " ") + (NameOf(level) + 6);
  }
  return text;
}

TEST(LevelChoice, GoesDownwardsFromTheWantedLevel) {
  for (const auto& [level, tried] :
       {std::pair(Level::k1b, "1b 2b"), std::pair(Level::k1a, "1a 1b 2b"),
        std::pair(Level::k2b, "2b"), std::pair(Level::k2u, "2u 2b"),
        std::pair(Level::k2a, "2a 2u 2b"), std::pair(Level::k3b, "3b 2b"),
        std::pair(Level::k3u, "3u 3b 2b"), std::pair(Level::k3a, "3a 3u 3b 2b")}) {
    EXPECT_EQ(Tried("", level), tried);
    EXPECT_EQ(Tried("", level, testing::ClaimOf("3")), tried) << "whatever it claims";
  }
}

TEST(LevelChoice, GoesByTheDocumentWhereNoneIsWanted) {
  const std::string files = "/Names<</EmbeddedFiles<<>>>>";
  const std::string tags = "/MarkInfo<</Marked true>>/StructTreeRoot<<>>";
  EXPECT_EQ(Tried("", {}), "2u 2b");
  EXPECT_EQ(Tried(files, {}), "3u 3b 2b");
  EXPECT_EQ(Tried("/Names<</EmbeddedFiles[]>>", {}), "2u 2b");
  EXPECT_EQ(Tried(tags, {}), "2a 2u 2b");
  EXPECT_EQ(Tried(files + tags, {}), "3a 3u 3b 2b");
  EXPECT_EQ(Tried("/MarkInfo<</Marked false>>/StructTreeRoot<<>>", {}), "2u 2b");
  EXPECT_EQ(Tried("/MarkInfo<</Marked true>>", {}), "2u 2b");
  EXPECT_EQ(Tried("/MarkInfo<</Marked true>>/StructTreeRoot 7", {}), "2u 2b");
  EXPECT_EQ(Tried("/StructTreeRoot<<>>", {}), "2u 2b");
}

TEST(LevelChoice, BeginsWithTheLevelThatIsClaimed) {
  EXPECT_EQ(Tried("", {}, testing::ClaimOf("1")), "1b 2u 2b");
  EXPECT_EQ(Tried("", {}, testing::ClaimOf("3")), "3b 2u 2b");
  EXPECT_EQ(Tried("", {}, testing::ClaimOf("2")), "2b 2u");
  EXPECT_EQ(Tried("/Names<</EmbeddedFiles<<>>>>", {}, testing::ClaimOf("3")), "3b 3u 2b");
  EXPECT_EQ(Tried("", {}, testing::ClaimOf("4")), "2u 2b");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
