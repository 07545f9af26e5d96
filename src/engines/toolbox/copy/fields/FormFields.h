// Form fields whose widgets are on copied pages (ISO 32000-2, 12.7).
//
// A field and its only widget may be one object, and stay one. Where such a widget is copied
// several times, its field becomes an object of its own, with the widgets below it.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FORMFIELDS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FORMFIELDS_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "engines/toolbox/copy/fields/FieldDefaults.h"
#include "engines/toolbox/copy/fields/FieldNames.h"
#include "engines/toolbox/copy/fields/FieldTree.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class CopyContext;
struct PageRequest;
class SourceDocument;

// Read once per source.
class SourceFormFields {
 public:
  explicit SourceFormFields(SourceDocument& source);

  FieldTree& tree() { return tree_; }

  SourceFieldDefaults& defaults() { return defaults_; }

  // Whether the object is a field or a widget of one.
  bool Contains(std::uint32_t number) const { return tree_.Find(number) != FieldTree::kNone; }

  // The fields' looks are left to whoever shows them.
  bool needs_appearances() const { return needs_appearances_; }

  bool has_xfa() const { return has_xfa_; }

 private:
  pdf::Arena arena_;  // the form dictionary
  pdf::Object form_;
  bool needs_appearances_;
  bool has_xfa_;
  FieldTree tree_;
  SourceFieldDefaults defaults_;
};

// The form of a document being made.
class TargetFormFields {
 public:
  TakenNames& names() { return names_; }  // of root fields, as UTF-8

  TargetFieldDefaults& defaults() { return defaults_; }

  void AddRoot(std::uint32_t number) { roots_.push_back(number); }

  void AddCalculation(std::uint32_t number) { calculations_.push_back(number); }

  void RequireAppearances() { needs_appearances_ = true; }

  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);

 private:
  std::vector<std::uint32_t> roots_;
  std::vector<std::uint32_t> calculations_;
  TakenNames names_;
  TargetFieldDefaults defaults_;
  bool needs_appearances_ = false;
};

class FormFieldCopier {
 public:
  explicit FormFieldCopier(CopyContext& context) : context_(&context) {}

  // Looks at the fields of the copied pages' widgets; to be called before any page is written.
  void Prepare();
  // Appends a widget's entries to its annotation dictionary, without << and >>: its own, save those
  // that the annotation copier writes (P, StructParent), and those of its field where the two are
  // one object.
  void CopyWidget(std::string& out, const pdf::Object& dictionary, std::uint32_t source_number,
                  std::uint32_t target_number);
  // To be called after the pages have been written.
  void Copy();

 private:
  // What a node of the source becomes.
  enum class Shape : std::uint8_t {
    kWidget,  // a widget of its parent's
    kMerged,  // a field and its widget in one object
    kField,   // a field; its widget, where it has one, becomes an object of its own
  };

  struct Kept {
    Shape shape = Shape::kField;
    std::uint32_t number = 0;            // in the target; 0 for kWidget
    std::vector<std::uint32_t> widgets;  // numbers of the widget's copies
  };

  // How often an annotation is on copied pages.
  struct Copies {
    std::uint32_t count = 0;
    std::uint32_t last_page = 0;  // that was counted, from 1 on
  };

  // Entries of an object that is field and widget in one.
  enum class Part : std::uint8_t { kBoth, kWidget, kField };

  struct Written {
    Part part = Part::kBoth;
    bool is_root = false;
    bool is_signature = false;
    bool is_widget = true;  // the source's object is one
  };

  SourceFormFields& Source();
  std::span<const std::uint32_t> WidgetsOf(const PageRequest& request);
  std::uint32_t CopiesOf(std::uint32_t number);
  void Begin();
  Kept* Keep(std::uint32_t node);
  bool KeepOne(std::uint32_t node);
  void KeepFieldsWithoutWidgets();
  void SettleNames();
  const std::string* SettleName(const std::string& name);
  std::string NameFor(std::string_view name);
  std::vector<std::uint32_t> KeptNodes() const;

  void CopyPlain(std::string& out, const pdf::Object& dictionary);
  void CopyUnnumbered(std::string& out, const pdf::Object& dictionary, std::uint32_t target_number);
  void AppendEntries(std::string& out, const pdf::Object& dictionary, const Written& written);
  void AppendEntry(std::string& out, const pdf::DictionaryEntry& entry, const Written& written);
  void AppendActions(std::string& out, const pdf::DictionaryEntry& entry, Part part);
  void AppendMissingDefaults(std::string& out, const pdf::Object& dictionary);

  void WriteField(std::uint32_t node, const Kept& kept, const std::vector<std::uint32_t>& kids);
  void AddCalculations(const std::vector<std::uint32_t>& nodes);
  void Report(const std::vector<std::uint32_t>& nodes);

  CopyContext* context_;
  pdf::Arena arena_;
  bool has_begun_ = false;
  std::unordered_map<std::uint32_t, Kept> kept_;      // by node
  std::unordered_map<std::uint32_t, Copies> copies_;  // by number, of annotations
  bool has_counted_ = false;
  // Widgets that are no objects of their own, in the order in which they were met: with their
  // parents, or as fields themselves.
  std::vector<std::pair<std::uint32_t, std::uint32_t>> unnumbered_;  // node of the parent, number
  std::vector<std::uint32_t> unnumbered_roots_;
  TargetFieldDefaults::Differences differences_;
  std::unordered_set<std::string> own_names_;  // of this copy's root fields, as they were
  std::unordered_set<std::string> new_names_;  // as they are now
  std::uint64_t renamed_count_ = 0;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FORMFIELDS_H_
