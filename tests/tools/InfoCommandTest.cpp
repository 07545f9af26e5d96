#include "tools/EveryJob.h"

namespace TarnixTools::testing {
namespace {

using InfoCommand = CliTest;

TEST_F(InfoCommand, PrintsJson) {
  TestPdf()
      .Pages(2)
      .Page()
      .Size(595.276, 841.89)
      .Page()
      .InfoEntry("/Author (Me) /Keywords (one, two) /Creator (By hand) /Producer (Nobody)")
      .Write(Path("a.pdf"));
  const Json expected = {{"path", "a.pdf"},
                         {"pages", 4},
                         {"version", "1.7"},
                         {"encrypted", false},
                         {"permissions", {"print", "edit", "copy", "annotate", "fill", "assemble"}},
                         {"claims", nullptr},
                         {"pageSizes",
                          {{{"width", 612.0}, {"height", 792.0}, {"pages", "1-2,4"}},
                           {{"width", 595.28}, {"height", 841.89}, {"pages", "3"}}}},
                         {"rotations", {{{"degrees", 0}, {"pages", "1-4"}}}},
                         {"metadata",
                          {{"title", ""},
                           {"subject", ""},
                           {"author", "Me"},
                           {"keywords", "one, two"},
                           {"creator", "By hand"},
                           {"producer", "Nobody"}}},
                         {"tagged", false},
                         {"signed", false},
                         {"fields", 0},
                         {"attachments", 0}};
  auto json = RunJson({"info", "a.pdf"});
  EXPECT_EQ(json["job"], "info");
  EXPECT_EQ(json["outputs"], Json::array());
  EXPECT_EQ(json["files"], Json::array({expected}));
}

TEST_F(InfoCommand, PrintsATextPerFile) {
  TestPdf().Pages(2).Page().Size(100.5, 200).InfoEntry("/Author (Me)").Write(Path("a.pdf"));
  WritePdf("b.pdf", 1);
  const auto result = Run({"info", "a.pdf", "b.pdf"});
  EXPECT_EQ(result.out,
            "a.pdf\n"
            "  pages       3\n"
            "  version     1.7\n"
            "  encrypted   no\n"
            "  tagged      no\n"
            "  page size   612 x 792 pt (2 pages)\n"
            "              100.5 x 200 pt (1 page)\n"
            "  author      Me\n"
            "\n"
            "b.pdf\n"
            "  pages       1\n"
            "  version     1.7\n"
            "  encrypted   no\n"
            "  tagged      no\n"
            "  page size   612 x 792 pt (1 page)\n")
      << result.err;
}

TEST_F(InfoCommand, TellsSizesOfPagesWithOddAnglesAsTheyAreDrawn) {
  TestPdf().Page().Size(200, 100).Rotate(100).Page().Size(200, 100).Rotate(45).Write(Path("a.pdf"));
  auto sizes = RunJson({"info", "a.pdf"})["files"][0]["pageSizes"];
  EXPECT_EQ(sizes, (Json{{{"width", 100.0}, {"height", 200.0}, {"pages", "1"}},
                         {{"width", 200.0}, {"height", 100.0}, {"pages", "2"}}}));
}

TEST_F(InfoCommand, ConvertsSizes) {
  TestPdf().Page().Size(595.276, 841.89).Write(Path("a4.pdf"));
  const auto size_in = [this](const std::string& unit) {
    auto json = RunJson({"info", "a4.pdf", "--units", unit});
    auto& size = json["files"][0]["pageSizes"][0];
    return std::pair<double, double>(size["width"], size["height"]);
  };
  EXPECT_EQ(size_in("pt"), std::pair(595.28, 841.89));
  EXPECT_EQ(size_in("mm"), std::pair(210.0, 297.0));
  EXPECT_EQ(size_in("cm"), std::pair(21.0, 29.7));
  EXPECT_EQ(size_in("in"), std::pair(8.27, 11.69));
  EXPECT_THAT(Run({"info", "a4.pdf", "--units", "mm"}).out,
              ::testing::HasSubstr("210 x 297 mm (1 page)"));
}

TEST_F(InfoCommand, StaysSmallForManyPages) {
  WritePdf("a.pdf", 10000);
  auto file = RunJson({"info", "a.pdf"})["files"][0];
  EXPECT_EQ(file["pages"], 10000);
  EXPECT_EQ(file["pageSizes"],
            Json::array({{{"width", 612.0}, {"height", 792.0}, {"pages", "1-10000"}}}));
}

TEST_F(InfoCommand, CountsSizesBeyondTheTenth) {
  TestPdf pdf;
  for (int i = 1; i <= 12; ++i) {
    pdf.Page().Size(100 * i, 100);
  }
  pdf.Write(Path("a.pdf"));
  const auto result = Run({"info", "a.pdf"});
  EXPECT_THAT(result.out,
              ::testing::HasSubstr("1000 x 100 pt (1 page)\n              ... and 2 more sizes\n"));
  EXPECT_THAT(result.out, ::testing::Not(::testing::HasSubstr("1100 x 100")));
  EXPECT_EQ(RunJson({"info", "a.pdf"})["files"][0]["pageSizes"].size(), 12U);
}

TEST_F(InfoCommand, TellsEncryption) {
  WriteProtectedPdf("secret.pdf", "pw");
  auto json = RunJson({"info", "secret.pdf", "--password", "pw"});
  EXPECT_EQ(json["files"][0]["encrypted"], true);
  EXPECT_THAT(Run({"info", "secret.pdf", "--password", "pw"}).out,
              ::testing::HasSubstr("  encrypted   yes\n"));
}

TEST_F(InfoCommand, TellsWhatIsDenied) {
  WritePdf("a.pdf", 1);
  ASSERT_EQ(Run({"protect", "a.pdf", "--new-password", "u", "--owner-password", "o", "--deny",
                 "print,copy", "--name", "p.pdf"})
                .status,
            0);
  EXPECT_EQ(RunJson({"info", "p.pdf", "--password", "u"})["files"][0]["permissions"],
            Json({"edit", "annotate", "fill", "assemble"}));
  EXPECT_THAT(Run({"info", "p.pdf", "--password", "u"}).out,
              ::testing::HasSubstr("  denied      print, copy\n"));
}

TEST_F(InfoCommand, TellsRotations) {
  TestPdf().Page().Page().Rotate(90).Page().Rotate(90).Page().Rotate(-90).Write(Path("a.pdf"));
  EXPECT_EQ(RunJson({"info", "a.pdf"})["files"][0]["rotations"],
            (Json{{{"degrees", 0}, {"pages", "1"}},
                  {{"degrees", 90}, {"pages", "2-3"}},
                  {{"degrees", 270}, {"pages", "4"}}}));
  EXPECT_THAT(Run({"info", "a.pdf"}).out,
              ::testing::HasSubstr("  rotated     90 degrees (2 pages)\n"
                                   "              270 degrees (1 page)\n"));
}

TEST_F(InfoCommand, LetsNoMetadataSteerTheTerminal) {
  TestPdf().Page().InfoEntry("/Author <FEFF0061009B00330007000A0062>").Write(Path("a.pdf"));
  EXPECT_THAT(Run({"info", "a.pdf"}).out, ::testing::HasSubstr("  author      a?3??b\n"));
  EXPECT_EQ(RunJson({"info", "a.pdf"})["files"][0]["metadata"]["author"],
            "a\xC2\x9B"
            "3\a\nb");
}

TEST_F(InfoCommand, ShowsTheOthersBesideAFileThatFails) {
  WritePdf("a.pdf", 1);
  WriteProtectedPdf("secret.pdf", "pw");
  const auto result = Run({"info", "secret.pdf", "a.pdf", "--json"});
  EXPECT_EQ(result.status, 11);
  EXPECT_EQ(result.err, "tarnix: PasswordError: Invalid password for PDF [secret.pdf]\n");
  const Json json = Json::parse(result.out, nullptr, false);
  EXPECT_EQ(json["files"][0]["error"]["code"], "PasswordError");
  EXPECT_EQ(json["files"][1]["pages"], 1);
  EXPECT_THAT(Run({"info", "secret.pdf", "a.pdf"}).out, ::testing::StartsWith("a.pdf\n"));
}

TEST_F(InfoCommand, WritesNoFile) {
  WritePdf("a.pdf", 1);
  EXPECT_EQ(Run({"info", "a.pdf"}).status, 0);
  EXPECT_EQ(directory_.Names(), std::vector<std::string>{"a.pdf"});
  EXPECT_FALSE(HasFile("out"));
}

// Once to see whether it is there, and once for all that is told of it.
TEST_F(InfoCommand, OpensADocumentOnce) {
  TARNIX_NEED_FAULT_INJECTOR();
  WritePdf("one.pdf", 1);
  WritePdf("two.pdf", 1);
  const auto opened_for = [&](const std::vector<std::string>& documents) {
    std::vector<std::string> words = {"info"};
    words.insert(words.end(), documents.begin(), documents.end());
    EXPECT_EQ(Run(words, {.environment = {{"LD_PRELOAD", FaultInjector()},
                                          {"TARNIX_FAULT_COUNTS", Path("counts")}}})
                  .status,
              0);
    const std::string counts = ReadBytes(Path("counts"));
    return std::stoi(counts.substr(counts.find("open ") + 5));
  };
  EXPECT_EQ(opened_for({"one.pdf", "two.pdf"}) - opened_for({"one.pdf"}), 2);
}

}  // namespace
}  // namespace TarnixTools::testing
