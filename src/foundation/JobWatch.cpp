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

JobWatch::JobWatch(Tell tell, std::string job)
    : tell_(std::move(tell)), job_(std::move(job)), before_(current) {
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

bool JobWatch::IsCancelled() noexcept {
  if (current == nullptr || !current->tell_) {
    return false;
  }
  if (std::chrono::steady_clock::now() - current->called_ >= kCallEvery) {
    current->CallHost();
  }
  return current->is_cancelled_;
}

void JobWatch::StopIfCancelled() {
  if (IsCancelled()) {
    ThrowCancelled();
  }
}

void JobWatch::Report(std::int64_t done, std::int64_t of) {
  if (current == nullptr) {
    return;
  }
  current->done_ = done;
  current->of_ = of;
  current->CallHost();
  StopIfCancelled();
}

// The host is not called once more for what it does itself while it is called, nor after it has
// had the job stop.
void JobWatch::CallHost() noexcept {
  if (!tell_ || is_calling_ || is_cancelled_) {
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

JobSteps::JobSteps(std::int64_t count)
    : watch_(current != nullptr && !current->has_steps_ && count > 1 ? current : nullptr) {
  if (watch_ == nullptr) {
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
