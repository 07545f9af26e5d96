#include "engines/support/codecs/FaxJoiner.h"

#include <span>

namespace TarnixTools::engines {

bool FaxJoiner::Add(std::string_view strip, std::uint32_t rows) {
  CcittDecoder decoder(strip, coding_);
  for (std::uint32_t y = 0; y < rows; ++y) {
    if (!decoder.ReadChanges(changes_)) {
      return false;
    }
    if (!is_inverted_) {
      encoder_.AddRow(changes_);
    } else if (!changes_.empty() && changes_.front() == 0) {
      encoder_.AddRow(std::span(changes_).subspan(1));
    } else {
      changes_.insert(changes_.begin(), 0);
      encoder_.AddRow(changes_);
    }
  }
  return true;
}

HeldBytes FaxJoiner::Finish() {
  encoder_.Finish();
  return HoldCopy(encoder_.data());
}

}  // namespace TarnixTools::engines
