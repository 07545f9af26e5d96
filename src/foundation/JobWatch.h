// What a host hears of the job that runs on its thread, and whether it wants the job to go on.
//
//   JobWatch watch(progress, "rotate");   // in a task
//   JobSteps steps(page_count);           // wherever the work is done, on that thread
//   for (...) {
//     ...
//     steps.Done();                       // throws when the host has the job stop
//   }
//
// A thread has one job at a time, so that nobody hands the watch on to who does the work. On other
// threads, and without a job, all of this does nothing: the host is called on its own thread only.
#ifndef TARNIX_FOUNDATION_JOB_WATCH_H_
#define TARNIX_FOUNDATION_JOB_WATCH_H_

#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <string>

namespace TarnixTools {

class JobWatch {
 public:
  // Given the job's name, the steps that are done, and how many there are; false has the job stop.
  using Tell = std::function<bool(const std::string& job, std::int64_t done, std::int64_t of)>;

  // This thread's job until the watch goes; one that was there before waits meanwhile. tell may be
  // empty: the host is not called then.
  //   owner - what does the job; compared, and nothing else
  JobWatch(Tell tell, std::string job, const void* owner = nullptr);
  JobWatch(const JobWatch&) = delete;
  JobWatch& operator=(const JobWatch&) = delete;
  ~JobWatch();

  // Throws what the host has thrown when it was called; InternalError when it has the job stop.
  void ThrowIfCancelled() const;

  // Throws what the host has thrown when it was called.
  void ThrowWhatHostThrew() const;

  // Whether this does a job of this thread, be it one that waits.
  static bool IsBusy(const void* owner);

  // Whether the host has the job of this thread stop. Whatever takes long asks every few
  // milliseconds, and the host is called some times a second for that. Holds no lock meanwhile.
  static bool IsCancelled() noexcept;

  // Throws InternalError when the host has the job of this thread stop.
  static void StopIfCancelled();

  // Tells the host how far the job of this thread is; throws as StopIfCancelled does.
  static void Report(std::int64_t done, std::int64_t of);

 private:
  friend class JobStages;
  friend class JobSteps;

  // The job of this thread. None while the host is called: what it does then is no part of the job.
  static JobWatch* Active() noexcept;

  void CallHost() noexcept;

  const Tell tell_;
  const std::string job_;
  const void* const owner_;
  JobWatch* const before_;
  std::int64_t done_ = 0;
  std::int64_t of_ = 0;
  bool has_steps_ = false;
  bool has_stages_ = false;
  int stage_start_ = 0;
  int stage_end_ = 0;
  bool is_calling_ = false;
  bool is_cancelled_ = false;
  std::exception_ptr thrown_;
  std::chrono::steady_clock::time_point called_{};
};

// A piece of work that is done in stages, told in hundredths of the whole: what is told within a stage
// counts for its share.
//
//   JobStages stages;
//   stages.Begin(30);  // what is done now makes 30 of 100
//   Survey(document);  // with JobSteps of its own, or without
//   stages.Begin(100);
//   Write(document);
//   stages.Finish();
//
// Of stages within steps or other stages nobody hears.
class JobStages {
 public:
  JobStages();
  JobStages(const JobStages&) = delete;
  JobStages& operator=(const JobStages&) = delete;
  ~JobStages();

  // The stage before is done; the next one ends at this share, in hundredths. Throws InternalError when
  // the host has the job stop.
  void Begin(int end);

  // All of them are done, whatever there is of them. Call it as long as the job can still be stopped.
  void Finish();

  // The stage under way is done, whoever has begun it; as Begin.
  static void FinishCurrent();

 private:
  friend class JobSteps;

  static constexpr int kWhole = 100;

  // Tells the host when this is more than it has been told.
  static void Tell(const JobWatch& watch, std::int64_t hundredths);

  JobWatch* watch_;  // null where nobody hears of them
};

// The steps of a part of the work. Of steps within steps the host hears of the outer ones only, and
// a single step is none: what is done in it counts instead. Within a stage, they are steps of that.
class JobSteps {
 public:
  explicit JobSteps(std::int64_t count);
  JobSteps(const JobSteps&) = delete;
  JobSteps& operator=(const JobSteps&) = delete;
  ~JobSteps();

  // One more of them is done; more than there are change nothing. Throws InternalError when the host
  // has the job stop.
  void Done();

 private:
  JobWatch* watch_;  // null for steps that nobody hears of
  std::int64_t count_;
  std::int64_t done_ = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_FOUNDATION_JOB_WATCH_H_
