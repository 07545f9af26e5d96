#include "ActivityBar.h"

#include <algorithm>
#include <system_error>

#include "Streams.h"
#include "Terminal.h"

namespace TarnixTools::cli {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kAutoDelay{500};
constexpr milliseconds kFrameTime{100};
constexpr int kWidth = 24;
constexpr std::string_view kRunner = "<=>";

// The runner goes to and fro between the ends.
std::string Frame(int frame) {
  constexpr int kWay = kWidth - static_cast<int>(kRunner.size());
  const int step = frame % (2 * kWay);
  std::string bar(kWidth, ' ');
  bar.replace(static_cast<std::size_t>(step <= kWay ? step : 2 * kWay - step), kRunner.size(),
              kRunner);
  return bar;
}

}  // namespace

ProgressMode ToProgressMode(std::string_view word) {
  if (word == "always") {
    return ProgressMode::Always;
  }
  return word == "never" ? ProgressMode::Never : ProgressMode::Auto;
}

ActivityBar::ActivityBar(ProgressMode mode, std::string_view label) : label_(label) {
  if (mode == ProgressMode::Never || (mode == ProgressMode::Auto && !ErrorTakesBar())) {
    return;
  }
  if (mode == ProgressMode::Always) {
    Draw();  // here, so that even the shortest job shows it
  }
  const milliseconds delay = mode == ProgressMode::Always ? kFrameTime : kAutoDelay;
  try {
    thread_ = std::thread([this, delay] { Run(delay); });
  } catch (const std::system_error&) {
    // No thread to be had: the job matters more than its bar.
  }
}

ActivityBar::~ActivityBar() {
  if (thread_.joinable()) {
    {
      const std::lock_guard lock(mutex_);
      stopping_ = true;
    }
    stop_signal_.notify_one();
    thread_.join();
  }
  if (drawn_width_ > 0) {
    WriteError("\r" + std::string(drawn_width_, ' ') + "\r");
  }
}

void ActivityBar::Run(Clock::duration delay) {
  std::unique_lock lock(mutex_);
  while (!stop_signal_.wait_for(lock, delay, [this] { return stopping_; })) {
    Draw();
    delay = kFrameTime;
  }
}

void ActivityBar::Draw() {
  const auto seconds =
      std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start_).count();
  const std::string line = label_ + " [" + Frame(frame_++) + "] " + std::to_string(seconds) + " s";
  drawn_width_ = std::max(drawn_width_, line.size());
  WriteError("\r" + line);
}

}  // namespace TarnixTools::cli
