#include "engines/optimizer/images/CodedPicture.h"

#include <algorithm>
#include <utility>

#include "engines/support/codecs/JpegEncoder.h"
#include "engines/support/codecs/JpegReader.h"

namespace TarnixTools::engines::optimizer {

namespace {

Plane PlaneOf(const SamplePicture& picture) {
  Plane plane(picture.width, picture.height, picture.components, 8);
  for (std::uint32_t y = 0; y < picture.height; ++y) {
    std::copy_n(picture.row(y), picture.row_bytes(), plane.row(y));
  }
  return plane;
}

PictureSpace SpaceFor(int components) {
  return components == 1   ? PictureSpace::kGray
         : components == 3 ? PictureSpace::kRgb
                           : PictureSpace::kCmyk;
}

std::string Joined(const std::vector<DataPiece>& pieces) {
  std::string data;
  for (const DataPiece& piece : pieces) {
    data += piece.held.view();
  }
  return data;
}

CodedPicture CodedOf(const ImageStream& stream) {
  CodedPicture coded;
  coded.width = stream.width;
  coded.height = stream.height;
  coded.bits = stream.bits;
  coded.filter = stream.filter;
  coded.parameters = stream.parameters;
  coded.data = Joined(stream.data);
  return coded;
}

}  // namespace

CodedPicture CodeAsJpeg(const SamplePicture& picture, const JpegChoice& choice) {
  JpegEncoder encoder({.width = picture.width,
                       .height = picture.height,
                       .components = picture.components,
                       .quality = choice.quality,
                       .is_subsampled = choice.is_subsampled,
                       .is_progressive = choice.is_final});
  for (std::uint32_t y = 0; y < picture.height; ++y) {
    encoder.AddRow(picture.row(y));
  }
  CodedPicture coded;
  coded.width = picture.width;
  coded.height = picture.height;
  coded.filter = "DCTDecode";
  coded.data = encoder.Finish();
  return coded;
}

std::optional<SamplePicture> DecodedForLook(const std::string& data) {
  const std::unique_ptr<JpegReader> reader =
      JpegReader::Open(data, -1, kWholePicture, JpegColors::kLightness);
  if (reader == nullptr) {
    return std::nullopt;
  }
  SamplePicture picture;
  picture.width = reader->width();
  picture.height = reader->height();
  picture.components = reader->components();
  picture.samples.resize(picture.row_bytes() * picture.height);
  for (std::uint32_t y = 0; y < picture.height; ++y) {
    if (!reader->ReadRow(picture.samples.data() + y * picture.row_bytes())) {
      return std::nullopt;
    }
  }
  return picture;
}

CodedPicture CodeWithoutLoss(const SamplePicture& picture, bool keeps_space, Packing packing) {
  const PictureSpace space = SpaceFor(picture.components);
  if (keeps_space) {
    return CodedOf(EncodePlane(PlaneOf(picture), space, packing));
  }
  Raster raster;
  raster.space = space;
  raster.color = PlaneOf(picture);
  const EncodedImage encoded = EncodeRaster(std::move(raster), packing);
  const ImageStream& stream = encoded.image;
  CodedPicture coded = CodedOf(stream);
  coded.palette = stream.palette;
  coded.color_space = stream.space == PictureSpace::kGray   ? "/DeviceGray"
                      : stream.space == PictureSpace::kCmyk ? "/DeviceCMYK"
                                                            : "/DeviceRGB";
  coded.decode = "";
  return coded;
}

CodedPicture CodePlane(Plane&& samples) {
  return CodedOf(EncodePlane(std::move(samples), PictureSpace::kNone, Packing::kDense));
}

}  // namespace TarnixTools::engines::optimizer
