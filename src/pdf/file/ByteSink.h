// Where bytes go, from first to last: those of a document that is written, or of a stream.
#ifndef TARNIX_PDF_FILE_BYTESINK_H_
#define TARNIX_PDF_FILE_BYTESINK_H_

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace TarnixTools::pdf {

class ByteSink {
 public:
  virtual ~ByteSink() = default;
  // Takes all of it, or throws Error(kWriteFailed).
  virtual void Write(std::string_view bytes) = 0;

  // Memory of the sink's own for what comes next, which saves a copy: the caller fills it from its
  // start and hands it over by Commit. Empty where there is none.
  virtual std::span<char> Room() { return {}; }

  virtual void Commit(std::size_t /*count*/) {}
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
