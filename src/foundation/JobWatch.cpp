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

JobSteps::JobSteps(std::int64_t count) : watch_(count > 1 ? JobWatch::Active() : nullptr) {
  if (watch_ == nullptr || watch_->has_steps_) {
    watch_ = nullptr;
    JobWatch::StopIfCancelled();
    return;
  }
  JobWatch::Report(0, count);
  watch_->has_steps_ = true;
}

JobSteps::~JobSteps() {
  if (watch_ != nullptr) {
    watch_->has_steps_ = false;
  }
}

void JobSteps::Done() {
  if (watch_ == nullptr) {
    JobWatch::StopIfCancelled();
  } else {
    JobWatch::Report(watch_->done_ + 1, watch_->of_);
  }
}

}  // namespace TarnixTools
