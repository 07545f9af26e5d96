// One conversion to an Office document on a thread of its own.
#ifndef TARNIX_CONVERSIONS_OFFICERUN_H_
#define TARNIX_CONVERSIONS_OFFICERUN_H_

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "engines/office/Office.h"

namespace TarnixTools {

// What the thread that converts and the one that waits share. It lives until both have let go.
struct OfficeRun {
  // The converter that works, kept so that it can be told to stop.
  void SetConverter(std::shared_ptr<ConversionSdk::Converters::PdfConverter> converter);

  // Stops the converter, and the one that is set later. False for one that cannot be stopped any
  // more, as its output is about to get its name.
  bool Cancel();

  // Converts, replacing what is there, and keeps how that ended. On the thread that works.
  void Convert(ConversionSdk::Converters::PdfConverter& converter, const std::wstring& output_file);

  // Notes that the thread is at its end, by an exception or null.
  void Finish(std::exception_ptr failure);

  bool IsFinished();

  // Whether the thread has come to its end by then; nullopt: waits for as long as it takes. Throws
  // what the thread has ended with.
  //   tell - is told how many pages are done, of how many, some times a second; may be empty
  bool Wait(std::optional<std::chrono::milliseconds> most,
            const std::function<void(std::int32_t, std::int32_t)>& tell = {});

  std::int32_t status = 0;        // of the conversion, once the thread is at its end
  std::int32_t system_error = 0;  // the errno value that it ended with, or 0
  std::vector<ConversionSdk::ConversionFinding> findings;

 private:
  void Tell(const std::function<void(std::int32_t, std::int32_t)>& tell);

  std::mutex mutex_;
  std::condition_variable changed_;
  std::shared_ptr<ConversionSdk::Converters::PdfConverter> converter_;
  bool is_cancelled_ = false;
  bool is_finished_ = false;
  std::exception_ptr failure_;
};

// Runs the work on a thread of its own, and finishes the run with what it throws. The thread is
// never killed: when the process ends, it is told to stop and waited for. Throws std::system_error
// when there is no thread to be had.
void StartOfficeThread(const std::shared_ptr<OfficeRun>& run, std::function<void()> work);

// A run that was cancelled and goes on: waits a moment for its end, and has the process wait for it
// when that ends, before what the thread may still use is destroyed.
void LeaveOfficeThread(OfficeRun& run);

}  // namespace TarnixTools

#endif  // TARNIX_CONVERSIONS_OFFICERUN_H_
