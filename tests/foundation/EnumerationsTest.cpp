// The values of the public enumerations: hosts in other languages pass and store them as numbers.
#include <vector>

#include <gtest/gtest.h>

#include "TarnixTools.h"

namespace TarnixTools {
namespace {

// Each enumerator has the value at its own place.
template <typename Enum>
void ExpectValues(const std::vector<Enum>& enumerators, const std::vector<int>& values) {
  EXPECT_EQ(sizeof(Enum), 4U);
  ASSERT_EQ(enumerators.size(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(static_cast<int>(enumerators[i]), values[i]);
  }
}

TEST(Enumerations, OfPlacesAreFixed) {
  using Vertical = PdfTransformVerticalPos;
  ExpectValues<Vertical>({Vertical::Top, Vertical::Bottom, Vertical::Middle, Vertical::Absolute},
                         {0, 1, 2, 3});
  using Horizontal = PdfTransformHorizontalPos;
  ExpectValues<Horizontal>(
      {Horizontal::Left, Horizontal::Center, Horizontal::Right, Horizontal::Absolute},
      {0, 1, 2, 3});
  using Alignment = PdfTransformTextAlignment;
  ExpectValues<Alignment>({Alignment::Left, Alignment::Center, Alignment::Right}, {0, 1, 2});
  ExpectValues<PdfTransformLayerPos>({PdfTransformLayerPos::Over, PdfTransformLayerPos::Under},
                                     {0, 1});
}

TEST(Enumerations, OfDocumentsAreFixed) {
  using Type = PdfTransformType;
  ExpectValues<Type>({Type::AddPageNumber, Type::StampText, Type::StampImage, Type::PdfA},
                     {0, 1, 2, 3});
  using Angle = PdfRotationAngle;
  ExpectValues<Angle>({Angle::Rotate0, Angle::Rotate90, Angle::Rotate180, Angle::Rotate270},
                      {0, 90, 180, 270});
  using Units = PdfSizeUnits;
  ExpectValues<Units>(
      {Units::Centimeters, Units::Millimeters, Units::Custom, Units::Inches, Units::Points},
      {0, 1, 2, 3, 4});
  using Param = PdfMetadataParam;
  ExpectValues<Param>({Param::Author, Param::Keywords, Param::Creator, Param::Producer},
                      {0, 1, 2, 3});
  ExpectValues<PdfSplitMode>({PdfSplitMode::Ranges, PdfSplitMode::FixedInterval}, {0, 1});
}

TEST(Enumerations, OfReportsAreFixed) {
  using Kind = PdfReportKind;
  ExpectValues<Kind>(
      {Kind::Link,          Kind::Annotation, Kind::NamedDestination, Kind::OutlineItem,
       Kind::PageLabel,     Kind::FormField,  Kind::Signature,        Kind::XfaForm,
       Kind::Script,        Kind::Layer,      Kind::Attachment,       Kind::StructureElement,
       Kind::ArticleThread, Kind::Thumbnail,  Kind::OutputIntent,     Kind::ViewerSetting,
       Kind::Resource,      Kind::Damage,     Kind::PageNumber,       Kind::TextStamp,
       Kind::ImageStamp,    Kind::Font,       Kind::Language,         Kind::MetadataValue,
       Kind::XmpPacket,     Kind::PdfAClaim,  Kind::Conversion,       Kind::Protection,
       Kind::ScannedText,   Kind::PageSize},
      {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,
       15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29});
  using Outcome = PdfReportOutcome;
  ExpectValues<Outcome>(
      {Outcome::Kept, Outcome::Renamed, Outcome::Dropped, Outcome::Added, Outcome::Replaced},
      {0, 1, 2, 3, 4});
}

TEST(Enumerations, OfConversionsAreFixed) {
  using Compliance = PdfCompliance;
  ExpectValues<Compliance>({Compliance::None, Compliance::PdfA1B, Compliance::PdfA1A,
                            Compliance::PdfA2B, Compliance::PdfA2U, Compliance::PdfA2A,
                            Compliance::PdfA3B, Compliance::PdfA3U, Compliance::PdfA3A},
                           {0, 0x1401, 0x1402, 0x1701, 0x1702, 0x1703, 0x1711, 0x1712, 0x1713});
  using Level = PdfCompressLevel;
  ExpectValues<Level>({Level::Low, Level::Recommended, Level::Extreme}, {0, 1, 2});
  ExpectValues<Pdf2ImgMode>({Pdf2ImgRenderPages, Pdf2ImgExtractImages}, {0, 1});
  ExpectValues<Pdf2ImgSizeUnits>({Pdf2ImgPixels, Pdf2ImgPageUnits}, {0, 1});
  ExpectValues<Pdf2OfficeConversion>({Pdf2OfficeDocx, Pdf2OfficeXlsx, Pdf2OfficePptx}, {0, 1, 2});
}

TEST(Enumerations, OfImagesAreFixed) {
  using Orientation = Img2PdfOrientation;
  ExpectValues<Orientation>({Orientation::Img2PdfPortrait, Orientation::Img2PdfLandscape}, {0, 1});
  using Size = Img2PdfPageSize;
  ExpectValues<Size>({Size::Img2PdfPageFit, Size::Img2PdfPageA4, Size::Img2PdfPageLetter},
                     {0, 1, 2});
  using Rotation = Img2PdfImgRotation;
  ExpectValues<Rotation>({Rotation::Img2PdfRotNone, Rotation::Img2PdfRot180, Rotation::Img2PdfRot90,
                          Rotation::Img2PdfRot270},
                         {0, 1, 2, 3});
}

}  // namespace
}  // namespace TarnixTools
