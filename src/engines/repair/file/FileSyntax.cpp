#include "engines/repair/file/FileSyntax.h"

#include <algorithm>
#include <string>

#include "pdf/syntax/Chars.h"

namespace TarnixTools::engines::repair {

namespace {

// White space before a section that readers pass over.
constexpr std::uint64_t kSectionSlack = 16;
// Bytes at the end of a file in which strict readers look for the marker.
constexpr std::uint64_t kEndSearch = 1024;

// "1.4" or "2.0", whatever follows.
bool IsVersion(std::string_view text) {
  return text.size() >= 3 && (text[0] == '1' || text[0] == '2') && text[1] == '.' &&
         pdf::IsDigit(text[2]);
}

std::string Figures(std::int64_t given, std::uint64_t there) {
  return std::to_string(given) + " given, " + std::to_string(there) + " there";
}

}  // namespace

void FileSyntax::OnHeader(const pdf::HeaderSyntax& header) {
  constexpr std::string_view kKeyword = "%PDF-";
  header_offset_ = header.offset;
  if (!IsVersion(header.line.substr(kKeyword.size()))) {
    Add({.code = ProblemCode::kHeaderVersion, .offset = header.offset});
  }
}

void FileSyntax::OnFileEnd(const pdf::FileEndSyntax& end) {
  file_size_ = end.size;
  if (!end.has_marker) {
    Add({.code = ProblemCode::kEndMissing, .offset = end.size});
  } else if (end.size - end.offset > kEndSearch) {
    Add({.code = ProblemCode::kEndFar, .offset = end.offset});
  } else if (!std::ranges::all_of(end.after, pdf::IsSpace)) {
    Add({.code = ProblemCode::kJunkAtEnd, .offset = end.offset});
  }
}

void FileSyntax::AddSection(std::uint64_t offset) {
  sections_.insert(offset);
  if (!newest_section_) {
    newest_section_ = offset;
  }
}

void FileSyntax::OnXrefTable(const pdf::XrefTableSyntax& table) {
  AddSection(table.offset);
}

void FileSyntax::OnXrefSubsection(const pdf::XrefSubsectionSyntax& subsection) {
  next_entry_ = subsection.first;
}

// Subsections that count from another number than they say are read as they are meant.
void FileSyntax::OnXrefEntry(const pdf::XrefEntrySyntax& entry) {
  if (next_entry_ && *next_entry_ != entry.number) {
    Add({.code = ProblemCode::kXrefDamaged, .offset = entry.offset});
  }
  next_entry_.reset();
  if (!entry.is_fixed) {
    Add({.code = ProblemCode::kXrefEntryForm, .offset = entry.offset});
  }
}

void FileSyntax::OnTrailer(const pdf::TrailerSyntax& trailer) {
  if (trailer.is_stream) {
    AddSection(trailer.offset);
  }
  if (has_trailer_) {
    return;
  }
  has_trailer_ = true;
  const pdf::Object size = trailer.dictionary.Get("Size");
  const pdf::Object previous = trailer.dictionary.Get("Prev");
  size_ = size.IsInteger() ? std::optional(size.IntegerOr(-1)) : std::nullopt;
  if (previous.IsNumber()) {
    previous_ = previous.IntegerOr(-1);
  }
}

void FileSyntax::OnLinearization(const pdf::LinearizationSyntax& linearization) {
  const std::int64_t length = linearization.dictionary.Get("L").IntegerOr(-1);
  if (length < 0 || static_cast<std::uint64_t>(length) != file_size_) {
    Add({.code = ProblemCode::kLinearizationWrong,
         .object = linearization.reference.number,
         .detail = Figures(length, file_size_)});
  }
}

void FileSyntax::OnObject(const pdf::ObjectSyntax& object) {
  object_ = object.reference.number;
  is_member_ = object.holder != 0;
}

void FileSyntax::OnRepeatedKey(const pdf::RepeatedKeySyntax& /*key*/) {
  if (object_ != 0) {
    Add({.code = ProblemCode::kRepeatedKey, .object = object_});
  }
}

// A length that does not lead to the end of the data is not the one that was measured.
void FileSyntax::OnStream(const pdf::StreamSyntax& stream) {
  const std::uint32_t number = stream.reference.number;
  streams_.emplace_back(stream.data, stream.data + stream.length);
  if (!stream.claimed || static_cast<std::uint64_t>(*stream.claimed) != stream.length) {
    Add({.code = ProblemCode::kStreamLengthWrong,
         .object = number,
         .detail = stream.claimed ? Figures(*stream.claimed, stream.length) : "none given"});
  }
  if (!stream.has_end) {
    Add({.code = ProblemCode::kStreamEndMissing, .object = number});
  }
  if (!stream.after_keyword.starts_with('\n') && !stream.after_keyword.starts_with("\r\n")) {
    Add({.code = ProblemCode::kStreamKeyword, .object = number});
  }
}

void FileSyntax::OnObjectEnd(const pdf::ObjectEndSyntax& end) {
  if (!end.has_keyword && !is_member_) {
    Add({.code = ProblemCode::kObjectEndMissing, .object = end.reference.number});
  }
  object_ = 0;
}

bool FileSyntax::IsSection(std::uint64_t offset) const {
  const auto next = sections_.lower_bound(offset);
  return next != sections_.end() && *next - offset <= kSectionSlack;
}

bool FileSyntax::IsInStream(std::uint64_t offset) const {
  const auto next =
      std::ranges::upper_bound(streams_, offset, {}, [](const auto& s) { return s.first; });
  return next != streams_.begin() && offset < std::prev(next)->second;
}

}  // namespace TarnixTools::engines::repair
