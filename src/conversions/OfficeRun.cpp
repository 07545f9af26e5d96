#include "conversions/OfficeRun.h"

#include <list>
#include <thread>
#include <utility>

namespace TarnixTools {
namespace {

struct Worker {
  std::shared_ptr<OfficeRun> run;
  std::thread thread;
};

// The threads that have been started and not been joined yet.
class Workers {
 public:
  ~Workers() {
    for (Worker& worker : workers_) {
      worker.run->Cancel();
    }
    for (Worker& worker : workers_) {
      worker.thread.join();
    }
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

void OfficeRun::Cancel() {
  const std::lock_guard lock(mutex_);
  is_cancelled_ = true;
  if (converter_ != nullptr) {
    converter_->Cancel();
  }
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

bool OfficeRun::Wait(std::optional<std::chrono::milliseconds> most) {
  std::unique_lock lock(mutex_);
  const auto is_finished = [this] { return is_finished_; };
  if (!most) {
    changed_.wait(lock, is_finished);
  } else if (!changed_.wait_for(lock, *most, is_finished)) {
    return false;
  }
  if (failure_ != nullptr) {
    std::rethrow_exception(failure_);
  }
  return true;
}

void StartOfficeThread(const std::shared_ptr<OfficeRun>& run, std::function<void()> work) {
  AllWorkers().Add(run, std::move(work));
}

}  // namespace TarnixTools
