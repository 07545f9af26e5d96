#include "engines/support/layout/paragraphs/ParagraphBreaks.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/Quantile.h"
#include "engines/support/layout/paragraphs/Leaders.h"
#include "engines/support/layout/paragraphs/ListLabels.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

// All in ems.
constexpr double kWidestPitch = 2.4;  // between lines of one paragraph
constexpr double kLeastPitch = 0.6;
constexpr double kAlike = 0.35;  // edges that count as one
constexpr double kIndent = 0.6;  // that begins a paragraph
constexpr double kSlack = 0.6;   // that a line may have left where the next word does not fit
constexpr double kSpaceWidth = 0.25;
constexpr double kNearMargin = 1.0;

constexpr double kPitchGrowth = 1.17;  // that begins a paragraph
constexpr double kSizeChange = 1.07;
constexpr double kUsualPitch = 0.3;  // the quantile of a run's pitches that counts as usual

// The start and the end of a row in the direction in which it is read; ends are larger.
double StartOf(const TextRow& row) {
  return row.is_right_to_left ? -row.box.right : row.box.left;
}

double EndOf(const TextRow& row) {
  return row.is_right_to_left ? -row.box.left : row.box.right;
}

bool HaveOneSize(const TextRow& a, const TextRow& b) {
  return std::max(a.size, b.size) <= kSizeChange * std::min(a.size, b.size);
}

bool LookAlike(const PageModel& page, const TextRow& a, const TextRow& b) {
  const TextStyle& one = page.styles[a.style];
  const TextStyle& other = page.styles[b.style];
  const bool is_one_face =
      one.face == other.face ||
      (one.face != nullptr && other.face != nullptr && one.face->family == other.face->family);
  return HaveOneSize(a, b) && a.is_bold == b.is_bold && one.color == other.color &&
         one.is_hidden == other.is_hidden && is_one_face;
}

double FirstWordWidth(const TextRow& row) {
  return row.first().words.front().box.width();
}

// Rows that follow each other with one size and no wide gap.
struct Run {
  std::size_t begin = 0;
  std::size_t end = 0;
  double start = 0;  // the margins that its rows reach
  double finish = 0;
  double pitch = 0;  // the usual one
};

class BreakFinder {
 public:
  BreakFinder(const PageModel& page, const std::vector<TextRow>& rows)
      : page_(&page), rows_(&rows) {
    if (!rows.empty()) {
      FindRuns();
    }
  }

  std::vector<std::size_t> Find() const;

 private:
  void FindRuns();
  void MeasureRun(Run& run) const;
  bool FollowInRun(const TextRow& a, const TextRow& b) const;

  bool EndsBetween(const Run& run, std::size_t first, std::size_t next) const;
  bool DifferInKind(std::size_t first, std::size_t next) const;
  bool EndsShort(const Run& run, const TextRow& row, const TextRow& next) const;
  bool IsIndented(const Run& run, std::size_t first, std::size_t next) const;

  const TextRow& Row(std::size_t index) const { return (*rows_)[index]; }

  const PageModel* page_;
  const std::vector<TextRow>* rows_;
  std::vector<Run> runs_;
  double finish_ = 0;  // of the column
};

// Whether both run beside one large initial.
bool AreBesideInitial(const TextRow& a, const TextRow& b) {
  return a.inset > 0 && b.inset > 0 && b.first().initial == nullptr;
}

bool BreakFinder::FollowInRun(const TextRow& a, const TextRow& b) const {
  if (AreBesideInitial(a, b)) {
    return true;
  }
  const double pitch = b.baseline - a.baseline;
  return HaveOneSize(a, b) && pitch <= kWidestPitch * b.size && pitch >= kLeastPitch * b.size &&
         a.is_right_to_left == b.is_right_to_left;
}

void BreakFinder::MeasureRun(Run& run) const {
  std::vector<double> pitches;
  run.start = StartOf(Row(run.begin));
  run.finish = EndOf(Row(run.begin));
  for (std::size_t i = run.begin; i < run.end; ++i) {
    run.start = std::min(run.start, StartOf(Row(i)));
    run.finish = std::max(run.finish, EndOf(Row(i)));
    if (i > run.begin) {
      pitches.push_back(Row(i).baseline - Row(i - 1).baseline);
    }
  }
  if (!pitches.empty()) {
    run.pitch = Quantile(std::move(pitches), kUsualPitch);
  }
  // A margin that one line alone reaches is none: lines of a poem or an address end where they like.
  const auto at_margin = std::count_if(
      rows_->begin() + static_cast<std::ptrdiff_t>(run.begin),
      rows_->begin() + static_cast<std::ptrdiff_t>(run.end),
      [&run](const TextRow& row) { return EndOf(row) > run.finish - kNearMargin * row.size; });
  if (at_margin < 2) {
    run.finish = std::max(run.finish, finish_);
  }
}

void BreakFinder::FindRuns() {
  finish_ = EndOf(rows_->front());
  for (const TextRow& row : *rows_) {
    finish_ = std::max(finish_, EndOf(row));
  }
  for (std::size_t begin = 0; begin < rows_->size();) {
    Run run{.begin = begin, .end = begin + 1};
    while (run.end < rows_->size() && FollowInRun(Row(run.end - 1), Row(run.end))) {
      ++run.end;
    }
    MeasureRun(run);
    runs_.push_back(run);
    begin = run.end;
  }
}

bool IsBullet(const TextRow& row) {
  const std::optional<FoundLabel> label = ReadLabel(row.first().words.front().text);
  return label && label->kind == ListKind::kBullet;
}

bool HasLabel(const TextRow& row) {
  return ReadLabel(row.first().words.front().text).has_value() &&
         (row.lines.size() > 1 || row.first().words.size() > 1);
}

// A label and its text are one line; other gaps are those of tabs.
bool HasTabs(const TextRow& row) {
  const std::size_t label = row.first().words.size() == 1 && HasLabel(row) ? 1 : 0;
  return row.lines.size() > 1 + label;
}

bool BreakFinder::DifferInKind(std::size_t first, std::size_t next) const {
  const TextRow& before = Row(next - 1);
  const TextRow& row = Row(next);
  const bool is_label_break =
      IsBullet(row) || (HasLabel(row) && (HasLabel(Row(first)) || StartOf(row) < StartOf(before)));
  return !LookAlike(*page_, before, row) || is_label_break || HasTabs(row) || HasTabs(before);
}

bool AreCentered(const TextRow& a, const TextRow& b) {
  return std::abs(MiddleX(a.box) - MiddleX(b.box)) < kAlike * b.size &&
         std::abs(a.box.left - b.box.left) > kAlike * b.size;
}

// Whether the next row's first word would have had room at the end of the row.
bool BreakFinder::EndsShort(const Run& run, const TextRow& row, const TextRow& next) const {
  const double needed = FirstWordWidth(next) + (kSpaceWidth + kSlack) * next.size;
  const double left =
      AreCentered(row, next) ? run.finish - run.start - row.box.width() : run.finish - EndOf(row);
  return left > needed;
}

bool BreakFinder::IsIndented(const Run& run, std::size_t first, std::size_t next) const {
  const TextRow& before = Row(next - 1);
  const TextRow& row = Row(next);
  const double shift = StartOf(row) - StartOf(before);
  const bool ends_alike = std::abs(EndOf(row) - EndOf(before)) < kAlike * row.size;
  if (AreCentered(before, row) || (ends_alike && EndOf(row) < run.finish - row.size)) {
    return false;
  }
  if (next - first >= 2 || shift < 0) {
    return std::abs(shift) > kIndent * row.size && (next - first >= 2 || -shift > 6 * row.size);
  }
  if (shift <= kIndent * row.size || HasLabel(Row(first))) {
    return false;
  }
  // The second row is further in: it begins a paragraph, unless the third goes on beneath it.
  const bool has_third = next + 1 < run.end;
  return !has_third || std::abs(StartOf(Row(next + 1)) - StartOf(row)) > kAlike * row.size;
}

// Whether the row is the last one of an entry of a table of contents.
bool IsEndOfEntry(const TextRow& row) {
  std::string text;
  for (const WordLine* line : row.lines) {
    for (const Word& word : line->words) {
      for (const char32_t character : word.text) {
        AppendUtf8(text, character);
      }
      text += ' ';
    }
  }
  return EndsAsEntry(text);
}

bool BreakFinder::EndsBetween(const Run& run, std::size_t first, std::size_t next) const {
  const TextRow& before = Row(next - 1);
  const TextRow& row = Row(next);
  if (AreBesideInitial(before, row) || row.first().initial != nullptr) {
    return row.first().initial != nullptr;
  }
  if (row.baseline - before.baseline > kPitchGrowth * run.pitch || IsEndOfEntry(before)) {
    return true;
  }
  if (before.element != 0 && before.element == row.element) {
    return false;
  }
  return DifferInKind(first, next) || EndsShort(run, before, row) || IsIndented(run, first, next);
}

std::vector<std::size_t> BreakFinder::Find() const {
  std::vector<std::size_t> starts;
  for (const Run& run : runs_) {
    starts.push_back(run.begin);
    for (std::size_t next = run.begin + 1; next < run.end; ++next) {
      if (EndsBetween(run, starts.back(), next)) {
        starts.push_back(next);
      }
    }
  }
  return starts;
}

}  // namespace

std::vector<std::size_t> FindParagraphStarts(const PageModel& page,
                                             const std::vector<TextRow>& rows) {
  return BreakFinder(page, rows).Find();
}

}  // namespace TarnixTools::engines
