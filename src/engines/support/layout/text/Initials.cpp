#include "engines/support/layout/text/Initials.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/text/Characters.h"

namespace TarnixTools::engines {

namespace {

constexpr double kLarger = 1.9;          // than the text beside it, at least
constexpr double kCapital = 0.7;         // ems: the height of capital letters
constexpr double kReachUp = 0.95;        // ems of the letter: baselines beside it
constexpr std::size_t kMostBeside = 12;  // lines
constexpr double kOneSize = 1.35;        // small capitals may begin the first line

// In ems of the text beside the letter.
constexpr double kLevel = 0.4;       // between the baselines of the letter and of the last line
constexpr double kWidestGap = 2.0;   // between the letter and its lines
constexpr double kReachIn = 0.5;     // of the lines into the letter's width
constexpr double kOneEdge = 1.2;     // between the starts of the lines
constexpr double kLeastPitch = 0.8;  // from line to line
constexpr double kWidestPitch = 2.4;
constexpr double kHigher = 1.3;  // by which the letter may begin above its first line
constexpr double kLower = 0.6;   // or below it
constexpr double kUnder = 0.8;   // from the letter's edge to the start of the line below it

constexpr double kOnePitch = 0.25;  // of the pitch, by which others may differ
constexpr double kNextPitch = 1.6;  // pitches to the line below the letter, at most

// A capital letter by itself, perhaps behind a quotation mark.
bool IsLetterAlone(const WordLine& line) {
  if (line.words.size() != 1 || line.is_right_to_left) {
    return false;
  }
  const std::u32string& text = line.words.front().text;
  const bool is_quoted = text.size() == 2 && !RunsRight(text.front()) && !IsDigit(text.front());
  return (text.size() == 1 || is_quoted) && IsUpperCase(text.back());
}

bool IsBeside(const WordLine& letter, const WordLine& line) {
  const double gap = line.box.left - letter.box.right;
  return !line.is_right_to_left && line.inset == 0 && line.size * kLarger <= letter.size &&
         gap >= -kReachIn * line.size && gap <= kWidestGap * line.size &&
         line.baseline > letter.baseline - kReachUp * letter.size &&
         line.baseline < letter.baseline + kLevel * line.size;
}

using Lines = std::vector<WordLine*>;

// Whether lines follow each other as those of a paragraph do.
bool AreEven(const Lines& lines) {
  const WordLine& first = *lines.front();
  const double pitch = lines[1]->baseline - first.baseline;
  if (pitch < kLeastPitch * first.size || pitch > kWidestPitch * first.size) {
    return false;
  }
  for (std::size_t i = 1; i < lines.size(); ++i) {
    const double own = lines[i]->baseline - lines[i - 1]->baseline;
    const bool is_even =
        std::abs(own - pitch) <= kOnePitch * pitch &&
        std::abs(lines[i]->box.left - first.box.left) <= kOneEdge * first.size &&
        std::max(lines[i]->size, first.size) <= kOneSize * std::min(lines[i]->size, first.size);
    if (!is_even) {
      return false;
    }
  }
  return true;
}

// Whether the letter is as high as the lines.
bool IsAsHigh(const WordLine& letter, const Lines& lines) {
  const WordLine& first = *lines.front();
  const double lower =
      (letter.baseline - kCapital * letter.size) - (first.baseline - kCapital * first.size);
  return std::abs(lines.back()->baseline - letter.baseline) <= kLevel * first.size &&
         lower <= kLower * first.size && lower >= -kHigher * first.size;
}

class InitialFinder {
 public:
  explicit InitialFinder(const Lines& lines) : lines_(&lines) {}

  // Whether the letter is an initial, which has been given to its first line.
  bool Take(WordLine& letter);

  bool MayGoOn() const { return looked_at_ <= limits::kMaxBoxComparisons; }

 private:
  Lines Beside(const WordLine& letter);
  bool GoesOnBelow(const WordLine& letter, const Lines& beside) const;

  const Lines* lines_;
  std::size_t looked_at_ = 0;
};

Lines InitialFinder::Beside(const WordLine& letter) {
  looked_at_ += lines_->size();
  Lines beside;
  std::copy_if(
      lines_->begin(), lines_->end(), std::back_inserter(beside),
      [&letter](const WordLine* line) { return line != &letter && IsBeside(letter, *line); });
  return beside;
}

// Whether the line below the letter begins at its edge. Where the text ends beside it, a word that
// begins in small letters tells that the letter belongs to it.
bool InitialFinder::GoesOnBelow(const WordLine& letter, const Lines& beside) const {
  const WordLine& last = *beside.back();
  const double pitch = last.baseline - beside[beside.size() - 2]->baseline;
  const auto below = std::find_if(lines_->begin(), lines_->end(), [&](const WordLine* line) {
    return line->baseline > last.baseline + kLeastPitch * last.size &&
           line->baseline < last.baseline + kNextPitch * pitch && line->box.left < last.box.right &&
           line->box.right > letter.box.left;
  });
  return below != lines_->end()
             ? std::abs((*below)->box.left - letter.box.left) <= kUnder * last.size
             : IsLowerCase(beside.front()->words.front().text.front());
}

bool InitialFinder::Take(WordLine& letter) {
  if (!IsLetterAlone(letter)) {
    return false;
  }
  const Lines beside = Beside(letter);
  if (beside.size() < 2 || beside.size() > kMostBeside || !AreEven(beside) ||
      !IsAsHigh(letter, beside) || !GoesOnBelow(letter, beside)) {
    return false;
  }
  for (WordLine* line : beside) {
    line->inset = line->box.left - letter.box.left;
  }
  beside.front()->initial = std::make_shared<const LargeInitial>(
      LargeInitial{letter, static_cast<std::uint32_t>(beside.size())});
  return true;
}

}  // namespace

std::vector<WordLine*> TakeInitials(const std::vector<WordLine*>& lines) {
  InitialFinder finder(lines);
  std::vector<WordLine*> left;
  for (WordLine* line : lines) {
    if (!finder.MayGoOn() || !finder.Take(*line)) {
      left.push_back(line);
    }
  }
  return left;
}

}  // namespace TarnixTools::engines
