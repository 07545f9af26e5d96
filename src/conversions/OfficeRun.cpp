#include "conversions/OfficeRun.h"

#include <algorithm>
#include <cstdlib>
#include <list>
#include <thread>
#include <utility>

namespace TarnixTools {
namespace {

using Milliseconds = std::chrono::milliseconds;

constexpr Milliseconds kTellEvery{100};
constexpr Milliseconds kFarewell{150};  // that a cancelled thread gets to come to its end

struct Worker {
  std::shared_ptr<OfficeRun> run;
  std::thread thread;
};

// The threads that have been started and not been joined yet.
class Workers {
 public:
  ~Workers() { JoinAll(); }

  void JoinAll() {
    const std::lock_guard lock(mutex_);
    for (Worker& worker : workers_) {
      worker.run->Cancel();
    }
    for (Worker& worker : workers_) {
      worker.thread.join();
    }
    workers_.clear();
  }

  void Add(const std::shared_ptr<OfficeRun>& run, std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    JoinFinished();
    workers_.push_back({run, std::thread([run, work = std::move(work)] {
                          std::exception_ptr failure;
                          try {
                            work();
                          } catch (...) {
                            failure = std::current_exception();
                          }
                          run->Finish(failure);
                        })});
  }

 private:
  void JoinFinished() {
    for (auto worker = workers_.begin(); worker != workers_.end();) {
      const bool is_finished = worker->run->IsFinished();
      if (is_finished) {
        worker->thread.join();
      }
      worker = is_finished ? workers_.erase(worker) : std::next(worker);
    }
  }

  std::mutex mutex_;
  std::list<Worker> workers_;
};

Workers& AllWorkers() {
  static Workers workers;
  return workers;
}

}  // namespace

void OfficeRun::SetConverter(std::shared_ptr<ConversionSdk::Converters::PdfConverter> converter) {
  const std::lock_guard lock(mutex_);
  converter_ = std::move(converter);
  if (is_cancelled_) {
    converter_->Cancel();
  }
}

bool OfficeRun::Cancel() {
  const std::lock_guard lock(mutex_);
  if (converter_ != nullptr && !converter_->Cancel()) {
    return false;
  }
  is_cancelled_ = true;
  return true;
}

void OfficeRun::Convert(ConversionSdk::Converters::PdfConverter& converter,
                        const std::wstring& output_file) {
  status = converter.ConvertTo(output_file, true);
  system_error = converter.GetSystemError();
  findings = converter.TakeFindings();
  // Several threads have told of the pages.
  std::ranges::stable_sort(findings, {}, &ConversionSdk::ConversionFinding::page);
}

void OfficeRun::Finish(std::exception_ptr failure) {
  const std::lock_guard lock(mutex_);
  failure_ = std::move(failure);
  is_finished_ = true;
  changed_.notify_all();
}

bool OfficeRun::IsFinished() {
  const std::lock_guard lock(mutex_);
  return is_finished_;
}

bool OfficeRun::Wait(std::optional<Milliseconds> most,
                     const std::function<void(std::int32_t, std::int32_t)>& tell) {
  const auto start = std::chrono::steady_clock::now();
  const auto is_over = [&] { return most && std::chrono::steady_clock::now() - start >= *most; };
  for (bool has_waited = false; !IsFinished(); has_waited = true) {
    if (has_waited && is_over()) {
      return false;
    }
    Tell(tell);
    std::unique_lock lock(mutex_);
    const auto passed =
        std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now() - start);
    const Milliseconds step =
        most ? std::clamp(*most - passed, Milliseconds{0}, kTellEvery) : kTellEvery;
    changed_.wait_for(lock, step, [this] { return is_finished_; });
  }
  Tell(tell);
  if (failure_ != nullptr) {
    std::rethrow_exception(failure_);
  }
  return true;
}

// What is told may call back: it is not told while the lock is held.
void OfficeRun::Tell(const std::function<void(std::int32_t, std::int32_t)>& tell) {
  std::pair<std::int32_t, std::int32_t> progress{0, 0};
  {
    const std::lock_guard lock(mutex_);
    if (converter_ != nullptr) {
      progress = converter_->GetProgress();
    }
  }
  if (tell) {
    tell(progress.first, progress.second);
  }
}

void StartOfficeThread(const std::shared_ptr<OfficeRun>& run, std::function<void()> work) {
  AllWorkers().Add(run, std::move(work));
}

// What the thread has made use of so far was made before this handler is registered, and goes after
// it has run.
void LeaveOfficeThread(OfficeRun& run) {
  bool is_finished = true;
  try {
    is_finished = run.Wait(kFarewell);
  } catch (...) {  // nobody hears of what a cancelled conversion ends with
  }
  if (!is_finished) {
    std::atexit([] { AllWorkers().JoinAll(); });
  }
}

}  // namespace TarnixTools
