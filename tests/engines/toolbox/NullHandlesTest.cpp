// Every operation of the document engine takes a null handle, fails, and leaves the last error as
// it was.
#include <gtest/gtest.h>

#include "engines/toolbox/ErrorCodes.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools::engines::toolbox {
namespace {

class NullHandles : public ::testing::Test {
 protected:
  // Makes a known last error.
  NullHandles() { EXPECT_EQ(PdfDocumentOpenA(nullptr, ""), nullptr); }

  ~NullHandles() override { EXPECT_EQ(PdfGetLastError(), kToolboxArgumentError); }
};

TEST_F(NullHandles, OfDocumentsAndPages) {
  EXPECT_EQ(PdfDocumentSetReport(nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(PdfDocumentIsEncrypted(nullptr), 0);
  EXPECT_EQ(PdfDocumentDiscard(nullptr), 0);
  EXPECT_EQ(PdfDocumentGetPages(nullptr), nullptr);
  EXPECT_EQ(PdfPageListGetCount(nullptr), 0);
  EXPECT_EQ(PdfPageListGet(nullptr, 0), nullptr);
  EXPECT_EQ(PdfPageListAppend(nullptr, nullptr), 0);
  EXPECT_EQ(PdfDocumentCopyPage(nullptr, nullptr, 15), nullptr);
  EXPECT_EQ(PdfPageRotate(nullptr, 90), 0);
  TPdfSize size;
  EXPECT_EQ(PdfPageGetSize(nullptr, &size), 0);
}

TEST_F(NullHandles, OfDocumentInformation) {
  char buffer[8];
  EXPECT_EQ(PdfDocumentGetMetadata(nullptr), nullptr);
  EXPECT_EQ(PdfMetadataGetAuthorA(nullptr, buffer, sizeof buffer), 0);
  EXPECT_EQ(PdfMetadataSetAuthorA(nullptr, "a", 1), 0);
  EXPECT_EQ(PdfDocumentCopyMetadata(nullptr, nullptr), nullptr);
  EXPECT_EQ(PdfDocumentSetMetadata(nullptr, nullptr), 0);
  EXPECT_EQ(PdfDocumentSetClaimProof(nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(PdfDocumentKeepClaim(nullptr, nullptr), 0);
}

TEST_F(NullHandles, OfText) {
  const double values[] = {0, 0, 0};
  const TPdfPoint point;
  EXPECT_EQ(PdfDocumentCreateSystemFontA(nullptr, "Arial", "", 1), nullptr);
  EXPECT_EQ(PdfFontGetAscent(nullptr), 0);
  EXPECT_EQ(PdfFontGetDescent(nullptr), 0);
  EXPECT_EQ(PdfDocumentCreateDeviceColorSpace(nullptr, 2), nullptr);
  EXPECT_EQ(PdfDocumentCreateAlphaPaint(nullptr, nullptr, 1, values, 3), nullptr);
  EXPECT_EQ(PdfDocumentCreateText(nullptr), nullptr);
  EXPECT_EQ(PdfNewTextGenerator(nullptr, nullptr, 12, 0), nullptr);
  EXPECT_EQ(PdfTextGeneratorSetRendering(nullptr, nullptr, nullptr, 1), 0);
  EXPECT_EQ(PdfTextGeneratorGetWidthW(nullptr, L"a"), 0);
  EXPECT_EQ(PdfTextGeneratorGetWidthA(nullptr, "a"), 0);
  EXPECT_EQ(PdfTextGeneratorMoveTo(nullptr, &point), 0);
  EXPECT_EQ(PdfTextGeneratorShowW(nullptr, L"a"), 0);
}

TEST_F(NullHandles, OfContentAndPictures) {
  const TPdfRectangle rectangle;
  const TPdfStream stream;
  EXPECT_EQ(PdfPageGetContent(nullptr), nullptr);
  EXPECT_EQ(PdfNewContentGenerator(nullptr, false), nullptr);
  EXPECT_EQ(PdfContentGeneratorPaintText(nullptr, nullptr), 0);
  EXPECT_EQ(PdfContentGeneratorPaintImage(nullptr, nullptr, &rectangle), 0);
  EXPECT_EQ(PdfContentGeneratorSave(nullptr), 0);
  EXPECT_EQ(PdfContentGeneratorRestore(nullptr), 0);
  EXPECT_EQ(PdfContentGeneratorTransform(nullptr, nullptr), 0);
  EXPECT_EQ(PdfTransformationTranslate(nullptr, 1, 1), 0);
  EXPECT_EQ(PdfTransformationRotate(nullptr, 90), 0);
  EXPECT_EQ(PdfDocumentCreateImage(nullptr, &stream), nullptr);
  EXPECT_EQ(PdfImageGetWidth(nullptr), 0);
  EXPECT_EQ(PdfImageGetHeight(nullptr), 0);
}

template <typename Handle>
int CloseNull() {
  return PdfClose(static_cast<Handle*>(nullptr));
}

TEST_F(NullHandles, Closed) {
  EXPECT_EQ(CloseNull<TPdfDocument>(), 0);
  EXPECT_EQ(CloseNull<TPdfPageList>(), 0);
  EXPECT_EQ(CloseNull<TPdfPage>(), 0);
  EXPECT_EQ(CloseNull<TPdfMetadata>(), 0);
  EXPECT_EQ(CloseNull<TPdfFont>(), 0);
  EXPECT_EQ(CloseNull<TPdfColorSpace>(), 0);
  EXPECT_EQ(CloseNull<TPdfPaint>(), 0);
  EXPECT_EQ(CloseNull<TPdfText>(), 0);
  EXPECT_EQ(CloseNull<TPdfTextGenerator>(), 0);
  EXPECT_EQ(CloseNull<TPdfContent>(), 0);
  EXPECT_EQ(CloseNull<TPdfContentGenerator>(), 0);
  EXPECT_EQ(CloseNull<TPdfImage>(), 0);
  EXPECT_EQ(CloseNull<TPdfTransformation>(), 0);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
