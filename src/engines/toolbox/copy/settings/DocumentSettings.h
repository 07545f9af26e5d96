// What belongs to a document as a whole: viewer settings, where it opens, attachments, output
// intents. It goes into a target that gets every page of the source.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_SETTINGS_DOCUMENTSETTINGS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_SETTINGS_DOCUMENTSETTINGS_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "engines/toolbox/copy/settings/Attachments.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class CopyContext;
class SourceDocument;

// Read once per source: what matters whether all of its pages are copied or not. Strings are as
// PDF text, and empty where there is none.
class SourceDocumentSettings {
 public:
  explicit SourceDocumentSettings(SourceDocument& source);

  const std::string& language() const { return language_; }

  // The base address of the links that lead into the web.
  const std::string& base_address() const { return base_address_; }

  // Of PDF, the later of what the header and the catalog say: 17 for 1.7.
  int version() const { return version_; }

  std::uint64_t attachment_count() const { return attachment_count_; }

  // Actions that run by themselves: scripts of the document, and what opening, saving and printing
  // it start.
  std::uint64_t script_count() const { return script_count_; }

  // Opens at a place of its own choice.
  bool has_opening_view() const { return has_opening_view_; }

  std::uint64_t thread_count() const { return thread_count_; }

 private:
  void ReadOpening(const pdf::Object& opening);

  std::string language_;
  std::string base_address_;
  int version_ = 0;
  std::uint64_t attachment_count_ = 0;
  std::uint64_t script_count_ = 0;
  bool has_opening_view_ = false;
  std::uint64_t thread_count_ = 0;
};

// The settings of a document being made.
class TargetDocumentSettings {
 public:
  // What the viewer is told, from one source: PDF text, empty where there is none.
  struct ViewerSettings {
    std::string preferences;   // entries of the dictionary
    std::string print_ranges;  // one more, which counts pages of that source
    std::string page_mode;
    std::string page_layout;
    std::string collection;
  };

  // Once per source, before anything else of it. is_whole: all of its pages come.
  void NoteSource(const SourceDocumentSettings& source, bool is_whole);

  bool is_first_whole() const { return whole_count_ == 1; }

  bool is_first() const { return source_count_ == 1; }

  bool has_several_sources() const { return source_count_ > 1; }

  TargetAttachments& attachments() { return attachments_; }

  void set_viewer(ViewerSettings viewer) { viewer_ = std::move(viewer); }

  // Items of the array.
  void set_output_intents(std::string items) { output_intents_ = std::move(items); }

  void AddAssociatedFiles(std::string_view items);

  // Where the document opens.
  void set_opening(std::string action) { opening_ = std::move(action); }

  // A developer's extension of the standard. Of several with one name the highest rank counts.
  struct Extension {
    std::int64_t rank = 0;
    std::string text;
  };

  void AddExtension(std::string_view name, Extension extension);

  // Writes what there is and appends the entries for it, of the catalog and of its /Names
  // dictionary.
  void Finish(pdf::FileWriter& writer, std::string& catalog, std::string& names);

 private:
  void AppendViewer(std::string& catalog) const;
  bool Shows(std::string_view page_mode, std::string_view catalog) const;

  std::size_t source_count_ = 0;
  std::size_t whole_count_ = 0;
  std::string base_address_;
  int version_ = 0;
  TargetAttachments attachments_;
  ViewerSettings viewer_;
  std::string output_intents_;
  std::string associated_files_;
  std::string opening_;
  std::map<std::string, Extension, std::less<>> extensions_;
};

class DocumentSettingsCopier {
 public:
  explicit DocumentSettingsCopier(CopyContext& context) : context_(&context) {}

  // To be called after the pages have been written.
  void Copy();

 private:
  void ReportLeftOut(const SourceDocumentSettings& source);
  void CopyWhole(const pdf::Object& catalog);
  void CopyAttachments(const pdf::Object& catalog);
  void CopyAssociatedFiles(const pdf::Object& catalog);
  void CopyOutputIntents(const pdf::Object& catalog);
  void CopyViewer(const pdf::Object& catalog);
  void CopyPreferences(TargetDocumentSettings::ViewerSettings& viewer,
                       const pdf::Object& dictionary);
  std::string CopyCollection(const pdf::Object& value);
  bool CopyOpening(const pdf::Object& catalog);
  void CopyExtensions(const pdf::Object& catalog);
  std::int64_t RankOf(const pdf::Object& extension);
  std::string CopyDictionaries(const pdf::Object& value, std::uint64_t& count);
  bool KeepsPageOrder() const;
  pdf::Object Resolve(const pdf::Object& value);

  CopyContext* context_;
  pdf::Arena arena_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_SETTINGS_DOCUMENTSETTINGS_H_
