// Keeps what is painted over a page apart from what the page's own content leaves behind: graphics
// states that it does not restore, tokens that it does not complete, data that is damaged, and what
// some readers stop at.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTISOLATION_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTISOLATION_H_

#include <cstdint>
#include <map>
#include <optional>
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
  // Instead of both, where readers that stop within the content would pass over what is painted:
  // all of it, to be shown by a form of its own, which is where they go on.
  std::optional<std::string> form;
  bool is_damaged = false;  // what could not be read is left out
};

class ContentIsolation {
 public:
  // Both outlive this.
  ContentIsolation(SourceDocument& source, pdf::FileWriter& target);

  // streams: numbers of a page's content streams in the source; one that is no stream is left out.
  // Once a q stands before what is given, and the closing and a Q after it, the graphics state is
  // the page's first again. Throws pdf::Error: kLimitExceeded when pages have streams beyond
  // reason.
  IsolatedContent Isolate(const std::vector<std::uint32_t>& streams);

 private:
  struct Decoded {
    std::string data;
    bool is_stream = false;
    bool is_damaged = false;
  };

  // What is kept of it.
  struct Measured {
    pdf::ContentBalance balance;
    bool is_stream = false;
    bool is_damaged = false;
  };

  Decoded Decode(std::uint32_t number);
  bool HasForeignFilter(std::uint32_t number);
  const Measured& Measure(std::uint32_t number);
  std::string Join(const std::vector<std::uint32_t>& streams, IsolatedContent& isolated);
  IsolatedContent IsolateJoined(const std::vector<std::uint32_t>& streams);
  void Repair(ContentStream& stream, std::size_t saves);
  void Spend(std::uint64_t bytes);
  std::uint32_t RepairedStream(std::uint32_t number, const pdf::ContentBalance& balance,
                               std::size_t matched);
  std::uint32_t WriteWithout(std::string content, const std::vector<std::size_t>& restores,
                             std::size_t first);

  SourceDocument* source_;
  pdf::FileWriter* target_;
  std::unordered_map<std::uint32_t, Measured> measured_;  // by number in the source
  std::size_t kept_positions_ = 0;                        // in measured_
  // Streams that replace others, by number in the source and how many restores they keep.
  std::map<std::pair<std::uint32_t, std::size_t>, std::uint32_t> repaired_;
  std::uint64_t budget_;  // bytes that may still be decoded
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_CONTENTISOLATION_H_
