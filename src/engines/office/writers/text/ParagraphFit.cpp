#include "engines/office/writers/text/ParagraphFit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "engines/office/writers/text/LineScripts.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

// Widths that are closer than this are one, where faces with equal metrics are measured.
constexpr double kEqualWidths = 0.06;
constexpr double kLeastScale = 0.6;
constexpr double kMostScale = 1.6;
constexpr double kLeastSize = 0.75;  // that text with joined letters is reduced to
// Most spacing, in ems. What is spaced out further is so in the document.
constexpr double kTightest = -0.12;
constexpr double kWidest = 1.0;
constexpr double kSlack = 0.4;  // points by which programs measure differently, beside a share
constexpr double kRoomOfSingleLine = 3;
// How much wider a line may become for the rest of its last word to stay on the next one.
constexpr double kWidened = 1.05;

// Pieces without a tabulator between them.
struct Segment {
  std::size_t first = 0;
  std::size_t count = 0;
  double left = 0;  // on the page
  double right = 0;
  double natural = 0;  // width without spacing
  std::size_t characters = 0;
  double largest_size = 0;
};

struct MeasuredLine {
  std::vector<Segment> segments;
  double left = 0;
  double right = 0;
  double inset = 0;       // beside a large initial
  double first_word = 0;  // width of what stands before the first place where a line may end
  double space = 0;
  double hyphen = 0;       // that is seen at its end and not among its pieces
  double width = 0;        // that it is given
  bool is_joined = false;  // it has letters that spacing would tear apart
};

std::size_t CountCharacters(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

// As it is shown.
double SizeOf(const TextLook& look, double step) {
  const double size = step > 0 ? std::round(look.size / step) * step : look.size;
  return look.raise == Raise::kNone ? size : size * kRaisedSize;
}

class Fitter {
 public:
  Fitter(const Paragraph& paragraph, const std::vector<TextLook>& looks, TextMeasure& measure,
         const FitSettings& settings)
      : paragraph_(paragraph), looks_(looks), measure_(measure), settings_(settings) {}

  FittedParagraph Fit(double left, double right) {
    for (const TextLine& line : paragraph_.lines) {
      lines_.push_back(Measure(line));
    }
    fitted_.scale = settings_.may_scale ? Scale() : ScaleOfJoined();
    for (MeasuredLine& line : lines_) {
      line.first_word *= fitted_.scale;
      line.space *= fitted_.scale;
      line.width = WidthFor(line);
      line.first_word *= settings_.shortfall_share > 0 ? Tightening(line) : 1;
    }
    FindEnds();
    FindRoom(left, right);
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      FitLine(i);
    }
    return std::move(fitted_);
  }

 private:
  double WidthOf(const TextPiece& piece, std::string_view text) {
    const TextLook& look = looks_[piece.look];
    return look.face ? measure_.WidthOf(*look.face, text, SizeOf(look, settings_.size_step))
                     : piece.width;
  }

  MeasuredLine Measure(const TextLine& line) {
    MeasuredLine measured;
    ScriptChanges changes(settings_.has_gap_at_marks);
    bool is_open = false;
    for (std::size_t i = 0; i < line.pieces.size(); ++i) {
      const TextPiece& piece = line.pieces[i];
      if (piece.kind == PieceKind::kTab) {
        is_open = false;
        changes = ScriptChanges(settings_.has_gap_at_marks);
        continue;
      }
      if (!is_open) {
        measured.segments.push_back({.first = i, .left = piece.x, .right = piece.x});
        is_open = true;
      }
      AddTo(measured.segments.back(), piece, i);
      measured.segments.back().natural += static_cast<double>(changes.In(piece.text)) *
                                          settings_.script_gap * looks_[piece.look].size;
    }
    measured.left = measured.segments.empty() ? line.box.left : measured.segments.front().left;
    measured.inset = line.inset;
    measured.right = measured.segments.empty() ? line.box.right : measured.segments.back().right;
    measured.is_joined =
        settings_.keeps_joined && std::ranges::any_of(line.pieces, [](const TextPiece& piece) {
          return IsJoined(piece.text);
        });
    MeasureFirstWord(line, measured);
    return measured;
  }

  // What spacing cannot change is as wide as it comes.
  double WidthFor(const MeasuredLine& line) const {
    double width = line.right - line.left;
    for (const Segment& segment : line.segments) {
      width +=
          line.is_joined ? segment.natural * fitted_.scale - (segment.right - segment.left) : 0;
    }
    return width;
  }

  // To what share of their width its letters are brought by spacing; 1 where they are moved apart.
  double Tightening(const MeasuredLine& line) const {
    double natural = 0;
    for (const Segment& segment : line.segments) {
      natural += segment.natural * fitted_.scale;
    }
    const double given = line.right - line.left;
    return line.is_joined || natural <= given || line.segments.size() != 1 ? 1 : given / natural;
  }

  void AddTo(Segment& segment, const TextPiece& piece, std::size_t index) {
    segment.count = index - segment.first + 1;
    segment.left = std::min(segment.left, piece.x);
    segment.right = std::max(segment.right, piece.x + piece.width);
    segment.natural += WidthOf(piece, piece.text);
    segment.characters += CountCharacters(piece.text);
    segment.largest_size = std::max(segment.largest_size, looks_[piece.look].size);
  }

  void MeasureFirstWord(const TextLine& line, MeasuredLine& measured) {
    for (const TextPiece& piece : line.pieces) {
      if (piece.kind == PieceKind::kTab) {
        return;
      }
      const std::size_t end = FirstBreak(piece.text, settings_.breaks_after_hyphens);
      measured.first_word += WidthOf(piece, std::string_view(piece.text).substr(0, end));
      measured.space = WidthOf(piece, " ");
      if (end != std::string_view::npos) {
        return;
      }
    }
  }

  double Scale() const {
    double wanted = 0;
    double natural = 0;
    for (const MeasuredLine& line : lines_) {
      for (const Segment& segment : line.segments) {
        wanted += segment.right - segment.left;
        natural += segment.natural;
      }
    }
    const double scale = natural > 0 ? wanted / natural : 1;
    if (std::abs(scale - 1) <= kEqualWidths || !(scale > 0)) {
      return 1;
    }
    return std::round(std::clamp(scale, kLeastScale, kMostScale) * 100) / 100;
  }

  // What cannot be brought closer is made smaller.
  double ScaleOfJoined() const {
    const bool is_joined =
        std::ranges::any_of(lines_, [](const MeasuredLine& line) { return line.is_joined; });
    return is_joined ? std::clamp(Scale(), kLeastSize, 1.0) : 1;
  }

  void FindEnds() {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      const TextLine& line = paragraph_.lines[i];
      LineEnd end = LineEnd::kNothing;
      if (i + 1 < lines_.size()) {
        end = line.joint == LineJoint::kSpace     ? LineEnd::kSpace
              : line.joint == LineJoint::kNothing ? EndInsideWord(line)
                                                  : LineEnd::kBreak;
      }
      if (end == LineEnd::kSoftHyphen) {
        lines_[i].hyphen = WidthOf(line.pieces.back(), "-") * fitted_.scale;
      }
      fitted_.lines.push_back({std::vector<double>(line.pieces.size()), end});
    }
  }

  static LineEnd EndInsideWord(const TextLine& line) {
    const std::u32string text =
        line.pieces.empty() ? std::u32string() : Utf8ToUtf32(line.pieces.back().text);
    if (text.empty() || text.back() >= kFirstIdeograph) {
      return LineEnd::kNothing;
    }
    const char32_t last = text.back();
    const bool is_letter = (last >= 'a' && last <= 'z') || (last >= 'A' && last <= 'Z') ||
                           (last >= 0xC0 && last < 0x2000);
    const bool is_address = text.find(U"://") != std::u32string::npos ||
                            text.find(U"www.") != std::u32string::npos ||
                            text.find(U'@') != std::u32string::npos;
    return last == '-'                ? LineEnd::kNothing
           : is_letter && !is_address ? LineEnd::kSoftHyphen
                                      : LineEnd::kSoftBreak;
  }

  double LeftMost() const {
    double left = std::numeric_limits<double>::max();
    for (std::size_t i = lines_.size() > 1 ? 1 : 0; i < lines_.size(); ++i) {
      left = std::min(left, lines_[i].left - lines_[i].inset);
    }
    return left;
  }

  void FindRoom(double left, double right) {
    if (lines_.empty()) {
      fitted_.first_left = fitted_.left = left;
      fitted_.right = right;
      return;
    }
    double most_right = lines_.front().right;
    double most_width = 0;
    for (const MeasuredLine& line : lines_) {
      most_right = std::max(most_right, line.right + line.hyphen);
      most_width = std::max(most_width, line.width + line.hyphen);
    }
    switch (IsFromRight() ? Alignment::kRight : paragraph_.alignment) {
      case Alignment::kCenter: {
        const double center = (lines_.front().left + lines_.front().right) / 2;
        const double wanted = most_width / 2 + kSlack + most_width * settings_.slack_share;
        const double half =
            std::max(wanted, lines_.size() > 1 ? 0 : std::min(center - left, right - center));
        fitted_.left = center - half;
        fitted_.right = center + half;
        fitted_.first_left = fitted_.left;
        break;
      }
      case Alignment::kRight:
        fitted_.right = most_right;
        fitted_.left = lines_.size() > 1
                           ? most_right - most_width - kSlack - most_width * settings_.slack_share
                           : std::min(left, most_right - most_width - kRoomOfSingleLine);
        fitted_.first_left = fitted_.left;
        break;
      case Alignment::kLeft:
      case Alignment::kJustified:
        FindRoomFromLeft(right, most_right);
        break;
    }
  }

  void FindRoomFromLeft(double right, double most_right) {
    fitted_.first_left = lines_.front().left - lines_.front().inset;
    fitted_.left = lines_.size() > 1 ? LeftMost() : fitted_.first_left;
    if (lines_.size() == 1) {
      fitted_.right = std::max(right, most_right + kRoomOfSingleLine);
      return;
    }
    if (paragraph_.alignment == Alignment::kJustified) {
      fitted_.right = std::abs(right - most_right) < 1 ? right : most_right;
      return;
    }
    const double tight = most_right + 1 + (most_right - fitted_.left) * settings_.slack_share;
    const double most = MostRight();
    fitted_.right = right >= tight && right < most ? right : tight;
    if (settings_.shortfall_share > 0 && fitted_.right == tight && most > tight) {
      fitted_.right = (tight + most) / 2;
    }
  }

  // How far the room may reach without any line having some for the first word of the next one.
  double MostRight() const {
    double most = std::numeric_limits<double>::max();
    for (std::size_t i = 0; i + 1 < lines_.size(); ++i) {
      if (fitted_.lines[i].end != LineEnd::kBreak) {
        const double right = lines_[i].left + WithNextWord(i);
        most = std::min(most, right - kSlack - settings_.shortfall_share * lines_[i].width);
      }
    }
    return most;
  }

  // How wide the line would be with the first word of the next one.
  double WithNextWord(std::size_t i) const {
    const double space = fitted_.lines[i].end == LineEnd::kSpace ? lines_[i].space : 0;
    return lines_[i].width + space + lines_[i + 1].first_word;
  }

  void FitLine(std::size_t i) {
    MeasuredLine& line = lines_[i];
    const double room_left = RoomLeft(i);
    for (std::size_t k = 0; k < line.segments.size(); ++k) {
      const Segment& segment = line.segments[k];
      const bool is_last = k + 1 == line.segments.size();
      const double from =
          is_last && line.segments.size() == 1 && !HasOneRoom() ? room_left : segment.left;
      const double room = HasOneRoom() ? fitted_.right - fitted_.left : fitted_.right - from;
      double wanted = segment.right - segment.left;
      if (is_last && IsStretched(i)) {
        wanted = WidthBeforeStretching(i, segment, room);
      } else if (is_last && fitted_.lines[i].end == LineEnd::kSoftHyphen) {
        wanted =
            std::clamp(room + 2 * kSlack - lines_[i + 1].first_word, wanted, kWidened * wanted);
      }
      if (line.is_joined) {
        continue;
      }
      SetSpacing(
          fitted_.lines[i], segment, wanted,
          is_last ? room - line.hyphen - kSlack - room * settings_.slack_share : wanted + kSlack);
    }
    const LineEnd end = fitted_.lines[i].end;
    const bool is_followed =
        i + 1 < lines_.size() && end != LineEnd::kBreak && end != LineEnd::kSoftHyphen;
    if (is_followed && IsShort(i)) {
      fitted_.lines[i].end = LineEnd::kBreak;
    }
  }

  // Text from right to left is shown from its right edge on, however it is aligned.
  bool IsFromRight() const {
    return settings_.keeps_joined && paragraph_.is_right_to_left &&
           paragraph_.alignment != Alignment::kCenter;
  }

  // Whether the first line has the room of all others.
  bool HasOneRoom() const {
    return IsFromRight() || paragraph_.alignment == Alignment::kCenter ||
           paragraph_.alignment == Alignment::kRight;
  }

  // Where the room of a line begins that is shown from the left.
  double RoomLeft(std::size_t i) const {
    return (i == 0 ? fitted_.first_left : fitted_.left) + lines_[i].inset;
  }

  bool IsStretched(std::size_t i) const {
    return paragraph_.alignment == Alignment::kJustified && i + 1 < lines_.size() &&
           fitted_.lines[i].end != LineEnd::kBreak;
  }

  // Whether the first word of the next line would come up.
  bool IsShort(std::size_t i) const {
    const double room = fitted_.right - (HasOneRoom() ? fitted_.left : RoomLeft(i));
    return WithNextWord(i) <= room + kSlack + settings_.shortfall_share * room;
  }

  // Spaces are stretched by who shows the paragraph. The line only has to be long enough that the
  // first word of the next one does not come up, and short enough to fit.
  double WidthBeforeStretching(std::size_t i, const Segment& segment, double room) const {
    const double space = fitted_.lines[i].end == LineEnd::kSpace ? lines_[i].space : 0;
    const double drawing = space + lines_[i + 1].first_word;
    const double spare = std::min(settings_.shortfall_share * room, drawing / 2);
    const double least = room - drawing + 2 * kSlack + spare;
    return std::max(segment.natural * fitted_.scale, std::min(least, room));
  }

  void SetSpacing(FittedLine& line, const Segment& segment, double wanted, double most) const {
    const double natural = segment.natural * fitted_.scale;
    const double count = static_cast<double>(std::max<std::size_t>(segment.characters, 1));
    const double step = settings_.spacing_step;
    double spacing = std::round((wanted - natural) / count / step) * step;
    if (natural + spacing * count > most) {
      spacing = std::floor((most - natural) / count / step + 1e-9) * step;
    }
    spacing = std::clamp(spacing, kTightest * segment.largest_size, kWidest * segment.largest_size);
    for (std::size_t i = segment.first; i < segment.first + segment.count; ++i) {
      line.spacing[i] = spacing;
    }
  }

  const Paragraph& paragraph_;
  const std::vector<TextLook>& looks_;
  TextMeasure& measure_;
  const FitSettings& settings_;
  std::vector<MeasuredLine> lines_;
  FittedParagraph fitted_;
};

}  // namespace

FittedParagraph FitParagraph(const Paragraph& paragraph, const std::vector<TextLook>& looks,
                             double left, double right, TextMeasure& measure,
                             const FitSettings& settings) {
  return Fitter(paragraph, looks, measure, settings).Fit(left, right);
}

double PitchOf(const Paragraph& paragraph) {
  const std::size_t count = paragraph.lines.size();
  if (count < 2) {
    return 0;
  }
  return (paragraph.lines.back().baseline - paragraph.lines.front().baseline) /
         static_cast<double>(count - 1);
}

double LargestSize(const Paragraph& paragraph, const std::vector<TextLook>& looks) {
  double largest = 0;
  for (const TextLine& line : paragraph.lines) {
    for (const TextPiece& piece : line.pieces) {
      largest = std::max(largest, looks[piece.look].size);
    }
  }
  return largest;
}

}  // namespace TarnixTools::engines::office
