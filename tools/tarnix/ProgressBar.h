// A bar on standard error that shows how far a job is.
#ifndef TARNIX_CLI_PROGRESS_BAR_H_
#define TARNIX_CLI_PROGRESS_BAR_H_

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace TarnixTools::cli {

enum class ProgressMode { Auto, Always, Never };

// "auto", "always" or "never"; anything else counts as auto.
ProgressMode ToProgressMode(std::string_view word);

// What a bar shows at one moment.
struct ProgressView {
  std::string label;
  std::int64_t done = 0;
  std::int64_t of = 0;  // 0 as long as that is not known
  double seconds = 0;   // since the job began
  int frame = 0;        // how often it was drawn
};

// "tarnix merge [=======>        ]  45 % 123/270, 12 s left"; a runner goes to and fro in the bar where
// nobody knows how much there is to do. What does not fit into the columns is left out, the bar last
// but the percentage.
std::string ProgressLine(const ProgressView& view, int columns);

// Draws from its own thread while it lives and wipes what it drew when it goes. Auto draws only on
// a terminal that is wide enough, and only after half a second; Always draws at once, wherever standard
// error goes. A bar that never draws starts no thread.
class ProgressBar {
 public:
  ProgressBar(ProgressMode mode, std::string_view label);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  // Any thread may call it.
  void Set(std::int64_t done, std::int64_t of) {
    done_ = done;
    of_ = of;
  }

 private:
  using Clock = std::chrono::steady_clock;

  void Run(Clock::duration delay);
  void Draw();

  const std::string label_;
  const Clock::time_point start_ = Clock::now();
  std::atomic<std::int64_t> done_ = 0;
  std::atomic<std::int64_t> of_ = 0;
  int frame_ = 0;
  std::size_t drawn_width_ = 0;
  std::mutex mutex_;
  std::condition_variable stop_signal_;
  bool stopping_ = false;
  std::thread thread_;  // last: uses everything above
};

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_PROGRESS_BAR_H_
