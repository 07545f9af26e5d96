// The language of text (ISO 32000-2, 14.9.2). A document's catalog gives it for all text that says
// nothing else. Where sources that are joined differ in it, each one's structure elements do.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_LANGUAGE_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_LANGUAGE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class CopyReport;

// Of a document being made.
class TargetLanguage {
 public:
  // Before anything else of a source. language: what its catalog says, as PDF text; empty for none.
  void AddSource(std::string language) { sources_.push_back({std::move(language)}); }

  // Writes a topmost structure element of the source that was added last, at once or later.
  //   text         - its dictionary without the closing ">>".
  //   has_language - the element names its language itself.
  void WriteTopElement(pdf::FileWriter& writer, std::uint32_t number, std::string text,
                       bool has_language);

  // Writes what is left and appends the catalog's entry.
  void Finish(pdf::FileWriter& writer, std::string& catalog, CopyReport& report);

 private:
  struct Source {
    std::string language;
    bool has_elements = false;
  };

  // An element that waits until it is known whether the catalog speaks for it.
  struct Held {
    std::uint32_t number;
    std::size_t source;
    std::string text;
  };

  std::string ForCatalog() const;
  void WriteHeld(pdf::FileWriter& writer, const std::string& in_catalog);
  void Report(CopyReport& report, const std::string& in_catalog) const;

  std::vector<Source> sources_;
  std::vector<Held> held_;
  std::size_t held_size_ = 0;  // bytes
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_LANGUAGE_H_
