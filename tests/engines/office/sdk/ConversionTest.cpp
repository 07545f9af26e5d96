// What becomes of each request, and what is told of it.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/sdk/Conversion.h"
#include "foundation/Utf8.h"
#include "support/Expected.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::office {
namespace {

using ConversionSdk::ConversionRequest;
using ConversionSdk::OfficeFormat;
using testing::IsAsExpected;
using testing::TestPdf;

class Events : public ConversionSdk::ConversionEvents {
 public:
  void Progress(std::int32_t page, std::int32_t page_count) override {
    progress += " " + std::to_string(page) + "/" + std::to_string(page_count);
    if (throws) {
      throw 1;
    }
  }

  void Warning(std::int32_t page, const std::wstring& text) override {
    warnings += "warning of page " + std::to_string(page) + ": " + WideToUtf8(text) + "\n";
  }

  std::string progress;
  std::string warnings;
  bool throws = false;
};

class ConversionTest : public ::testing::Test {
 protected:
  // A document of three pages: a table, one whose size is large, one that is damaged.
  ConversionTest() {
    TestPdf pdf;
    pdf.Page().PageEntry(kFont).Content(Table());
    pdf.Page("Large").NoMediaBox().PageEntry("/MediaBox[0 0 1700 1000]");
    pdf.Page().PageEntry("/Resources<</XObject<</X {{x}}>>>>").Content("/X Do");
    pdf.Object("x",
               "<</Type/XObject/Subtype/Form/BBox[0 0 9 9]/Filter/FlateDecode/Length 4>>stream\n"
               "abcd\nendstream");
    request_.source_files = {Utf8ToWide(pdf.Write(directory_.Path("a.pdf")))};
    request_.output_file = Utf8ToWide(directory_.Path("out"));
    request_.output_type = static_cast<std::int32_t>(ConversionSdk::WordOutputType::Docx);
    log_.SetFile(directory_.Path("log"));
  }

  static std::string Table() {
    std::string content = "0.5 w ";
    for (int i = 0; i < 4; ++i) {
      content +=
          "72 " + std::to_string(700 - 20 * i) + " m 272 " + std::to_string(700 - 20 * i) + " l S ";
    }
    for (const char* x : {"72", "172", "272"}) {
      content += std::string(x) + " 700 m " + x + " 640 l S ";
    }
    for (int i = 0; i < 6; ++i) {
      content += "BT /F 10 Tf " + std::to_string(76 + 100 * (i % 2)) + " " +
                 std::to_string(686 - 20 * (i / 2)) + " Td (Cell " + std::to_string(i) + ") Tj ET ";
    }
    return content;
  }

  // Its log and what the host was told; file names without their directory.
  std::string Converted(const ConversionRequest& request, bool throws = false,
                        bool is_cancelled = false) {
    testing::WriteBytes(directory_.Path("log"), "");
    ConversionSdk::ConversionState state;
    state.is_cancelled = is_cancelled;
    Events events;
    events.throws = throws;
    const std::int32_t status = Convert(request, state, events, log_);
    std::string text = testing::ReadBytes(directory_.Path("log"));
    text += "status " + std::to_string(status) + ", pages" + events.progress + ", done " +
            std::to_string(state.pages_done) + " of " + std::to_string(state.page_count) +
            (state.system_error != 0 ? ", for the system" : "") + "\n" + events.warnings;
    for (const ConversionSdk::ConversionFinding& finding : state.TakeFindings()) {
      text += "page " + std::to_string(finding.page) + " lost " +
              std::to_string(static_cast<int>(finding.loss)) + ": " + WideToUtf8(finding.why) +
              "\n";
    }
    const std::string directory = directory_.Path("");
    for (std::size_t at = text.find(directory); at != std::string::npos;
         at = text.find(directory)) {
      text.erase(at, directory.size());
    }
    return text + (testing::Exists(WideToUtf8(request.output_file)) ? "there is an output\n\n"
                                                                    : "there is none\n\n");
  }

  static constexpr const char* kFont =
      "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>>>";

  testing::TempDir directory_;
  ConversionRequest request_;
  ConversionLog log_;
};

TEST_F(ConversionTest, RefusesSettingsWithoutAMeaning) {
  std::string text;
  const auto with = [&](const char* name, auto change) {
    ConversionRequest request = request_;
    change(request);
    text += std::string("== ") + name + "\n" + Converted(request);
  };
  with("no source", [](ConversionRequest& it) { it.source_files.clear(); });
  with("two sources", [](ConversionRequest& it) { it.source_files.push_back(it.source_files[0]); });
  with("no range", [](ConversionRequest& it) { it.page_range = L"x"; });
  with("no output", [](ConversionRequest& it) { it.output_file.clear(); });
  with("no type", [](ConversionRequest& it) { it.output_type = 3; });
  with("that of a workbook", [](ConversionRequest& it) { it.output_type = 1; });
  with("slides of a type", [](ConversionRequest& it) { it.format = OfficeFormat::kPowerPoint; });
  with("a workbook of another type",
       [](ConversionRequest& it) { it.format = OfficeFormat::kExcel; });
  with("no format", [](ConversionRequest& it) { it.format = static_cast<OfficeFormat>(7); });
  with("no mode", [](ConversionRequest& it) {
    it.reconstruction_mode = static_cast<ConversionSdk::ReconstructionMode>(1);
  });
  with("no directory", [](ConversionRequest& it) { it.output_file += L"/none/out"; });
  with("no file", [](ConversionRequest& it) { it.source_files[0] += L".none"; });
  with("no document", [&](ConversionRequest& it) {
    testing::WriteBytes(directory_.Path("b.pdf"), "no document");
    it.source_files[0] = Utf8ToWide(directory_.Path("b.pdf"));
  });
  EXPECT_TRUE(IsAsExpected("office/refused-conversions.txt", text));
}

TEST_F(ConversionTest, TellsWhatItDoes) {
  std::string text;
  text += "== a document\n" + Converted(request_);
  text += "== again\n" + Converted(request_);
  request_.may_overwrite = true;
  text += "== over it\n" + Converted(request_);
  request_.output_file += L"2";
  request_.page_range = L"1,3";
  text += "== two pages\n" + Converted(request_);
  request_.page_range = L"1";
  text += "== with a listener that throws\n" + Converted(request_, true);
  text += "== cancelled\n" + Converted(request_, false, true);
  request_.format = OfficeFormat::kPowerPoint;
  request_.output_type = 0;
  request_.page_range = L"1-2";
  text += "== slides\n" + Converted(request_);
  request_.page_range = L"2";
  text += "== the large one\n" + Converted(request_);
  request_.output_file += L"3";
  request_.format = OfficeFormat::kExcel;
  request_.output_type = 1;
  text += "== a workbook without tables\n" + Converted(request_);
  request_.page_range = L"";
  text += "== a workbook\n" + Converted(request_);
  EXPECT_TRUE(IsAsExpected("office/conversions.txt", text));
}

// Twenty letters that no name tells, and more of them than of others.
TEST_F(ConversionTest, TellsWhereFontsDoNotTellTheirText) {
  const auto loss = [this](std::size_t untold, std::size_t told) {
    TestPdf pdf;
    pdf.Page().Content("BT /F 10 Tf 100 700 Td (" + std::string(untold, 'A') +
                       std::string(told, 'B') + ") Tj ET");
    pdf.InheritedEntry(
        "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Own"
        "/Encoding<</Differences[2/g18 65/g19/B]>>>>>>>>");
    request_.source_files = {Utf8ToWide(pdf.Write(directory_.Path("b.pdf")))};
    request_.text_recovery_engine = ConversionSdk::TextRecoveryEngine::Never;
    request_.may_overwrite = true;
    return Converted(request_);
  };
  EXPECT_TRUE(IsAsExpected("office/untold-text.txt",
                           loss(19, 0) + loss(20, 0) + loss(20, 19) + loss(20, 20)));
}

}  // namespace
}  // namespace TarnixTools::engines::office
