// Outline items (bookmarks) that lead to copied pages, with their ancestors (ISO 32000-2, 12.3.3).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_NAVIGATION_OUTLINE_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_NAVIGATION_OUTLINE_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "engines/toolbox/copy/navigation/Destinations.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class CopyContext;
class SourceDocument;

// The source's outline; read once per source.
class SourceOutline {
 public:
  static constexpr std::uint32_t kNoParent = 0xFFFFFFFF;

  struct Item {
    std::uint32_t number = 0;  // object number
    std::uint32_t parent = kNoParent;
    PageKey page;  // that it leads to; none when it leads elsewhere or nowhere
    bool is_open = false;
  };

  explicit SourceOutline(SourceDocument& source);

  // Each item before its descendants, in the order in which they are shown.
  const std::vector<Item>& items() const { return items_; }

  // Indexes of the items that lead to a page.
  std::span<const std::uint32_t> OfPage(PageKey page) const;

 private:
  void Read(SourceDocument& source, const pdf::Object& outlines);

  std::vector<Item> items_;
  std::vector<std::uint32_t> by_page_;
};

// The outline of a document being made. Items are written as they come.
class TargetOutline {
 public:
  // Number of the outline dictionary, the parent of top-level items.
  std::uint32_t Root(pdf::FileWriter& writer);

  // Number of the last top-level item so far; 0 for none.
  std::uint32_t last() const { return last_; }

  // Adds a top-level item behind the others: its text without /Next and the closing ">>", which
  // are written when it is known what comes next.
  void Add(pdf::FileWriter& writer, std::uint32_t number, std::string text);

  // Of an item to stand above those of the next source; nullopt for none.
  void SetHeading(std::optional<std::string> title) { heading_ = std::move(title); }

  const std::optional<std::string>& heading() const { return heading_; }

  // Counts items that are visible.
  void AddVisible(std::int64_t count) { visible_ += count; }

  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);

 private:
  std::uint32_t root_ = 0;
  std::uint32_t first_ = 0;
  std::uint32_t last_ = 0;
  std::string last_text_;
  std::int64_t visible_ = 0;
  std::optional<std::string> heading_;
};

class OutlineCopier {
 public:
  explicit OutlineCopier(CopyContext& context) : context_(&context) {}

  // To be called after the pages have been written.
  void Copy();

 private:
  // An item that comes along; relations are indexes in chosen_.
  struct Chosen {
    const SourceOutline::Item* item = nullptr;
    std::uint32_t target_number = 0;
    std::uint32_t parent = SourceOutline::kNoParent;
    std::uint32_t previous = SourceOutline::kNoParent;
    std::uint32_t next = SourceOutline::kNoParent;
    std::uint32_t first_kid = SourceOutline::kNoParent;
    std::uint32_t last_kid = SourceOutline::kNoParent;
    std::int64_t visible_below = 0;  // descendants that show when it is open
  };

  std::vector<std::uint32_t> Choose(SourceOutline& outline) const;
  void Relate(const SourceOutline& outline, const std::vector<std::uint32_t>& indexes);
  void CountVisible();
  void WriteItems();
  void WriteHeading(const std::string& title);
  std::string ItemText(const Chosen& chosen);
  void AppendRelations(std::string& out, const Chosen& chosen);
  void AppendLook(std::string& out, const pdf::Object& item);
  void AppendTarget(std::string& out, const pdf::Object& item);

  CopyContext* context_;
  std::vector<Chosen> chosen_;
  std::uint32_t heading_number_ = 0;  // of the item above all of them; 0 for none
  pdf::Arena arena_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_NAVIGATION_OUTLINE_H_
