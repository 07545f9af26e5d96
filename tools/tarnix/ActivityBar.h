// A bar on standard error that shows that a job is alive.
#ifndef TARNIX_CLI_ACTIVITY_BAR_H_
#define TARNIX_CLI_ACTIVITY_BAR_H_

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace TarnixTools::cli {

enum class ProgressMode { Auto, Always, Never };

// "auto", "always" or "never"; anything else counts as auto.
ProgressMode ToProgressMode(std::string_view word);

// Draws from its own thread while it lives and wipes what it drew when it goes. Auto draws only on
// a terminal that is wide enough, and only after half a second; Always draws at once, wherever standard error goes. A
// bar that never draws starts no thread.
class ActivityBar {
 public:
  ActivityBar(ProgressMode mode, std::string_view label);
  ~ActivityBar();
  ActivityBar(const ActivityBar&) = delete;
  ActivityBar& operator=(const ActivityBar&) = delete;

 private:
  using Clock = std::chrono::steady_clock;

  void Run(Clock::duration delay);
  void Draw();

  const std::string label_;
  const Clock::time_point start_ = Clock::now();
  int frame_ = 0;
  std::size_t drawn_width_ = 0;
  std::mutex mutex_;
  std::condition_variable stop_signal_;
  bool stopping_ = false;
  std::thread thread_;  // last: uses everything above
};

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_ACTIVITY_BAR_H_
