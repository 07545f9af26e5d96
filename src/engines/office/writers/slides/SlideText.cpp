#include "engines/office/writers/slides/SlideText.h"

#include <algorithm>
#include <cmath>

#include "engines/office/writers/package/EncodedUri.h"
#include "engines/office/writers/text/BulletLabel.h"
#include "engines/office/writers/text/Units.h"
#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kMostOverlap = 1.5;  // points that a paragraph may be lower than it stands
constexpr FitSettings kFit{
    .spacing_step = 72.0 / 2540,  // a hundredth of a millimetre
    .may_scale = false,
    .slack_share = 0.004,
    .script_gap = 0.24,  // ems that LibreOffice shows
    .has_gap_at_marks = true,
    .shortfall_share = 0.006,
    .breaks_after_hyphens = true,
    .keeps_joined = true,
};
constexpr double kEqualSides = 3;  // points by which sides differ that are taken as one
// What a line of exact height has below its baseline, in ems of its text.
constexpr double kBelowBaseline = 0.2;
constexpr std::int64_t kMostSpace = 158'400;      // hundredths of a point
constexpr std::int64_t kMostSpacing = 400'000;    // hundredths of a point
constexpr std::int64_t kMostMargin = 51'206'400;  // English metric units, and of indents
constexpr double kMostGap = 900;                  // points that a space may be wide
constexpr double kLeastDots = 4;                  // of a leader
constexpr double kMostDots = 500;
// Of hidden text, in thousandths of a percent: programs lose text that is wholly transparent.
constexpr std::int64_t kHidden = 1000;

std::int64_t MarginEmu(double points) {
  return std::clamp(Emu(points), -kMostMargin, kMostMargin);
}

std::int64_t Hundredths(double points) {
  return Rounded(points, 100);
}

PlacedParagraph Place(SlidePart& slide, const Paragraph& paragraph, double left, double right) {
  PlacedParagraph placed;
  placed.paragraph = &paragraph;
  placed.fitted =
      FitParagraph(paragraph, slide.page.layout.looks, left, right, slide.context.measure, kFit);
  const double size = LargestSize(paragraph, slide.page.layout.looks);
  placed.pitch = PitchOf(paragraph);
  if (placed.pitch <= size / 2) {
    placed.pitch = kUsualPitch * size;
  }
  placed.top = paragraph.lines.front().baseline + kBelowBaseline * size - placed.pitch;
  placed.bottom = placed.top + placed.pitch * static_cast<double>(paragraph.lines.size());
  return placed;
}

std::string_view AlignmentOf(Alignment alignment) {
  switch (alignment) {
    case Alignment::kLeft:
      return "l";
    case Alignment::kRight:
      return "r";
    case Alignment::kCenter:
      return "ctr";
    case Alignment::kJustified:
      return "just";
  }
  return "l";
}

bool IsBulleted(const Paragraph& paragraph) {
  return paragraph.label && paragraph.label->kind == ListKind::kBullet &&
         !paragraph.label->text.empty();
}

class Writer {
 public:
  Writer(SlidePart& slide, double left, double right)
      : slide_(slide), xml_(slide.xml), left_(left), right_(right) {}

  void Write(const PlacedParagraph& placed, double before) {
    const Paragraph& paragraph = *placed.paragraph;
    scale_ = placed.fitted.scale;
    xml_.Open("a:p");
    WriteProperties(placed, before);
    if (paragraph.label && !IsBulleted(paragraph)) {
      WriteLabel(*paragraph.label, placed.fitted.first_left);
    }
    for (std::size_t i = 0; i < paragraph.lines.size(); ++i) {
      WriteLine(paragraph.lines[i], placed.fitted.lines[i], paragraph.role);
    }
    Flush();
    xml_.Close();
  }

 private:
  void WriteProperties(const PlacedParagraph& placed, double before) {
    const Paragraph& paragraph = *placed.paragraph;
    if (paragraph.is_right_to_left) {
      // Programs do not agree on which side the left margin of such text is.
      xml_.Open("a:pPr", {{"marL", 0}, {"marR", 0}, {"indent", 0}});
    } else {
      const double first = paragraph.label ? paragraph.label->x : placed.fitted.first_left;
      const double left = std::max(placed.fitted.left - left_, 0.0);
      xml_.Open("a:pPr", {{"marL", MarginEmu(left)},
                          {"marR", MarginEmu(std::max(right_ - placed.fitted.right, 0.0))},
                          {"indent", MarginEmu(std::max(first - left_, 0.0) - left)}});
    }
    xml_.Attribute({"algn", AlignmentOf(paragraph.alignment)});
    if (paragraph.is_right_to_left) {
      xml_.Attribute({"rtl", 1});
    }
    WriteSpace("a:lnSpc", placed.pitch);
    WriteSpace("a:spcBef", before);
    WriteSpace("a:spcAft", 0);
    WriteBullet(paragraph);
    xml_.Close();
  }

  void WriteLabel(const ListLabel& label, double text_left) {
    const TextLook& look = slide_.page.layout.looks[label.look];
    const double width =
        look.face ? slide_.context.measure.WidthOf(*look.face, label.text, look.size) : 0;
    Add(label.text, label.look, 0, -1);
    AddGap(text_left - label.x - width, label.look, -1);
  }

  void WriteSpace(std::string_view name, double points) {
    xml_.Open(name);
    xml_.Leaf("a:spcPts", {{"val", std::clamp<std::int64_t>(Hundredths(points), 0, kMostSpace)}});
    xml_.Close();
  }

  void WriteBullet(const Paragraph& paragraph) {
    if (!IsBulleted(paragraph)) {
      xml_.Leaf("a:buNone");
      return;
    }
    const TextLook& look = slide_.page.layout.looks[paragraph.label->look];
    xml_.Open("a:buClr");
    xml_.Leaf("a:srgbClr", {{"val", Hex(look.color)}});
    xml_.Close();
    const BulletLabel bullet = BulletLabelOf(paragraph.label->text);
    if (bullet.is_own_face && look.face && !look.face->family.empty()) {
      xml_.Leaf("a:buFont", {{"typeface", look.face->family}});
    }
    xml_.Leaf("a:buChar", {{"char", bullet.text}});
  }

  // A gap that leads to a place is a space as wide: not all programs keep tab stops.
  void AddGap(double width, std::uint32_t look, std::int32_t link) {
    const TextLook& shown = slide_.page.layout.looks[look];
    const double space =
        shown.face ? slide_.context.measure.WidthOf(*shown.face, " ", shown.size) : 0;
    Add(" ", look, std::clamp(width - space, -space, kMostGap), link);
  }

  // A leader is as many dots as there is room for.
  void AddLeader(double width, std::uint32_t look) {
    const TextLook& shown = slide_.page.layout.looks[look];
    const double dot =
        shown.face ? slide_.context.measure.WidthOf(*shown.face, ".", shown.size) : 0;
    const double count = dot > 0 ? std::min(std::floor(width / dot), kMostDots) : 0;
    if (count < kLeastDots) {
      AddGap(width, look, -1);
      return;
    }
    Add(std::string(static_cast<std::size_t>(count), '.'), look, width / count - dot, -1);
  }

  // From the end of the piece before the tabulator to the start of the one behind it.
  static double GapAt(const TextLine& line, std::size_t tab) {
    const TextPiece* before = tab == 0 ? nullptr : &line.pieces[tab - 1];
    const double from = before == nullptr ? line.box.left : before->x + before->width;
    const double to = tab + 1 < line.pieces.size() ? line.pieces[tab + 1].x : from;
    return to - from;
  }

  // Gaps are no part of links: programs break lines within those as they like.
  void WriteLine(const TextLine& line, const FittedLine& fitted, ParagraphRole role) {
    const auto last_tab = std::ranges::find(line.pieces.rbegin(), line.pieces.rend(),
                                            PieceKind::kTab, &TextPiece::kind);
    for (std::size_t i = 0; i < line.pieces.size(); ++i) {
      const TextPiece& piece = line.pieces[i];
      if (piece.kind == PieceKind::kTab && role == ParagraphRole::kContents &&
          &piece == &*last_tab) {
        AddLeader(GapAt(line, i), piece.look);
      } else if (piece.kind == PieceKind::kTab) {
        AddGap(GapAt(line, i), piece.look, -1);
      } else {
        Add(piece.text, piece.look, fitted.spacing[i], piece.link);
      }
    }
    switch (fitted.end) {
      case LineEnd::kNothing:
        break;
      case LineEnd::kSpace:
        AddEnd(" ");
        break;
      case LineEnd::kSoftHyphen:
        AddEnd("\u00AD");
        break;
      case LineEnd::kSoftBreak:
        AddEnd("\u200B");
        break;
      case LineEnd::kBreak:
        Flush();
        xml_.Leaf("a:br");
        break;
    }
  }

  // Not as part of a link: programs keep the text of one together, and take it to the next line as
  // a whole.
  void AddEnd(const std::string& text) {
    const double spacing = static_cast<double>(held_spacing_) / 100;
    Add(text, held_look_, spacing, -1);
  }

  // Text with the same properties is one run.
  void Add(const std::string& text, std::uint32_t look, double spacing, std::int32_t link) {
    const std::int64_t hundredths = std::clamp(Hundredths(spacing), -kMostSpacing, kMostSpacing);
    if (look != held_look_ || hundredths != held_spacing_ || link != held_link_) {
      Flush();
      held_look_ = look;
      held_spacing_ = hundredths;
      held_link_ = link;
    }
    held_ += text;
  }

  void Flush() {
    if (!held_.empty()) {
      WriteRun(held_, held_look_, held_spacing_, held_link_);
      held_.clear();
    }
  }

  void WriteRun(const std::string& text, std::uint32_t look, std::int64_t spacing,
                std::int32_t link) {
    xml_.Open("a:r");
    WriteLook(slide_.page.layout.looks[look], spacing, link);
    xml_.Element("a:t", text);
    xml_.Close();
  }

  void WriteLook(const TextLook& look, std::int64_t spacing, std::int32_t link) {
    xml_.Open("a:rPr",
              {{"sz", std::clamp<std::int64_t>(Hundredths(look.size * scale_), 100, 400'000)},
               {"b", look.face && look.face->is_bold ? 1 : 0},
               {"i", look.face && look.face->is_italic ? 1 : 0}});
    if (look.is_underlined) {
      xml_.Attribute({"u", "sng"});
    }
    if (look.is_struck) {
      xml_.Attribute({"strike", "sngStrike"});
    }
    if (look.raise != Raise::kNone) {
      xml_.Attribute({"baseline", look.raise == Raise::kSuperscript ? 30'000 : -25'000});
    }
    if (spacing != 0) {
      xml_.Attribute({"spc", spacing});
    }
    WriteColor(look);
    if (look.face && !look.face->family.empty()) {
      for (const std::string_view name : {"a:latin", "a:ea", "a:cs"}) {
        xml_.Leaf(name, {{"typeface", look.face->family}});
      }
    }
    WriteLink(link);
    xml_.Close();
  }

  void WriteColor(const TextLook& look) {
    xml_.Open("a:solidFill");
    xml_.Open("a:srgbClr", {{"val", Hex(look.color)}});
    if (look.is_hidden) {
      xml_.Leaf("a:alpha", {{"val", kHidden}});
    }
    xml_.Close();
    xml_.Close();
    if (look.highlight) {
      xml_.Open("a:highlight");
      xml_.Leaf("a:srgbClr", {{"val", Hex(*look.highlight)}});
      xml_.Close();
    }
  }

  void WriteLink(std::int32_t link) {
    if (link < 0 || static_cast<std::size_t>(link) >= slide_.page.layout.links.size()) {
      return;
    }
    const LinkTarget& target = slide_.page.layout.links[static_cast<std::size_t>(link)];
    if (!target.uri.empty()) {
      xml_.Leaf(
          "a:hlinkClick",
          {{"r:id", slide_.relationships.AddExternal(kHyperlinkRelation, EncodedUri(target.uri))}});
      return;
    }
    const auto slide =
        target.page < 0
            ? slide_.context.slide_of_page.end()
            : slide_.context.slide_of_page.find(static_cast<std::uint32_t>(target.page));
    if (slide != slide_.context.slide_of_page.end()) {
      const std::string name = "slide" + std::to_string(slide->second) + ".xml";
      xml_.Leaf("a:hlinkClick", {{"r:id", slide_.relationships.Add("slide", name)},
                                 {"action", "ppaction://hlinksldjump"}});
    }
  }

  SlidePart& slide_;
  XmlWriter& xml_;
  double left_;
  double right_;
  double scale_ = 1;  // of the sizes of the paragraph's text
  std::string held_;
  std::uint32_t held_look_ = 0;
  std::int64_t held_spacing_ = 0;
  std::int32_t held_link_ = -1;
};

void AddTo(TextGroup& group, PlacedParagraph placed) {
  const Paragraph& paragraph = *placed.paragraph;
  double left = std::min(placed.fitted.left, placed.fitted.first_left);
  left = paragraph.label ? std::min(left, paragraph.label->x) : left;
  const pdf::Box box{left, placed.top, placed.fitted.right, placed.bottom};
  group.box = group.paragraphs.empty() ? box : Around(group.box, box);
  group.paragraphs.push_back(std::move(placed));
}

// Text from right to left has no margins within its shape, so it has to have the shape's sides. A
// single line takes those of the shape where it has room there.
bool HasSidesOf(const TextGroup& group, PlacedParagraph& placed) {
  const bool is_plain =
      !placed.paragraph->is_right_to_left && !group.paragraphs.front().paragraph->is_right_to_left;
  if (is_plain || std::abs(group.box.right - placed.fitted.right) > kEqualSides) {
    return is_plain;
  }
  if (placed.paragraph->lines.size() == 1 && group.box.left <= placed.paragraph->box.left) {
    placed.fitted.left = group.box.left;
  }
  return std::abs(group.box.left - placed.fitted.left) <= kEqualSides;
}

}  // namespace

std::vector<TextGroup> GroupText(SlidePart& slide, const std::vector<Block>& blocks, double left,
                                 double right) {
  std::vector<TextGroup> groups;
  bool is_open = false;
  for (const Block& block : blocks) {
    const auto* paragraph = std::get_if<Paragraph>(&block.content);
    if (paragraph == nullptr || paragraph->lines.empty()) {
      is_open = is_open && std::holds_alternative<Drawing>(block.content);
      continue;
    }
    PlacedParagraph placed = Place(slide, *paragraph, left, right);
    const bool is_below =
        is_open && placed.top >= groups.back().paragraphs.back().bottom - kMostOverlap;
    if (!is_below || !HasSidesOf(groups.back(), placed)) {
      groups.emplace_back();
    }
    AddTo(groups.back(), std::move(placed));
    is_open = true;
  }
  return groups;
}

void WriteParagraphs(SlidePart& slide, const TextGroup& group, double left, double right) {
  Writer writer(slide, left, right);
  double cursor = group.paragraphs.empty() ? 0 : group.paragraphs.front().top;
  for (const PlacedParagraph& placed : group.paragraphs) {
    const double before = std::max(placed.top - cursor, 0.0);
    writer.Write(placed, before);
    cursor += before + placed.bottom - placed.top;
  }
}

}  // namespace TarnixTools::engines::office
