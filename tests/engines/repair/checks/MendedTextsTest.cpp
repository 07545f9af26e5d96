// Damaged documents: what is said of each, what is reported of the repair, and what is written.
#include <sstream>

#include "engines/repair/CheckTest.h"
#include "engines/repair/checks/MendedContent.h"
#include "pdf/crypt/Security.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/DocumentText.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Expected.h"
#include "support/JpegImage.h"
#include "support/TestImages.h"
#include "support/TestPackets.h"

namespace TarnixTools::engines::repair {
namespace {

using testing::RawPdf;

std::string Deflated(const std::string& data) {
  std::string deflated;
  pdf::DeflateTo(deflated, data, 6);
  return deflated;
}

std::string Repeated(const std::string& part, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += part;
  }
  return text;
}

class MendedTexts : public CheckTest {
 protected:
  void Add(const std::string& name, const std::string& bytes, const std::string& password = "") {
    testing::WriteBytes(Path("in.pdf"), bytes);
    RepairedDocument document(platform::WidePath(Path("in.pdf")), password);
    document.Analyze(kAnalyzeAll);
    std::ostringstream text;
    text << name << '\n';
    for (const Problem& problem : document.problems().damage()) {
      text << static_cast<int>(problem.code) << ' ' << MessageOf(problem, Tense::kAhead) << '\n';
    }
    for (const Problem& problem : document.problems().lint()) {
      text << "- " << static_cast<int>(problem.code) << ' ' << MessageOf(problem, Tense::kAhead)
           << '\n';
    }
    const RepairReport report = document.Save(platform::WidePath(Path("out.pdf")),
                                              {.is_repaired = true, .is_rebuilt = true});
    for (const TPdfRepairReportEntry& entry : report) {
      text << "report " << static_cast<int>(entry.kind) << ' ' << entry.is_lost << ' '
           << entry.count << ' ' << entry.reason << '\n';
    }
    text_ += text.str() + testing::DocumentText(Output()) + "\n";
  }

  void Expect(const std::string& name) {
    EXPECT_TRUE(testing::IsAsExpected("repair/mended_" + name + ".txt", text_));
  }

 private:
  std::string text_;
};

TEST_F(MendedTexts, OfPages) {
  for (const char* rotate : {"45", "-90", "450", "90.0", "90.5", "(90)", "-135", "null"}) {
    Add(rotate, OnePage("/Rotate " + std::string(rotate)).Table());
  }
  for (const char* box :
       {"[9 9 0 0]", "[0 0 0 9]", "[0 0 9]", "[0 0 9 9 9]", "[0 0(a)9]", "[0 0 1e9 9]"}) {
    Add(box, OnePage("/CropBox" + std::string(box)).Table());
  }
  for (const char* kids :
       {"<</Type/Page>>", "<</Type/Page>>3 0 R", "3 0 R<</Type/Page/Own 1/MediaBox 5>>",
        "<</Type/Page/MediaBox[0 0 7 7]>>", "4 0 R<</Type/Page>>"}) {
    const std::string count = std::string(kids).find("R<<") == std::string::npos ? "1" : "2";
    Add(kids, RawPdf()
                  .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
                  .Object(2, "<</Type/Pages/Kids[" + std::string(kids) + "]/Count " + count + ">>")
                  .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 33 44]>>")
                  .Object(4, "<</Type/Page/Parent 2 0 R>>")
                  .Table());
  }
  Expect("pages");
}

TEST_F(MendedTexts, OfContent) {
  for (const char* content :
       {"BI/W 1/H 1/BPC 8/CS/G ID x", "BI/W 1/H 1/BPC 8/CS/G ID x EI odd", "BI/W 1 1 w",
        "BX odd BX even EX 1 EX EX 1 w odd", "[1 2] 0 d [1 2 0 d 1 w", "[(a) 1 Tc [(b)] TJ 1 w",
        "[(a) [(b)] 3 Tw ] TJ odd", "] 1 w odd", "q q Q BT BMC BT ET odd", "EMC Q ET EX Q 1 w odd",
        "/P BMC /P <</A 1>> BDC EMC odd", "1 2 3 4 5 re f", "(a) (b) ' odd", "<41> Tj <4 Tj",
        "1 w\n% odd\n2 w even", "/A /B gs << /C 1 w", "0 0 m 1 1 l 1 c S odd"}) {
    Add(content, OnePage("/Contents 10 0 R").Stream(10, "", content).Table());
  }
  Expect("content");
}

TEST_F(MendedTexts, OfContentThatIsShared) {
  RawPdf file;
  const std::string form = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]/Own 4";
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(
          2,
          "<</Type/Pages/Kids[3 0 R 4 0 R<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 5 0 R"
          ">>]/Count 3>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents[5 0 R 6 0 R]/Resources<<"
              "/XObject<</F 7 0 R/G 8 0 R>>/Pattern<</P 9 0 R>>/Font<</T 10 0 R>>>>"
              "/Annots[<</Subtype/Square/Rect[0 0 9 9]/AP<</N 12 0 R>>>>]>>")
      .Object(4, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents[5 0 R 6 0 R]>>")
      .Stream(5, "", "q odd")
      .Stream(6, "", "/F Do /G Do /Pattern cs /P scn BT /T 9 Tf (a) Tj ET Q odd")
      .Stream(7, form + "/Filter/FlateDecode", Deflated("1 w odd"))
      .Stream(8, form, "1 w (cut")
      .Stream(9, "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9",
              "q 1 w odd")
      .Object(10,
              "<</Type/Font/Subtype/Type3/FontBBox[0 0 1 1]/FontMatrix[1 0 0 1 0 0]/CharProcs<</a "
              "11 0 R"
              ">>/Encoding<</Differences[97/a]>>/FirstChar 97/LastChar 97>>")
      .Stream(11, "", "1 0 d0 odd")
      .Stream(12, form, "1 w BT odd");
  Add("shared", file.Table());
  Expect("shared");
}

TEST_F(MendedTexts, OfContentInParts) {
  for (const char* contents :
       {"[20 0 R 21 0 R]", "[21 0 R 22 0 R 20 0 R]", "[20 0 R 23 0 R 22 0 R]", "[20 0 R 24 0 R]",
        "[24 0 R]", "[20 0 R 99 0 R]", "99 0 R", "[20 0 R<<>>22 0 R]", "[(none)]",
        "[[20 0 R]22 0 R]", "25 0 R", "[20 0 R 20 0 R]", "[26 0 R 22 0 R]", "[27 0 R 22 0 R]", "[]",
        "29 0 R", "[29 0 R]", "[20 0 R 29 0 R 22 0 R]", "[29 0 R(none)]"}) {
    Add(contents, OnePage("/Contents " + std::string(contents))
                      .Stream(20, "", "q 1 w odd")
                      .Stream(21, "", "1 0 0")
                      .Stream(22, "", "rg Q odd")
                      .Stream(23, "", "(cut")
                      .Object(24, "(no stream)")
                      .Object(25, "[20 0 R 22 0 R]")
                      .Stream(26, "", "[(a) 1 Tc")
                      .Stream(27, "", "BI/W 1/H 1/BPC 8/CS/G ID x EI BI/W 1 ID EI odd")
                      .Object(29, "<<>>")
                      .Table());
  }
  Expect("parts");
}

// An array that does not end within a thousand operators is none.
TEST(MendedContent, LooksThroughAThousandOperatorsForTheEndOfAnArray) {
  for (const int count : {1, 999, 1000, 1001}) {
    std::string content = "[(a) 1 w ";
    std::string others;
    for (int i = 1; i < count; ++i) {
      others += "0 g\n";
    }
    const std::string mended = MendedContent(content + others + "(b)] TJ 2 w");
    if (count <= 1000) {
      EXPECT_EQ(mended, "[(a)1" + Repeated(" 0", count - 1) + "(b)]TJ\n2 w\n") << count;
    } else {
      EXPECT_EQ(mended.substr(0, others.size()), others);
      EXPECT_EQ(mended.substr(mended.size() - 4), "2 w\n");
    }
  }
}

TEST_F(MendedTexts, OfResources) {
  for (const char* resources : {"<</Font[1]/XObject<<>>/Own 1>>",
                                "<</ColorSpace 1/ExtGState 1/Font 1/Pattern 1/Properties 1"
                                "/Shading 1/XObject 1>>",
                                "20 0 R", "21 0 R", "[1]"}) {
    Add(resources, OnePage("/Resources " + std::string(resources))
                       .Object(20, "<</Font 4/XObject<<>>>>")
                       .Object(21, "4")
                       .Table());
  }
  for (const char* font :
       {"<</Type/Font/Subtype/Type1/BaseFont/Symbol>>", "<</Type/Font/Subtype/Type1/BaseFont/Own>>",
        "<</Type/Font/Subtype/Odd>>", "<</Type/Font/Subtype/Type3/CharProcs<<>>>>",
        "<</Type/Font/Subtype/Type1/BaseFont/Own/Widths[1]/FontDescriptor<</FontFile 20 0 R>>>>",
        "<</Type/Font/Subtype/Type1/BaseFont/Own/Widths[1]/FontDescriptor 22 0 R>>",
        "<</Type/Font/Subtype/Type1/BaseFont/Courier/ToUnicode 20 0 R>>",
        "<</Type/Font/Subtype/Type1/BaseFont/Courier/ToUnicode 23 0 R>>",
        "<</Type/Font/Subtype/Type1/BaseFont/Courier/ToUnicode 24 0 R>>",
        "<</Type/Font/Subtype/Type0/Encoding 20 0 R/DescendantFonts[<</Subtype/CIDFontType2"
        "/FontDescriptor 22 0 R>>]>>"}) {
    for (const bool is_object : {false, true}) {
      RawPdf file =
          OnePage(std::string("/Resources<</Font<</F ") + (is_object ? "10 0 R" : font) + ">>>>");
      file.Object(10, font)
          .Stream(20, "", "no program")
          .Object(
              22,
              "<</Type/FontDescriptor/FontFile 20 0 R/FontFile2 20 0 R/FontFile3 20 0 R/Flags 4>>")
          .Stream(23, "", "")
          .Stream(24, "", "1 beginbfchar <01> <0041> endbfchar");
      Add(std::string(font) + (is_object ? ", an object" : ""), file.Table());
    }
  }
  Expect("resources");
}

TEST_F(MendedTexts, OfImages) {
  const std::string size = "/Width 4/Height 2";
  const std::string eight = size + "/BitsPerComponent 8/ColorSpace";
  const std::string jpeg = "/Filter/DCTDecode/BitsPerComponent 8/Width 16/Height 8";
  const std::vector<std::pair<std::string, std::string>> images = {
      {eight + "/DeviceGray", "1234567"},
      {eight + "/DeviceRGB", "1234567"},
      {eight + "/DeviceCMYK", "1234567"},
      {eight + "[/ICCBased 21 0 R]", "1234567"},
      {eight + "[/Indexed/DeviceRGB 0<000000>]", "1234567"},
      {eight + "[/Separation/A/DeviceRGB 22 0 R]", "1234567"},
      {eight + "/DeviceGray/Filter/FlateDecode", Deflated("1234567")},
      {size + "/BitsPerComponent 1/ColorSpace/DeviceGray", "1"},
      {size + "/BitsPerComponent 1/ImageMask true", "1"},
      {"/Width 9/Height 2/BitsPerComponent 1/ColorSpace/DeviceGray", "123"},
      {"/Width 8/Height 2/BitsPerComponent 1/ImageMask true", "1"},
      {"/Width 0/Height 2/BitsPerComponent 8/ColorSpace/DeviceGray", "1"},
      {"/Width 2/Height 0/BitsPerComponent 8/ColorSpace/DeviceGray", "1"},
      {"/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", ""},
      {"/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", "1"},
      {size + "/BitsPerComponent 4/ColorSpace/DeviceRGB", "12345678901"},
      {size + "/BitsPerComponent 16/ColorSpace/DeviceGray", "123456789012345"},
      {eight + "/Odd", std::string(7, 'x')},
      {eight + "/Odd", std::string(8, 'x')},
      {eight + "/Odd", std::string(23, 'x')},
      {eight + "/Odd", std::string(24, 'x')},
      {eight + "/Odd", std::string(31, 'x')},
      {eight + "/Odd", std::string(32, 'x')},
      {"/Width 4/BitsPerComponent 8/ColorSpace/DeviceGray", "1"},
      {"/Height 4/Filter/CCITTFaxDecode/BitsPerComponent 1/ColorSpace/DeviceGray", "1"},
      {eight + "/DeviceGray/SMask/None", "12345678"},
      {eight + "/DeviceGray/SMask[0 1]", "12345678"},
      {eight + "/DeviceGray/Mask[0 1]", "12345678"},
      {eight + "/DeviceGray/SMask 23 0 R", "12345678"},
      {eight + "/DeviceGray/Mask 24 0 R", "12345678"},
      {jpeg + "/ColorSpace/DeviceGray", testing::TestJpeg(1)},
      {jpeg, testing::TestJpeg(1)},
      {jpeg, testing::TestJpeg(3)},
      {jpeg + "/ColorSpace/Odd", testing::TestJpeg(4)},
      {"/Filter/DCTDecode/Width 17/Height 8/ColorSpace/DeviceGray", testing::TestJpeg(1)},
      {"/Filter/DCTDecode/Width 16/Height 9/ColorSpace/DeviceGray", testing::TestJpeg(1)},
      {"/Filter[/FlateDecode/DCTDecode]/Width 16/ColorSpace/DeviceGray",
       Deflated(testing::TestJpeg(1))},
      {"/Filter/JPXDecode", "no picture"},
  };
  for (const auto& [entries, data] : images) {
    Add(entries + (entries.find("Flate") != std::string::npos
                       ? ""
                       : ", " + std::to_string(data.size()) + " bytes"),
        OnePage("/Resources<</XObject<</I 20 0 R>>>>")
            .Stream(20, "/Type/XObject/Subtype/Image" + entries, data)
            .Stream(21, "/N 3", "")
            .Stream(22, "/FunctionType 4/Domain[0 1]/Range[0 1 0 1 0 1]", "{0 0}")
            .Stream(23, "/Type/XObject/Subtype/Image" + eight + "/DeviceGray", "12345678")
            .Object(24, "<</No/Stream>>")
            .Table());
  }
  Expect("images");
}

TEST_F(MendedTexts, OfStreams) {
  const std::vector<std::pair<std::string, std::string>> streams = {
      {"/Filter/FlateDecode", std::string("\x78\x01\x01\x0A\x00\xF5\xFF"
                                          "abc",
                                          10)},  // of ten bytes
      {"/Filter/FlateDecode", "no data"},
      {"/Filter[/ASCIIHexDecode/FlateDecode]/DecodeParms[null<</Predictor 1>>]", "zz"},
      {"/Filter[/ASCIIHexDecode/DCTDecode]/DecodeParms[null<</ColorTransform 0>>]", "4x>"},
      {"/Own 1/Filter[/ASCIIHexDecode/DCTDecode]/DecodeParms[null<</ColorTransform 0>>]", "4x>"},
      {"/Own 1/F[/ASCIIHexDecode/DCTDecode]/DP[null<</ColorTransform 0>>]", "4x>"},
      {"/Filter[/Crypt/ASCIIHexDecode/DCTDecode]/DecodeParms[null null<</A 0>>]", "4x>"},
      {"/Filter/ASCIIHexDecode/DecodeParms<</A 0>>", "4x>"},
      {"/Filter[/ASCIIHexDecode/MyDecode/FlateDecode]", "41zz"},
      {"/Filter[/MyDecode]", "41"},
      {"/Filter/ASCII85Decode", "abc~z"},
      {"/Filter/LZWDecode", "\xFF\xFF\xFF"},
      {"/Filter/RunLengthDecode", "\x05xy"},
      {"/Filter/DCTDecode", "no picture"},
      {"/Filter/FlateDecode/DecodeParms<</Predictor 12/Columns 4>>", Deflated("\7aaaa\2bbbb")},
      {"/F(elsewhere)/Filter/FlateDecode", "no data"},
      {"/Own 1/F[/FlateDecode]/DP[null]", "no data"},
  };
  for (const auto& [entries, data] : streams) {
    Add(entries, RawPdf().Pages(1).Stream(4, entries, data).Table("/Root 1 0 R/Own 4 0 R"));
  }
  Expect("streams");
}

TEST_F(MendedTexts, OfFiles) {
  const auto raw = [] { return RawPdf().Pages(1); };
  const std::string sound = raw().Table();
  for (const char* header :
       {"%PDF-1.0", "%PDF-1.9", "%PDF-2.0", "%PDF-0.9", "%PDF-1,4", "%PDF-1.", "%PDF-"}) {
    Add(header, With(sound, "%PDF-1.7", header));
  }
  for (const std::size_t count : {1018U, 1019U, 1020U, 1023U, 1024U, 1025U}) {
    Add(std::to_string(count) + " spaces", sound + std::string(count, ' '));
  }
  Add("junk and spaces", sound + "  \n\0 x");
  for (const char* size : {"3", "4", "5", "8388608", "8388609", "99999999"}) {
    Add(std::string("size ") + size, With(sound, "/Size 4", std::string("/Size ") + size));
  }
  Add("no size", With(sound, "/Size 4", "/Was 4"));
  Add("information that is null", raw().Table("/Root 1 0 R/Info null"));
  Add("information that is missing", raw().Table("/Root 1 0 R/Info 99 0 R"));
  Add("information in place", raw().Table("/Root 1 0 R/Info<</Title(a)>>"));
  Add("information that is a number", raw().Table("/Root 1 0 R/Info 4"));
  Add("a key that stands twice in the trailer", raw().Table("/Root 1 0 R/Own 1/Own 2"));
  Add("linearized", raw().Object(9, "<</Linearized 1/L 4/H[1 2]/O 3/E 5/N 1/T 6>>").Table());
  Add("a packet that cannot be read", raw()
                                          .Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 9 0 R>>")
                                          .Stream(9, "/Type/Metadata", "<x")
                                          .Table());
  Add("a claim",
      raw()
          .Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 9 0 R>>")
          .Stream(9, "/Type/Metadata/Subtype/XML", testing::TestPacket(testing::ClaimOf("2")))
          .Table());
  Add("a signature",
      raw()
          .Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<</SigFlags 3/Fields[9 0 R]>>>>")
          .Object(9, "<</FT/Sig/T(s)/V 10 0 R/Subtype/Widget/Rect[0 0 0 0]>>")
          .Object(10, "<</Type/Sig/Filter/Adobe.PPKLite/ByteRange[0 1 2 3]/Contents<00>>>")
          .Table());
  Expect("files");
}

// By AES data has a vector and whole blocks, 16 bytes each.
TEST_F(MendedTexts, OfEncryptedDataThatIsNoWholeBlocks) {
  const auto source_bytes =
      RawPdf().Pages(1).Stream(4, "/Own 1", "sound").Table("/Root 1 0 R/Own 4 0 R");
  const auto source = testing::OpenBytes(source_bytes);
  const pdf::Security security = pdf::Security::Create("", "owner", -44);
  const std::string sound = testing::RewrittenBytes(*source, {.security = &security});
  const std::size_t length = sound.find("/Own 1/Length 32>>");
  const std::size_t end = sound.find("\nendstream", length);
  ASSERT_NE(length, std::string::npos);
  ASSERT_NE(end, std::string::npos);
  const auto messages = [&](const std::string& bytes) {
    Repair(bytes);
    std::string text;
    for (const std::string& message : Messages()) {
      text += message.find("bytes)") != std::string::npos ? message + "\n" : "";
    }
    return text;
  };
  EXPECT_EQ(messages(sound), "");
  for (const std::size_t size : {16U, 31U, 33U, 47U, 48U}) {
    std::string bytes = sound;
    if (size < 32) {
      bytes.erase(end + size - 32, 32 - size);
    } else {
      bytes.insert(end, std::string(size - 32, 'x'));
    }
    const std::string count = std::to_string(size);
    bytes.replace(length + 14, 2, count);
    EXPECT_EQ(
        messages(bytes),
        size == 48 ? "" : "Object 4: encrypted data is not whole (" + count + " bytes); lost\n");
  }
}

// Only AES says twice what is allowed, and differently here.
TEST_F(MendedTexts, OfPermissionsThatAreNotGenuine) {
  const auto source_bytes = RawPdf().Pages(1).Table();
  const auto source = testing::OpenBytes(source_bytes);
  const pdf::Security security = pdf::Security::Create("", "owner", -44);
  std::string bytes = testing::RewrittenBytes(*source, {.security = &security});
  const std::size_t at = bytes.find("/P -44");
  ASSERT_NE(at, std::string::npos);
  bytes.replace(at, 6, "/P -40");
  testing::WriteBytes(Path("in.pdf"), bytes);
  RepairedDocument document(platform::WidePath(Path("in.pdf")), "");
  document.Analyze(kAnalyzeAll);
  ASSERT_EQ(document.problems().damage().size(), 1U);
  EXPECT_EQ(MessageOf(document.problems().damage()[0], Tense::kDone),
            "The encryption dictionary is damaged (Perms); worked around");
}

}  // namespace
}  // namespace TarnixTools::engines::repair
