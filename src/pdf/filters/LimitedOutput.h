// The output of one decoding step: a string that refuses to pass its limit.
#ifndef TARNIX_PDF_FILTERS_LIMITED_OUTPUT_H_
#define TARNIX_PDF_FILTERS_LIMITED_OUTPUT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "pdf/Error.h"

namespace TarnixTools::pdf::filters {

[[noreturn]] inline void ThrowOutputLimit() {
  throw Error(ErrorCode::kLimitExceeded, "stream data decodes to more bytes than allowed");
}

class LimitedOutput {
 public:
  explicit LimitedOutput(std::size_t limit) : limit_(limit) {}

  std::size_t size() const { return data_.size(); }

  // Bytes that may still be appended.
  std::size_t room() const { return limit_ - data_.size(); }

  void Append(char byte) {
    RequireRoom(1);
    data_.push_back(byte);
  }

  void Append(std::string_view bytes) {
    RequireRoom(bytes.size());
    data_.append(bytes);
  }

  void Append(std::size_t count, char byte) {
    RequireRoom(count);
    data_.append(count, byte);
  }

  // Appends `length` bytes of the output itself, all of them there already.
  void Repeat(std::size_t start, std::size_t length) {
    RequireRoom(length);
    data_.append(data_, start, length);
  }

  char operator[](std::size_t index) const { return data_[index]; }

  std::string Take() { return std::move(data_); }

 private:
  void RequireRoom(std::size_t bytes) const {
    if (bytes > room()) {
      ThrowOutputLimit();
    }
  }

  std::string data_;
  std::size_t limit_;
};

}  // namespace TarnixTools::pdf::filters

#endif  // TARNIX_PDF_FILTERS_LIMITED_OUTPUT_H_
