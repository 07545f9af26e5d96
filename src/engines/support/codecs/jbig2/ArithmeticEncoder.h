// The arithmetic entropy encoder of JBIG2 (ISO/IEC 14492, annex E).
//
//   ArithmeticEncoder encoder;
//   Contexts contexts = GenericContexts();
//   encoder.Encode(contexts[7], 1);
//   const std::string data = encoder.Finish();
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ARITHMETICENCODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ARITHMETICENCODER_H_

#include <cstdint>
#include <string>

#include "engines/support/codecs/jbig2/QeTable.h"

namespace TarnixTools::engines::jbig2 {

// The MQ encoder: one for all that the data of a segment holds, whatever contexts it is coded in.
class ArithmeticEncoder {
 public:
  // Codes the next decision, 0 or 1: the procedure ENCODE.
  void Encode(Context& context, int decision) {
    const QeRow& row = kQeTable[context.index];
    interval_ -= row.qe;
    if (decision == context.mps && (interval_ & 0x8000U) != 0) {
      code_ += row.qe;
    } else {
      EncodeAndLearn(context, decision);
    }
  }

  // Codes the decision 0 so many times in one context, many of them at once.
  void EncodeZeros(Context& context, std::uint64_t count);

  // Ends the data, and takes it: the procedure FLUSH. The encoder is used up.
  std::string Finish();

 private:
  // What remains of ENCODE once the interval has become smaller by Qe.
  void EncodeAndLearn(Context& context, int decision);

  // The procedures RENORME and BYTEOUT.
  void Renormalize();
  void PutByte();

  // The data behind one byte that is none of it: a carry never gets there.
  std::string bytes_ = std::string(1, '\0');
  std::uint32_t code_ = 0;           // the register C
  std::uint32_t interval_ = 0x8000;  // the register A
  unsigned shifts_left_ = 12;        // before the next byte is complete, CT
};

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ARITHMETICENCODER_H_
