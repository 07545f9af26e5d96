// Content of which any byte is another one, or which ends too early: what each reader of it makes
// of that.
#include <string>

#include "pdf/content/ContentBalance.h"
#include "pdf/content/ContentReader.h"
#include "pdf/content/ResourceNames.h"
#include "pdf/content/WalkFixture.h"
#include "pdf/content/WholeWalk.h"
#include "support/Damage.h"
#include "support/Expected.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::DamageText;
using ::TarnixTools::testing::DataText;
using ::TarnixTools::testing::IsAsExpected;

std::string NamesText(std::string_view content) {
  std::string text;
  const ContentNames names =
      CollectResourceNames(content, [&](ResourceCategory category, std::string_view name) {
        text += std::to_string(static_cast<int>(category)) + "/" + std::string(name) + " ";
      });
  return text + (names.is_complete ? "complete" : "incomplete") +
         (names.has_operands_left ? ", operands left" : "");
}

std::string OperationsText(const std::string& content) {
  ContentReader reader(content);
  Operation operation;
  std::string text;
  while (reader.Next(operation)) {
    text += std::string(operation.name) + "(" + std::to_string(operation.operand_count) + ")" +
            std::string(operation.operands) + "|" + std::string(operation.image_data) + "\n";
  }
  return text + (reader.is_damaged() ? "damaged" : "sound");
}

std::string BalanceText(std::string_view content) {
  const ContentBalance balance = MeasureBalance(content);
  std::string text = "'" + balance.closing() + "'" + (balance.is_cut() ? " cut" : "") +
                     (balance.stops_readers() ? " stops readers" : "");
  for (const std::size_t position : balance.restore_positions()) {
    text += " Q at " + std::to_string(position);
  }
  for (char& c : text) {
    c = c == '\n' ? '~' : c;
  }
  return text;
}

// The page draws everything that can be drawn.
class DamagedContent : public ::testing::Test {
 protected:
  std::string WalkText(const std::string& content) {
    ContentDocument file;
    file.Stream(5, kFormEntries + "/Matrix[2 0 0 2 0 0]", "0 0 1 1 re f")
        .Stream(6, kImageEntries, "x")
        .Object(7,
                "<</Type/Font/Subtype/Type3/FontMatrix[.1 0 0 .1 0 0]/FirstChar 97/Widths[5 6 7]"
                "/Encoding<</Differences[97/a/b/c]>>/CharProcs<</a 8 0 R/b 8 0 R>>>>")
        .Stream(8, "", "5 0 d0 0 0 2 2 re f")
        .Stream(9, "/PatternType 1/BBox[0 0 1 1]/XStep 1/YStep 1", "0 0 3 3 re f")
        .Object(10, "<</ShadingType 2>>")
        .Object(11, "<</LW 3/CA .5/SMask<</S/Alpha/G 5 0 R>>>>");
    file.Page(
        "/Resources<</XObject<</Fo 5 0 R/Im 6 0 R>>/Font<</F 7 0 R>>/Pattern<</T 9 0 R>>"
        "/Shading<</S 10 0 R>>/ExtGState<</GS 11 0 R>>/ColorSpace<</C[/Pattern/DeviceRGB]>>"
        "/Properties<</Pr<</MCID 3>>>>>>",
        content);
    Recorder recorder;
    recorder.look = [&](const GraphicsState& state) {
      recorder.lines.push_back(TextOf(state.matrix) + TextOf(state.clip.box) + " width " +
                               std::to_string(state.line.width));
    };
    WalkOptions options = kEverything;
    options.operators = false;
    ContentWalker walker(file.Open(), recorder, options);
    walker.BeginPage(file.pages(), 0);
    walker.Run();
    std::string text;
    for (const std::string& line : recorder.lines) {
      text += line + "\n";
    }
    return text;
  }
};

// The number of lines of a text, and what it says of troubles.
std::string Summary(const std::string& text) {
  std::string troubles;
  std::size_t count = 0;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line); ++count) {
    troubles += line.starts_with("trouble") ? line.substr(8) + "," : "";
  }
  return std::to_string(count) + " lines" + troubles;
}

TEST_F(DamagedContent, OfGraphics) {
  std::string all;
  const std::string content =
      "q 2 0 0 2 5 6 cm/GS gs 4 w[3 1]0 d/P<</MCID 1>>BDC EMC\n"
      "/C cs 1 0 .5/T scn 9 8 m 20 8 l 15 20 3 4 5 6 c h f*/Pr/Pr DP/S sh\n"
      "0 0 9 9 re W n/Fo Do/Im Do BI/W 4/H 1/BPC 8/CS/G ID abcd EI S Q%c\nQ";
  const std::string text = DamageText(content, [&](const std::string& bytes) {
    const std::string walked = WalkText(bytes);
    all += walked + OperationsText(bytes);
    return Summary(walked) + "; " + BalanceText(bytes) + "; " + NamesText(bytes);
  });
  EXPECT_TRUE(IsAsExpected("content/damaged_graphics.txt", text + DataText(all + '\0') + "\n"));
}

TEST_F(DamagedContent, OfText) {
  std::string all;
  const std::string content =
      "BT/F 12 Tf 1 0 0 1 7 8 Tm 14 TL 3 Tr(a\\)b)Tj T*[(c)-500<6162>]TJ 2 3(a\\142)\" 1 2 Td(c)' "
      "4 5 TD 50 Tz 6 Ts 1 Tc(b)Tj ET";
  const std::string text = DamageText(content, [&](const std::string& bytes) {
    const std::string walked = WalkText(bytes);
    all += walked + OperationsText(bytes);
    return Summary(walked) + "; " + BalanceText(bytes) + "; " + NamesText(bytes);
  });
  EXPECT_TRUE(IsAsExpected("content/damaged_text.txt", text + DataText(all + '\0') + "\n"));
}

// What each operator makes of how many numbers, and of a name or a string behind them.
TEST_F(DamagedContent, OfOperatorsWithAnyNumberOfOperands) {
  std::string all;
  std::string text;
  for (const std::string name :
       {"q",   "Q",  "cm",  "w",   "J",   "j",   "M",  "d",  "ri", "i",  "gs", "m",  "l",
        "c",   "v",  "y",   "h",   "re",  "S",   "s",  "f",  "F",  "f*", "B",  "B*", "b",
        "b*",  "n",  "W",   "W*",  "BT",  "ET",  "Tc", "Tw", "Tz", "TL", "Tf", "Tr", "Ts",
        "Td",  "TD", "Tm",  "T*",  "Tj",  "TJ",  "'",  "\"", "d0", "d1", "CS", "cs", "SC",
        "SCN", "sc", "scn", "G",   "g",   "RG",  "rg", "K",  "k",  "sh", "BI", "ID", "EI",
        "Do",  "MP", "DP",  "BMC", "BDC", "EMC", "BX", "EX", "Z",  "z"}) {
    for (const std::string operand : {"", "/F ", "(a)"}) {
      std::string numbers;
      std::string before;
      text += name + " " + operand;
      for (int count = 0; count <= 7; ++count) {
        const std::string content =
            "BT/F 12 Tf " + numbers + operand + name + " (a)Tj ET 1 2 m 3 4 l B 1 2 6 4 re S";
        const std::string walked = WalkText(content);
        all += walked + OperationsText(content);
        const std::string outcome = " " + Summary(walked) + " " + BalanceText(content);
        text += outcome == before ? "" : "; " + std::to_string(count) + ":" + outcome;
        before = outcome;
        numbers += std::to_string(count + 1) + " ";
      }
      text += "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("content/operand_counts.txt", text + DataText(all + '\0') + "\n"));
}

// Where a string ends that is shown in a font of which the first code has the width 5, the others 1.
TEST_F(DamagedContent, OfFontsWithAnyFirstCode) {
  std::string text;
  for (const std::string first : {"-1", "0", "1", "97", "254", "255", "256", "(x)", ""}) {
    ContentDocument file;
    file.Object(7, "<</Type/Font/Subtype/Type3/FontMatrix[1 0 0 1 0 0]/Widths[5 1 1]" +
                       (first.empty() ? first : "/FirstChar " + first) + ">>");
    text += "first " + first + ":";
    for (const std::string code : {"00", "01", "02", "03", "60", "61", "63", "64", "FE", "FF"}) {
      file.Page("/Resources<</Font<</F 7 0 R>>>>", "BT/F 1 Tf<" + code + ">Tj(x)Tj ET");
      Recorder recorder;
      ContentWalker walker(file.Open(), recorder, {.text = true, .glyphs = true});
      walker.BeginPage(file.pages(), 0);
      walker.Run();
      const std::string last = recorder.lines.empty() ? "nothing" : recorder.lines.back();
      text += " " + code + last.substr(last.find('['));
    }
    text += "\n";
  }
  EXPECT_TRUE(IsAsExpected("content/first_codes.txt", text));
}

}  // namespace
}  // namespace TarnixTools::pdf
