// A process-wide log of time-stamped lines, for the host: the library itself never writes to it.
//
//   Logger& log = Logger::GetLogger("/var/log/host.log");
//   log.Log("merged %d documents", count);
//   log << "done";
//
// writes lines such as `14-11-2026 23:05:07.042 : done`.
#ifndef TARNIX_LOGGER_H_
#define TARNIX_LOGGER_H_

#include <iosfwd>
#include <string>

#include "TarnixExport.h"

namespace TarnixTools {

// All state is shared by the whole process and lives until it ends, so that what runs while static
// objects are destroyed can still log. Nothing is locked: call GetLogger once before threads use
// the logger; lines written by several threads at once may mix.
//
// Nothing here throws because a line cannot be written: it is lost then.
class TARNIX_EXPORT Logger {
 public:
  // Size in bytes of the buffer that the date and time are formatted into.
  static constexpr int LOGGER_DATE_SIZE = 80;

  Logger(const Logger&) = delete;
  Logger& operator=(const Logger&) = delete;

  // The one logger, which is never destroyed: the reference stays valid. The first call decides
  // where lines go: to the named file, which is appended to (UTF-8 path), or to standard output
  // when the name is empty. Later calls ignore the name. A file that cannot be opened is no error:
  // lines are then lost.
  static Logger& GetLogger(const std::string& file_name);

  // Writes the message as one line and flushes it. The line end is added; line feeds inside the
  // message stay, and what follows them has no time stamp of its own.
  void Log(const std::string& message);

  // Writes a message that is formatted as printf does, cut after 1023 bytes, as one line and
  // flushes it. A text that is not a format goes through the overload for strings:
  // Log(std::string(text)).
  void Log(const char* format, ...) __attribute__((format(printf, 2, 3)));

  // Writes the message as one line and flushes it; calls can be chained, each gives a line of its
  // own.
  Logger& operator<<(const std::string& message);

  // Debug output is not implemented: these do nothing.
  void Debug(const std::string& message);
  void Debug(const char* format, ...) __attribute__((format(printf, 2, 3)));

 private:
  Logger() = default;
  ~Logger() = default;

  // The local date and time to the second, as in `14-11-2026 23:05:07`.
  std::string GetCurrentDate();
  // The milliseconds of the current second, three digits. A second reading of the clock: at the
  // turn of a second it may disagree with GetCurrentDate.
  std::string GetMilliSeconds();

  // Date, time and message as one line to where lines go.
  void LogMsg(const std::string& message);

  static Logger* logger_;  // made by the first GetLogger, never destroyed
  static bool use_file_;   // a log file was named, whether or not it could be opened
  static std::ofstream* log_stream_;
};

}  // namespace TarnixTools

#endif  // TARNIX_LOGGER_H_
