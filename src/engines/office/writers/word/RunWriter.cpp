#include "engines/office/writers/word/RunWriter.h"

#include <algorithm>

#include "engines/office/writers/package/EncodedUri.h"
#include "engines/office/writers/text/Units.h"
#include "engines/office/writers/word/WordNames.h"
#include "engines/support/layout/text/Characters.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::string_view kZeroWidthSpace = "\u200B";

bool HasRightToLeft(std::string_view text) {
  while (!text.empty()) {
    const DecodedCharacter next = DecodeUtf8(text);
    if (RunsLeft(next.character)) {
      return true;
    }
    text.remove_prefix(next.length);
  }
  return false;
}

}  // namespace

void RunWriter::Write(const Paragraph& paragraph) {
  Gather(paragraph);
  WriteRuns();
}

void RunWriter::Gather(const Paragraph& paragraph) {
  for (std::size_t i = 0; i < paragraph.lines.size(); ++i) {
    const TextLine& line = paragraph.lines[i];
    for (std::size_t k = 0; k < line.pieces.size(); ++k) {
      AddPiece(line.pieces[k], fitted_.lines[i].spacing[k], paragraph.is_right_to_left);
    }
    AddEnd(fitted_.lines[i].end);
  }
}

void RunWriter::AddPiece(const TextPiece& piece, double spacing, bool is_right_to_left) {
  Run& run = RunFor(piece, spacing, is_right_to_left || HasRightToLeft(piece.text));
  switch (piece.kind) {
    case PieceKind::kText:
      AddText(run, piece.text);
      break;
    case PieceKind::kTab:
      run.parts.push_back({PartKind::kTab, "", 0});
      break;
    case PieceKind::kPageNumber:
      AddMark(run, PartKind::kPageNumber, piece);
      break;
    case PieceKind::kNoteMark:
      AddMark(run, PartKind::kNoteMark, piece);
      break;
  }
}

void RunWriter::AddText(Run& run, std::string_view text) {
  if (text.empty()) {
    return;
  }
  if (run.parts.empty() || run.parts.back().kind != PartKind::kText) {
    run.parts.emplace_back();
  }
  run.parts.back().text += text;
}

// The spaces around a number are text, whatever stands for the number.
void RunWriter::AddMark(Run& run, PartKind kind, const TextPiece& piece) {
  const std::string_view text = piece.text;
  const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
  const std::size_t end = std::max(text.find_last_not_of(' ') + 1, first);
  AddText(run, text.substr(0, first));
  run.parts.push_back({kind, std::string(text.substr(first, end - first)), piece.number});
  AddText(run, text.substr(end));
}

RunWriter::Run& RunWriter::RunFor(const TextPiece& piece, double spacing, bool is_right_to_left) {
  const std::int64_t twips = Twips(spacing);
  const bool is_new = runs_.empty() || runs_.back().look != piece.look ||
                      runs_.back().spacing != twips || runs_.back().link != piece.link ||
                      runs_.back().is_right_to_left != is_right_to_left;
  if (is_new) {
    runs_.push_back({piece.look, twips, piece.link, is_right_to_left, {}});
  }
  return runs_.back();
}

void RunWriter::AddEnd(LineEnd end) {
  if (runs_.empty() || end == LineEnd::kNothing) {
    return;
  }
  std::vector<Part>& parts = runs_.back().parts;
  if (end == LineEnd::kBreak || end == LineEnd::kSoftHyphen) {
    parts.push_back({end == LineEnd::kBreak ? PartKind::kBreak : PartKind::kSoftHyphen, "", 0});
    return;
  }
  AddText(runs_.back(), end == LineEnd::kSpace ? std::string_view(" ") : kZeroWidthSpace);
}

void RunWriter::WriteRuns() {
  for (std::size_t i = 0; i < runs_.size();) {
    const std::int32_t link = runs_[i].link;
    const bool is_link = link >= 0 && OpenLink(link);
    do {
      WriteRun(runs_[i], is_link);
      ++i;
    } while (i < runs_.size() && runs_[i].link == link);
    if (is_link) {
      story_.xml.Close();
    }
  }
}

// False for a link that leads nowhere.
bool RunWriter::OpenLink(std::int32_t link) {
  const auto index = static_cast<std::size_t>(link);
  if (index >= page_.layout.links.size()) {
    return false;
  }
  const LinkTarget& target = page_.layout.links[index];
  if (!target.uri.empty()) {
    const std::string id =
        story_.relationships.AddExternal(kHyperlinkRelation, EncodedUri(target.uri));
    story_.xml.Open("w:hyperlink", {{"r:id", id}});
    return true;
  }
  if (!target.bookmark.empty()) {
    story_.xml.Open("w:hyperlink", {{"w:anchor", target.bookmark}});
    return true;
  }
  return false;
}

void RunWriter::WriteRun(const Run& run, bool is_link) {
  bool is_open = false;
  for (const Part& part : run.parts) {
    const bool is_own = part.kind == PartKind::kPageNumber || part.kind == PartKind::kNoteMark;
    if (is_own == is_open) {
      is_open ? story_.xml.Close() : OpenRun(run, is_link);
      is_open = !is_open;
    }
    WritePart(run, part, is_link);
  }
  if (is_open) {
    story_.xml.Close();
  }
}

void RunWriter::OpenRun(const Run& run, bool is_link) {
  story_.xml.Open("w:r");
  story_.xml.Open("w:rPr");
  WriteLook(story_.xml, page_.layout.looks[run.look],
            {static_cast<double>(run.spacing) / 20, fitted_.scale, run.is_right_to_left, is_link});
  story_.xml.Close();
}

void RunWriter::WritePart(const Run& run, const Part& part, bool is_link) {
  switch (part.kind) {
    case PartKind::kText:
      story_.xml.Element("w:t", part.text, {{"xml:space", "preserve"}});
      break;
    case PartKind::kTab:
      story_.xml.Leaf("w:tab");
      break;
    case PartKind::kBreak:
      story_.xml.Leaf("w:br");
      break;
    case PartKind::kSoftHyphen:
      story_.xml.Leaf("w:softHyphen");
      break;
    case PartKind::kPageNumber:
      WritePageField(run, part, is_link);
      break;
    case PartKind::kNoteMark:
      WriteNoteMark(run, part);
      break;
  }
}

void RunWriter::WritePageField(const Run& run, const Part& part, bool is_link) {
  XmlWriter& xml = story_.xml;
  if (story_.has_page_fields) {
    xml.Open("w:fldSimple", {{"w:instr", " PAGE "}});
  }
  OpenRun(run, is_link);
  xml.Element("w:t", part.text, {{"xml:space", "preserve"}});
  xml.Close();
  if (story_.has_page_fields) {
    xml.Close();
  }
}

// The mark that a note itself begins with.
void RunWriter::WriteOwnMark(const Run& run, const Part& part) {
  TextLook look = page_.layout.looks[run.look];
  look.raise = Raise::kSuperscript;
  story_.xml.Open("w:r");
  story_.xml.Open("w:rPr");
  WriteLook(story_.xml, look);
  story_.xml.Close();
  if (part.number == kCountedMark) {
    story_.xml.Leaf("w:footnoteRef");
  } else {
    story_.xml.Element("w:t", part.text, {{"xml:space", "preserve"}});
  }
  story_.xml.Close();
}

void RunWriter::WriteNoteMark(const Run& run, const Part& part) {
  if (part.number == kCountedMark || part.number == kShownMark) {
    WriteOwnMark(run, part);
    return;
  }
  if (part.number >= page_.layout.notes.size() || !story_.may_have_notes) {
    OpenRun(run, false);
    story_.xml.Element("w:t", part.text, {{"xml:space", "preserve"}});
    story_.xml.Close();
    return;
  }
  const Note& note = page_.layout.notes[part.number];
  const std::size_t number = story_.context.notes.size() + 1;
  const bool is_counted = part.text == std::to_string(number);
  story_.context.notes.push_back({&page_, &note, is_counted});
  OpenRun(run, false);
  story_.xml.Open("w:footnoteReference", {{"w:id", number}});
  if (!is_counted) {
    story_.xml.Attribute({"w:customMarkFollows", 1});
  }
  story_.xml.Close();
  if (!is_counted) {
    story_.xml.Element("w:t", part.text, {{"xml:space", "preserve"}});
  }
  story_.xml.Close();
}

}  // namespace TarnixTools::engines::office
