// Inline images (ISO 32000-2, 8.9.7): where their data ends. It has no delimiter that could not
// stand in the data itself, so its length is taken from what the image says of itself, and where
// that says nothing, from what comes after.
#ifndef TARNIX_PDF_CONTENT_INLINEIMAGE_H_
#define TARNIX_PDF_CONTENT_INLINEIMAGE_H_

#include <cstddef>
#include <optional>
#include <string_view>

#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

// The keys and values between BI and ID as a dictionary, keys as they stand ("W" or "Width"); they
// live in the arena.
Object ParseInlineEntries(std::string_view text, Arena& arena);

// Finds the ends of the images of one content stream, first to last. The work for all of them
// together is in proportion to the content.
class InlineImageMeasure {
 public:
  struct Extent {
    std::size_t begin = 0;  // of the data
    std::size_t end = 0;    // of the data, white space before EI left out where it can be told
    std::size_t after = 0;  // EI
  };

  explicit InlineImageMeasure(std::string_view content) : content_(content) {}

  // after_id: position right after ID. nullopt when nothing looks like the end.
  std::optional<Extent> Measure(const Object& entries, std::size_t after_id);

 private:
  std::optional<Extent> EndsAt(std::size_t begin, std::size_t end) const;
  std::optional<Extent> ByLength(const Object& entries, std::size_t begin) const;
  std::optional<Extent> ByEndMark(const Object& entries, std::size_t begin);
  std::optional<Extent> BySearch(std::size_t begin);
  std::optional<Extent> Search(std::size_t begin, bool wants_space) const;
  bool IsPlausibleAfter(std::size_t position) const;

  std::string_view content_;
  // Where the next end marks are as far as they have been looked for, so that nothing is searched
  // twice; npos: there are no more.
  std::size_t hex_mark_at_ = 0;
  std::size_t ascii85_mark_at_ = 0;
  bool lacks_spaced_end_ = false;  // a search for EI after white space has been in vain
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_INLINEIMAGE_H_
