// How converted documents are written.
#include <gtest/gtest.h>

#include "engines/pdfa/convert/WrittenFile.h"

namespace TarnixTools::engines::pdfa {
namespace {

TEST(WrittenFile, HasTheVersionAndTheLayoutOfItsPart) {
  for (const Level level : {Level::k1a, Level::k1b}) {
    const pdf::RewriteOptions options = RewriteOptionsFor(level);
    EXPECT_EQ(options.version, "1.4");
    EXPECT_EQ(options.layout, pdf::FileLayout::kTable);
    EXPECT_TRUE(options.keeps_id);
    EXPECT_EQ(options.security, nullptr);
  }
  for (const Level level :
       {Level::k2a, Level::k2b, Level::k2u, Level::k3a, Level::k3b, Level::k3u}) {
    const pdf::RewriteOptions options = RewriteOptionsFor(level);
    EXPECT_EQ(options.version, "1.7");
    EXPECT_EQ(options.layout, pdf::FileLayout::kObjectStreams);
    EXPECT_TRUE(options.keeps_id);
    EXPECT_EQ(options.security, nullptr);
  }
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
