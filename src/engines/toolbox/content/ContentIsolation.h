// Keeps what is painted over a page apart from what the page's own content leaves behind: graphics
// states that it does not restore, and tokens that it does not complete.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTISOLATION_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTISOLATION_H_

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "pdf/content/ContentBalance.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines {

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
  ContentIsolation(SourceDocument& source, pdf::FileWriter& target)
      : source_(&source), target_(&target) {}

  // streams: numbers of a page's content streams in the source. Once a q stands before them, and
  // the closing and a Q after them, the graphics state is the page's first again.
  IsolatedContent Isolate(const std::vector<std::uint32_t>& streams);

 private:
  std::string Decode(std::uint32_t number);
  const pdf::ContentBalance& BalanceOf(std::uint32_t number);
  IsolatedContent IsolateJoined(const std::vector<std::uint32_t>& streams);
  std::uint32_t WriteWithout(std::string content, const std::vector<std::size_t>& restores,
                             std::size_t first);

  SourceDocument* source_;
  pdf::FileWriter* target_;
  std::unordered_map<std::uint32_t, pdf::ContentBalance> balances_;  // by number in the source
  std::unordered_map<std::uint32_t, std::uint32_t> repaired_;        // whole streams, likewise
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTISOLATION_H_
