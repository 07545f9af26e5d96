// Destinations: explicit ones, and those that have a name in the document (ISO 32000-2, 12.3.2);
// and actions, which lead to them.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_NAVIGATION_DESTINATIONS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_NAVIGATION_DESTINATIONS_H_

#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class Document;
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class CopyContext;
struct PageRequest;
class SourceDocument;

// A page of a source that a destination leads to: the page's object number or, for a page that is
// no object of its own, its index.
class PageKey {
 public:
  PageKey() = default;  // no page

  static PageKey OfNumber(std::uint32_t number) { return PageKey(number); }

  static PageKey OfIndex(std::uint32_t index) { return PageKey(index | kIndexFlag); }

  // The key of a page by its zero-based index.
  static PageKey OfPage(SourceDocument& source, std::uint32_t page_index);

  explicit operator bool() const { return value_ != 0; }

  // The first copy of the page; null when it is not copied.
  const PageRequest* CopyIn(const CopyContext& context) const;

  friend auto operator<=>(const PageKey&, const PageKey&) = default;

 private:
  static constexpr std::uint32_t kIndexFlag = 0x80000000;

  explicit PageKey(std::uint32_t value) : value_(value) {}

  std::uint32_t value_ = 0;
};

// Where the source's names lead; read once per source.
class SourceDestinations {
 public:
  struct Named {
    std::string_view name;
    std::string_view view;  // what of the page is shown: the rest of the destination, as PDF text
    PageKey page;
    bool is_old_style = false;  // from the catalog's /Dests dictionary
  };

  explicit SourceDestinations(SourceDocument& source);

  // Sorted by name. Names that lead to no page of the document are not among them.
  std::span<const Named> all() const { return names_; }

  // The index in all() of a name given as a string, or as a name object; nullopt when it leads
  // nowhere.
  std::optional<std::uint32_t> Find(const pdf::Object& name) const;
  // Indexes in all() of the names that lead to a page.
  std::span<const std::uint32_t> OfPage(PageKey page) const;

  // The page that a destination leads to, explicit or by name; none when it leads nowhere.
  PageKey PageOf(const pdf::Object& destination);
  // The page that an explicit destination's first item names: by reference or by index.
  PageKey PageOfItem(const pdf::Object& item);

 private:
  void Add(std::string_view name, const pdf::Object& value, bool is_old_style);
  void Sort();

  SourceDocument* source_;
  pdf::Arena arena_;  // texts of names_
  std::vector<Named> names_;
  std::vector<std::uint32_t> by_page_;
};

// The names of a document being made.
class TargetDestinations {
 public:
  // What a name stands for: an object number of the target and the rest of the destination.
  struct Place {
    std::uint32_t page = 0;
    std::string_view view;

    friend bool operator==(const Place&, const Place&) = default;
  };

  // Takes a name in, under another one when this one already stands for another place. Returns the
  // name it has got, which lives as long as this.
  std::string_view Add(std::string_view name, const Place& place);

  // Writes what there is and appends the entries for it, of the catalog and of its /Names
  // dictionary.
  void Finish(pdf::FileWriter& writer, std::string& catalog, std::string& names);

 private:
  struct Entry {
    Place place;
    std::uint32_t next_suffix = 2;  // to try for the next one that wants this name
  };

  pdf::Arena arena_;  // texts of names_
  std::unordered_map<std::string_view, Entry> names_;
};

// Leads destinations and actions to copied pages.
class DestinationCopier {
 public:
  explicit DestinationCopier(CopyContext& context) : context_(&context) {}

  // A destination (explicit, or a name as string or name object) as the target says it; nullopt
  // when it leads to no copied page.
  std::optional<std::string> Copy(const pdf::Object& destination);
  // An action dictionary with its /Next chain; nullopt when nothing of it is left.
  std::optional<std::string> CopyAction(const pdf::Object& action);
  // Appends an annotation's or a field's entry /A, /PA (an action) or /AA (actions by event).
  // Appends nothing and returns false when none of its actions is left.
  bool AppendActionEntry(std::string& out, std::string_view key, const pdf::Object& value);
  // Brings all names that lead to copied pages into the target.
  void CopyNames();

 private:
  std::optional<std::string> CopyExplicit(const pdf::Object& array);
  std::optional<std::string> CopyName(const pdf::Object& name);
  std::string_view NameInTarget(std::uint32_t index, std::uint32_t page_number);
  std::optional<std::string> CopyChain(const pdf::Object& first);
  std::optional<std::string> CopyOneAction(const pdf::Object& action);
  void AppendActionValue(std::string& out, const pdf::Object& action,
                         const pdf::DictionaryEntry& entry);

  CopyContext* context_;
  std::unordered_map<std::uint32_t, std::string_view> target_names_;  // by index of the source's
  std::unordered_map<std::uint32_t, std::uint32_t> actions_;  // target numbers, 0: nothing is left
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_NAVIGATION_DESTINATIONS_H_
