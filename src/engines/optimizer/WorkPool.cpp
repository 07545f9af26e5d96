#include "engines/optimizer/WorkPool.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

#include "foundation/JobWatch.h"

namespace TarnixTools::engines::optimizer {

namespace {

// Held at once by work that waits or runs.
constexpr std::uint64_t kMostHeldBytes = std::uint64_t{160} << 20;

constexpr std::chrono::milliseconds kAskEvery{20};

}  // namespace

WorkPool::WorkPool(unsigned threads)
    : most_threads_(threads != 0 ? threads : std::max(1U, std::thread::hardware_concurrency())) {}

WorkPool::~WorkPool() {
  {
    const std::lock_guard lock(mutex_);
    is_ending_ = true;
    waiting_.clear();
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) {
    thread.join();
  }
}

void WorkPool::Add(std::uint64_t held_bytes, Work work) {
  Entry entry{std::move(work), held_bytes, 0};
  {
    std::unique_lock lock(mutex_);
    WaitFor(lock, [&] { return HasRoomFor(held_bytes) || failure_ != nullptr; });
    ThrowFailure();
    held_bytes_ += held_bytes;
    entry.index = added_++;
    if (threads_.size() < most_threads_ && threads_.size() <= waiting_.size() + running_) {
      StartThread();
    }
    if (!threads_.empty()) {
      waiting_.push_back(std::move(entry));
      changed_.notify_all();
      return;
    }
  }
  Run(std::move(entry));  // no thread is to be had
}

// The host is asked meanwhile whether the job is to go on.
void WorkPool::WaitFor(std::unique_lock<std::mutex>& lock, const std::function<bool()>& condition) {
  while (!changed_.wait_for(lock, kAskEvery, condition)) {
    lock.unlock();
    JobWatch::StopIfCancelled();
    lock.lock();
  }
}

bool WorkPool::HasRoomFor(std::uint64_t held_bytes) const {
  return held_bytes_ == 0 || held_bytes_ + held_bytes <= kMostHeldBytes;
}

// Those that there are do the work, where no more are to be had.
void WorkPool::StartThread() {
  try {
    threads_.emplace_back([this] { RunThread(); });
  } catch (const std::system_error&) {
  }
}

void WorkPool::RunThread() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return is_ending_ || !waiting_.empty(); });
    if (is_ending_) {
      return;
    }
    Entry entry = std::move(waiting_.front());
    waiting_.pop_front();
    ++running_;
    lock.unlock();
    Run(std::move(entry));
    lock.lock();
    --running_;
    changed_.notify_all();
  }
}

void WorkPool::Run(Entry entry) {
  std::exception_ptr failure;
  try {
    entry.work();
  } catch (...) {
    failure = std::current_exception();
  }
  entry.work = nullptr;  // what it holds goes before others may hold more
  const std::lock_guard lock(mutex_);
  held_bytes_ -= entry.held_bytes;
  if (failure != nullptr && (failure_ == nullptr || entry.index < failed_index_)) {
    failure_ = std::move(failure);
    failed_index_ = entry.index;
  }
}

void WorkPool::Finish() {
  std::unique_lock lock(mutex_);
  WaitFor(lock, [this] { return waiting_.empty() && running_ == 0; });
  ThrowFailure();
}

void WorkPool::ThrowFailure() {
  if (failure_ != nullptr) {
    std::rethrow_exception(std::exchange(failure_, nullptr));
  }
}

}  // namespace TarnixTools::engines::optimizer
