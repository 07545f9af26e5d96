// What scripts do to lines: where one may end, where gaps are shown, and whose letters are joined.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_LINESCRIPTS_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_LINESCRIPTS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace TarnixTools::engines::office {

// From here on, characters are ideographs or stand among them.
inline constexpr char32_t kFirstIdeograph = 0x2E80;

// Where the text's first part ends that no line end can cut, in bytes; npos: nowhere.
// is_after_hyphens: whether lines may end behind hyphens, dashes and slashes within words.
std::size_t FirstBreak(std::string_view text, bool is_after_hyphens);

// Whether it has letters that are joined within a word: Arabic and Syriac.
bool IsJoined(std::string_view text);

// Counts where ideographs and letters stand beside each other, over the pieces of a line. What is
// neither goes with what is before it.
class ScriptChanges {
 public:
  // has_gap_at_marks: marks of ASCII are letters, and a space does not part what is beside it.
  explicit ScriptChanges(bool has_gap_at_marks) : has_gap_at_marks_(has_gap_at_marks) {}

  std::size_t In(std::string_view text);

 private:
  enum class Script : std::uint8_t { kNone, kLetters, kIdeographs };

  Script ScriptOf(char32_t c) const;

  bool has_gap_at_marks_;
  Script last_ = Script::kNone;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_LINESCRIPTS_H_
