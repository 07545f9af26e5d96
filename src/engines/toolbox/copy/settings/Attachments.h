// Files attached to a document as a whole (ISO 32000-2, 7.11.4): its tree of embedded files.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_SETTINGS_ATTACHMENTS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_SETTINGS_ATTACHMENTS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engines/toolbox/copy/BoundedReader.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"
#include "pdf/write/NameTreeWriter.h"

namespace TarnixTools::engines::toolbox {

class CopyContext;

// The attachments of a document being made. Names are those of the tree; file names are what people
// see, and what files are saved under.
class TargetAttachments {
 public:
  bool is_empty() const { return objects_.empty(); }

  // Files of earlier sources clash from now on.
  void BeginSource() { ++source_; }

  bool HasName(const std::string& name) const { return names_.contains(name); }

  // Whether a file of an earlier source has the name, which is in UTF-8.
  bool HasFileName(const std::string& file_name) const;

  // The first number from 2 on that makes a name, a file name, or both, new; an empty one does not
  // matter.
  std::uint32_t NumberFor(const std::string& name, const std::string& file_name);

  void Add(std::string name, std::uint32_t number);

  void NoteFileName(std::string file_name) { file_names_.emplace(std::move(file_name), source_); }

  // Appends the entry of the catalog's /Names dictionary.
  void Finish(pdf::FileWriter& writer, std::string& names);

 private:
  std::vector<pdf::NamedObject> objects_;
  std::unordered_set<std::string> names_;
  std::unordered_map<std::string, std::uint32_t> file_names_;  // with the source that had it first
  std::unordered_map<std::string, std::uint32_t> next_numbers_;
  std::uint32_t source_ = 0;
};

// Brings a source's attachments into the target.
class AttachmentCopier {
 public:
  explicit AttachmentCopier(CopyContext& context);

  // tree: the source's tree of embedded files.
  void Copy(const pdf::Object& tree);

 private:
  // What became of a file specification.
  struct Copied {
    std::uint32_t target_number = 0;  // 0: it holds no file
    bool is_renamed = false;
  };

  void CopyOne(const std::string& name, const pdf::Object& value);
  Copied CopySpecification(const pdf::Object& value, const std::string& name, std::uint32_t& count);
  std::uint32_t WriteRenamed(const pdf::Object& specification, std::uint32_t source_number,
                             std::uint32_t count);
  bool HoldsFile(const pdf::Object& specification);
  std::string FileNameOf(const pdf::Object& specification);

  CopyContext* context_;
  BoundedReader reader_;
  pdf::Arena arena_;
  std::unordered_map<std::uint32_t, Copied> copied_;  // by number in the source
  std::unordered_set<std::string> seen_;              // names that were there before, with numbers
};

// A name with " (count)" in front of its extension, in the encoding of the text string that it is.
std::string NumberedName(std::string_view name, std::uint32_t count);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_SETTINGS_ATTACHMENTS_H_
