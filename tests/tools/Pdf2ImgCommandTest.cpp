#include "support/JpegImage.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

class Pdf2ImgCommand : public CliTest {
 protected:
  Pdf2ImgCommand() { WritePdf("book.pdf", 3); }

  // A document with one image on each of two pages.
  void WriteImages(const std::string& name) const {
    const std::string content = "BI /W 8 /H 8 /BPC 1 /CS /G /F /AHx ID 00FF00FF00FF00FF> EI ";
    TestPdf().Page().Content(content).Page().Content(content).Write(Path(name));
  }
};

TEST_F(Pdf2ImgCommand, DrawsPages) {
  EXPECT_EQ(Run({"pdf2img", "--dpi", "9.5", "book.pdf"}).out,
            "book-page-0001.jpg\nbook-page-0002.jpg\nbook-page-0003.jpg\n");
}

TEST_F(Pdf2ImgCommand, TakesItsOptions) {
  const Json json = RunJson({"pdf2img", "-o", "out", "--pages", "2-", "--size", "50x60", "--units",
                             "page", "--dpi", "144", "--prefix", "p", "--no-doc-name", "book.pdf"});
  EXPECT_EQ(json["outputs"], Json({"out/p_page-0002.jpg", "out/p_page-0003.jpg"}));
  const JpegImage image = ReadJpeg(Path("out/p_page-0003.jpg"));
  EXPECT_EQ(image.width, 100);
  EXPECT_EQ(image.height, 120);
}

TEST_F(Pdf2ImgCommand, WritesPngAndGray) {
  EXPECT_EQ(Run({"pdf2img", "--dpi", "9", "--format", "png", "--pages", "1", "book.pdf"}).out,
            "book-page-0001.png\n");
  EXPECT_TRUE(ReadBytes(Path("book-page-0001.png")).starts_with("\x89PNG"));
  EXPECT_EQ(Run({"pdf2img", "--dpi", "9", "--gray", "--quality", "20", "--pages", "1", "book.pdf"})
                .status,
            0);
  EXPECT_EQ(ReadJpeg(Path("book-page-0001.jpg")).components, 1);
  ExpectUsageError(Run({"pdf2img", "--format", "png", "--quality", "5", "book.pdf"}),
                   "--quality has no use here: PNG images lose nothing", "tarnix pdf2img");
  EXPECT_EQ(Run({"pdf2img", "--quality", "0", "book.pdf"}).status, 14);
}

TEST_F(Pdf2ImgCommand, NeverReplacesAnImageOfAnotherInput) {
  WritePdf("other.pdf", 1);
  ExpectUsageError(Run({"pdf2img", "--dpi", "9", "--name", "{n}.jpg", "book.pdf", "other.pdf"}),
                   "outputs of 'other.pdf' and of another input have the same names",
                   "tarnix pdf2img");
  EXPECT_EQ(Run({"pdf2img", "--dpi", "9", "--pages", "1", "book.pdf", "other.pdf"}).out,
            "book-page-0001.jpg\nother-page-0001.jpg\n");
}

TEST_F(Pdf2ImgCommand, TellsAPageThatTheDocumentLacks) {
  ExpectFailure(Run({"pdf2img", "--pages", "2-7", "book.pdf"}), 14,
                "InvalidParameter: No page [7] in document [book.pdf] ([3] pages available)");
}

TEST_F(Pdf2ImgCommand, RefusesWrongUsage) {
  const std::string command = "tarnix pdf2img";
  for (const std::string dpi : {"0", "-3", "nan", "inf", "1e9", "x", ""}) {
    ExpectUsageError(Run({"pdf2img", "--dpi=" + dpi, "book.pdf"}),
                     "--dpi: '" + dpi + "' is not a number from 0.5 to 65535", command);
  }
  for (const std::string size : {"5", "5x", "x5", "5x5x5", "ax5"}) {
    ExpectUsageError(Run({"pdf2img", "--size", size, "book.pdf"}),
                     "--size: '" + size + "' is not a size such as 800x600", command);
  }
  for (const std::string pages : {"1,,2", "a", "-2"}) {
    ExpectUsageError(
        Run({"pdf2img", "--pages=" + pages, "book.pdf"}),
        "--pages: '" + pages + "' is not a list of pages such as 1-3,5,8-,z,r2,z-1,:odd", command);
  }
}

TEST_F(Pdf2ImgCommand, TellsAFailureOfTheTask) {
  const RunResult result = Run({"pdf2img", "--size", "0x5", "book.pdf"});
  ExpectFailure(result, 14, "InvalidParameter: Invalid img dimensions [0 x 5]");
}

TEST_F(Pdf2ImgCommand, ExtractsImagesAsTheyAreStored) {
  WriteImages("art.pdf");
  EXPECT_EQ(Run({"extract-images", "--original", "--pages", "2", "art.pdf"}).out,
            "art-image-0001.png\n");
  EXPECT_TRUE(ReadBytes(Path("art-image-0001.png")).starts_with("\x89PNG"));
  EXPECT_EQ(Run({"extract-images", "--original", "-n", "art.pdf"}).status, 16);
  EXPECT_EQ(Run({"extract-images", "-n", "art.pdf"}).status, 0);
}

TEST_F(Pdf2ImgCommand, ExtractsImagesAndPrintsTheirNamesOnly) {
  WriteImages("scan.pdf");
  EXPECT_EQ(Run({"extract-images", "-o", "out", "scan.pdf"}).out,
            "out/scan-image-0001.jpg\nout/scan-image-0002.jpg\n");
  WriteImages("other.pdf");
  EXPECT_EQ(RunJson({"extract-images", "-o", "out", "scan.pdf", "other.pdf"})["outputs"].size(),
            4U);
  EXPECT_EQ(RunJson({"extract-images", "-o", "out", "--pages", "2", "scan.pdf"})["outputs"],
            Json::array({"out/scan-image-0001.jpg"}));
  ExpectFailure(Run({"extract-images", "book.pdf"}), 18,
                "NoImagesFound: No images found at PDF file [book.pdf]");
}

}  // namespace
}  // namespace TarnixTools::testing
