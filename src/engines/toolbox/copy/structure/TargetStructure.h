// The structure tree of a document being made: elements are written by the copies, as they come;
// here is what joins them.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_TARGETSTRUCTURE_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_TARGETSTRUCTURE_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/toolbox/copy/structure/SourceStructure.h"
#include "engines/toolbox/copy/structure/StructureNames.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

// The way from numbers of pages, streams and annotations to the elements of their content.
class TargetParentTree {
 public:
  // `count` keys that follow each other, free for the caller's use; returns the first.
  std::int64_t Take(std::int64_t count);

  // number: of an element, or of an array of them. Keys differ.
  void Add(std::int64_t key, std::uint32_t number) { entries_.emplace_back(key, number); }

  std::int64_t next_key() const { return next_key_; }

  // Writes the tree and returns its root as text.
  std::string Write(pdf::FileWriter& writer);

 private:
  std::int64_t next_key_ = 0;
  std::vector<std::pair<std::int64_t, std::uint32_t>> entries_;
};

class TargetStructure {
 public:
  // One more source's pages come; is_tagged: it has a structure tree.
  void AddSource(const MarkInfo& marks, bool is_tagged);

  // The /MarkInfo of a source all of whose pages come, which holds as it is when no other does.
  void SetWholeMarkInfo(std::string dictionary) { whole_mark_info_ = std::move(dictionary); }

  // Content of a page that was tagged is not any more.
  void NoteUntaggedContent() { has_untagged_content_ = true; }

  // No other source's elements are here.
  bool is_first() const { return tagged_sources_ <= 1; }

  // The number of the elements' common parent, the root of the tree or an element beneath it.
  std::uint32_t Top(pdf::FileWriter& writer);

  // Adds a kid of that.
  void AddKid(std::uint32_t number) { kids_.push_back(number); }

  // To be called after a source's elements. top_namespace: number of the namespace of all its
  // topmost elements, or 0.
  void EndSource(std::uint32_t top_namespace);

  TargetParentTree& parent_tree() { return parent_tree_; }

  TargetRoles& roles() { return roles_; }

  TargetClasses& classes() { return classes_; }

  TargetIds& ids() { return ids_; }

  // The object of a namespace that an earlier source has brought; 0 for none. Only for those that
  // are nothing but a name.
  std::uint32_t FindNamespace(const std::string& name) const;
  // name may be empty: it is then not found again.
  void AddNamespace(const std::string& name, std::uint32_t number);

  // Of the root's arrays /PronunciationLexicon and /AF: the items' text.
  void AddLexicons(std::string_view items) { pdf::AppendToken(lexicons_, items); }

  void AddFiles(std::string_view items) { pdf::AppendToken(files_, items); }

  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);

 private:
  void AppendMarkInfo(std::string& catalog) const;
  void WriteDocument(pdf::FileWriter& writer, std::uint32_t parent) const;
  void AppendKids(std::string& out) const;

  std::uint32_t sources_ = 0;
  std::uint32_t tagged_sources_ = 0;
  std::uint32_t sources_with_kids_ = 0;
  std::uint32_t marked_sources_ = 0;
  bool has_user_properties_ = false;
  bool has_suspects_ = false;
  bool has_untagged_content_ = false;
  std::string whole_mark_info_;
  std::uint32_t top_ = 0;
  std::uint32_t top_namespace_ = 0;
  std::size_t ended_kids_ = 0;  // kids that were there when a source ended
  std::vector<std::uint32_t> kids_;
  TargetParentTree parent_tree_;
  TargetRoles roles_;
  TargetClasses classes_;
  TargetIds ids_;
  std::map<std::string, std::uint32_t> namespaces_by_name_;
  std::vector<std::uint32_t> namespaces_;
  std::string lexicons_;
  std::string files_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_TARGETSTRUCTURE_H_
