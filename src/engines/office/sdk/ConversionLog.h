// The log of conversions: a line per event, in a file that a host has named.
#ifndef TARNIX_ENGINES_OFFICE_SDK_CONVERSIONLOG_H_
#define TARNIX_ENGINES_OFFICE_SDK_CONVERSIONLOG_H_

#include <mutex>
#include <string>
#include <string_view>

namespace TarnixTools::engines::office {

// For several threads at once. What cannot be written is lost, and harms no conversion.
class ConversionLog {
 public:
  // Later lines are appended to this file; empty: there is no log.
  void SetFile(std::string path);

  // text: UTF-8, without a line end.
  void Write(std::string_view text);

 private:
  std::mutex mutex_;
  std::string path_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_SDK_CONVERSIONLOG_H_
