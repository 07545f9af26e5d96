// The arithmetic entropy decoder of JBIG2 (ISO/IEC 14492, annex E) and the integer decoding
// procedures that are built on it (annex A).
//
//   ArithmeticDecoder decoder(data, budget);
//   IntegerDecoder iadh;                                // one for each kind of integer
//   std::optional<std::int32_t> height = iadh.Decode(decoder);
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ARITHMETICDECODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ARITHMETICDECODER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "engines/support/codecs/jbig2/QeTable.h"

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

// The MQ decoder: one for all that the data of a segment holds, whatever contexts it is asked for.
class ArithmeticDecoder {
 public:
  // The data and the budget outlive the decoder.
  ArithmeticDecoder(std::string_view data, Budget& budget);

  // To be called before pixels are decoded or painted. Throws Failure when the budget is used up.
  void Spend(std::uint64_t pixels) { budget_->Spend(pixels); }

  // The next decision, 0 or 1: the procedure DECODE. Throws Failure far behind the end of the data.
  int Decode(Context& context);

 private:
  unsigned ByteAt(std::size_t at) const;

  // The procedures BYTEIN and RENORMD.
  void ByteIn();
  void Renormalize();

  std::string_view data_;
  Budget* budget_;
  std::size_t at_ = 0;
  std::uint32_t code_ = 0;           // the register C
  std::uint32_t interval_ = 0x8000;  // the register A
  int shifts_left_ = 0;              // before the next byte is needed, CT
  int bytes_behind_end_ = 0;
};

// One of the arithmetic integer decoding procedures IADH, IADW, IAFS and so on, with the contexts
// that it learns in (A.2).
class IntegerDecoder {
 public:
  // Nothing for the value OOB, which stands for no integer. Throws Failure for an integer beyond 32
  // bits.
  std::optional<std::int32_t> Decode(ArithmeticDecoder& decoder);

  // An integer where OOB makes no sense. Throws Failure.
  std::int32_t Need(ArithmeticDecoder& decoder);

 private:
  std::array<Context, 512> contexts_{};
};

// The procedure IAID, which decodes symbol IDs (A.3).
class SymbolIdDecoder {
 public:
  //   code_length - bits of an ID, SBSYMCODELEN in the standard
  explicit SymbolIdDecoder(unsigned code_length)
      : code_length_(code_length), contexts_(std::size_t{1} << code_length) {}

  std::uint32_t Decode(ArithmeticDecoder& decoder);

 private:
  unsigned code_length_;
  Contexts contexts_;
};

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ARITHMETICDECODER_H_
