// Streams written with fewer bytes, without loss: decoded and deflated again, better than before.
// For content, fonts, colour profiles, character maps, attachments and everything else but images
// with a codec of their own.
//
//   for (const std::uint32_t number : StreamsToRecode(document, taken, rewriter)) {
//     const auto encoded = ReadEncoded(document, number);       // one thread for one document
//     auto recoded = encoded ? Recode(*encoded) : std::nullopt;  // on any thread
//     if (recoded) {
//       PutRecoded(document, number, recoded->coding, store.Keep(std::move(recoded->data)), rewriter);
//     }
//   }
#ifndef TARNIX_ENGINES_OPTIMIZER_STRUCTURE_STREAMRECODER_H_
#define TARNIX_ENGINES_OPTIMIZER_STRUCTURE_STREAMRECODER_H_

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "engines/support/files/DataStore.h"
#include "pdf/file/Document.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

// The data of a stream as its filters encode it.
struct EncodedStream {
  std::string data;
  std::vector<pdf::FilterStep> steps;
  std::size_t entry_bytes = 0;  // of the dictionary's entries about the filters
};

// How data has been coded again.
struct StreamCoding {
  bool is_deflated = true;  // false: there is no filter
  std::string parameters;   // as text: the /DecodeParms; empty for none
};

struct RecodedStream {
  std::string data;
  StreamCoding coding;
};

// Streams that the rewriter will write and that may become smaller, in the order in which the
// document leads to them. Not among them: those taken by other passes or changed already, those with
// filters that are not decoded here, with data in other files, and metadata that is plain, as
// programs that know nothing of documents look for it.
std::vector<std::uint32_t> StreamsToRecode(pdf::Document& document,
                                           const std::unordered_set<std::uint32_t>& taken,
                                           pdf::DocumentRewriter& rewriter);

// Nothing for a stream that is too long to be held, and for an object that is none.
std::optional<EncodedStream> ReadEncoded(pdf::Document& document, std::uint32_t number);

// Nothing where that is not smaller, and for data that is damaged or becomes too long.
std::optional<RecodedStream> Recode(const EncodedStream& encoded);

// Has the stream written with the new data. Entries of its dictionary may be set before and after.
void PutRecoded(pdf::Document& document, std::uint32_t number, const StreamCoding& coding,
                StoredData data, pdf::DocumentRewriter& rewriter);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_STRUCTURE_STREAMRECODER_H_
