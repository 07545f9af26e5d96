// What drawing throws when pages cannot be drawn. A document that the core cannot work with is a
// pdf::Error.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGERROR_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGERROR_H_

#include <cstdint>
#include <exception>

namespace TarnixTools::engines {

enum class DrawingErrorCode : std::uint8_t {
  kFile,        // the document cannot be opened
  kPassword,    // its password is missing or wrong
  kNotAPdf,     // neither the core nor PDFium can read it
  kNoRenderer,  // PDFium is not installed
  kPage,        // there is no such page, or it cannot be loaded
  kMemory,      // no bitmap can be made
};

class DrawingError : public std::exception {
 public:
  explicit DrawingError(DrawingErrorCode code) : code_(code) {}

  DrawingErrorCode code() const { return code_; }

  const char* what() const noexcept override { return "a page cannot be drawn"; }

 private:
  DrawingErrorCode code_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGERROR_H_
