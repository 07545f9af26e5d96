// Runs work on all cores with bounded memory. What comes out must not depend on the order in which
// things get done.
//
//   WorkPool pool;
//   for (Job& job : jobs) {
//     job.Read(document);  // on this thread alone
//     pool.Add(job.held_bytes(), [&job] { job.Encode(); });
//   }
//   pool.Finish();
#ifndef TARNIX_ENGINES_OPTIMIZER_WORKPOOL_H_
#define TARNIX_ENGINES_OPTIMIZER_WORKPOOL_H_

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace TarnixTools::engines::optimizer {

// Used by one thread, beside its own.
class WorkPool {
 public:
  using Work = std::function<void()>;

  // threads: at most; 0: as many as there are cores. They are started when there is work for them.
  explicit WorkPool(unsigned threads = 0);
  // Work that has not begun is given up.
  ~WorkPool();
  WorkPool(const WorkPool&) = delete;
  WorkPool& operator=(const WorkPool&) = delete;

  // Waits until there is room for what the work holds until it is done. Work that alone holds more
  // than there is room for is run when no other is. Throws what earlier work has thrown.
  void Add(std::uint64_t held_bytes, Work work);

  // Waits until all is done. Throws what work has thrown: of several the first that was added. Both
  // throw, too, when the host has the job stop.
  void Finish();

 private:
  struct Entry {
    Work work;
    std::uint64_t held_bytes = 0;
    std::size_t index = 0;
  };

  void WaitFor(std::unique_lock<std::mutex>& lock, const std::function<bool()>& condition);
  bool HasRoomFor(std::uint64_t held_bytes) const;
  void StartThread();
  void RunThread();
  void Run(Entry entry);
  void ThrowFailure();

  const std::size_t most_threads_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Entry> waiting_;
  std::size_t running_ = 0;
  std::uint64_t held_bytes_ = 0;  // by what waits and what runs
  std::size_t added_ = 0;
  bool is_ending_ = false;
  std::exception_ptr failure_;
  std::size_t failed_index_ = 0;
  std::vector<std::thread> threads_;
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_WORKPOOL_H_
