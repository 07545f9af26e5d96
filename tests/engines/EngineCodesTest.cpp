// The codes of engines for what fails beneath them: hosts see these numbers.
#include <array>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "engines/img2pdf/Img2PdfFailure.h"
#include "engines/optimizer/OptimizerFailure.h"
#include "engines/parser/ExpaFailure.h"
#include "engines/rasteriser/Pdf2ImgFailure.h"
#include "engines/repair/RepairFailure.h"

namespace TarnixTools::engines {
namespace {

using pdf::ErrorCode;

// In the order of pdf::ErrorCode.
using Codes = std::array<std::int64_t, 11>;

template <typename Errors>
Codes CodesOf() {
  Codes codes{};
  for (std::size_t i = 0; i < codes.size(); ++i) {
    codes.at(i) = Errors::Of(pdf::Error(static_cast<ErrorCode>(i), "why"));
  }
  return codes;
}

template <typename Errors, typename Error, typename Code>
std::int64_t CodeOf(Code code) {
  if constexpr (std::is_constructible_v<Error, Code>) {
    return Errors::Of(Error(code));
  } else {
    return Errors::Of(Error(code, "why"));
  }
}

TEST(EngineCodes, AreThoseOfTheCore) {
  EXPECT_EQ(CodesOf<parser::ExpaErrors>(), (Codes{1, 2, 11, 3, 4, 17, 5, 5, 6, 9, 2}));
  EXPECT_EQ(CodesOf<img2pdf::Img2PdfErrors>(), (Codes{1, 2, 3, 1, 1, 1, 1, 1, 8, 1, 10}));
  EXPECT_EQ(CodesOf<rasteriser::Pdf2ImgErrors>(),
            (Codes{0x80410101, 0x80410110, 0x80410131, 0x80410111, 0x80410111, 0x80410112,
                   0x80410111, 0x80410111, 0x80410111, 0x80410111, 0x80410110}));
  EXPECT_EQ(CodesOf<optimizer::OptimizerErrors>(), (Codes{1, 2, 3, 4, 5, 17, 6, 7, 8, 9, 10}));
  EXPECT_EQ(CodesOf<repair::RepairErrors>(), (Codes{1, 2, 3, 4, 5, 17, 6, 7, 8, 9, 10}));
}

TEST(EngineCodes, AreThoseOfDrawing) {
  const auto code_of = [](DrawingErrorCode code) {
    return CodeOf<rasteriser::Pdf2ImgErrors, DrawingError>(code);
  };
  EXPECT_EQ(code_of(DrawingErrorCode::kFile), 0x80410110);
  EXPECT_EQ(code_of(DrawingErrorCode::kPassword), 0x80410112);
  EXPECT_EQ(code_of(DrawingErrorCode::kNotAPdf), 0x80410111);
  EXPECT_EQ(code_of(DrawingErrorCode::kNoRenderer), 0x80410104);
  EXPECT_EQ(code_of(DrawingErrorCode::kPage), 0x80410120);
  EXPECT_EQ(code_of(DrawingErrorCode::kMemory), 0x80410102);
}

TEST(EngineCodes, AreThoseOfImages) {
  const auto code_of = [](ImageErrorCode code) {
    return CodeOf<img2pdf::Img2PdfErrors, ImageError>(code);
  };
  EXPECT_EQ(code_of(ImageErrorCode::kUnknownFormat), 4);
  EXPECT_EQ(code_of(ImageErrorCode::kUnsupported), 5);
  EXPECT_EQ(code_of(ImageErrorCode::kDamaged), 6);
  EXPECT_EQ(code_of(ImageErrorCode::kLimit), 8);
}

template <typename Errors>
std::array<std::int64_t, 3> OwnCodesOf() {
  return {Errors::kInternal, Errors::kMemory, Errors::kArgument};
}

TEST(EngineCodes, AreTheirOwn) {
  using Own = std::array<std::int64_t, 3>;
  EXPECT_EQ(OwnCodesOf<parser::ExpaErrors>(), (Own{1, 8, 7}));
  EXPECT_EQ(OwnCodesOf<img2pdf::Img2PdfErrors>(), (Own{1, 12, 11}));
  EXPECT_EQ(OwnCodesOf<rasteriser::Pdf2ImgErrors>(), (Own{0x80410101, 0x80410102, 0x80410103}));
  EXPECT_EQ(OwnCodesOf<optimizer::OptimizerErrors>(), (Own{1, 12, 11}));
  EXPECT_EQ(OwnCodesOf<repair::RepairErrors>(), (Own{1, 12, 11}));
  EXPECT_EQ(kExpaCreateError, 10);
  EXPECT_EQ(kExpaNoMetadataError, 12);
  EXPECT_EQ(kExpaMetadataError, 13);
  EXPECT_EQ(kImg2PdfOpenError, 13);
  EXPECT_EQ(kImg2PdfCreateError, 14);
  EXPECT_EQ(kPdf2ImgImageSizeError, 0x80410121);
  EXPECT_EQ(kPdf2ImgPartialPageError, 0x80410122);
  EXPECT_EQ(kPdf2ImgCreateError, 0x80410130);
}

}  // namespace
}  // namespace TarnixTools::engines
