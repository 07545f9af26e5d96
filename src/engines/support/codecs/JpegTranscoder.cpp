#include "engines/support/codecs/JpegTranscoder.h"

#include <utility>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/LibjpegCalls.h"
#include "engines/support/codecs/jpeg/CoefficientWriter.h"

namespace TarnixTools::engines {

namespace {

// The coefficients of JPEG data, all in memory.
class CoefficientReader : private LibjpegCalls {
 public:
  CoefficientReader() { Watch(state_); }

  ~CoefficientReader() { jpeg_destroy_decompress(&state_); }

  bool Read(std::string_view jpeg) {
    return Try([&] {
      jpeg_create_decompress(&state_);
      BoundScans(state_);
      jpeg_mem_src(&state_, reinterpret_cast<const unsigned char*>(jpeg.data()),
                   static_cast<unsigned long>(jpeg.size()));
      if (jpeg_read_header(&state_, TRUE) != JPEG_HEADER_OK ||
          CoefficientBytes(state_) > limits::kMaxTranscodedBytes) {
        return false;
      }
      coefficients_ = jpeg_read_coefficients(&state_);
      return coefficients_ != nullptr;
    });
  }

  using LibjpegCalls::GiveUpOnDamage;
  using LibjpegCalls::has_met_damage;

  const jpeg_decompress_struct& state() const { return state_; }

  // With Adobe's marker where the data has it.
  void Prepare(jpeg_compress_struct& writer) {
    jpeg_copy_critical_parameters(&state_, &writer);
    writer.write_Adobe_marker = state_.saw_Adobe_marker;
  }

  jvirt_barray_ptr* coefficients() const { return coefficients_; }

 private:
  jpeg_decompress_struct state_{};
  jvirt_barray_ptr* coefficients_ = nullptr;
};

// Whether the markers of JFIF and Adobe tell different colours: some decoders go by the one, some by
// the other.
bool IsAmbiguous(const jpeg_decompress_struct& state) {
  return state.saw_JFIF_marker != FALSE && state.saw_Adobe_marker != FALSE &&
         state.num_components == 3 && state.Adobe_transform != 1;
}

// Whether decoders take the colours from the marker of JFIF: names of components can say red, green
// and blue, and ones that say nothing are taken for the usual colours.
bool NeedsJfif(const jpeg_decompress_struct& state) {
  const jpeg_component_info* components = state.comp_info;
  return state.saw_JFIF_marker != FALSE && state.saw_Adobe_marker == FALSE &&
         state.num_components == 3 && components[0].component_id == 'R' &&
         components[1].component_id == 'G' && components[2].component_id == 'B';
}

}  // namespace

std::optional<RecodedJpeg> CodeByHuffman(std::string_view jpeg) {
  CoefficientReader reader;
  if (!reader.Read(jpeg)) {
    return std::nullopt;
  }
  std::optional<std::string> data =
      jpeg::WriteCoefficients(reader.coefficients(), jpeg::Scans::kOne,
                              [&](jpeg_compress_struct& writer) { reader.Prepare(writer); });
  if (!data) {
    return std::nullopt;
  }
  return RecodedJpeg{*std::move(data), !reader.has_met_damage()};
}

bool IsWholeJpeg(std::string_view jpeg) {
  CoefficientReader reader;
  reader.GiveUpOnDamage();
  return reader.Read(jpeg);
}

std::optional<std::string> OptimizeJpeg(std::string_view jpeg) {
  CoefficientReader reader;
  reader.GiveUpOnDamage();
  if (!reader.Read(jpeg) || IsAmbiguous(reader.state())) {
    return std::nullopt;
  }
  const boolean keeps_jfif = NeedsJfif(reader.state()) ? TRUE : FALSE;
  return jpeg::WriteSmallest(reader.coefficients(), [&](jpeg_compress_struct& writer) {
    reader.Prepare(writer);
    writer.write_JFIF_header = keeps_jfif;
  });
}

}  // namespace TarnixTools::engines
