// What the core noticed and how it went on: coded, with place, for reports and for repair.
#ifndef TARNIX_PDF_FINDINGS_H_
#define TARNIX_PDF_FINDINGS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "pdf/Limits.h"

namespace TarnixTools::pdf {

enum class FindingCode : std::uint8_t {
  kHeaderMissing,        // no "%PDF-" near the start
  kHeaderNotFirst,       // bytes before the header; offsets may count from the header
  kStartXrefMissing,     // no usable startxref
  kXrefDamaged,          // a cross-reference section cannot be read
  kXrefLoop,             // /Prev leads back
  kXrefRebuilt,          // objects were found by reading the whole file
  kTrailerRebuilt,       // the document's root was found by looking for it
  kCatalogInTrailer,     // the catalog stands in the trailer and is no object of its own
  kObjectMissing,        // the cross-reference names an object that is not there
  kObjectDamaged,        // an object that is not regular syntax
  kObjectStreamDamaged,  // an object stream that cannot be read to its end
  kStreamLengthWrong,    // /Length and the data disagree
  kStreamEndMissing,     // no endstream
  kPageTreeDamaged,      // a node or kid of the page tree that cannot be used
  kPageTreeLoop,         // a node that is its own ancestor, or stands twice
  kPageCountWrong,       // /Count and the pages disagree
  kPagesSalvaged,        // pages were gathered without a page tree
  kPageAdopted,          // a page was found that the page tree has lost
  kPageBlank,            // a page that is lost stands as an empty one
  kPagesMissing,         // the page tree claims more pages than could be found
  kStringUndecryptable,  // encrypted data that is not whole
};

inline constexpr std::size_t kFindingCodeCount = 21;

// In English, in a few words: "stream length wrong". The text is static.
const char* TextOf(FindingCode code);

// Whether something that the document announces is not there, rather than found in another way.
bool IsLoss(FindingCode code);

struct Finding {
  FindingCode code;
  std::uint32_t object = 0;  // 0: none in particular
  std::uint64_t offset = 0;  // in the file; 0 when unknown
};

class Findings {
 public:
  void Add(FindingCode code, std::uint32_t object = 0, std::uint64_t offset = 0) {
    ++count_;
    if (counts_[static_cast<std::size_t>(code)]++ < limits::kMaxFindings) {
      kept_.push_back({code, object, offset});
    }
  }

  const std::vector<Finding>& kept() const { return kept_; }

  std::uint64_t count() const { return count_; }

  bool Has(FindingCode code) const {
    for (const Finding& finding : kept_) {
      if (finding.code == code) {
        return true;
      }
    }
    return false;
  }

 private:
  std::vector<Finding> kept_;
  std::array<std::uint64_t, kFindingCodeCount> counts_{};
  std::uint64_t count_ = 0;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FINDINGS_H_
