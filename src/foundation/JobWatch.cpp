#include "foundation/JobWatch.h"

#include <utility>

#include "PdfException.h"

namespace TarnixTools {
namespace {

constexpr std::chrono::milliseconds kCallEvery{20};

thread_local JobWatch* current = nullptr;

[[noreturn]] void ThrowCancelled() {
  throw PdfException(PdfExceptionCode::InternalError, 0, "Cancelled by the host");
}

}  // namespace

JobWatch::JobWatch(Tell tell, std::string job, const void* owner)
    : tell_(std::move(tell)), job_(std::move(job)), owner_(owner), before_(current) {
  current = this;
}

JobWatch::~JobWatch() {
  current = before_;
}

void JobWatch::ThrowIfCancelled() const {
  ThrowWhatHostThrew();
  if (is_cancelled_) {
    ThrowCancelled();
  }
}

void JobWatch::ThrowWhatHostThrew() const {
  if (thrown_ != nullptr) {
    std::rethrow_exception(thrown_);
  }
}

bool JobWatch::IsBusy(const void* owner) {
  for (const JobWatch* watch = current; watch != nullptr; watch = watch->before_) {
    if (watch->owner_ == owner) {
      return true;
    }
  }
  return false;
}

JobWatch* JobWatch::Active() noexcept {
  return current != nullptr && !current->is_calling_ ? current : nullptr;
}

bool JobWatch::IsCancelled() noexcept {
  JobWatch* const watch = Active();
  if (watch == nullptr || !watch->tell_) {
    return false;
  }
  if (std::chrono::steady_clock::now() - watch->called_ >= kCallEvery) {
    watch->CallHost();
  }
  return watch->is_cancelled_;
}

void JobWatch::StopIfCancelled() {
  if (IsCancelled()) {
    ThrowCancelled();
  }
}

void JobWatch::Report(std::int64_t done, std::int64_t of) {
  JobWatch* const watch = Active();
  if (watch == nullptr) {
    return;
  }
  watch->done_ = done;
  watch->of_ = of;
  watch->CallHost();
  StopIfCancelled();
}

// Not after the host has had the job stop.
void JobWatch::CallHost() noexcept {
  if (!tell_ || is_cancelled_) {
    return;
  }
  is_calling_ = true;
  try {
    is_cancelled_ = !tell_(job_, done_, of_);
  } catch (...) {
    thrown_ = std::current_exception();
    is_cancelled_ = true;
  }
  is_calling_ = false;
  called_ = std::chrono::steady_clock::now();
}

JobStages::JobStages() : watch_(JobWatch::Active()) {
  if (watch_ == nullptr || watch_->has_steps_ || watch_->has_stages_) {
    watch_ = nullptr;
    JobWatch::StopIfCancelled();
    return;
  }
  JobWatch::Report(0, kWhole);
  watch_->has_stages_ = true;
  watch_->stage_end_ = 0;
}

JobStages::~JobStages() {
  if (watch_ != nullptr) {
    watch_->has_stages_ = false;
  }
}

void JobStages::Begin(int end) {
  if (watch_ == nullptr) {
    JobWatch::StopIfCancelled();
    return;
  }
  watch_->stage_start_ = std::exchange(watch_->stage_end_, end);
  Tell(*watch_, watch_->stage_start_);
}

void JobStages::Finish() {
  if (watch_ == nullptr) {
    JobWatch::StopIfCancelled();
  } else {
    Tell(*watch_, kWhole);
  }
}

void JobStages::FinishCurrent() {
  const JobWatch* const watch = JobWatch::Active();
  if (watch != nullptr && watch->has_stages_ && !watch->has_steps_) {
    Tell(*watch, watch->stage_end_);
  }
}

void JobStages::Tell(const JobWatch& watch, std::int64_t hundredths) {
  if (hundredths > watch.done_) {
    JobWatch::Report(hundredths, kWhole);
  } else {
    JobWatch::StopIfCancelled();
  }
}

JobSteps::JobSteps(std::int64_t count)
    : watch_(count > 1 ? JobWatch::Active() : nullptr), count_(count) {
  if (watch_ == nullptr || watch_->has_steps_) {
    watch_ = nullptr;
    JobWatch::StopIfCancelled();
    return;
  }
  if (watch_->has_stages_) {
    JobWatch::StopIfCancelled();
  } else {
    JobWatch::Report(0, count);
  }
  watch_->has_steps_ = true;
}

JobSteps::~JobSteps() {
  if (watch_ != nullptr) {
    watch_->has_steps_ = false;
  }
}

void JobSteps::Done() {
  if (watch_ == nullptr || done_ == count_) {
    JobWatch::StopIfCancelled();
    return;
  }
  ++done_;
  if (watch_->has_stages_) {
    const std::int64_t share = watch_->stage_end_ - watch_->stage_start_;
    JobStages::Tell(*watch_, watch_->stage_start_ + share * done_ / count_);
  } else {
    JobWatch::Report(done_, count_);
  }
}

}  // namespace TarnixTools
