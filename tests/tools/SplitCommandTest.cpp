#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

class SplitCommand : public CliTest {
 protected:
  SplitCommand() { WritePdf("book.pdf", 10); }

  // Runs a split and checks that exactly the listed outputs are there, with these numbers of pages.
  void ExpectPieces(std::vector<std::string> arguments,
                    const std::vector<std::pair<std::string, int>>& pieces) {
    arguments.insert(arguments.begin(), "split");
    arguments.insert(arguments.end(), {"-o", "out"});
    auto outputs = RunJson(arguments)["outputs"];
    ASSERT_EQ(outputs.size(), pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      EXPECT_EQ(outputs[i], "out/" + pieces[i].first);
      EXPECT_EQ(PagesOf("out/" + pieces[i].first), pieces[i].second);
    }
    EXPECT_EQ(directory_.Names("out").size(), pieces.size());
  }
};

TEST_F(SplitCommand, WritesOneFilePerPageByDefault) {
  WritePdf("book.pdf", 3);
  ExpectPieces({"book.pdf"}, {{"book-01.pdf", 1}, {"book-02.pdf", 1}, {"book-03.pdf", 1}});
}

TEST_F(SplitCommand, CutsPiecesOfEqualSize) {
  ExpectPieces({"book.pdf", "--every", "4"},
               {{"book-001.pdf", 4}, {"book-002.pdf", 4}, {"book-003.pdf", 2}});
}

TEST_F(SplitCommand, WritesOnePieceOfAllPages) {
  ExpectPieces({"book.pdf", "--every=10"}, {{"book-001.pdf", 10}});
}

TEST_F(SplitCommand, TakesOutRanges) {
  ExpectPieces({"book.pdf", "--ranges", "1-3,5"}, {{"book-1-3.pdf", 3}, {"book-5.pdf", 1}});
}

TEST_F(SplitCommand, TakesEveryFormOfAnItem) {
  ExpectPieces({"book.pdf", "--ranges", "5-3,7-7,9-,z,r2,2-6:even,:odd,7"},
               {{"book-5-3.pdf", 3},
                {"book-7.pdf", 1},
                {"book-9-10.pdf", 2},
                {"book-10.pdf", 1},
                {"book-9.pdf", 1},
                {"book-2-6-even.pdf", 3},
                {"book-1-10-odd.pdf", 5}});
}

TEST_F(SplitCommand, KeepsTheOrderOfAnItem) {
  WriteNumberedPdf("n.pdf", 5);
  EXPECT_EQ(Run({"split", "n.pdf", "--ranges", "z-3,:even"}).out, "n-5-3.pdf\nn-1-5-even.pdf\n");
  EXPECT_EQ(WidthsOf("n-5-3.pdf"), (std::vector<int>{105, 104, 103}));
  EXPECT_EQ(WidthsOf("n-1-5-even.pdf"), (std::vector<int>{102, 104}));
}

TEST_F(SplitCommand, ExtractsPagesInTheOrderAskedFor) {
  WriteNumberedPdf("n.pdf", 5);
  EXPECT_EQ(Run({"extract-pages", "n.pdf", "--pages", "3,1-2,z,1"}).out, "n-pages.pdf\n");
  EXPECT_EQ(WidthsOf("n-pages.pdf"), (std::vector<int>{103, 101, 102, 105, 101}));
  ExpectFailure(Run({"extract-pages", "n.pdf", "--pages", "r6"}), 14,
                "InvalidParameter: No page [r6] in document [n.pdf] ([5] pages available)");
  ExpectUsageError(Run({"extract-pages", "n.pdf"}), "--pages is needed", "tarnix extract-pages");
}

TEST_F(SplitCommand, NamesPiecesByAPattern) {
  EXPECT_EQ(Run({"split", "book.pdf", "--every", "5", "--name", "{n}-of-{stem}.pdf"}).out,
            "001-of-book.pdf\n002-of-book.pdf\n");
  EXPECT_EQ(Run({"split", "book.pdf", "--every", "5", "--prefix", "p"}).out,
            "p_book-001.pdf\np_book-002.pdf\n");
  ExpectUsageError(Run({"split", "book.pdf", "--name", "x.pdf"}),
                   "--name: several files are written, and 'x.pdf' has no {n}", "tarnix split");
}

TEST_F(SplitCommand, JoinsRanges) {
  ExpectPieces({"book.pdf", "--ranges", "1-3,9-10", "--merge"}, {{"book-split.pdf", 5}});
}

TEST_F(SplitCommand, PrintsAPathPerLine) {
  const auto result = Run({"split", "book.pdf", "--every", "5"});
  EXPECT_EQ(result.out, "book-001.pdf\nbook-002.pdf\n") << result.err;
}

TEST_F(SplitCommand, ReportsEveryPieceWhenVerbose) {
  const auto result = Run({"split", "book.pdf", "--ranges", "2,4-6", "--verbose"});
  EXPECT_EQ(result.err, "wrote book-2.pdf (1 page)\nwrote book-4-6.pdf (3 pages)\n");
}

TEST_F(SplitCommand, ProtectsEveryPiece) {
  Run({"split", "book.pdf", "--ranges", "2,4-6", "--out-password", "secret"});
  EXPECT_EQ(Run({"info", "book-2.pdf"}).status, 11);
  EXPECT_EQ(PagesOf("book-4-6.pdf", "secret"), 3);
}

TEST_F(SplitCommand, ReportsARangeThatTheDocumentLacks) {
  ExpectFailure(Run({"split", "book.pdf", "--ranges", "9-11"}), 14,
                "InvalidParameter: No page [11] in document [book.pdf] ([10] pages available)");
}

TEST_F(SplitCommand, ReportsPageZero) {
  ExpectFailure(Run({"split", "book.pdf", "--ranges", "0-4", "-o", "out"}), 14,
                "InvalidParameter: No page [0] in document [book.pdf] ([10] pages available)");
  EXPECT_FALSE(HasFile("out"));
}

TEST_F(SplitCommand, ReportsAnImpossiblePieceSize) {
  for (const std::string size : {"0", "-1", "11"}) {
    const auto result = Run({"split", "book.pdf", "--every", size});
    EXPECT_EQ(result.status, 14);
    EXPECT_THAT(result.err, ::testing::StartsWith("tarnix: InvalidParameter: Invalid split size [" +
                                                  size + "] "));
    EXPECT_THAT(result.err, ::testing::EndsWith(" ([10] pages available)\n"));
  }
}

TEST_F(SplitCommand, RejectsListsThatAreNone) {
  for (const std::string list :
       {"", ",", "1,", "-3", "1--3", "a", "1-3-5", "1 3", "+1", "99999999999", ":off", "1:", "r"}) {
    ExpectUsageError(
        Run({"split", "book.pdf", "--ranges", list}),
        "--ranges: '" + list + "' is not a list of pages such as 1-3,5,8-,z,r2,z-1,:odd",
        "tarnix split");
  }
}

TEST_F(SplitCommand, ChecksThatItsOptionsGoTogether) {
  ExpectUsageError(Run({"split", "book.pdf", "--every", "2", "--ranges", "1"}),
                   "--every and --ranges exclude each other", "tarnix split");
  ExpectUsageError(Run({"split", "book.pdf", "--merge"}), "--merge needs --ranges", "tarnix split");
}

TEST_F(SplitCommand, TakesSeveralInputs) {
  WritePdf("b.pdf", 1);
  EXPECT_EQ(Run({"split", "book.pdf", "b.pdf", "--every", "1", "--ranges", "1"}).status, 2);
  EXPECT_EQ(Run({"split", "book.pdf", "b.pdf", "--ranges", "1"}).out, "book-1.pdf\nb-1.pdf\n");
  ExpectUsageError(Run({"split", "book.pdf", "book.pdf"}),
                   "outputs of 'book.pdf' and of another input have the same names",
                   "tarnix split");
  ExpectUsageError(Run({"split"}), "split needs at least 1 input (given: 0)", "tarnix split");
}

// What stands behind the only full stop, at the start of a name, is no extension.
TEST_F(SplitCommand, NamesPiecesOfHiddenFilesAfterThem) {
  for (const std::string name : {".hidden", ".pdf"}) {
    WritePdf(name, 2);
    EXPECT_EQ(Run({"split", name}).out, name + "-01.pdf\n" + name + "-02.pdf\n");
    EXPECT_EQ(Run({"split", name, "--ranges", "2,1-2"}).out,
              name + "-2.pdf\n" + name + "-1-2.pdf\n");
    EXPECT_EQ(Run({"pdf2img", "--dpi", "9", "--pages", "1", name}).out, name + "-page-0001.jpg\n");
    EXPECT_EQ(Run({"rotate", "--angle", "90", name}).out, name + "-rotated.pdf\n");
    EXPECT_EQ(Run({"split", "-n", name}).status, 16);
  }
}

}  // namespace
}  // namespace TarnixTools::testing
