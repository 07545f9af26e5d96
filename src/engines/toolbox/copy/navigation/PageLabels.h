// Page labels of copied pages (ISO 32000-2, 12.4.2).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_NAVIGATION_PAGELABELS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_NAVIGATION_PAGELABELS_H_

#include <cstdint>
#include <string>
#include <vector>

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class CopyContext;
class SourceDocument;

// How a page is called: a prefix and a number in a style.
struct PageLabel {
  char style = 'D';  // D, R, r, A, a; 0: no number, the prefix alone
  std::int64_t number = 1;
  std::string prefix;

  // Whether a page that comes `distance` pages after one with this label has the other label by
  // counting on.
  bool LeadsTo(const PageLabel& other, std::int64_t distance) const {
    return style == other.style && prefix == other.prefix &&
           (style == 0 || number + distance == other.number);
  }
};

// Read once per source.
class SourcePageLabels {
 public:
  explicit SourcePageLabels(SourceDocument& source);

  bool empty() const { return ranges_.empty(); }

  // The label of a page by its zero-based index; its plain number where the source gives no label.
  PageLabel Of(std::uint32_t page_index) const;

 private:
  struct Range {
    std::uint32_t start = 0;  // page index
    PageLabel label;          // of the first page
  };

  std::vector<Range> ranges_;  // by start
};

// The page labels of a document being made.
class TargetPageLabels {
 public:
  // The label of a page by its zero-based position. is_given: the source says so, it is not only
  // the page's number.
  void Add(std::uint32_t position, PageLabel label, bool is_given);

  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);

 private:
  struct Range {
    std::uint32_t start = 0;
    std::uint32_t count = 0;
    PageLabel label;
  };

  std::vector<Range> ranges_;  // as they came
  bool is_given_ = false;
};

class PageLabelCopier {
 public:
  explicit PageLabelCopier(CopyContext& context) : context_(&context) {}

  // To be called after the pages have been written.
  void Copy();

 private:
  CopyContext* context_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_NAVIGATION_PAGELABELS_H_
