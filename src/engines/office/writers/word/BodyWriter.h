// The body of a Word document: sections of pages.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_BODYWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_BODYWRITER_H_

#include <vector>

#include "engines/office/writers/word/FlowChoice.h"
#include "engines/office/writers/word/FlowWriter.h"
#include "engines/office/writers/word/HeaderWriter.h"
#include "engines/office/writers/word/SectionPlan.h"
#include "engines/office/writers/word/WordContext.h"

namespace TarnixTools::engines::office {

class BodyWriter {
 public:
  // All outlive this.
  BodyWriter(Story& story, const DocumentPlan& plan, HeaderWriter& headers)
      : story_(story), plan_(plan), headers_(headers) {}

  // The content of w:body.
  void Write();

 private:
  using SectionEnd = std::function<void()>;

  void WriteSection(const SectionPlan& section, const SectionEnd& end, bool is_last);
  void WritePart(const SectionPlan& section, std::size_t part, const SectionEnd& end, bool is_last);
  void WriteOneColumn(const SectionPlan& section, std::size_t part, const BlockLists& notes,
                      const SectionEnd& end, bool is_last);
  void WriteColumnsOf(const SectionPlan& section, std::size_t part, const BlockLists& notes,
                      const SectionEnd& end, bool is_last);
  void WriteFlow(FlowWriter& flow, const BlockLists& lists, const SectionEnd& end, bool is_last,
                 bool ends_page);
  FlowStart StartOf(const SectionPlan& section, std::size_t part);

  Story& story_;
  const DocumentPlan& plan_;
  HeaderWriter& headers_;
  double cursor_ = 0;                    // on the page, where what comes next begins
  std::vector<const Floating*> floats_;  // of the page, that are not anchored yet
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_BODYWRITER_H_
