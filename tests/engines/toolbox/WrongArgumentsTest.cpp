// Every operation of the document engine refuses arguments that make no sense, and takes those that
// only just do.
#include <array>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/toolbox/ErrorCodes.h"
#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Toolbox.h"
#include "support/MemoryFile.h"
#include "support/TestImages.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using ::TarnixTools::testing::TestPdf;
using ::TarnixTools::testing::TestPng;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

template <typename Handle>
struct Closer {
  void operator()(Handle* handle) const { PdfClose(handle); }
};

template <typename Handle>
using Owned = std::unique_ptr<Handle, Closer<Handle>>;

template <typename Handle>
Owned<Handle> Own(Handle* handle) {
  return Owned<Handle>(handle);
}

// Whether a call failed as it does for its arguments.
template <typename Call>
bool Refuses(Call&& call) {
  SetLastError(kToolboxNoError);
  const bool failed = call() == decltype(call()){};
  return failed && PdfGetLastError() == kToolboxArgumentError;
}

// Whether a call gave a handle, which is closed.
template <typename Call>
bool Gives(Call&& call) {
  return PdfClose(call()) == 1;
}

// A source with two pages and two targets, each with a copy of the first page.
class WrongArguments : public ::testing::Test {
 protected:
  WrongArguments() {
    const TPdfStream in = input_.Descriptor();
    source_ = PdfDocumentOpenA(&in, "");
    const TPdfStream out = output_.Descriptor();
    target_ = PdfDocumentCreateW(&out, 0, nullptr);
    const TPdfStream other_out = other_output_.Descriptor();
    other_ = PdfDocumentCreateW(&other_out, 0, nullptr);
    pages_ = Own(PdfDocumentGetPages(source_));
    page_ = Own(PdfPageListGet(pages_.get(), 0));
    copy_ = Own(PdfDocumentCopyPage(target_, page_.get(), 15));
    other_copy_ = Own(PdfDocumentCopyPage(other_, page_.get(), 15));
  }

  ~WrongArguments() override {
    EXPECT_EQ(PdfDocumentDiscard(target_), 1);
    EXPECT_EQ(PdfDocumentDiscard(other_), 1);
    EXPECT_EQ(PdfDocumentDiscard(source_), 1);
    EXPECT_EQ(input_.releases, 1);
    EXPECT_EQ(output_.releases, 1);
  }

  MemoryFile input_{TestPdf().Pages(2).Bytes()};
  MemoryFile output_;
  MemoryFile other_output_;
  TPdfDocument* source_ = nullptr;
  TPdfDocument* target_ = nullptr;
  TPdfDocument* other_ = nullptr;
  Owned<TPdfPageList> pages_;
  Owned<TPdfPage> page_;
  Owned<TPdfPage> copy_;
  Owned<TPdfPage> other_copy_;
};

TEST_F(WrongArguments, OfDocuments) {
  EXPECT_TRUE(Refuses([&] { return PdfDocumentOpenA(nullptr, ""); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentCreateW(nullptr, 0, nullptr); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentSetReport(source_, nullptr, nullptr); }));
  EXPECT_EQ(PdfDocumentSetReport(target_, nullptr, nullptr), 1);
  EXPECT_TRUE(Refuses([&] { return PdfDocumentSetOutlineHeading(source_, source_, "a"); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentSetOutlineHeading(target_, target_, "a"); }));
  EXPECT_EQ(PdfDocumentSetOutlineHeading(target_, source_, nullptr), 0);
  EXPECT_EQ(PdfDocumentSetOutlineHeading(target_, source_, "a"), 1);
  EXPECT_EQ(PdfDocumentIsEncrypted(target_), 0);
  TPdfSummary summary;
  EXPECT_TRUE(Refuses([&] { return PdfDocumentGetSummary(target_, &summary); }));
  EXPECT_EQ(PdfDocumentGetSummary(source_, nullptr), 0);
  EXPECT_EQ(PdfDocumentGetSummary(source_, &summary), 1);
}

TEST_F(WrongArguments, OfPages) {
  const auto copies = Own(PdfDocumentGetPages(target_));
  const auto list = copies.get();
  EXPECT_EQ(PdfPageListGetCount(pages_.get()), 2);
  EXPECT_EQ(PdfPageListGetCount(list), 0);
  EXPECT_TRUE(Refuses([&] { return PdfPageListGet(list, 0); }));
  EXPECT_TRUE(Refuses([&] { return PdfPageListGet(pages_.get(), -1); }));
  EXPECT_TRUE(Refuses([&] { return PdfPageListGet(pages_.get(), 2); }));
  EXPECT_TRUE(Gives([&] { return PdfPageListGet(pages_.get(), 1); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentCopyPage(source_, page_.get(), 15); }));
  EXPECT_TRUE(Refuses([&] { return PdfPageListAppend(pages_.get(), copy_.get()); }));
  EXPECT_TRUE(Refuses([&] { return PdfPageListAppend(list, page_.get()); }));
  EXPECT_TRUE(Refuses([&] { return PdfPageListAppend(list, other_copy_.get()); }));
  EXPECT_EQ(PdfPageListAppend(list, copy_.get()), 1);
  EXPECT_EQ(PdfPageListGetCount(list), 1);
  EXPECT_TRUE(Refuses([&] { return PdfPageRotate(page_.get(), 90); }));
  for (const int angle : {1, 45, 89, 91, -89, 135}) {
    EXPECT_TRUE(Refuses([&] { return PdfPageRotate(copy_.get(), angle); })) << angle;
  }
  for (const int angle : {0, 90, -90, 180, 270, 360, -450}) {
    EXPECT_EQ(PdfPageRotate(copy_.get(), angle), 1) << angle;
  }
  TPdfSize size;
  EXPECT_EQ(PdfPageGetSize(copy_.get(), nullptr), 0);
  EXPECT_EQ(PdfPageGetSize(copy_.get(), &size), 1);
}

TEST_F(WrongArguments, OfDocumentInformation) {
  const auto metadata = Own(PdfDocumentGetMetadata(target_));
  char buffer[4] = {'x', 'x', 'x', 'x'};
  EXPECT_TRUE(Refuses([&] { return PdfMetadataGetTitleA(metadata.get(), nullptr, 4); }));
  EXPECT_TRUE(Refuses([&] { return PdfMetadataGetTitleA(metadata.get(), buffer, 0); }));
  EXPECT_TRUE(Refuses([&] { return PdfMetadataGetTitleA(metadata.get(), buffer, -1); }));
  EXPECT_EQ(std::string(buffer, 4), "xxxx");
  EXPECT_TRUE(Refuses([&] { return PdfMetadataSetTitleA(metadata.get(), nullptr, 0); }));
  EXPECT_TRUE(Refuses([&] { return PdfMetadataSetTitleA(metadata.get(), "a", -1); }));
  EXPECT_EQ(PdfMetadataSetTitleA(metadata.get(), "abc", 3), 1);
  EXPECT_EQ(PdfMetadataGetTitleA(metadata.get(), buffer, 1), 1);
  EXPECT_EQ(std::string(buffer, 4), std::string("\0xxx", 4));
  EXPECT_EQ(PdfMetadataGetTitleA(metadata.get(), buffer, 3), 1);
  EXPECT_EQ(std::string(buffer, 4), std::string("ab\0x", 4));
  EXPECT_EQ(PdfMetadataSetTitleA(metadata.get(), "", 0), 1);
  EXPECT_EQ(PdfMetadataGetTitleA(metadata.get(), buffer, 4), 1);
  EXPECT_EQ(std::string(buffer, 4), std::string("\0b\0x", 4));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentCopyMetadata(source_, metadata.get()); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentSetMetadata(source_, metadata.get()); }));
  EXPECT_TRUE(Gives([&] { return PdfDocumentCopyMetadata(target_, metadata.get()); }));
  for (const auto keep : {PdfDocumentKeepMetadata, PdfDocumentKeepClaim}) {
    EXPECT_TRUE(Refuses([&] { return keep(source_, source_); }));
    EXPECT_TRUE(Refuses([&] { return keep(target_, target_); }));
    EXPECT_TRUE(Refuses([&] { return keep(source_, target_); }));
    EXPECT_EQ(keep(target_, source_), 1);
  }
  const auto proof = [](std::FILE*) { return 1; };
  EXPECT_TRUE(Refuses([&] { return PdfDocumentSetClaimProof(source_, proof, stdin); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentSetClaimProof(target_, nullptr, stdin); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentSetClaimProof(target_, proof, nullptr); }));
}

TEST_F(WrongArguments, OfPaint) {
  const auto space = Own(PdfDocumentCreateDeviceColorSpace(target_, 2));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentCreateDeviceColorSpace(source_, 2); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentCreateDeviceColorSpace(target_, 1); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentCreateDeviceColorSpace(target_, 3); }));
  const auto paint = [&](TPdfDocument* document, double alpha, std::array<double, 3> values,
                         int count) {
    return PdfDocumentCreateAlphaPaint(document, space.get(), alpha, values.data(), count);
  };
  EXPECT_TRUE(Gives([&] { return paint(target_, 0, {0, 0, 0}, 3); }));
  EXPECT_TRUE(Gives([&] { return paint(target_, 1, {1, 1, 1}, 3); }));
  EXPECT_TRUE(Refuses([&] { return paint(source_, 1, {1, 1, 1}, 3); }));
  EXPECT_TRUE(
      Refuses([&] { return PdfDocumentCreateAlphaPaint(target_, space.get(), 1, nullptr, 3); }));
  for (const double value : {-0.001, 1.001, kNan, kInfinite}) {
    EXPECT_TRUE(Refuses([&] { return paint(target_, value, {0, 0, 0}, 3); })) << value;
    EXPECT_TRUE(Refuses([&] { return paint(target_, 1, {value, 0, 0}, 3); })) << value;
    EXPECT_TRUE(Refuses([&] { return paint(target_, 1, {0, value, 0}, 3); })) << value;
    EXPECT_TRUE(Refuses([&] { return paint(target_, 1, {0, 0, value}, 3); })) << value;
  }
  EXPECT_TRUE(Refuses([&] { return paint(target_, 1, {0, 0, 0}, 2); }));
  EXPECT_TRUE(Refuses([&] { return paint(target_, 1, {0, 0, 0}, 4); }));
}

TEST_F(WrongArguments, OfText) {
  const auto font_of = [](TPdfDocument* document, const char* name) {
    return PdfDocumentCreateSystemFontA(document, name, nullptr, 1);
  };
  EXPECT_TRUE(Refuses([&] { return font_of(source_, "Liberation Sans"); }));
  EXPECT_TRUE(Refuses([&] { return font_of(target_, nullptr); }));
  EXPECT_TRUE(Refuses([&] { return PdfDocumentCreateText(source_); }));
  const auto font = Own(font_of(target_, "Liberation Sans"));
  const auto text = Own(PdfDocumentCreateText(target_));
  const auto other_text = Own(PdfDocumentCreateText(other_));
  ASSERT_NE(font, nullptr);
  const auto generator_of = [&](const Owned<TPdfText>& of, double size) {
    return PdfNewTextGenerator(of.get(), font.get(), size, 0);
  };
  EXPECT_TRUE(Refuses([&] { return generator_of(other_text, 12); }));
  for (const double size : {0.0, -1.0, kNan, kInfinite}) {
    EXPECT_TRUE(Refuses([&] { return generator_of(text, size); })) << size;
  }
  EXPECT_TRUE(Gives([&] { return generator_of(text, 0.001); }));
  EXPECT_EQ(PdfFontHasStyleA(font.get(), nullptr), 0);
  EXPECT_EQ(PdfFontHasStyleA(nullptr, "Bold"), 0);
  const auto generator = Own(generator_of(text, 10));
  const auto moves = [&](double x, double y) {
    const TPdfPoint point{x, y};
    return PdfTextGeneratorMoveTo(generator.get(), &point);
  };
  EXPECT_EQ(PdfTextGeneratorMoveTo(generator.get(), nullptr), 0);
  EXPECT_EQ(moves(-1, 1), 1);
  for (const double value : {kNan, kInfinite, -kInfinite}) {
    EXPECT_TRUE(Refuses([&] { return moves(value, 0); })) << value;
    EXPECT_TRUE(Refuses([&] { return moves(0, value); })) << value;
  }
  EXPECT_EQ(PdfTextGeneratorSetRendering(generator.get(), nullptr, nullptr, 1), 0);
  EXPECT_EQ(PdfTextGeneratorGetWidthA(generator.get(), nullptr), 0);
  const auto painter_of = [](const Owned<TPdfPage>& page) {
    const auto content = Own(PdfPageGetContent(page.get()));
    return Own(PdfNewContentGenerator(content.get(), false));
  };
  const auto painter = painter_of(copy_);
  const auto other_painter = painter_of(other_copy_);
  EXPECT_EQ(PdfContentGeneratorPaintText(painter.get(), text.get()), 1);
  EXPECT_TRUE(
      Refuses([&] { return PdfContentGeneratorPaintText(other_painter.get(), text.get()); }));
}

TEST_F(WrongArguments, OfContent) {
  EXPECT_TRUE(Refuses([&] { return PdfPageGetContent(page_.get()); }));
  const auto content = Own(PdfPageGetContent(copy_.get()));
  const auto painter = Own(PdfNewContentGenerator(content.get(), false));
  EXPECT_TRUE(Refuses([&] { return PdfContentGeneratorRestore(painter.get()); }));
  EXPECT_EQ(PdfContentGeneratorSave(painter.get()), 1);
  EXPECT_EQ(PdfContentGeneratorRestore(painter.get()), 1);
  EXPECT_TRUE(Refuses([&] { return PdfContentGeneratorRestore(painter.get()); }));
  const auto turn = Own(PdfNewTransformationIdentity());
  EXPECT_EQ(PdfContentGeneratorTransform(painter.get(), turn.get()), 1);
  EXPECT_EQ(PdfContentGeneratorTransform(painter.get(), nullptr), 0);
  for (const double value : {kNan, kInfinite, -kInfinite}) {
    EXPECT_TRUE(Refuses([&] { return PdfTransformationTranslate(turn.get(), value, 0); })) << value;
    EXPECT_TRUE(Refuses([&] { return PdfTransformationTranslate(turn.get(), 0, value); })) << value;
    EXPECT_TRUE(Refuses([&] { return PdfTransformationRotate(turn.get(), value); })) << value;
  }
  constexpr double kMost = std::numeric_limits<double>::max();
  EXPECT_EQ(PdfTransformationTranslate(turn.get(), kMost, 0), 1);
  EXPECT_EQ(PdfContentGeneratorTransform(painter.get(), turn.get()), 1);
  EXPECT_EQ(PdfTransformationTranslate(turn.get(), kMost, 0), 1);
  EXPECT_TRUE(Refuses([&] { return PdfContentGeneratorTransform(painter.get(), turn.get()); }));
}

TEST_F(WrongArguments, OfPictures) {
  MemoryFile file;
  file.bytes = TestPng().Bytes();
  const TPdfStream stream = file.Descriptor();
  EXPECT_TRUE(Refuses([&] { return PdfDocumentCreateImage(source_, &stream); }));
  EXPECT_EQ(PdfDocumentCreateImage(target_, nullptr), nullptr);
  EXPECT_EQ(file.releases, 0);
  TPdfImage* image = PdfDocumentCreateImage(target_, &stream);
  ASSERT_NE(image, nullptr);
  const auto content = Own(PdfPageGetContent(copy_.get()));
  const auto painter = Own(PdfNewContentGenerator(content.get(), false));
  const auto paint = [&](const TPdfRectangle& place, double alpha = 1) {
    return PdfContentGeneratorPaintAlphaImage(painter.get(), image, &place, alpha);
  };
  EXPECT_EQ(paint({1, 2, 3, 4}), 1);
  EXPECT_EQ(paint({3, 4, 1, 2}), 1);
  EXPECT_EQ(paint({1, 2, 3, 4}, 0), 1);
  EXPECT_EQ(paint({0, 0, 1, 1}), 1);
  for (const double value : {1.0, kNan, kInfinite}) {
    EXPECT_TRUE(Refuses([&] { return paint({1, 2, value, 4}); })) << value;
    EXPECT_TRUE(Refuses([&] { return paint({1, 1, 3, value}); })) << value;
  }
  EXPECT_TRUE(Refuses([&] { return paint({1, 2, 3, 4}, -0.001); }));
  EXPECT_TRUE(Refuses([&] { return paint({1, 2, 3, 4}, 1.001); }));
  EXPECT_TRUE(Refuses([&] { return paint({1, 2, 3, 4}, kNan); }));
  EXPECT_EQ(PdfContentGeneratorPaintImage(painter.get(), image, nullptr), 0);
  const auto other_content = Own(PdfPageGetContent(other_copy_.get()));
  const auto other_painter = Own(PdfNewContentGenerator(other_content.get(), false));
  const TPdfRectangle place{1, 2, 3, 4};
  EXPECT_TRUE(
      Refuses([&] { return PdfContentGeneratorPaintImage(other_painter.get(), image, &place); }));
  EXPECT_EQ(PdfClose(image), 1);
  EXPECT_EQ(file.releases, 1);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
