#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

class MergeCommand : public CliTest {
 protected:
  MergeCommand() {
    WritePdf("a.pdf", 2);
    WritePdf("b.pdf", 3);
  }
};

TEST_F(MergeCommand, WritesToTheCurrentDirectoryByDefault) {
  directory_.MakeDir("in");
  WritePdf("in/a.pdf", 1);
  const auto result = Run({"merge", "in/a.pdf", "b.pdf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "merged.pdf\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(PagesOf("merged.pdf"), 4);
}

TEST_F(MergeCommand, KeepsTheOrderOfTheInputs) {
  TestPdf().Page().Size(400, 100).Write(Path("wide.pdf"));
  Run({"merge", "b.pdf", "wide.pdf", "a.pdf"});
  auto sizes = RunJson({"info", "merged.pdf"})["files"][0]["pageSizes"];
  ASSERT_EQ(sizes.size(), 2U);
  EXPECT_EQ(sizes[0]["pages"], "1-3,5-6");
  EXPECT_EQ(sizes[1]["pages"], "4");
}

TEST_F(MergeCommand, CreatesTheOutputDirectoryWithItsParents) {
  const auto result = Run({"merge", "a.pdf", "b.pdf", "-o", "x/y/z/", "--name", "all.pdf"});
  EXPECT_EQ(result.out, "x/y/z/all.pdf\n") << result.err;
  EXPECT_EQ(PagesOf("x/y/z/all.pdf"), 5);
}

TEST_F(MergeCommand, PrintsJson) {
  const Json expected = {
      {"job", "merge"}, {"outputs", {"out/merged.pdf"}}, {"report", Json::array()}};
  EXPECT_EQ(RunJson({"merge", "a.pdf", "b.pdf", "--out-dir=out"}), expected);
}

TEST_F(MergeCommand, ReportsOutputsWhenVerbose) {
  const auto result = Run({"merge", "a.pdf", "b.pdf", "-v"});
  EXPECT_EQ(result.out, "merged.pdf\n");
  EXPECT_EQ(result.err, "wrote merged.pdf (5 pages)\n");
}

TEST_F(MergeCommand, HasNothingToReportOfPlainPages) {
  EXPECT_EQ(RunJson({"merge", "a.pdf", "b.pdf", "-v"})["report"], Json::array());
  EXPECT_EQ(RunJson({"merge", "a.pdf", "b.pdf"})["report"], Json::array());
}

TEST_F(MergeCommand, ReportsWhatWasDropped) {
  const std::string thumb = "/Thumb {{thumb}}";
  TestPdf()
      .Object("thumb", "<</Width 1 /Height 1>>")
      .Page("a")
      .PageEntry(thumb)
      .Page("b")
      .PageEntry(thumb)
      .Write(Path("thumbs.pdf"));
  const Json entry = {
      {"kind", "thumbnail"}, {"outcome", "dropped"}, {"count", 2}, {"reason", "not carried over"}};
  EXPECT_THAT(RunJson({"merge", "a.pdf", "thumbs.pdf", "-v"})["report"],
              ::testing::Contains(entry));
  EXPECT_THAT(Run({"merge", "a.pdf", "thumbs.pdf", "-v"}).err,
              ::testing::HasSubstr("2 thumbnails dropped: not carried over\n"));
}

TEST_F(MergeCommand, ReportsDamageOfTheInputs) {
  const std::string bytes = TestPdf().Pages(1).Bytes();
  WriteFile("cut.pdf", bytes.substr(0, bytes.rfind("startxref")));
  const auto result = Run({"merge", "a.pdf", "cut.pdf", "-v"});
  EXPECT_THAT(result.err, ::testing::HasSubstr("damage: start of the cross-reference not found\n"));
  EXPECT_THAT(result.err, ::testing::HasSubstr("wrote merged.pdf (3 pages)\n"));
}

TEST_F(MergeCommand, TellsThatDamageTookSomething) {
  std::string bytes = TestPdf().Pages(2).Bytes();
  bytes.replace(bytes.rfind("<<", bytes.find("/Type /Page ")), 2, "( ");  // no dictionary any more
  WriteFile("lost.pdf", bytes);
  const auto result = Run({"merge", "a.pdf", "lost.pdf"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.out, "merged.pdf\n");
  EXPECT_THAT(result.err, ::testing::HasSubstr("tarnix: damage: page lost, an empty one stands"));
  EXPECT_EQ(PagesOf("merged.pdf"), 4);
  EXPECT_EQ(Run({"merge", "a.pdf", "lost.pdf", "-q"}).err, "");
}

TEST_F(MergeCommand, ProtectsTheOutput) {
  WriteFile("pw", "to\xC3\xABter\r\nsecond line\n");
  EXPECT_EQ(Run({"merge", "a.pdf", "b.pdf", "--out-password-file", "pw"}).status, 0);
  EXPECT_EQ(Run({"info", "merged.pdf"}).status, 11);
  EXPECT_EQ(PagesOf("merged.pdf", "to\xC3\xABter"), 5);
}

TEST_F(MergeCommand, TakesWordsInBracketsAndAfterTwoDashesAsPaths) {
  WritePdf("[1,2]", 1);
  WritePdf("-v", 1);
  const auto result = Run({"merge", "--", "[1,2]", "-v"});
  EXPECT_EQ(result.out, "merged.pdf\n") << result.err;
  EXPECT_EQ(PagesOf("merged.pdf"), 2);
}

TEST_F(MergeCommand, KeepsNamesThatAreNotUtf8) {
  WritePdf("J\xF6rg.pdf", 1);
  const auto result = Run({"merge", "J\xF6rg.pdf", "a.pdf", "--name", "\xFF.pdf"});
  EXPECT_EQ(result.out, "\xFF.pdf\n") << result.err;
  EXPECT_TRUE(HasFile("\xFF.pdf"));
  EXPECT_EQ(RunJson({"merge", "J\xF6rg.pdf", "a.pdf", "--name", "\xFF.pdf"})["outputs"][0],
            "\xEF\xBF\xBD.pdf");
}

TEST_F(MergeCommand, NamesAMissingInput) {
  ExpectFailure(Run({"merge", "a.pdf", "none.pdf"}), 16,
                "FileNotFound: File not found or invalid content: [none.pdf]",
                "No such file or directory");
}

TEST_F(MergeCommand, WritesNothingWhenAnInputIsNoDocument) {
  WriteFile("text.pdf", "nothing of a document");
  EXPECT_EQ(Run({"merge", "a.pdf", "text.pdf"}).status, 23);
  EXPECT_FALSE(HasFile("merged.pdf"));
}

TEST_F(MergeCommand, NamesAnOutputDirectoryThatCannotBeMade) {
  ExpectFailure(Run({"merge", "a.pdf", "b.pdf", "-o", "a.pdf/out"}), 16,
                "FileNotFound: Unable to create output directory [a.pdf/out] (Not a directory)");
}

TEST_F(MergeCommand, TakesPartsOfDocuments) {
  WriteNumberedPdf("n.pdf", 5);
  EXPECT_EQ(Run({"merge", "n.pdf:4-", "n.pdf:z-4,:even", "n.pdf:1,1"}).status, 0);
  EXPECT_EQ(WidthsOf("merged.pdf"), (std::vector<int>{104, 105, 105, 104, 102, 104, 101, 101}));
  EXPECT_EQ(Run({"merge", "n.pdf:2", "-o", "one.pdf"}).status, 0);
  EXPECT_EQ(WidthsOf("one.pdf"), std::vector<int>{102});
  ExpectFailure(Run({"merge", "n.pdf:6", "a.pdf"}), 14,
                "InvalidParameter: No page [6] in document [n.pdf] ([5] pages available)");
  WritePdf("n.pdf:2", 3);
  EXPECT_EQ(Run({"merge", "n.pdf:2", "a.pdf", "-o", "named.pdf"}).status, 0);
  EXPECT_EQ(PagesOf("named.pdf"), 5);
}

TEST_F(MergeCommand, NeverSwallowsItsOwnResult) {
  EXPECT_EQ(Run({"merge", "a.pdf", "b.pdf"}).status, 0);
  ExpectUsageError(Run({"merge", "a.pdf", "b.pdf", "merged.pdf"}),
                   "the output 'merged.pdf' is also an input", "tarnix merge");
}

TEST_F(MergeCommand, NeedsTwoInputs) {
  ExpectUsageError(Run({"merge", "a.pdf"}), "merge needs at least 2 inputs (given: 1)",
                   "tarnix merge");
}

}  // namespace
}  // namespace TarnixTools::testing
