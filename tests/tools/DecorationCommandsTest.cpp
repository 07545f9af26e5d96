// tarnix number, stamp-text, stamp-image and transform.
#include "support/PageViews.h"
#include "support/Readers.h"
#include "support/TestImage.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class DecorationCommands : public CliTest {
 protected:
  DecorationCommands() {
    TestPdf().Page("").Page("").Page("").Write(Path("doc.pdf"));
    WriteFile("logo.png", PngOf(40, 20, {255, 0, 0}));
  }

  void SetUp() override { TARNIX_NEED_PROGRAM("pdftotext"); }

  // The words that a run puts on a page, with their boxes.
  std::vector<WordBox> Words(std::vector<std::string> arguments, std::size_t page = 0) const {
    arguments.insert(arguments.end(), {"--name", "out.pdf", "doc.pdf"});
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "out.pdf\n");
    return WordBoxes(Path("out.pdf")).at(page);
  }

  // A run of transform with this recipe, which must fail because of its first entry.
  void ExpectBadEntry(const std::string& recipe, int status, const std::string& complaint) const {
    WriteFile("recipe.json", recipe);
    const auto result = Run({"transform", "--recipe", "recipe.json", "doc.pdf"});
    ExpectFailure(result, status, complaint);
  }
};

TEST_F(DecorationCommands, NumberPages) {
  const auto result = Run({"number", "doc.pdf", "-o", "out", "--template", "{n} of {p}"});
  EXPECT_EQ(result.out, "out/doc-numbered.pdf\n") << result.err;
  EXPECT_THAT(PageTexts(Path("out/doc-numbered.pdf")), ElementsAre("1 of 3", "2 of 3", "3 of 3"));
}

TEST_F(DecorationCommands, NumberPagesAsAsked) {
  const auto words = Words(
      {"number",   "--start", "9",        "--pages",   "2",           "--position", "top-right",
       "--margin", "0,0",     "--adjust", "-10,-20",   "--font-size", "12",         "--font-style",
       "Bold",     "--color", "#00FF00",  "--opacity", "50",          "--align",    "left"},
      1);
  ASSERT_EQ(words.size(), 1U);
  EXPECT_EQ(words[0].text, "10");
  EXPECT_NEAR(words[0].box.right, 602, 0.5);
  EXPECT_NEAR(words[0].box.top, 772, 0.5);
  EXPECT_NEAR(words[0].box.top - words[0].box.bottom, 12 * 1.117, 0.5);
  EXPECT_EQ(WordBoxes(Path("out.pdf")).at(0).size(), 0U);
}

TEST_F(DecorationCommands, NumberFacingPages) {
  const std::vector<std::string> command = {"number", "--position", "bottom-left",
                                            "--facing-pages"};
  EXPECT_GT(Words(command, 0).at(0).box.left, 500);
  EXPECT_NEAR(Words(command, 1).at(0).box.left, 20, 1);
  auto with_cover = command;
  with_cover.emplace_back("--cover-page");
  EXPECT_NEAR(Words(with_cover, 0).at(0).box.left, 20, 1);
  ExpectUsageError(Run({"number", "--cover-page", "doc.pdf"}), "--cover-page needs --facing-pages",
                   "tarnix number");
}

TEST_F(DecorationCommands, StampText) {
  const auto words =
      Words({"stamp-text", "--text", "one\\ntwo", "--at", "100,200.5", "--margin", "0,0"});
  ASSERT_EQ(words.size(), 2U);
  EXPECT_EQ(words[0].text, "one");
  EXPECT_EQ(words[1].text, "two");
  EXPECT_NEAR(words[1].box.left, 100, 0.5);
  EXPECT_NEAR(words[1].box.bottom, 200.5, 0.5);
  EXPECT_EQ(Words({"stamp-text", "--text", "a\\\\nb\\t"}).at(0).text, "a\\nb\\t");
  EXPECT_EQ(Words({"stamp-text", "--text", "x", "--mosaic"}).size(), 9U);
}

TEST_F(DecorationCommands, StampTextUnderThePage) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  TestPdf().Page("").Content("1 1 0 rg 0 0 612 792 re f").Write(Path("doc.pdf"));
  for (const bool is_under : {true, false}) {
    std::vector<std::string> command = {"stamp-text", "--text", "x",      "--rotate=-30",
                                        "doc.pdf",    "--name", "out.pdf"};
    if (is_under) {
      command.emplace_back("--under");
    }
    EXPECT_EQ(Run(command).status, 0);
    EXPECT_EQ(Pictures(Path("out.pdf"), 36) == Pictures(Path("doc.pdf"), 36), is_under);
  }
}

TEST_F(DecorationCommands, StampImageOfAWidthAtAPlace) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  const auto box_of = [&](std::vector<std::string> options, Pixel color) {
    options.insert(options.begin(), {"stamp-image", "--image", "logo.png", "--at", "100,200.5"});
    options.emplace_back("doc.pdf");
    EXPECT_EQ(Run(options).status, 0);
    const Picture page = Pictures(Path("doc-stamped.pdf"), 72).at(0);
    return BoxOf(page, 72, [&](int x, int y) {
      const Pixel shown = page.At(x, y);
      return std::abs(shown[0] - color[0]) < 3 && std::abs(shown[1] - color[1]) < 3;
    });
  };
  const auto wide = box_of({"--width", "25%"}, {255, 0, 0});
  ASSERT_TRUE(wide.has_value());
  EXPECT_NEAR(wide->left, 100, 1);
  EXPECT_NEAR(wide->right, 100 + 612 * 0.25, 1);
  EXPECT_NEAR(wide->bottom, 200, 1);
  const auto pale = box_of({"--width", "60", "--opacity", "50"}, {255, 127, 127});
  ASSERT_TRUE(pale.has_value());
  EXPECT_NEAR(pale->right - pale->left, 60, 1.5);
  ExpectUsageError(Run({"stamp-image", "--image", "logo.png", "--width", "wide", "doc.pdf"}),
                   "--width: 'wide' is not a width such as 120 or 25%", "tarnix stamp-image");
}

TEST_F(DecorationCommands, StampImage) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  const auto result =
      Run({"stamp-image", "--image", "logo.png", "--position", "top-left", "--margin", "10,30",
           "--pixels-per-point", "0.5", "--pages", "2", "doc.pdf", "--verbose"});
  EXPECT_EQ(result.out, "doc-stamped.pdf\n");
  EXPECT_EQ(result.err, "1 image stamp added\nwrote doc-stamped.pdf (3 pages)\n");
  const Picture page = Pictures(Path("doc-stamped.pdf"), 72).at(1);
  const auto red = BoxOf(page, 72, [&](int x, int y) { return page.At(x, y) == Pixel{255, 0, 0}; });
  ASSERT_TRUE(red.has_value());
  EXPECT_NEAR(red->left, 10, 1);
  EXPECT_NEAR(red->right, 90, 1);
  EXPECT_NEAR(red->top, 762, 1);
}

TEST_F(DecorationCommands, ReportWhatIsMissing) {
  ExpectUsageError(Run({"stamp-text", "doc.pdf"}), "--text is needed", "tarnix stamp-text");
  ExpectUsageError(Run({"stamp-image", "doc.pdf"}), "--image is needed", "tarnix stamp-image");
  ExpectFailure(Run({"stamp-image", "--image", "no.png", "doc.pdf"}), 16,
                "FileNotFound: Image file not found: no.png", "No such file or directory");
  ExpectUsageError(Run({"transform", "doc.pdf"}), "--recipe is needed", "tarnix transform");
  ExpectFailure(Run({"transform", "--recipe", "no.json", "doc.pdf"}), 16,
                "FileNotFound: Unable to open recipe [no.json]", "No such file or directory");
  ExpectFailure(Run({"transform", "--recipe", ".", "doc.pdf"}), 16,
                "FileNotFound: Unable to open recipe [.]", "Is a directory");
}

TEST_F(DecorationCommands, TellOfMarksThatFallOutsideThePage) {
  const auto told = [&](std::vector<std::string> words) {
    words.insert(words.end(), {"--pages", "1-2", "doc.pdf"});
    const auto result = Run(words);
    EXPECT_EQ(result.status, 0);
    return result.err;
  };
  const std::string outside = " dropped: falls outside the page\n";
  EXPECT_EQ(told({"number", "--at", "5000,50"}), "tarnix: 2 page numbers" + outside);
  EXPECT_EQ(told({"number", "--at", "50,-200"}), "tarnix: 2 page numbers" + outside);
  std::vector<std::string> stamp = {"stamp-text", "--font-size", "100", "--at",
                                    "-200,50",    "--text",      "x"};
  EXPECT_EQ(told(stamp), "tarnix: 2 text stamps" + outside);
  stamp.back() = "xxxxxxxx";
  EXPECT_EQ(told(stamp), "");
  stamp.insert(stamp.end(), {"--rotate", "180"});
  EXPECT_EQ(told(stamp), "tarnix: 2 text stamps" + outside);
  EXPECT_EQ(told({"stamp-image", "--image", "logo.png", "--position", "bottom-left", "--margin",
                  "-2000,50"}),
            "tarnix: 2 image stamps" + outside);
  EXPECT_EQ(told({"number"}) + told({"stamp-text", "--text", "x", "--mosaic"}), "");
}

TEST_F(DecorationCommands, ReportThatNoFontCanBeHad) {
  WriteFile("fonts.conf", "<fontconfig><dir>/nowhere</dir></fontconfig>");
  const RunSetup no_fonts = {.environment = {{"FONTCONFIG_FILE", Path("fonts.conf")}}};
  ExpectFailure(Run({"number", "doc.pdf"}, no_fonts), 23,
                "EngineError: Unable to get system font from [Arial] [] (error [13])",
                "neither the font nor Arial is installed: fonts-liberation");
  ExpectFailure(
      Run({"stamp-text", "--text", "x", "--font", "Ours", "--font-style", "Bold", "doc.pdf"},
          no_fonts),
      23, "EngineError: Unable to get system font from [Ours] [Bold] (error [13])",
      "neither the font nor Arial is installed: fonts-liberation");
  EXPECT_FALSE(HasFile("doc-numbered.pdf"));
}

TEST_F(DecorationCommands, CheckTheirValues) {
  ExpectUsageError(Run({"number", "--at", "1", "doc.pdf"}),
                   "--at: '1' is not two numbers such as 10,20.5", "tarnix number");
  ExpectUsageError(Run({"number", "--adjust", "1.5,2", "doc.pdf"}),
                   "--adjust: '1.5,2' is not two whole numbers such as 10,20", "tarnix number");
  ExpectUsageError(Run({"number", "--at", "1,2", "--position", "top-left", "doc.pdf"}),
                   "--at and --position exclude each other", "tarnix number");
  ExpectUsageError(Run({"stamp-text", "--text", "x", "--rotate", "nan", "doc.pdf"}),
                   "--rotate: 'nan' is not a number", "tarnix stamp-text");
  ExpectUsageError(
      Run({"stamp-image", "--image", "logo.png", "--pixels-per-point", "0", "doc.pdf"}),
      "--pixels-per-point: '0' is not above 0", "tarnix stamp-image");
  EXPECT_THAT(Run({"number", "--position", "left-top", "doc.pdf"}).err,
              HasSubstr("--position: 'left-top' is none of top-left|"));
  ExpectFailure(Run({"number", "--opacity", "0", "doc.pdf"}), 14,
                "InvalidParameter: Invalid text opacity value [0] (expected [1-100] value)");
  ExpectFailure(Run({"number", "--color", "#green", "doc.pdf"}), 14,
                "InvalidParameter: Invalid RGB font color pattern [#green]");
  ExpectUsageError(Run({"number", "--color", "gren", "doc.pdf"}),
                   "--color: 'gren' is not a color (did you mean green?)", "tarnix number");
  ExpectFailure(Run({"number", "--pages", "3-4", "doc.pdf"}), 14,
                "InvalidParameter: No page [4] in document [doc.pdf] ([3] pages available)");
  EXPECT_EQ(Run({"number", "--pages", "3-a", "doc.pdf"}).status, 2);
  ExpectFailure(Run({"number", "--font-size", "0", "doc.pdf"}), 14,
                "InvalidParameter: Invalid pdf text font size [0]");
  EXPECT_FALSE(HasFile("doc-numbered.pdf"));
}

TEST_F(DecorationCommands, FollowARecipe) {
  WriteFile("recipe.json", R"([
    {"type": "number", "template": "no. {n}", "font-size": 10, "start": 5, "color": "#333333"},
    {"type": "stamp-text", "text": "Draft\nonly", "pages": 2, "at": [50, 60.5], "rotate": 0.0},
    {"type": "stamp-text", "text": "Top\\nsecret", "position": "top-right", "fontsize": "12",
     "under": true, "mosaic": false, "margin": "5,5", "pages": "3"},
    {"type": "stamp-image", "image": "logo.png", "margin": [20, 20], "pixels-per-point": 2.5}])");
  const auto report = RunJson({"transform", "--recipe", "recipe.json", "doc.pdf", "-o", "out"});
  EXPECT_THAT(report["outputs"], ElementsAre("out/doc-decorated.pdf"));
  EXPECT_EQ(report["report"][0]["kind"], "page number");
  EXPECT_EQ(report["report"][0]["outcome"], "added");
  EXPECT_EQ(report["report"][0]["count"], 3);
  const auto texts = PageTexts(Path("out/doc-decorated.pdf"));
  EXPECT_THAT(texts[0], ::testing::AllOf(HasSubstr("no. 5"), ::testing::Not(HasSubstr("Draft"))));
  EXPECT_THAT(texts[1], ::testing::AllOf(HasSubstr("Draft"), HasSubstr("only")));
  EXPECT_THAT(texts[2], ::testing::AllOf(HasSubstr("Top\nsecret"), HasSubstr("no. 7")));
}

TEST_F(DecorationCommands, DrawTheSameByRecipeAndByOption) {
  Run({"stamp-text",  "--text",   "a\\nb",    "--position", "bottom-right",
       "--font-size", "30",       "--rotate", "20.5",       "--opacity",
       "40",          "--margin", "40,50",    "--adjust",   "-3,4",
       "--pages",     "1,3",      "--align",  "center",     "--color",
       "#123456",     "--under",  "doc.pdf",  "--name",     "a.pdf"});
  WriteFile("recipe.json", R"([{"type": "stamp-text", "text": "a\nb", "position": "bottom-right",
    "font-size": 30, "rotate": 20.5, "opacity": 40, "margin": [40, 50], "adjust": [-3, 4],
    "pages": "1,3", "align": "center", "color": "#123456", "under": true}])");
  Run({"transform", "--recipe", "recipe.json", "doc.pdf", "--name", "b.pdf"});
  EXPECT_EQ(ReadBytes(Path("a.pdf")), ReadBytes(Path("b.pdf")));
  EXPECT_NE(ReadBytes(Path("a.pdf")), "");
}

TEST_F(DecorationCommands, NameTheEntryThatIsWrong) {
  const std::string first = "InvalidParameter: recipe.json: entry 1: ";
  ExpectBadEntry("[1]", 14, first + "not an object");
  ExpectBadEntry("[{}]", 14, first + "no type");
  ExpectBadEntry(R"([{"type": 3}])", 14, first + "no type");
  ExpectBadEntry(R"([{"type": "merge"}])", 14,
                 first + "type 'merge' is none of number|stamp-text|stamp-image");
  ExpectBadEntry(R"([{"type": "number", "text": "a"}])", 14, first + "number has no option 'text'");
  ExpectBadEntry(R"([{"type": "number", "font-size": 1.5}])", 14,
                 first + "--font-size: '1.5' is not a whole number");
  ExpectBadEntry(R"([{"type": "number", "under": "yes"}])", 14,
                 first + "--under: the value is neither true nor false");
  ExpectBadEntry(R"([{"type": "number", "at": [1]}])", 14,
                 first + "--at: the value is no text, number or pair of numbers");
  ExpectBadEntry(R"([{"type": "number", "opacity": 101}])", 14,
                 first + "Invalid text opacity value [101] (expected [1-100] value)");
  ExpectBadEntry(R"([{"type": "stamp-text"}])", 14, first + "--text is needed");
  ExpectBadEntry(R"([{"type": "stamp-image"}])", 14, first + "--image is needed");
  ExpectBadEntry(R"([{"type": "stamp-image", "image": "no.png"}])", 16,
                 "FileNotFound: recipe.json: entry 1: Image file not found: no.png");
  ExpectBadEntry(
      R"([{"type": "number"}, {"type": "number", "pages": "0"}])", 14,
      "InvalidParameter: recipe.json: entry 2: No page [0] in document [doc.pdf] ([3] pages "
      "available)");
}

TEST_F(DecorationCommands, RejectRecipesThatAreNone) {
  for (const std::string recipe : {"", "[", "{\"type\": \"number\"}", "[1e999]", "not json"}) {
    WriteFile("recipe.json", recipe);
    const auto result = Run({"transform", "--recipe", "recipe.json", "doc.pdf"});
    EXPECT_EQ(result.status, 14);
    EXPECT_THAT(result.err, ::testing::StartsWith("tarnix: InvalidParameter: recipe.json: "));
  }
  WriteFile("recipe.json", std::string(200'000, '['));
  EXPECT_EQ(Run({"transform", "--recipe", "recipe.json", "doc.pdf"}).status, 14);
  EXPECT_THAT(Run({"transform", "--recipe", "/dev/zero", "doc.pdf"}).err,
              HasSubstr("/dev/zero: the recipe is too long"));
}

}  // namespace
}  // namespace TarnixTools::testing
