// tarnix xmp.
#include "support/TestPackets.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;

class XmpCommand : public CliTest {
 protected:
  void WriteWithPacket(const std::string& name, const std::string& packet) const {
    TestPdf()
        .Page()
        .Object("packet", "<</Type/Metadata/Subtype/XML/Length " + std::to_string(packet.size()) +
                              ">>\nstream\n" + packet + "\nendstream")
        .CatalogEntry("/Metadata {{packet}}")
        .Write(Path(name));
  }
};

TEST_F(XmpCommand, WritesThePacket) {
  WriteWithPacket("doc.pdf", TestPacket(""));
  EXPECT_EQ(Run({"xmp", "doc.pdf"}).out, "doc.xmp\n");
  EXPECT_EQ(ReadBytes(Path("doc.xmp")), TestPacket(""));
  EXPECT_EQ(Run({"xmp", "doc.pdf", "-o", "out", "--name", "a"}).out, "out/a\n");
  EXPECT_EQ(Run({"xmp", "doc.pdf", "-o", "b.xmp"}).out, "b.xmp\n");
  EXPECT_EQ(ReadBytes(Path("b.xmp")), ReadBytes(Path("out/a")));
  EXPECT_EQ(RunJson({"xmp", "doc.pdf"})["outputs"], Json({"doc.xmp"}));
}

TEST_F(XmpCommand, WritesOneThatSaysNothing) {
  WritePdf("doc.pdf", 1);
  EXPECT_EQ(Run({"xmp", "doc.pdf"}).err, "");
  EXPECT_THAT(ReadBytes(Path("doc.xmp")), HasSubstr("<rdf:RDF"));
}

TEST_F(XmpCommand, NeedsTheRightPassword) {
  WriteProtectedPdf("secret.pdf", "pw");
  ExpectFailure(Run({"xmp", "secret.pdf"}), 11,
                "PasswordError: Unable to open PDF file [secret.pdf] for XMP extraction");
  EXPECT_FALSE(HasFile("secret.xmp"));
  EXPECT_EQ(Run({"xmp", "secret.pdf", "--password", "pw"}).status, 0);
}

TEST_F(XmpCommand, HasAClaimThatInfoTells) {
  WriteWithPacket("doc.pdf", TestPacket(ClaimOf("2")));
  EXPECT_EQ(RunJson({"info", "doc.pdf"})["files"][0]["claims"], "2b");
  EXPECT_THAT(Run({"info", "doc.pdf"}).out, HasSubstr("  claims      PDF/A-2b\n"));
}

}  // namespace
}  // namespace TarnixTools::testing
