#include "support/JpxImage.h"

#include <memory>
#include <stdexcept>
#include <vector>

#include <openjpeg.h>

#include "support/TempDir.h"

namespace TarnixTools::testing {
namespace {

struct ImageDestroyer {
  void operator()(opj_image_t* image) const noexcept { opj_image_destroy(image); }
};

struct CodecDestroyer {
  void operator()(opj_codec_t* codec) const noexcept { opj_destroy_codec(codec); }
};

struct StreamDestroyer {
  void operator()(opj_stream_t* stream) const noexcept { opj_stream_destroy(stream); }
};

using ImagePtr = std::unique_ptr<opj_image_t, ImageDestroyer>;

ImagePtr ImageOf(OPJ_UINT32 width, OPJ_UINT32 height, OPJ_UINT32 components,
                 const std::string& samples) {
  opj_image_cmptparm_t parameters{};
  parameters.dx = 1;
  parameters.dy = 1;
  parameters.w = width;
  parameters.h = height;
  parameters.prec = 8;
  std::vector<opj_image_cmptparm_t> all(components, parameters);
  ImagePtr image(opj_image_create(components, all.data(),
                                  components == 1 ? OPJ_CLRSPC_GRAY : OPJ_CLRSPC_SRGB));
  image->x1 = width;
  image->y1 = height;
  for (std::size_t i = 0; i < std::size_t{width} * height * components; ++i) {
    image->comps[i % components].data[i / components] = static_cast<unsigned char>(samples[i]);
  }
  return image;
}

}  // namespace

std::string EncodeJpx(int width, int height, int components, const std::string& samples,
                      float ratio) {
  const TempDir directory;
  const std::string path = directory.Path("image.jp2");
  const ImagePtr image = ImageOf(static_cast<OPJ_UINT32>(width), static_cast<OPJ_UINT32>(height),
                                 static_cast<OPJ_UINT32>(components), samples);
  opj_cparameters_t parameters;
  opj_set_default_encoder_parameters(&parameters);
  parameters.tcp_numlayers = 1;
  parameters.tcp_rates[0] = ratio;
  parameters.cp_disto_alloc = 1;
  parameters.tcp_mct = components == 3 ? 1 : 0;
  const std::unique_ptr<opj_codec_t, CodecDestroyer> codec(opj_create_compress(OPJ_CODEC_JP2));
  const std::unique_ptr<opj_stream_t, StreamDestroyer> stream(
      opj_stream_create_default_file_stream(path.c_str(), OPJ_FALSE));
  if (opj_setup_encoder(codec.get(), &parameters, image.get()) == OPJ_FALSE ||
      opj_start_compress(codec.get(), image.get(), stream.get()) == OPJ_FALSE ||
      opj_encode(codec.get(), stream.get()) == OPJ_FALSE ||
      opj_end_compress(codec.get(), stream.get()) == OPJ_FALSE) {
    throw std::runtime_error("the picture cannot be encoded");
  }
  return ReadBytes(path);
}

}  // namespace TarnixTools::testing
