// The changes that a DocumentRewriter has been told.
#ifndef TARNIX_PDF_WRITE_REWRITEPLAN_H_
#define TARNIX_PDF_WRITE_REWRITEPLAN_H_

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/NumberMap.h"
#include "pdf/write/ObjectChange.h"

namespace TarnixTools::pdf {

// What becomes of references to an object that is left out.
enum class Gap : std::uint8_t {
  kNull,    // they become null
  kClosed,  // the dictionary's entry or the array's item vanishes
};

// One of the pages of the written document.
struct RewrittenPage {
  std::size_t index = 0;    // among the pages of the document
  std::uint32_t added = 0;  // when not 0: an added object instead, which inherits nothing
};

struct RewritePlan {
  using Later = std::function<ObjectChange()>;

  // An entry that is set, or removed when there is no text.
  struct Entry {
    std::string key;
    std::optional<std::string> text;
  };

  using Entries = std::vector<Entry>;

  // A change that is known, or one to be asked for.
  struct Planned {
    ObjectChange change;
    Later later;
  };

  // The last word about a key counts.
  static void Put(Entries& entries, std::string_view key, std::optional<std::string> text);

  // What was said about the object itself; null for nothing.
  const Planned* Find(std::uint32_t number) const;

  // What an object has been merged into, in the end: itself for most.
  std::uint32_t Representative(std::uint32_t number);

  // A value of the plan's text.
  static Object Parse(std::string_view text, Arena& arena);

  // A dictionary with the entries. Set ones take the places of those that they replace. Any other
  // value is left alone.
  static Object Edited(const Object& value, const Entries& entries, Arena& arena);

  std::uint32_t catalog = 0;
  // By number, from kFirstAddedObject on. Objects may be added while others are being written.
  std::deque<Planned> added;
  std::unordered_map<std::uint32_t, Planned> changes;
  std::unordered_map<std::uint32_t, Entries> entries;
  std::unordered_map<std::uint32_t, Gap> dropped;
  std::unordered_map<std::uint32_t, std::uint32_t> merged;
  std::function<ObjectChange(std::uint32_t number)> each;
  Entries trailer;
  const PageTree* tree = nullptr;  // null: the page tree stays as it is
  std::vector<RewrittenPage> pages;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_REWRITEPLAN_H_
