// The cross-reference: which object lies where (ISO 32000-2, 7.5.4 and 7.5.8).
#ifndef TARNIX_PDF_FILE_XREF_H_
#define TARNIX_PDF_FILE_XREF_H_

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "pdf/Findings.h"
#include "pdf/file/ObjectReader.h"

namespace TarnixTools::pdf {

class SyntaxTeller;

struct XrefEntry {
  enum class Kind : std::uint8_t { kUnknown, kFree, kInFile, kInStream };

  std::uint64_t position = 0;  // kInFile: offset; kInStream: number of the object stream
  std::uint32_t index = 0;     // kInStream: place in the object stream
  std::uint16_t generation = 0;
  Kind kind = Kind::kUnknown;
};

static_assert(sizeof(XrefEntry) == 16);

class XrefTable {
 public:
  // One more than the highest object number.
  std::uint32_t limit() const { return static_cast<std::uint32_t>(entries_.size()); }

  XrefEntry Find(std::uint32_t number) const {
    return number < entries_.size() ? entries_[number] : XrefEntry();
  }

  bool Exists(std::uint32_t number) const {
    const auto kind = Find(number).kind;
    return kind == XrefEntry::Kind::kInFile || kind == XrefEntry::Kind::kInStream;
  }

  // Numbers beyond limits::kMaxObjectNumber, and 0, are ignored.
  void Set(std::uint32_t number, const XrefEntry& entry);
  void SetIfUnknown(std::uint32_t number, const XrefEntry& entry);

  void Clear() { entries_.clear(); }

 private:
  std::vector<XrefEntry> entries_;
};

// Follows a chain of cross-reference sections, newest first.
class XrefReader {
 public:
  // Trailer dictionaries are kept in the arena.
  XrefReader(ObjectReader& reader, XrefTable& table, Findings& findings, Arena& arena)
      : reader_(&reader), table_(&table), findings_(&findings), arena_(&arena) {}

  // Tells from now on how tables, their entries and trailers are written; outlives the reader.
  void set_teller(SyntaxTeller& teller) { teller_ = &teller; }

  // Reads the section at `offset` and all that it leads to; every offset in the file counts from
  // `base`. False when the first section cannot be read; a later one that cannot be read is a
  // finding, and is_complete() is false.
  bool ReadChain(std::uint64_t offset, std::uint64_t base);

  // Trailers in the order read.
  const std::vector<Object>& trailers() const { return trailers_; }

  bool is_complete() const { return is_complete_; }

 private:
  std::optional<Object> ReadSection(std::uint64_t offset);
  std::optional<Object> ReadTable(TokenStream& tokens);
  bool ReadSubsection(TokenStream& tokens, std::int64_t first, std::int64_t count);
  std::optional<Object> ReadStream(std::uint64_t offset);
  bool ReadStreamEntries(const Object& dictionary, std::string_view data);

  ObjectReader* reader_;
  XrefTable* table_;
  Findings* findings_;
  Arena* arena_;
  SyntaxTeller* teller_ = nullptr;  // null: nobody listens
  std::uint64_t base_ = 0;
  std::vector<Object> trailers_;
  std::vector<std::uint32_t>
      freed_;  // by the table section being read; take effect after its hybrid stream
  bool is_complete_ = true;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_XREF_H_
