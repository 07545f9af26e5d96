// The text of a paragraph as runs, hyperlinks and fields.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_RUNWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_RUNWRITER_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engines/office/writers/text/ParagraphFit.h"
#include "engines/office/writers/word/WordContext.h"

namespace TarnixTools::engines::office {

class RunWriter {
 public:
  // All outlive this.
  RunWriter(Story& story, const OfficePage& page, const FittedParagraph& fitted)
      : story_(story), page_(page), fitted_(fitted) {}

  void Write(const Paragraph& paragraph);

 private:
  enum class PartKind : std::uint8_t {
    kText,
    kTab,
    kBreak,
    kSoftHyphen,
    kPageNumber,
    kNoteMark,
  };

  struct Part {
    PartKind kind = PartKind::kText;
    std::string text;
    std::uint32_t number = 0;
  };

  // What has the same properties.
  struct Run {
    std::uint32_t look = 0;
    std::int64_t spacing = 0;  // twentieths of a point
    std::int32_t link = -1;
    bool is_right_to_left = false;
    std::vector<Part> parts;
  };

  void Gather(const Paragraph& paragraph);
  void AddPiece(const TextPiece& piece, double spacing, bool is_right_to_left);
  static void AddText(Run& run, std::string_view text);
  static void AddMark(Run& run, PartKind kind, const TextPiece& piece);
  void AddEnd(LineEnd end);
  Run& RunFor(const TextPiece& piece, double spacing, bool is_right_to_left);
  void WriteRuns();
  bool OpenLink(std::int32_t link);
  void WriteRun(const Run& run, bool is_link);
  void OpenRun(const Run& run, bool is_link);
  void WritePart(const Run& run, const Part& part, bool is_link);
  void WritePageField(const Run& run, const Part& part, bool is_link);
  void WriteOwnMark(const Run& run, const Part& part);
  void WriteNoteMark(const Run& run, const Part& part);

  Story& story_;
  const OfficePage& page_;
  const FittedParagraph& fitted_;
  std::vector<Run> runs_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_RUNWRITER_H_
