// tarnix pdfa.
#include "support/RawPdf.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;

class PdfACommand : public CliTest {
 protected:
  PdfACommand() { WriteFile("doc.pdf", RawPdf().Pages(2).Table()); }
};

TEST_F(PdfACommand, WritesAValidDocument) {
  const auto result = Run({"pdfa", "doc.pdf", "--level", "2b"});
  EXPECT_EQ(result.out, "doc-pdfa.pdf\n") << result.err;
  EXPECT_EQ(Run({"validate", "doc-pdfa.pdf"}).out, "doc-pdfa.pdf: valid PDF/A-2b\n");
  EXPECT_EQ(PagesOf("doc-pdfa.pdf"), 2);
}

TEST_F(PdfACommand, TellsTheLevelThatWasReached) {
  const Json result = RunJson({"pdfa", "doc.pdf", "--level", "1b", "-o", "out", "--name", "a.pdf"});
  EXPECT_EQ(result["compliance"], "1b");
  EXPECT_EQ(result["outputs"], Json({"out/a.pdf"}));
  EXPECT_NE(RunJson({"pdfa", "doc.pdf"})["compliance"], nullptr);
}

TEST_F(PdfACommand, ChecksItsOptions) {
  ExpectUsageError(Run({"pdfa", "doc.pdf", "--level", "4"}),
                   "--level: '4' is none of 1a|1b|2a|2b|2u|3a|3b|3u", "tarnix pdfa");
  EXPECT_EQ(Run({"pdfa", "doc.pdf", "--allow-downgrade"}).status, 2);
  WriteFile("text.pdf", "no document");
  const auto result = Run({"pdfa", "text.pdf"});
  EXPECT_EQ(result.status, 23);
  EXPECT_THAT(result.err, HasSubstr("(not a PDF document)"));
  EXPECT_FALSE(HasFile("text-pdfa.pdf"));
}

TEST_F(PdfACommand, NeedsTheRightPassword) {
  WriteProtectedPdf("secret.pdf", "pw");
  EXPECT_EQ(Run({"pdfa", "secret.pdf"}).status, 11);
  const auto result = Run({"pdfa", "secret.pdf", "--password", "pw"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.err,
              HasSubstr("protection dropped: the input is protected, the output is not"));
}

}  // namespace
}  // namespace TarnixTools::testing
