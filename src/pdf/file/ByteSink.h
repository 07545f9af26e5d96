// Where a written document's bytes go, from first to last.
#ifndef TARNIX_PDF_FILE_BYTESINK_H_
#define TARNIX_PDF_FILE_BYTESINK_H_

#include <string>
#include <string_view>
#include <utility>

namespace TarnixTools::pdf {

class ByteSink {
 public:
  virtual ~ByteSink() = default;
  // Takes all of it, or throws Error(kWriteFailed).
  virtual void Write(std::string_view bytes) = 0;
};

class StringSink : public ByteSink {
 public:
  void Write(std::string_view bytes) override { bytes_ += bytes; }

  // Makes room for so many bytes.
  void Reserve(std::size_t size) { bytes_.reserve(size); }

  const std::string& bytes() const { return bytes_; }

  // All bytes; the sink is empty then.
  std::string Take() { return std::exchange(bytes_, {}); }

 private:
  std::string bytes_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_BYTESINK_H_
