// FlateDecode in pieces (ISO 32000-2, 7.4.4), predictors included: for data of which not all is
// wanted in memory at once. Decode is faster where it is.
#ifndef TARNIX_PDF_FILTERS_FLATE_READER_H_
#define TARNIX_PDF_FILTERS_FLATE_READER_H_

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "pdf/filters/Filters.h"

namespace TarnixTools::pdf {

class FlateReader {
 public:
  // Null for data without a sound zlib header, and for rows of a predictor that are too long to be
  // held; Decode can tell more about either. The data outlives the reader. Throws Error:
  // kFilterFailed for unusable parameters.
  static std::unique_ptr<FlateReader> Open(std::string_view encoded,
                                           const FilterParameters& parameters);

  ~FlateReader();
  FlateReader(const FlateReader&) = delete;
  FlateReader& operator=(const FlateReader&) = delete;

  // The next bytes; fewer than `size` at the end of the data, and where it is cut or damaged.
  std::size_t Read(char* bytes, std::size_t size);

 private:
  class Inflater;

  FlateReader(std::string_view deflated, const FilterParameters& parameters, std::size_t row_bytes);

  bool ReadBlock();

  std::unique_ptr<Inflater> inflater_;
  FilterParameters parameters_;
  std::size_t row_bytes_ = 0;  // of encoded rows; 1 without a predictor
  bool is_png_ = false;
  std::string above_;  // the last row of the block before
  std::string block_;  // decoded
  std::size_t next_ = 0;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILTERS_FLATE_READER_H_
