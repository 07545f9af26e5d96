// Codes the coefficients of a JPEG picture by Huffman codes made for them.
//
//   const std::optional<std::string> jpeg = WriteSmallest(arrays, [&](jpeg_compress_struct& state) {
//     jpeg_copy_critical_parameters(&reader, &state);
//   });
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEG_COEFFICIENTWRITER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEG_COEFFICIENTWRITER_H_

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engines/support/codecs/LibjpegCalls.h"

namespace TarnixTools::engines::jpeg {

enum class Scans : std::uint8_t {
  kOne,          // baseline where the steps allow it
  kProgressive,  // several, each with codes for what it holds: smaller but for little pictures
};

class CoefficientWriter : private LibjpegCalls {
 public:
  CoefficientWriter() { Watch(state_); }

  ~CoefficientWriter();

  // Once. False when the library cannot write such a picture.
  //   coefficients - an array for each component, of the library's, all of them realized
  //   prepare      - sets what the picture is like: void(jpeg_compress_struct&), for which there must
  //                  be nothing to destroy when the library gives up
  template <typename Prepare>
  bool Write(jvirt_barray_ptr* coefficients, Scans scans, Prepare prepare) {
    return Try([&] {
      jpeg_create_compress(&state_);
      prepare(state_);
      return Code(coefficients, scans);
    });
  }

  // The whole of the JPEG data; lives as long as the writer.
  std::string_view data() const {
    return {reinterpret_cast<const char*>(out_), static_cast<std::size_t>(out_size_)};
  }

 private:
  bool Code(jvirt_barray_ptr* coefficients, Scans scans);
  bool HasColorDifferences() const;
  void AddScan(std::initializer_list<int> components, int first, int last, int high, int low);
  void AddDirectScans();
  void ChooseScans();

  jpeg_compress_struct state_{};
  std::vector<jpeg_scan_info> scans_;
  unsigned char* out_ = nullptr;  // the library's
  unsigned long out_size_ = 0;
};

// Nothing when the library cannot write such a picture.
template <typename Prepare>
std::optional<std::string> WriteCoefficients(jvirt_barray_ptr* coefficients, Scans scans,
                                             Prepare prepare) {
  CoefficientWriter writer;
  return writer.Write(coefficients, scans, prepare) ? std::optional(std::string(writer.data()))
                                                    : std::nullopt;
}

// In several scans, or in one where that takes fewer bytes.
template <typename Prepare>
std::optional<std::string> WriteSmallest(jvirt_barray_ptr* coefficients, Prepare prepare) {
  constexpr std::size_t kLittle = 8192;  // bytes; larger pictures are never smaller in one scan
  std::optional<std::string> best = WriteCoefficients(coefficients, Scans::kProgressive, prepare);
  if (!best || best->size() < kLittle) {
    std::optional<std::string> other = WriteCoefficients(coefficients, Scans::kOne, prepare);
    if (!best || (other && other->size() < best->size())) {
      best.swap(other);
    }
  }
  return best;
}

}  // namespace TarnixTools::engines::jpeg

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEG_COEFFICIENTWRITER_H_
