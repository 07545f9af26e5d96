#include "engines/office/writers/word/Numbering.h"

#include <algorithm>
#include <cctype>

#include "engines/office/writers/text/BulletLabel.h"
#include "engines/office/writers/text/Units.h"
#include "engines/office/writers/word/WordNames.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kIndentOfLevel = 18;  // points, where an item has no place of its own

std::string_view FormatOf(ListKind kind) {
  switch (kind) {
    case ListKind::kBullet:
      return "bullet";
    case ListKind::kDecimal:
      return "decimal";
    case ListKind::kLowerLetter:
      return "lowerLetter";
    case ListKind::kUpperLetter:
      return "upperLetter";
    case ListKind::kLowerRoman:
      return "lowerRoman";
    case ListKind::kUpperRoman:
      return "upperRoman";
  }
  return "decimal";
}

bool IsWordByte(char c, ListKind kind) {
  const auto byte = static_cast<unsigned char>(c);
  return kind == ListKind::kDecimal ? std::isdigit(byte) != 0 : std::isalpha(byte) != 0;
}

// The text with "%n" for the last of its numbers or letters; a percent sign of its own has none.
std::string PatternOf(const ListLabel& label, std::size_t level) {
  std::string text = label.text;
  std::replace(text.begin(), text.end(), '%', ' ');
  if (label.kind == ListKind::kBullet) {
    return text;
  }
  std::size_t end = text.size();
  while (end > 0 && !IsWordByte(text[end - 1], label.kind)) {
    --end;
  }
  std::size_t start = end;
  while (start > 0 && IsWordByte(text[start - 1], label.kind)) {
    --start;
  }
  if (start == end) {
    return text;
  }
  return text.substr(0, start) + "%" + std::to_string(level + 1) + text.substr(end);
}

}  // namespace

ListPlace Numbering::Place(const ListLabel& label, std::uint8_t level, const TextLook& look) {
  const std::size_t index = std::min<std::size_t>(level, kLevels - 1);
  const auto [place, is_new] = states_.try_emplace(label.list);
  State& state = place->second;
  if (is_new) {
    AddNumber(state, definitions_.size());
  }
  Level wanted{label.kind, PatternOf(label, index), 1, look};
  if (label.kind == ListKind::kBullet) {
    const BulletLabel bullet = BulletLabelOf(wanted.pattern);
    wanted.pattern = bullet.text;
    wanted.look.face = bullet.is_own_face ? look.face : nullptr;
  }
  const Definition& definition = definitions_[numbers_[state.number].definition];
  const std::optional<Level>& known = definition.levels[index];
  if (known && (known->kind != wanted.kind || known->pattern != wanted.pattern)) {
    AddNumber(state, definitions_.size());
  }
  std::optional<Level>& used = definitions_[numbers_[state.number].definition].levels[index];
  if (!used) {
    used = wanted;
  }
  Count(state, index, label);
  return {static_cast<std::uint32_t>(state.number + 1), static_cast<std::uint32_t>(index)};
}

void Numbering::AddNumber(State& state, std::size_t definition) {
  if (definition == definitions_.size()) {
    definitions_.emplace_back();
  }
  state.number = numbers_.size();
  numbers_.push_back({definition, {}});
  state.counters = {};
}

void Numbering::Count(State& state, std::size_t level, const ListLabel& label) {
  std::fill(state.counters.begin() + static_cast<std::ptrdiff_t>(level) + 1, state.counters.end(),
            std::nullopt);
  if (label.kind == ListKind::kBullet) {
    return;
  }
  const std::map<std::size_t, std::int32_t>& starts = numbers_[state.number].starts;
  const auto start = starts.find(level);  // inner levels begin there each time
  const std::int32_t first = start == starts.end() ? 1 : start->second;
  const std::optional<std::int32_t>& last = state.counters[level];
  if (label.value != (last ? *last + 1 : first)) {
    AddNumber(state, numbers_[state.number].definition);
    numbers_[state.number].starts[level] = std::max(label.value, 0);
  }
  state.counters[level] = label.value;
}

void Numbering::Write(XmlWriter& xml) const {
  OpenStory(xml, "w:numbering");
  for (std::size_t i = 0; i < definitions_.size(); ++i) {
    xml.Open("w:abstractNum", {{"w:abstractNumId", i}});
    xml.Leaf("w:multiLevelType", {{"w:val", "multilevel"}});
    for (std::size_t level = 0; level < kLevels; ++level) {
      WriteLevel(xml, level, definitions_[i].levels[level].value_or(Level()));
    }
    xml.Close();
  }
  for (std::size_t i = 0; i < numbers_.size(); ++i) {
    xml.Open("w:num", {{"w:numId", i + 1}});
    xml.Leaf("w:abstractNumId", {{"w:val", numbers_[i].definition}});
    for (const auto& [level, start] : numbers_[i].starts) {
      xml.Open("w:lvlOverride", {{"w:ilvl", level}});
      xml.Leaf("w:startOverride", {{"w:val", start}});
      xml.Close();
    }
    xml.Close();
  }
  xml.Close();
}

void Numbering::WriteLevel(XmlWriter& xml, std::size_t index, const Level& level) const {
  xml.Open("w:lvl", {{"w:ilvl", index}});
  xml.Leaf("w:start", {{"w:val", level.start}});
  xml.Leaf("w:numFmt", {{"w:val", FormatOf(level.kind)}});
  xml.Leaf("w:lvlText", {{"w:val", level.pattern.empty() ? "•" : level.pattern}});
  xml.Leaf("w:lvlJc", {{"w:val", "left"}});
  xml.Open("w:pPr");
  xml.Leaf("w:ind", {{"w:left", Twips(kIndentOfLevel * static_cast<double>(index + 1))},
                     {"w:hanging", Twips(kIndentOfLevel)}});
  xml.Close();
  if (level.look.size > 0) {
    xml.Open("w:rPr");
    WriteLook(xml, level.look);
    xml.Close();
  }
  xml.Close();
}

}  // namespace TarnixTools::engines::office
