// Documents with all that can be left out, merged and coded anew, and what is written of them.
#include <array>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/OptimizedDocument.h"
#include "pdf/write/DocumentText.h"
#include "support/Expected.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"
#include "support/TestImage.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::Deflated;
using testing::RawPdf;

std::string ReportText(const OptimizerReport& report) {
  std::ostringstream text;
  for (const TPdfOptimizeReportEntry& entry : report.entries) {
    text << static_cast<int>(entry.kind) << ' ' << static_cast<int>(entry.outcome) << ' '
         << entry.count << ' ' << entry.reason << '\n';
  }
  const FontReport& fonts = report.fonts;
  text << "fonts " << fonts.programs << ' ' << fonts.merged << ' ' << fonts.dropped << ' '
       << fonts.bytes_before << ' ' << fonts.bytes_after << " left";
  for (const std::size_t count : fonts.left_alone) {
    text << ' ' << count;
  }
  return text.str() + "\n";
}

class WholeStructure : public ::testing::Test {
 protected:
  std::string Written(const std::string& bytes, const OptimizerSettings& settings) {
    testing::WriteBytes(directory_.Path("in.pdf"), bytes);
    OptimizedDocument document(platform::WidePath(directory_.Path("in.pdf")), "");
    const OptimizerReport report =
        document.Save(platform::WidePath(directory_.Path("out.pdf")), {.settings = settings});
    return ReportText(report) +
           testing::DocumentText(testing::ReadBytes(directory_.Path("out.pdf"))) + "\n";
  }

  testing::TempDir directory_;
};

// Padding that is sure to be left out, so that the document becomes smaller in any case.
RawPdf& Padded(RawPdf& file) {
  return file.Stream(90, "", std::string(4000, 'x'));
}

std::string StrippedDocument() {
  RawPdf file;
  file.Object(
          1,
          "<</Type/Catalog/Pages 2 0 R/Threads[20 0 R]/PieceInfo<</A<<>>>>/StructTreeRoot 30 0 R"
          "/MarkInfo<</Marked true>>/SpiderInfo<</V 1>>/LastModified(D:2020)"
          "/Names<</IDS<<>>/URLS<<>>/Dests<</Names[(a)[3 0 R/Fit]]>>>>"
          "/ViewerPreferences 40 0 R/Metadata 50 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2>>")
      .Object(
          3,
          "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 5 0 R/B[21 0 R 22 0 R]"
          "/Metadata 51 0 R/LastModified(D:2020)/PieceInfo<</A<<>>>>/StructParents 0/Thumb 6 0 R"
          "/ID(an id)/BoxColorInfo<<>>/Resources<</XObject<</F 7 0 R/I 8 0 R>>/Font<</Metadata 9 0 "
          "R"
          "/StructParent 9 0 R>>>>/Annots[10 0 R]>>")
      .Object(4,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/LastModified(D:2020)/PieceInfo(none)"
              "/StructParents(none)/ID 4/Metadata<</Type/Own>>>>")
      .Stream(5, "/Metadata 51 0 R",
              "/F Do /I Do BT /Metadata 9 Tf (a) Tj /StructParent 9 Tf (b) Tj ET")
      .Stream(6, "/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", "x")
      .Stream(7,
              "/Type/XObject/Subtype/Form/BBox[0 0 9 9]/LastModified(D:2020)/PieceInfo<<>>"
              "/StructParents 1/ID(form)/Metadata 51 0 R",
              "0 0 9 9 re f")
      .Stream(
          8,
          "/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray"
          "/ID(image)/StructParent 2/Alternates[<</Image 6 0 R>>]/Metadata 52 0 R"
          "/LastModified(D:2020)/PieceInfo<<>>/Thumb 6 0 R",
          "x")
      .Object(9, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Metadata 51 0 R/PieceInfo<<>>>>")
      .Object(10,
              "<</Type/Annot/Subtype/Square/Rect[0 0 9 9]/StructParent 3/A<</S/Thread/D 20 0 R>>>>")
      .Object(20, "<</F 21 0 R/I<</Title(article)>>>>")
      .Object(21, "<</T 20 0 R/N 22 0 R/V 22 0 R/P 3 0 R/R[0 0 9 9]>>")
      .Object(22, "<</N 21 0 R/V 21 0 R/P 3 0 R/R[0 9 9 9]>>")
      .Object(30, "<</Type/StructTreeRoot/K[31 0 R 32 0 R]/ParentTree<</Nums[0[31 0 R]]>>>>")
      .Object(31, "<</Type/StructElem/S/P/P 30 0 R/K[0 33 0 R<</Type/MCR/MCID 1/Pg 3 0 R>>]>>")
      .Object(32, "[34 0 R 3 0 R]")
      .Object(33, "<</S/Span/P 31 0 R/K 5>>")
      .Object(34, "<</S/P/P 30 0 R/K<</Type/OBJR/Obj 10 0 R>>>>")
      .Object(40,
              "<</PrintArea/CropBox/PrintClip/CropBox/PrintScaling/None/Duplex/Simplex"
              "/PickTrayByPDFSize true/PrintPageRange[1 1]/NumCopies 2/Enforce[/PrintScaling]"
              "/HideToolbar true>>")
      .Stream(50, "/Type/Metadata/Subtype/XML", "<x/>")
      .Stream(51, "/Type/Metadata/Subtype/XML", "<y/>")
      .Stream(52, "/Subtype/XML", "<z/>");
  return Padded(file).Table();
}

// Each bit of what may be left out, and none and all of them.
TEST_F(WholeStructure, OfWhatIsStripped) {
  const std::string bytes = StrippedDocument();
  std::string text;
  for (const std::uint32_t strip :
       {0x0U, 0x1U, 0x2U, 0x4U, 0x8U, 0x10U, 0x20U, 0x40U, 0x400U, 0x47FU}) {
    OptimizerSettings settings = *ProfileSettings(kDefaultProfile);
    settings.strip = strip;
    text += "strip " + std::to_string(strip) + "\n" + Written(bytes, settings);
  }
  EXPECT_TRUE(testing::IsAsExpected("optimizer/stripped.txt", text));
}

// Print settings and names that stand in the catalog.
TEST_F(WholeStructure, OfWhatIsStrippedInPlace) {
  std::string text;
  for (const char* entries :
       {"/Names<</IDS<<>>/URLS<<>>>>", "/Names<</IDS<<>>/AP<<>>>>", "/Names<</AP<<>>>>",
        "/ViewerPreferences<</PrintArea/CropBox/PrintClip/CropBox/PrintScaling/None/Duplex/Simplex"
        "/PickTrayByPDFSize true/PrintPageRange[1 1]/NumCopies 2/Enforce[/PrintScaling]>>",
        "/ViewerPreferences<</NumCopies 2/HideToolbar true>>", "/ViewerPreferences<<>>",
        "/Threads[<</F 5 0 R>> 6 0 R]", "/StructTreeRoot<</K 7 0 R>>/Threads 4"}) {
    RawPdf file;
    file.Object(1,
                "<</Type/Catalog/Pages 2 0 R/Own[5 0 R 6 0 R 7 0 R]" + std::string(entries) + ">>")
        .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]>>")
        .Object(5, "<</N 5 0 R/V 5 0 R/R[0 0 9 9]>>")
        .Object(6, "<</I<</Title(no thread)>>>>")
        .Object(7, "<</S/P/K 3 0 R>>");
    OptimizerSettings settings = *ProfileSettings(kDefaultProfile);
    settings.strip = 0x47F;
    text += std::string(entries) + "\n" + Written(Padded(file).Table(), settings);
  }
  EXPECT_TRUE(testing::IsAsExpected("optimizer/stripped_in_place.txt", text));
}

const std::string kForm = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";

// Resources by every way to have them, each of them with some that nothing uses.
std::string DocumentWithResources() {
  RawPdf file;
  const std::string font = "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Name";
  file.Object(1,
              "<</Type/Catalog/Pages 2 0 R/AcroForm<</DA(/Form 9 Tf)/DR<</Font<</Form 70 0 R>>>>"
              "/Fields[24 0 R]>>/Own 15 0 R>>")
      .Object(2,
              "<</Type/Pages/Kids[3 0 R 4 0 R 5 0 R 6 0 R]/Count 4/Resources<</Font<</A 70 0 R/B "
              "71 0 R>>"
              "/XObject<</Gone 30 0 R>>>>>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 10 0 R>>")
      .Object(4,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Resources 20 0 R"
              "/Annots[24 0 R]>>")
      .Object(
          5,
          "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 12 0 R/Resources<</Font 21 0 R"
          "/XObject<</F 31 0 R/G 32 0 R>>/ProcSet[/PDF]/Properties<</P<</Type/OCG/Name(p)>>"
          "/Q<</Type/OCG/Name(q)>>>>>>>>")
      .Object(
          6,
          "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 13 0 R/Resources<</Font 21 0 R"
          "/ColorSpace<</C[/Indexed/DeviceRGB 0<000000>]/DefaultRGB[/CalRGB<</WhitePoint[1 1 1]>>]"
          "/Z/DeviceGray>>/ExtGState<</E<</Font[72 0 R 9]>>/F<<>>>>/Pattern<</P 33 0 R/O 34 0 R>>"
          "/Shading<</S 35 0 R/R 35 0 R>>>>>>")
      .Stream(10, "", "BT /A 9 Tf (a) Tj ET")
      .Stream(11, "", "BT /A 9 Tf (a) Tj ET /X Do")
      .Stream(12, "", "BT /C 9 Tf (a) Tj ET /F Do /OC /P BDC EMC")
      .Stream(13, "", "/C cs 0 sc /E gs /Pattern cs /P scn 0 0 9 9 re f /S sh BT /D 9 Tf (d) Tj ET")
      .Object(15, "[22 0 R]")
      .Object(20, "<</Font<</A 70 0 R/Field 71 0 R/No 72 0 R>>/XObject 22 0 R>>")
      .Object(21, "<</C 70 0 R/D 71 0 R/E 72 0 R>>")
      .Object(22, "<</X 30 0 R/Y 31 0 R>>")
      .Object(
          24,
          "<</Type/Annot/Subtype/Widget/FT/Tx/T(t)/Rect[0 0 9 9]/DA(/Field 9 Tf)/AP<</N 36 0 R>>>>")
      .Stream(30, kForm + "/Resources<</Font<</A 70 0 R/B 71 0 R>>>>", "BT /B 9 Tf (a) Tj ET")
      .Stream(31, kForm, "BT /E 9 Tf (a) Tj ET")
      .Stream(32, kForm + "/Resources 23 0 R", "BT /A 9 Tf (a) Tj ET")
      .Stream(33,
              "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9"
              "/Resources<</Font<</A 70 0 R/B 71 0 R>>/XObject<</I 37 0 R/J 37 0 R>>>>",
              "BT /B 9 Tf (a) Tj ET /I Do")
      .Stream(34,
              "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9/Resources<<>>",
              "")
      .Object(35,
              "<</ShadingType 2/ColorSpace/DeviceGray/Coords[0 0 9 9]/Function<</FunctionType 2"
              "/Domain[0 1]/N 1>>>>")
      .Stream(36, kForm + "/Resources<</Font<</Field 71 0 R/Other 72 0 R>>>>", "BT ET")
      .Stream(37, kForm + "/Resources<</Font<</A 70 0 R/A 71 0 R/B 72 0 R>>>>",
              "BT /A 9 Tf (a) Tj ET")
      .Object(70, font + "/A>>")
      .Object(71, font + "/B>>")
      .Object(72,
              "<</Type/Font/Subtype/Type3/FontBBox[0 0 1 1]/FontMatrix[1 0 0 1 0 0]/CharProcs<</a "
              "73 0 R>>"
              "/Encoding<</Differences[97/a]>>/FirstChar 97/LastChar 97/Widths[1]"
              "/Resources<</XObject<</U 30 0 R/V 30 0 R>>>>>>")
      .Stream(73, "", "1 0 d0 /U Do");
  return Padded(file).Table();
}

TEST_F(WholeStructure, OfUnusedResources) {
  OptimizerSettings settings = *ProfileSettings(kDefaultProfile);
  settings.optimizes_resources = true;
  EXPECT_TRUE(
      testing::IsAsExpected("optimizer/unused.txt", Written(DocumentWithResources(), settings)));
}

// Pairs of what is the same, but for one thing or the other.
std::string DocumentWithPairs() {
  RawPdf file;
  std::string fonts;
  std::string objects;
  std::string states;
  int number = 20;
  const auto pair = [&](const std::string& one, const std::string& other) {
    for (const std::string& object : {one, other}) {
      const std::string text = std::to_string(number);
      states += "/E" + text + " " + text + " 0 R";
      file.Object(number++, object);
    }
  };
  const auto streams = [&](const std::string& entries, const std::string& data,
                           const std::string& other_entries, const std::string& other) {
    const std::string text = std::to_string(number);
    objects +=
        "/X" + text + " " + text + " 0 R/Y" + text + " " + std::to_string(number + 1) + " 0 R";
    file.Stream(number, entries, data).Stream(number + 1, other_entries, other);
    number += 2;
  };
  pair("<</Type/ExtGState/LW 1/CA 0.5>>", "<</CA .50/LW 1/Type/ExtGState/Own null>>");
  pair("<</LW 1>>", "<</LW 1.0>>");
  pair("<</LW 2/Name(a)>>", "<</LW 2/Name<61>>>");
  pair("<</LW 3/StructParent 1>>", "<</LW 3/StructParent 1>>");
  pair("<</Type/Own/LW 4>>", "<</Type/Own/LW 4>>");
  pair("<</Type/Page/LW 4>>", "<</Type/Page/LW 4>>");
  pair("[/DeviceGray 60 0 R]", "[/DeviceGray 61 0 R]");
  pair("<</SMask<</S/Alpha/G 62 0 R>>>>", "<</SMask<</S/Alpha/G 63 0 R>>>>");
  pair("<</OC 60 0 R>>", "<</OC 61 0 R>>");
  pair("<</LW -0.50>>", "<</LW -.5>>");
  pair("<</LW +7>>", "<</LW 007>>");
  streams(kForm, "0 0 1 1 re f", kForm, "0 0 1 1 re f");
  streams(kForm, "0 0 2 1 re f", kForm, "0 0 2 2 re f");
  streams(kForm, "0 0 3 1 re f", kForm + "/Matrix[1 0 0 1 0 0]", "0 0 3 1 re f");
  streams(kForm, "0 0 4 1 re f", kForm, "0 0 4 1 re f ");
  streams(kForm + "/OC 60 0 R", "0 0 5 1 re f", kForm + "/OC 61 0 R", "0 0 5 1 re f");
  streams(kForm + "/Resources<</XObject<</A 62 0 R>>>>", "/A Do",
          kForm + "/Resources<</XObject<</A 63 0 R>>>>", "/A Do");
  file.Object(1,
              "<</Type/Catalog/Pages 2 0 R/AcroForm<</DR<</ExtGState<</A 60 0 R/B 61 0 R>>>>>>>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 5 0 R/Resources 7 0 R"
              "/Annots[<</Subtype/Square/Rect[0 0 9 9]/AP<</N 64 0 R>>>>]>>")
      .Object(
          4,
          "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents[6 0 R 5 0 R]/Resources 8 0 R"
          "/Group<</CS 66 0 R>>/Annots[<</Subtype/Square/Rect[0 0 9 9]/AP<</N<</On 65 0 R>>>>>>]>>")
      .Stream(5, "", "0 0 9 9 re f")
      .Stream(6, "", "0 0 9 9 re f")
      .Object(7, "<</ExtGState<<" + states + ">>/XObject<<" + objects +
                     ">>/Font<</A 68 0 R/B 69 0 R>>>>")
      .Object(8, "<</ExtGState<<" + states + ">>/XObject<<" + objects +
                     ">>/Font<</A 68 0 R/B 69 0 R>>>>")
      .Object(60, "<</LW 60>>")
      .Object(61, "<</LW 60>>")
      .Stream(62, kForm, "1 0 0 rg")
      .Stream(63, kForm, "1 0 0 rg")
      .Stream(64, kForm, "0 1 0 rg")
      .Stream(65, kForm, "0 1 0 rg")
      .Object(66, "[/ICCBased 67 0 R]")
      .Stream(67, "/N 3", "a profile")
      .Object(68, "<</Type/Font/Subtype/Type1/BaseFont/A/FontDescriptor 75 0 R/Widths 77 0 R>>")
      .Object(69, "<</Type/Font/Subtype/Type1/BaseFont/A/FontDescriptor 76 0 R/Widths 78 0 R>>")
      .Object(75, "<</Type/FontDescriptor/Flags 4/FontFile 79 0 R>>")
      .Object(76, "<</Flags 4/Type/FontDescriptor/FontFile 80 0 R>>")
      .Object(77, "[1 2]")
      .Object(78, "[1 2]")
      .Stream(79, "", "%!PS")
      .Stream(80, "", "%!PS");
  return Padded(file).Table();
}

TEST_F(WholeStructure, OfDuplicates) {
  OptimizerSettings settings = *ProfileSettings(kDefaultProfile);
  const std::string before = Written(DocumentWithPairs(), settings);
  settings.removes_redundant_objects = true;
  EXPECT_TRUE(testing::IsAsExpected("optimizer/duplicates.txt",
                                    before + Written(DocumentWithPairs(), settings)));
}

// Every filter, and what has none: which of them are coded anew, and how.
TEST_F(WholeStructure, OfRecodedStreams) {
  std::string rows;
  for (int y = 0; y < 40; ++y) {
    rows += '\2';  // the row above and this one are alike
    for (int x = 0; x < 30; ++x) {
      rows += static_cast<char>(y == 0 ? (x * x * 7) % 251 : 1);
    }
  }
  const std::string text = "0 0 9 9 re f " + std::string(300, ' ') + "1 1 8 8 re f";
  const std::string predictor = "<</Predictor 12/Columns 30>>";
  RawPdf file;
  std::string streams;
  int number = 20;
  const auto add = [&](const std::string& entries, const std::string& data) {
    streams += " " + std::to_string(number) + " 0 R";
    file.Stream(number++, entries, data);
  };
  add("", text);
  add("/Filter/FlateDecode", Deflated(text));
  add("/Filter/FlateDecode/DecodeParms" + predictor, Deflated(rows));
  add("/Filter[/FlateDecode]/DecodeParms[" + predictor + "]", Deflated(rows));
  add("/Filter/FlateDecode/DP" + predictor, Deflated(rows));
  add("/Filter[/ASCIIHexDecode/FlateDecode]/DecodeParms[null null]", "78>");
  add("/Filter/ASCIIHexDecode", "303132333435363738393031323334353637383930313233343536373839>");
  add("/Filter/ASCII85Decode", "<+oue+DGm>@3BW&~>");
  add("/Filter/RunLengthDecode", std::string("\x81x\x81x\x80", 5));
  add("/Filter/LZWDecode", std::string("\x80\x0B\x60\x50\x22\x0C\x0C\x85\x01", 9));
  add("/Filter/DCTDecode", "no picture");
  add("/Filter[/FlateDecode/DCTDecode]", Deflated("no picture"));
  add("/Filter/MyDecode", text);
  add("/F(elsewhere)", text);
  add("/FFilter/FlateDecode", text);
  add("/Type/Metadata/Subtype/XML", text);
  add("/Type/Metadata/Subtype/XML/Filter/FlateDecode", Deflated(text));
  add("", "");
  add("", "abc");
  add("/Filter/FlateDecode", Deflated(text).substr(0, 20));
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/Own[" + streams + "]>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents[20 0 R 21 0 R]>>");
  const std::string written = Written(Padded(file).Table(), *ProfileSettings(kDefaultProfile));
  // And how they are coded.
  std::istringstream lines(testing::ReadBytes(directory_.Path("out.pdf")));
  std::string coded;
  for (std::string line; std::getline(lines, line);) {
    coded += line.starts_with("<<") && line.find("/Length") != std::string::npos &&
                     line.find("/XRef") == std::string::npos &&
                     line.find("/ObjStm") == std::string::npos
                 ? line.substr(0, line.find("/Length")) + "\n"
                 : "";
  }
  EXPECT_TRUE(testing::IsAsExpected("optimizer/recoded.txt", written + coded));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
