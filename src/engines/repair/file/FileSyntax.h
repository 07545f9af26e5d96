// How a file is written, heard of object by object: lists what is wrong with that, and keeps what is
// to be compared once everything has been heard.
#ifndef TARNIX_ENGINES_REPAIR_FILE_FILESYNTAX_H_
#define TARNIX_ENGINES_REPAIR_FILE_FILESYNTAX_H_

#include <cstdint>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "engines/repair/ProblemList.h"
#include "pdf/syntax/SyntaxObserver.h"

namespace TarnixTools::engines::repair {

class FileSyntax : public pdf::SyntaxObserver {
 public:
  // The list outlives the observer.
  explicit FileSyntax(ProblemList& problems) : problems_(&problems) {}

  void OnHeader(const pdf::HeaderSyntax& header) override;
  void OnFileEnd(const pdf::FileEndSyntax& end) override;
  void OnXrefTable(const pdf::XrefTableSyntax& table) override;
  void OnXrefSubsection(const pdf::XrefSubsectionSyntax& subsection) override;
  void OnXrefEntry(const pdf::XrefEntrySyntax& entry) override;
  void OnTrailer(const pdf::TrailerSyntax& trailer) override;
  void OnLinearization(const pdf::LinearizationSyntax& linearization) override;
  void OnObject(const pdf::ObjectSyntax& object) override;
  void OnRepeatedKey(const pdf::RepeatedKeySyntax& key) override;
  void OnStream(const pdf::StreamSyntax& stream) override;
  void OnObjectEnd(const pdf::ObjectEndSyntax& end) override;

  std::uint64_t header_offset() const { return header_offset_; }

  bool has_trailer() const { return has_trailer_; }

  // What the newest trailer says; nothing where it says no integer.
  std::optional<std::int64_t> size() const { return size_; }

  std::optional<std::int64_t> previous() const { return previous_; }

  // Where the newest section of the cross-reference starts; nothing where none can be read.
  std::optional<std::uint64_t> newest_section() const { return newest_section_; }

  // Whether a section that the newest one leads to starts at the offset, or right behind it.
  bool IsSection(std::uint64_t offset) const;
  // Whether the byte belongs to the data of a stream.
  bool IsInStream(std::uint64_t offset) const;

 private:
  void Add(Problem problem) { problems_->Add(std::move(problem)); }

  void AddSection(std::uint64_t offset);

  ProblemList* problems_;
  std::uint64_t header_offset_ = 0;
  std::uint64_t file_size_ = 0;
  std::optional<std::int64_t> next_entry_;  // the first of a subsection
  bool has_trailer_ = false;
  std::optional<std::int64_t> size_;
  std::optional<std::int64_t> previous_;
  std::optional<std::uint64_t> newest_section_;
  std::set<std::uint64_t> sections_;
  std::vector<std::pair<std::uint64_t, std::uint64_t>>
      streams_;  // first byte and one past the last
  std::uint32_t object_ = 0;
  bool is_member_ = false;  // of an object stream
};

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_FILE_FILESYNTAX_H_
