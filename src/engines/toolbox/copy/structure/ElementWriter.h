// Writes copies of structure elements (ISO 32000-2, 14.7.2).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_ELEMENTWRITER_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_ELEMENTWRITER_H_

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "engines/toolbox/copy/structure/SourceStructure.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines::toolbox {

class CopyContext;
class TargetStructure;

class ElementWriter {
 public:
  // A kid that comes along.
  struct Kid {
    std::uint32_t element;        // index of its parent
    std::uint32_t position;       // among the parent's kids in the source
    std::uint32_t target_number;  // of an element; 0 for content
  };

  using Numbers = std::unordered_map<std::uint32_t, std::uint32_t>;

  // Numbers in the target, by numbers in the source.
  struct Places {
    const Numbers& annotations;   // that are copied
    const Numbers& stream_pages;  // pages on which streams with marked content are
    const Numbers& page_forms;    // forms that the content of pages has become, by page
  };

  // Everything passed by reference outlives the writer.
  ElementWriter(CopyContext& context, SourceStructure& source, const Places& places);

  // Before any element is written: gives new ids to elements whose id another source has used.
  // is_kept: whether an element, by its index, will be written.
  void RenameIds(const std::function<bool(std::uint32_t index)>& is_kept);

  void Write(std::uint32_t index, std::uint32_t target_number, std::uint32_t parent_number,
             std::span<const Kid> kids);

  // Brings all types and classes into the target, also those that no element uses.
  void JoinAllNames();

  // Counts types whose name is another in the target, and says so in the report.
  void Report();

 private:
  using Names = std::unordered_map<std::string, std::string>;

  void AppendEntry(std::string& out, const pdf::DictionaryEntry& entry, bool has_namespace);
  void AppendPage(std::string& out, const pdf::Object& page);
  void AppendClasses(std::string& out, const pdf::Object& classes);
  void AppendAttributes(std::string& out, const pdf::Object& attributes);
  void AppendAttributesRenamed(std::string& out, const pdf::Object& attributes);
  void AppendId(std::string& out, const pdf::Object& id);
  void AppendRelated(std::string& out, const pdf::Object& elements);
  void AppendKids(std::string& out, std::span<const pdf::Object> all, std::span<const Kid> kids,
                  std::uint32_t page_number);
  void AppendContent(std::string& out, const pdf::Object& kid, std::uint32_t page_number);
  void AppendNumber(std::string& out, std::int64_t mcid, std::uint32_t page_number);
  void AppendForm(std::string& out, std::uint32_t page_number);
  void KeepRole(std::string_view name);
  std::string RoleOf(std::string_view name);
  const std::string& ClassOf(std::string_view name);

  CopyContext* context_;
  SourceStructure* source_;
  TargetStructure* target_;
  Places places_;
  pdf::Arena arena_;
  std::string text_;
  Names ids_;  // that change
  Names roles_;
  Names classes_;
  std::unordered_set<std::string> lost_roles_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_ELEMENTWRITER_H_
