// How a conversion that is told to stop comes to its end.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_CANCELLATION_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_CANCELLATION_H_

#include <atomic>
#include <exception>

namespace TarnixTools::engines {

class Cancelled : public std::exception {
 public:
  const char* what() const noexcept override { return "the conversion was cancelled"; }
};

// Throws Cancelled once the flag is set; asked every few milliseconds by whatever takes long.
inline void StopIfCancelled(const std::atomic<bool>& is_cancelled) {
  if (is_cancelled.load(std::memory_order_relaxed)) {
    throw Cancelled();
  }
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_CANCELLATION_H_
