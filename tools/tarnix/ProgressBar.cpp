#include "ProgressBar.h"

#include <algorithm>
#include <cmath>
#include <system_error>
#include <vector>

#include "Streams.h"
#include "Terminal.h"

namespace TarnixTools::cli {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kAutoDelay{500};
constexpr milliseconds kFrameTime{100};
constexpr int kWidest = 24;
constexpr int kNarrowest = 6;
constexpr double kSecondsToJudge = 1;  // before the time left is told
constexpr std::string_view kRunner = "<=>";

// The runner goes to and fro between the ends.
std::string RunnerBar(int width, int frame) {
  const int way = width - static_cast<int>(kRunner.size());
  const int step = frame % (2 * way);
  std::string bar(static_cast<std::size_t>(width), ' ');
  bar.replace(static_cast<std::size_t>(step <= way ? step : 2 * way - step), kRunner.size(),
              kRunner);
  return bar;
}

std::string FilledBar(int width, double part) {
  const auto filled = static_cast<std::size_t>(part * width);
  std::string bar(filled, '=');
  bar.resize(static_cast<std::size_t>(width), ' ');
  if (filled < bar.size()) {
    bar[filled] = '>';
  }
  return bar;
}

std::string Percent(double part) {
  const std::string number = std::to_string(static_cast<int>(part * 100));
  return std::string(3 - std::min<std::size_t>(number.size(), 3), ' ') + number + " %";
}

std::string TimeText(double seconds) {
  const std::int64_t whole = std::llround(seconds);
  return whole < 60 ? std::to_string(whole) + " s"
                    : std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
}

std::string Count(const ProgressView& view) {
  return " " + std::to_string(view.done) + "/" + std::to_string(view.of);
}

std::string TimeLeft(const ProgressView& view) {
  if (view.done <= 0 || view.seconds < kSecondsToJudge) {
    return "";
  }
  const auto left = static_cast<double>(view.of - view.done) / static_cast<double>(view.done);
  return ", " + TimeText(view.seconds * left) + " left";
}

// The first of the texts that fits, with the bar between label and text where there is room for one.
template <typename Bar>
std::string Fitting(const std::string& label, const std::vector<std::string>& texts, int columns,
                    const Bar& bar) {
  for (const std::string& text : texts) {
    const int room = columns - static_cast<int>(label.size() + text.size()) - 4;
    if (room >= kNarrowest) {
      return label + " [" + bar(std::min(room, kWidest)) + "] " + text;
    }
  }
  const std::string& shortest = texts.back();
  const bool has_label = static_cast<int>(label.size() + shortest.size()) < columns;
  return has_label ? label + " " + shortest
                   : shortest.substr(0, static_cast<std::size_t>(std::max(columns, 0)));
}

}  // namespace

std::string ProgressLine(const ProgressView& view, int columns) {
  if (view.of <= 0) {
    return Fitting(view.label, {TimeText(view.seconds)}, columns,
                   [&](int width) { return RunnerBar(width, view.frame); });
  }
  const double part =
      std::clamp(static_cast<double>(view.done) / static_cast<double>(view.of), 0.0, 1.0);
  const std::string percent = Percent(part);
  return Fitting(view.label,
                 {percent + Count(view) + TimeLeft(view), percent + Count(view), percent}, columns,
                 [&](int width) { return FilledBar(width, part); });
}

ProgressMode ToProgressMode(std::string_view word) {
  if (word == "always") {
    return ProgressMode::Always;
  }
  return word == "never" ? ProgressMode::Never : ProgressMode::Auto;
}

ProgressBar::ProgressBar(ProgressMode mode, std::string_view label) : label_(label) {
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

ProgressBar::~ProgressBar() {
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

void ProgressBar::Run(Clock::duration delay) {
  std::unique_lock lock(mutex_);
  while (!stop_signal_.wait_for(lock, delay, [this] { return stopping_; })) {
    Draw();
    delay = kFrameTime;
  }
}

// The last column stays free: a character there makes some terminals begin a new line.
void ProgressBar::Draw() {
  const std::chrono::duration<double> passed = Clock::now() - start_;
  std::string line = ProgressLine(
      {.label = label_, .done = done_, .of = of_, .seconds = passed.count(), .frame = frame_++},
      ErrorWidth() - 1);
  const std::size_t width = line.size();
  line.resize(std::max(line.size(), drawn_width_), ' ');
  drawn_width_ = width;
  WriteError("\r" + line);
}

}  // namespace TarnixTools::cli
