// The lists of a Word document (ECMA-376, part 1, 17.9): which definition an item's label comes
// from, so that every label is counted to what the document shows.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_NUMBERING_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_NUMBERING_H_

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "engines/office/writers/package/XmlWriter.h"
#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

// Where an item stands: w:numId and w:ilvl.
struct ListPlace {
  std::uint32_t number = 0;
  std::uint32_t level = 0;
};

class Numbering {
 public:
  // Of the next item in the document. look: of the label.
  ListPlace Place(const ListLabel& label, std::uint8_t level, const TextLook& look);

  bool is_empty() const { return numbers_.empty(); }

  void Write(XmlWriter& xml) const;

 private:
  static constexpr std::size_t kLevels = 9;

  struct Level {
    ListKind kind = ListKind::kBullet;
    std::string pattern;  // "%1." is a number and a full stop
    std::int32_t start = 1;
    TextLook look;
  };

  struct Definition {
    std::array<std::optional<Level>, kLevels> levels;
  };

  struct Number {
    std::size_t definition = 0;
    std::map<std::size_t, std::int32_t> starts;  // by level
  };

  // What a list of the document counts by.
  struct State {
    std::size_t number = 0;
    std::array<std::optional<std::int32_t>, kLevels> counters;
  };

  void AddNumber(State& state, std::size_t definition);
  void Count(State& state, std::size_t level, const ListLabel& label);
  void WriteLevel(XmlWriter& xml, std::size_t index, const Level& level) const;

  std::vector<Definition> definitions_;
  std::vector<Number> numbers_;
  std::map<std::uint32_t, State> states_;  // by list
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_NUMBERING_H_
