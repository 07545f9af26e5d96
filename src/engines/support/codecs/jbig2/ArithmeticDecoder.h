// The adaptive binary arithmetic decoder of JBIG2 and the numbers coded with it (ITU-T T.88,
// annexes A and E).
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ARITHMETICDECODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ARITHMETICDECODER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::jbig2 {

// Data that makes no sense, or would take too much.
struct Failure {};

// What one picture may cost, in pixels that are decoded or painted: little data can ask for much.
class Budget {
 public:
  explicit Budget(std::uint64_t pixels) : left_(pixels) {}

  // Throws Failure when there is not so much left.
  void Spend(std::uint64_t pixels) {
    if (pixels > left_) {
      throw Failure();
    }
    left_ -= pixels;
  }

 private:
  std::uint64_t left_;
};

// What has been learnt about a decision; all zero at first.
struct Context {
  std::uint8_t state = 0;
  std::uint8_t likely = 0;  // the more probable value
};

using Contexts = std::vector<Context>;

class ArithmeticDecoder {
 public:
  // The data and the budget outlive the decoder.
  ArithmeticDecoder(std::string_view data, Budget& budget);

  // Before pixels are decoded or painted.
  void Spend(std::uint64_t pixels) { budget_->Spend(pixels); }

  // The next decision. Throws Failure far behind the end of the data.
  int Decode(Context& context);

 private:
  unsigned ByteAt(std::size_t at) const;
  void TakeByte();
  void Renormalize();

  std::string_view data_;
  Budget* budget_;
  std::size_t at_ = 0;
  std::uint32_t code_ = 0;
  std::uint32_t interval_ = 0x8000;
  int bits_left_ = 0;
  int bytes_behind_end_ = 0;
};

// Contexts of one kind of number.
class IntegerContexts {
 public:
  // Nothing for the value out of band.
  std::optional<std::int32_t> Decode(ArithmeticDecoder& decoder);

  // The same where there must be a number. Throws Failure.
  std::int32_t Need(ArithmeticDecoder& decoder);

 private:
  std::array<Context, 512> contexts_{};
};

// Contexts of symbol numbers, of so many bits.
class IdContexts {
 public:
  explicit IdContexts(unsigned bits) : bits_(bits), contexts_(std::size_t{1} << bits) {}

  std::uint32_t Decode(ArithmeticDecoder& decoder);

 private:
  unsigned bits_;
  Contexts contexts_;
};

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ARITHMETICDECODER_H_
