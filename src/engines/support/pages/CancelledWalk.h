// Walks through content that end when a conversion is cancelled.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_CANCELLEDWALK_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_CANCELLEDWALK_H_

#include <atomic>
#include <cstdint>

#include "engines/support/pages/Cancellation.h"
#include "pdf/content/ContentWalker.h"

namespace TarnixTools::engines {

// Goes on to the end; throws Cancelled once the flag is set. Null: there is no flag.
inline void RunUntilCancelled(pdf::ContentWalker& walker, const std::atomic<bool>* is_cancelled) {
  constexpr std::uint32_t kStepsBetween = 1024;  // a millisecond at most
  for (std::uint32_t step = 0; walker.Step(); ++step) {
    if (step % kStepsBetween == 0 && is_cancelled != nullptr) {
      StopIfCancelled(*is_cancelled);
    }
  }
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_CANCELLEDWALK_H_
