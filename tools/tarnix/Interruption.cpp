#include "Interruption.h"

#include <atomic>
#include <csignal>
#include <ctime>
#include <exception>
#include <mutex>
#include <thread>

#include <pthread.h>
#include <unistd.h>

#include "Job.h"
#include "MadeDirectories.h"
#include "PdfException.h"
#include "Streams.h"
#include "TemporaryFiles.h"
#include "Terminal.h"

namespace TarnixTools::cli {
namespace {

constexpr time_t kPatience = 3;  // seconds

struct Outputs {
  std::mutex mutex;
  std::vector<std::string> paths;
};

// Never destroyed: the thread that waits for signals may need it while static objects go.
Outputs& Finished() {
  static auto* const outputs = new Outputs;
  return *outputs;
}

bool IsIgnored(int signal) {
  struct sigaction action {};

  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t WatchedSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGINT, SIGTERM}) {
    if (!IsIgnored(signal)) {
      sigaddset(&signals, signal);
    }
  }
  return signals;
}

void Tell(const std::string& job, const std::string& message) {
  const std::vector<std::string> outputs = FinishedOutputs();
  std::string text = "\rtarnix: " + message + "\n";
  for (const std::string& path : outputs) {
    text += "tarnix: finished before: " + OneLine(path) + "\n";
  }
  WriteError(text);
  if (job.empty()) {
    return;
  }
  const Json object = {
      {"job", job},
      {"outputs", outputs},
      {"error", {{"code", "Interrupted"}, {"engineCode", 0}, {"message", message}, {"cause", ""}}}};
  try {
    WriteOutput(object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n");
  } catch (const PdfException&) {
    // Nobody is left to be told.
  }
}

// The signal that has come, and what the process tells then.
struct Arrived {
  std::atomic<int> signal = 0;
  std::atomic_flag is_ending;
  std::string job;
};

Arrived& Interruption() {
  static auto* const arrived = new Arrived;
  return *arrived;
}

[[noreturn]] void End() {
  if (Interruption().is_ending.test_and_set()) {
    while (true) {
      pause();  // another thread ends the process
    }
  }
  const int signal = Interruption().signal;
  const std::string& job = Interruption().job;
  RestoreTerminal();
  Tell(job, signal == SIGINT ? "interrupted" : "terminated");
  RemoveTemporaryFiles();
  RemoveEmptyDirectories();
  _exit(128 + signal);
}

}  // namespace

void WatchForInterruption(const std::string& job, bool writes_files) {
  Interruption().job = job;
  const sigset_t signals = WatchedSignals();
  sigset_t before;
  pthread_sigmask(SIG_BLOCK, &signals, &before);
  try {
    std::thread([signals, writes_files] {
      int signal = 0;
      while (sigwait(&signals, &signal) != 0) {
      }
      Interruption().signal = signal;
      const timespec patience = {.tv_sec = writes_files ? kPatience : 0, .tv_nsec = 0};
      sigtimedwait(&signals, nullptr, &patience);
      End();
    }).detach();
  } catch (const std::exception&) {
    pthread_sigmask(SIG_SETMASK, &before, nullptr);  // then a signal ends the process as it is
  }
}

bool IsInterrupted() {
  return Interruption().signal != 0;
}

void EndIfInterrupted() {
  if (IsInterrupted()) {
    End();
  }
}

void NoteFinished(const std::string& path) {
  Outputs& outputs = Finished();
  const std::lock_guard lock(outputs.mutex);
  outputs.paths.push_back(path);
}

std::vector<std::string> FinishedOutputs() {
  Outputs& outputs = Finished();
  const std::lock_guard lock(outputs.mutex);
  return outputs.paths;
}

}  // namespace TarnixTools::cli
