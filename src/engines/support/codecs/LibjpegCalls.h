// Calls of libjpeg, which leaves by longjmp when it cannot go on: what is called between setjmp and
// there has nothing to destroy.
//
//   class Decompressor : private LibjpegCalls {
//     Decompressor() { Watch(state_); }
//     bool Start() {
//       return Try([&] {
//         jpeg_create_decompress(&state_);
//         BoundScans(state_);
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_LIBJPEGCALLS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_LIBJPEGCALLS_H_

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <utility>

#include <jpeglib.h>

#include "engines/support/codecs/CodecLimits.h"

namespace TarnixTools::engines {

class LibjpegCalls {
 public:
  LibjpegCalls(const LibjpegCalls&) = delete;
  LibjpegCalls& operator=(const LibjpegCalls&) = delete;

 protected:
  LibjpegCalls() {
    jpeg_std_error(&errors_);
    errors_.error_exit = &LibjpegCalls::GiveUp;
    errors_.output_message = [](j_common_ptr) {};
    errors_.emit_message = [](j_common_ptr state, int level) {
      if (level >= 0) {
        return;
      }
      ++state->err->num_warnings;
      if (Of(state)->gives_up_on_damage_) {
        GiveUp(state);
      }
    };
    progress_.progress_monitor = [](j_common_ptr state) {
      if (reinterpret_cast<j_decompress_ptr>(state)->input_scan_number > limits::kMaxJpegScans) {
        GiveUp(state);
      }
    };
  }

  ~LibjpegCalls() = default;

  // state: of a compressor or decompressor that is not created yet.
  template <typename State>
  void Watch(State& state) {
    state.err = &errors_;
    state.client_data = this;
  }

  // state: of a decompressor that is created.
  void BoundScans(jpeg_decompress_struct& state) { state.progress = &progress_; }

  // What the operation gives; false when the library, or somebody it has called, gave up.
  template <typename Operation>
  bool Try(Operation&& operation) {
    if (setjmp(return_point_) != 0) {
      return false;
    }
    return std::forward<Operation>(operation)();
  }

  static LibjpegCalls* Of(j_common_ptr state) {
    return static_cast<LibjpegCalls*>(state->client_data);
  }

  // From within an operation: Try gives false.
  [[noreturn]] static void GiveUp(j_common_ptr state) { std::longjmp(Of(state)->return_point_, 1); }

  // From now on Try gives false where the library could go on behind damage: missing data, or too much.
  void GiveUpOnDamage() { gives_up_on_damage_ = true; }

  // Whether it has met such damage since it began to read the last picture.
  bool has_met_damage() const { return errors_.num_warnings > 0; }

  // What all coefficients of the picture take, once its header is read.
  static std::uint64_t CoefficientBytes(const jpeg_decompress_struct& state) {
    std::uint64_t bytes = 0;
    for (int i = 0; i < state.num_components; ++i) {
      const jpeg_component_info& component = state.comp_info[i];
      bytes +=
          std::uint64_t{component.width_in_blocks} * component.height_in_blocks * sizeof(JBLOCK);
    }
    return bytes;
  }

 private:
  jpeg_error_mgr errors_{};
  jpeg_progress_mgr progress_{};
  std::jmp_buf return_point_{};
  bool gives_up_on_damage_ = false;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_LIBJPEGCALLS_H_
