// Keeps what is painted over a page apart from what the page's own content leaves behind: graphics
// states that it does not restore, and tokens that it does not complete.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTISOLATION_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTISOLATION_H_

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "pdf/content/ContentBalance.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines::toolbox {

class SourceDocument;

// One stream of a page's contents: of the source, or one that replaces it in the target.
struct ContentStream {
  std::uint32_t source_number = 0;
  std::uint32_t target_number = 0;  // 0: the source's is copied
};

struct IsolatedContent {
  std::vector<ContentStream> streams;
  std::string closing;  // to follow them, before what is painted
};

class ContentIsolation {
 public:
  // Both outlive this.
  ContentIsolation(SourceDocument& source, pdf::FileWriter& target);

  // streams: numbers of a page's content streams in the source. Once a q stands before them, and
  // the closing and a Q after them, the graphics state is the page's first again. Throws
  // pdf::Error: kLimitExceeded when pages have streams beyond reason.
  IsolatedContent Isolate(const std::vector<std::uint32_t>& streams);

 private:
  std::string Decode(std::uint32_t number);
  const pdf::ContentBalance& BalanceOf(std::uint32_t number);
  IsolatedContent IsolateJoined(const std::vector<std::uint32_t>& streams);
  void Spend(std::uint64_t bytes);
  std::uint32_t RepairedStream(std::uint32_t number, const pdf::ContentBalance& balance,
                               std::size_t matched);
  std::uint32_t WriteWithout(std::string content, const std::vector<std::size_t>& restores,
                             std::size_t first);

  SourceDocument* source_;
  pdf::FileWriter* target_;
  std::unordered_map<std::uint32_t, pdf::ContentBalance> balances_;  // by number in the source
  std::size_t kept_positions_ = 0;                                   // in balances_
  // Streams that replace others, by number in the source and how many restores they keep.
  std::map<std::pair<std::uint32_t, std::size_t>, std::uint32_t> repaired_;
  std::uint64_t budget_;  // bytes that may still be decoded
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTISOLATION_H_
