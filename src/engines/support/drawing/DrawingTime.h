// How long a page may take to be drawn.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGTIME_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGTIME_H_

#include <atomic>
#include <chrono>

#include "engines/support/drawing/DrawingLimits.h"

namespace TarnixTools::engines {

// Counts the time of the processor that the drawing thread has used, so that what is drawn depends
// on the page and not on what else the machine does.
class DrawingTime {
 public:
  using Duration = std::chrono::nanoseconds;

  // The bound on each page from now on.
  void set_most(Duration most) { most_ = most; }

  // May be set from any thread, and ends the drawing as time that is up does. Null for none; the
  // flag outlives its use here.
  void set_cancel_flag(const std::atomic<bool>* flag) { cancel_flag_ = flag; }

  // A new page begins, for which no time has been used.
  void Restart() { used_ = Duration::zero(); }

  // Of the page, by the counting that is over.
  Duration used() const { return used_; }

  // While this exists, time counts. One at a time, on one thread.
  class Counting {
   public:
    explicit Counting(DrawingTime& time) : time_(&time) { time.started_ = Now(); }

    Counting(const Counting&) = delete;
    Counting& operator=(const Counting&) = delete;

    ~Counting() { time_->used_ += Now() - time_->started_; }

   private:
    DrawingTime* time_;
  };

  // Whether the page is to be left as it is; asked while time counts.
  bool IsOver() const {
    return (cancel_flag_ != nullptr && cancel_flag_->load(std::memory_order_relaxed)) ||
           used_ + (Now() - started_) >= most_;
  }

 private:
  static Duration Now();

  Duration most_ = limits::kMaxPageTime;
  Duration used_ = Duration::zero();
  Duration started_ = Duration::zero();
  const std::atomic<bool>* cancel_flag_ = nullptr;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGTIME_H_
