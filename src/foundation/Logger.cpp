#include "Logger.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>

#include "foundation/Platform.h"

namespace TarnixTools {
namespace {

constexpr std::size_t kFormattedSize = 1024;
constexpr long kNanosecondsPerMillisecond = 1000000;

}  // namespace

Logger* Logger::logger_ = nullptr;
bool Logger::use_file_ = false;
std::ofstream* Logger::log_stream_ = nullptr;

Logger& Logger::GetLogger(const std::string& file_name) {
  if (logger_ != nullptr) {
    return *logger_;
  }
  static_cast<void>(std::getenv("KORVANE_DEBUG"));  // reserved: debug output is not implemented
  // Never deleted, so that what runs at the end of the process can still log.
  logger_ = new Logger();
  if (!file_name.empty()) {
    use_file_ = true;
    log_stream_ = new std::ofstream(platform::NativePath(file_name), std::ios::app);
  }
  return *logger_;
}

void Logger::Log(const std::string& message) {
  LogMsg(message);
}

void Logger::Log(const char* format, ...) {
  std::array<char, kFormattedSize> message{};
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(message.data(), message.size(), format, arguments);
  va_end(arguments);
  LogMsg(message.data());
}

Logger& Logger::operator<<(const std::string& message) {
  LogMsg(message);
  return *this;
}

void Logger::Debug(const std::string& /*message*/) {}

void Logger::Debug(const char* /*format*/, ...) {}

std::string Logger::GetCurrentDate() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::array<char, LOGGER_DATE_SIZE> date{};
  const std::size_t length = std::strftime(date.data(), date.size(), "%d-%m-%Y %H:%M:%S", &local);
  return std::string(date.data(), length);
}

std::string Logger::GetMilliSeconds() {
  std::timespec now{};
  std::timespec_get(&now, TIME_UTC);
  std::array<char, 16> digits{};
  std::snprintf(digits.data(), digits.size(), "%03d",
                static_cast<int>(now.tv_nsec / kNanosecondsPerMillisecond));
  return digits.data();
}

void Logger::LogMsg(const std::string& message) {
  std::string line = GetCurrentDate();
  line += ".";
  line += GetMilliSeconds();
  line += " : ";
  line += message;
  line += "\n";
  std::ostream& stream = use_file_ ? *log_stream_ : std::cout;
  stream << line << std::flush;
}

}  // namespace TarnixTools
