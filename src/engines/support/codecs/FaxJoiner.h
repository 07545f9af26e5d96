// Fax data that a TIFF has in strips becomes one block of group 4 (ITU-T T.6): every strip starts
// as if the row above were white, so strips cannot be put one behind the other. Rows are coded anew
// by where their colour changes, without being painted.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_FAXJOINER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_FAXJOINER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/pictures/HeldBytes.h"

namespace TarnixTools::engines {

class FaxJoiner {
 public:
  // coding: of the strips.
  // is_inverted: what they code as white is black, which the result does not repeat.
  FaxJoiner(const CcittParameters& coding, bool is_inverted)
      : coding_(coding), is_inverted_(is_inverted), encoder_(coding.columns) {}

  // Adds this many rows of a strip. False where they are not all there, exactly as the standard has
  // them, in which case there is no result.
  bool Add(std::string_view strip, std::uint32_t rows);

  // Bytes that there are so far, up to a few.
  std::size_t size() const { return encoder_.data().size(); }

  // Data for /CCITTFaxDecode with /K -1 and /BlackIs1 false. To be called once.
  HeldBytes Finish();

 private:
  CcittParameters coding_;
  bool is_inverted_;
  CcittEncoder encoder_;
  std::vector<std::uint32_t> changes_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_FAXJOINER_H_
