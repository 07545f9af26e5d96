#include "engines/office/writers/word/SectionPlan.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>

#include "engines/office/writers/word/DownwardPages.h"
#include "engines/office/writers/word/FlowWriter.h"
#include "engines/office/writers/word/MarginKeys.h"
#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kSameEdge = 10;  // points by which columns of one section may differ
constexpr double kSamePage = 1;   // points by which its pages may
// Points below the text that stay free: for editing, and where lines and rows come out taller than
// they were. Pages end where they are told to.
constexpr double kLinesBelow = 90;
constexpr double kLinesBelowColumns = 24;
constexpr double kPageEdge = 18;  // points that nothing reaches into for their sake
constexpr double kUsualMargin = 72;
constexpr double kBesideNotes = 4;
constexpr double kBelowLine = 3;       // points that the last line of a page needs below its box
constexpr double kTouching = 3;        // points by which text may reach into a header or footer
constexpr double kTypicalShare = 0.1;  // of blocks that may begin outside of the margins

// The number within the bounds. Where a small page leaves no room between them, the lower one.
double Between(double number, double least, double most) {
  return std::max(std::min(number, most), least);
}

std::vector<ColumnPlace> ColumnsOf(const Band& band) {
  std::vector<ColumnPlace> columns;
  for (const Column& column : band.columns) {
    columns.push_back({column.box.left, column.box.right});
  }
  std::sort(columns.begin(), columns.end(),
            [](const ColumnPlace& a, const ColumnPlace& b) { return a.left < b.left; });
  for (std::size_t i = 1; i < columns.size(); ++i) {
    if (columns[i - 1].right > columns[i].left) {  // they share a strip
      columns[i - 1].right = columns[i].left =
          std::max((columns[i - 1].right + columns[i].left) / 2, columns[i - 1].left + 1);
      columns[i].right = std::max(columns[i].right, columns[i].left + 1);
    }
  }
  return columns;
}

bool IsSame(const std::vector<ColumnPlace>& a, const std::vector<ColumnPlace>& b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](const ColumnPlace& x, const ColumnPlace& y) {
           return std::abs(x.left - y.left) < kSameEdge && std::abs(x.right - y.right) < kSameEdge;
         });
}

bool HasTable(const Column& column) {
  return std::any_of(column.blocks.begin(), column.blocks.end(), [](const Block& block) {
    return std::holds_alternative<Table>(block.content);
  });
}

// Tables side by side are no columns of text: LibreOffice begins a column, whose first part would
// be a table, on the next page.
bool IsOfOneColumn(const Band& band) {
  return band.columns.size() < 2 ||
         std::count_if(band.columns.begin(), band.columns.end(), HasTable) > 1;
}

// Bands of one column that follow each other are one part, all others a part each.
std::vector<SectionPart> PartsOf(const OfficeDocument& document, std::size_t page) {
  const std::vector<Band>& bands = document.pages[page].layout.bands;
  if (RunsDown(document.pages[page].layout)) {
    return {{page, 0, bands.size(), BlocksDown(document.pages[page].layout)}};
  }
  std::vector<SectionPart> parts;
  for (std::size_t i = 0; i < bands.size(); ++i) {
    const bool goes_on = i > 0 && IsOfOneColumn(bands[i]) && IsOfOneColumn(bands[i - 1]);
    if (goes_on) {
      ++parts.back().band_count;
    } else {
      parts.push_back({page, i, 1, {}});
    }
  }
  if (parts.empty()) {
    parts.push_back({page, 0, 0, {}});
  }
  return parts;
}

class Planner {
 public:
  explicit Planner(const OfficeDocument& document) : document_(document) {
    for (const OfficePage& page : document.pages) {
      keys_.push_back(MarginKey(page.layout));
    }
    plan_.has_even_pages = Alternates();
  }

  DocumentPlan Plan() {
    std::int32_t number = 0;
    for (std::size_t page = 0; page < document_.pages.size(); ++page) {
      const auto shown = ShownNumber(document_.pages[page].layout);
      const bool is_counted = !shown || (shown->value == number + 1 && shown->format == format_);
      number = shown ? shown->value : number + 1;
      format_ = shown ? shown->format : format_;
      AddPage(page, number, is_counted ? std::nullopt : shown);
    }
    for (SectionPlan& section : plan_.sections) {
      FindEdges(section);
    }
    WidenPages();
    return std::move(plan_);
  }

 private:
  // Whether more pages have the header of the last but one than that of the one before.
  bool Alternates() const {
    std::size_t alternating = 0;
    for (std::size_t i = 3; i < keys_.size(); ++i) {
      alternating += keys_[i] == keys_[i - 2] && keys_[i] != keys_[i - 1] ? 1 : 0;
    }
    return keys_.size() > 3 && alternating * 2 > keys_.size() - 3;
  }

  void AddPage(std::size_t page, std::int32_t number, const std::optional<PageNumber>& start) {
    const std::vector<SectionPart> parts = PartsOf(document_, page);
    const bool is_even = plan_.has_even_pages && number % 2 == 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
      const bool may_join = parts.size() == 1 && !start && !plan_.sections.empty();
      if (may_join && Joins(plan_.sections.back(), parts[i], is_even)) {
        plan_.sections.back().parts.push_back(parts[i]);
        continue;
      }
      SectionPlan section = SectionOf(parts[i]);
      section.is_continuous = i > 0;
      (is_even ? section.margins.even : section.margins.odd) = page;
      section.start = i == 0 ? start : std::nullopt;
      plan_.sections.push_back(std::move(section));
    }
  }

  SectionPlan SectionOf(const SectionPart& part) const {
    const PageLayout& layout = document_.pages[part.page].layout;
    SectionPlan section;
    section.width = layout.width;
    section.height = layout.height;
    section.parts = {part};
    section.runs_down = !part.down.empty();
    if (part.band_count == 1 && !IsOfOneColumn(layout.bands[part.first_band])) {
      const Band& band = layout.bands[part.first_band];
      section.columns = ColumnsOf(band);
      section.is_right_to_left = band.columns.front().box.left > band.columns.back().box.left;
    }
    return section;
  }

  bool Joins(SectionPlan& section, const SectionPart& part, bool is_even) const {
    const SectionPlan other = SectionOf(part);
    const bool is_alike =
        !section.is_continuous && std::abs(section.width - other.width) < kSamePage &&
        std::abs(section.height - other.height) < kSamePage &&
        section.is_right_to_left == other.is_right_to_left &&
        section.runs_down == other.runs_down && IsSame(section.columns, other.columns);
    return is_alike && IsClearOfMargins(section, part.page) &&
           TakeMargins(section, part.page, is_even);
  }

  // Whether what the pages show between their headers and footers is clear of those of the others:
  // all pages of a section leave them the same room.
  bool IsClearOfMargins(const SectionPlan& section, std::size_t page) const {
    double top = ContentTop(document_.pages[page].layout);
    double bottom = ContentBottom(document_.pages[page].layout);
    double header = BottomOf(document_.pages[page].layout.header);
    double footer = FooterTop(document_.pages[page].layout);
    // The pages before the last one have been held against each other.
    for (const std::size_t other : {section.parts.front().page, section.parts.back().page}) {
      const PageLayout& layout = document_.pages[other].layout;
      top = std::min(top, ContentTop(layout));
      bottom = std::max(bottom, ContentBottom(layout));
      header = std::max(header, BottomOf(layout.header));
      footer = std::min(footer, FooterTop(layout));
    }
    return bottom <= footer + kTouching && top >= header - kTouching;
  }

  // Whether the header and the footer of the page are those of the section, or can be.
  bool TakeMargins(SectionPlan& section, std::size_t page, bool is_even) const {
    SectionMargins& margins = section.margins;
    std::optional<std::size_t>& own = is_even ? margins.even : margins.odd;
    if (own && keys_[*own] == keys_[page]) {
      return true;
    }
    if (own && section.parts.size() == 1 && !margins.first) {
      margins.first = own;
      own.reset();
    }
    if (own) {
      return false;
    }
    own = page;
    return true;
  }

  // The first section of a page tells its margins: LibreOffice knows further ones of sections that
  // begin within the page only where they are within those. Sections without columns have the same,
  // and their paragraphs indents.
  void WidenPages() {
    SectionPlan* first = nullptr;
    for (SectionPlan& section : plan_.sections) {
      if (!section.is_continuous) {
        first = &section;
      } else if (first != nullptr && first->columns.empty()) {
        first->left = std::min(first->left, section.left);
        first->right = std::max(first->right, section.right);
      }
    }
    for (SectionPlan& section : plan_.sections) {
      if (!section.is_continuous) {
        first = &section;
      } else if (first != nullptr && section.columns.empty()) {
        section.left = first->left;
        section.right = first->right;
      }
    }
  }

  // Below the last line here is to the left of it.
  void FindEdgesDown(SectionPlan& section) const {
    double start = section.height;
    double end = 0;
    double first = section.width;
    double last = 0;
    for (const SectionPart& part : section.parts) {
      for (const Block& block : part.down) {
        start = std::min(start, BoxOf(block).left);
        end = std::max(end, BoxOf(block).right);
        first = std::min(first, TopOf(block, document_.pages[part.page].layout));
        last = std::max(last, LowerEdge(BoxOf(block)));
      }
    }
    const double free = Between(section.width - kPageEdge - last, 0.0, kLinesBelow);
    section.top = Between(start, 0.0, section.height * 0.9);
    section.bottom = Between(end, section.top + 1, section.height);
    section.right = Between(section.width - first, section.width * 0.1, section.width);
    section.left =
        Between(section.width - last - std::max(free, kBelowLine), 0.0, section.right - 1);
  }

  void FindEdges(SectionPlan& section) const {
    if (section.runs_down) {
      FindEdgesDown(section);
      return;
    }
    std::vector<double> lefts;
    std::vector<double> rights;
    double top = section.height;
    double bottom = 0;
    double limit = section.height;
    for (const SectionPart& part : section.parts) {
      const PageLayout& page = document_.pages[part.page].layout;
      top = std::min(top, ContentTop(page));
      bottom = std::max(bottom, ContentBottom(page));
      limit = std::min(limit, FooterTop(page));
      AddSides(page, part, lefts, rights);
    }
    section.top = Between(top, 0.0, section.height * 0.9);
    limit = std::min(limit, section.height - kPageEdge);
    const double most = section.columns.empty() ? kLinesBelow : kLinesBelowColumns;
    const double free = Between(limit - bottom, 0.0, most);
    section.bottom = Between(bottom + std::max(free, kBelowLine), section.top + 1, section.height);
    if (section.columns.empty()) {
      section.left = Typical(lefts, kTypicalShare, kUsualMargin);
      section.right = Typical(rights, 1 - kTypicalShare, section.width - kUsualMargin);
    } else {
      section.left = section.columns.front().left;
      section.right = section.columns.back().right;
    }
    section.left = Between(section.left, 0.0, section.width * 0.9);
    section.right = Between(section.right, section.left + 1, section.width);
  }

  static double ContentTop(const PageLayout& page) {
    double top = page.height;
    for (const Band& band : page.bands) {
      for (const Column& column : band.columns) {
        for (const Block& block : column.blocks) {
          top = std::min(top, TopOf(block, page));
        }
      }
    }
    if (RunsDown(page)) {
      for (const Floating& floating : page.floats) {
        top = std::min(top, UpperEdge(QuarterTurned(floating.box)));
      }
    }
    return top < page.height ? top : std::min(kUsualMargin, page.height / 4);
  }

  static double BottomOf(const std::vector<Block>& blocks) {
    double bottom = 0;
    for (const Block& block : blocks) {
      bottom = std::max(bottom, LowerEdge(BoxOf(block)));
    }
    return bottom;
  }

  static double ContentBottom(const PageLayout& page) {
    double bottom = 0;
    for (const Band& band : page.bands) {
      for (const Column& column : band.columns) {
        bottom = std::max(bottom, BottomOf(column.blocks));
      }
    }
    for (const Note& note : page.notes) {
      bottom = std::max(bottom, BottomOf(note.blocks) + kBesideNotes);
    }
    if (RunsDown(page)) {
      for (const Floating& floating : page.floats) {
        bottom = std::max(bottom, LowerEdge(QuarterTurned(floating.box)));
      }
    }
    return bottom;
  }

  static double FooterTop(const PageLayout& page) {
    double top = page.height;
    for (const Block& block : page.footer) {
      top = std::min(top, TopOf(block, page));
    }
    return top;
  }

  static void AddSides(const PageLayout& page, const SectionPart& part, std::vector<double>& lefts,
                       std::vector<double>& rights) {
    for (std::size_t i = part.first_band; i < part.first_band + part.band_count; ++i) {
      for (const Column& column : page.bands[i].columns) {
        for (const Block& block : column.blocks) {
          lefts.push_back(BoxOf(block).left);
          rights.push_back(BoxOf(block).right);
        }
      }
    }
  }

  // The number that the share of all lies below.
  static double Typical(std::vector<double>& numbers, double share, double otherwise) {
    if (numbers.empty()) {
      return otherwise;
    }
    std::sort(numbers.begin(), numbers.end());
    const double last = static_cast<double>(numbers.size() - 1);
    return numbers[static_cast<std::size_t>(std::lround(last * share))];
  }

  const OfficeDocument& document_;
  std::vector<std::string> keys_;  // by page
  DocumentPlan plan_;
  NumberFormat format_ = NumberFormat::kDecimal;
};

}  // namespace

DocumentPlan PlanSections(const OfficeDocument& document) {
  return Planner(document).Plan();
}

}  // namespace TarnixTools::engines::office
