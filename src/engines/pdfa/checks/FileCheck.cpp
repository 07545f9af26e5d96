#include "engines/pdfa/checks/FileCheck.h"

#include <algorithm>
#include <utility>

#include "pdf/syntax/Chars.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr std::size_t kBinaryBytes = 4;

bool IsBinaryComment(std::string_view line) {
  return line.size() > kBinaryBytes && line.front() == '%' &&
         std::all_of(line.begin() + 1, line.begin() + 1 + kBinaryBytes,
                     [](char c) { return static_cast<unsigned char>(c) > 127; });
}

bool IsOneSpace(std::string_view spacing) {
  return spacing.size() == 1 && pdf::IsSpace(spacing.front());
}

// The strings of a trailer's /ID, one after the other; nothing where it is no array.
std::optional<std::string> IdOf(const pdf::Object& id) {
  if (!id.IsArray()) {
    return std::nullopt;
  }
  std::string strings;
  for (const pdf::Object& item : id.Items()) {
    strings += item.Text();
  }
  return strings;
}

bool StartsLine(const pdf::ObjectSyntax& object) {
  return object.offset == 0 || pdf::EndsWithLineEnd(object.before);
}

// Where the data begins. Only a line end belongs to the keyword.
std::uint64_t DataOf(const pdf::StreamSyntax& stream) {
  constexpr std::uint64_t kKeyword = 6;  // "stream"
  const bool has_line_end = pdf::StartsWithLineEnd(stream.after_keyword);
  return has_line_end ? stream.data : std::min(stream.data, stream.offset + kKeyword);
}

// How many of the two bytes before "endstream" are its line end. A CR in front of LF belongs to the
// data where /Length counts it.
std::uint64_t LineEndBefore(const pdf::StreamSyntax& stream) {
  const std::string_view before = stream.before_end;
  if (before.ends_with("\r\n")) {
    const auto claimed =
        static_cast<std::uint64_t>(std::max<std::int64_t>(0, stream.claimed.value_or(0)));
    return stream.end - stream.data > claimed + 1 ? 2 : 1;
  }
  return pdf::EndsWithLineEnd(before) ? 1 : 0;
}

}  // namespace

void FileCheck::Run() {
  checked_->document().Observe(*this);
  findings_->Check(header_);
  if (xref_) {
    findings_->Check(*xref_);
  }
  findings_->Check(file_);
  CheckNoted();
  files_.Run();
}

void FileCheck::OnHeader(const pdf::HeaderSyntax& header) {
  header_line_ = header.line;
  header_ = {header.offset == 0, header_line_, IsBinaryComment(header.next_line)};
}

void FileCheck::OnFileEnd(const pdf::FileEndSyntax& end) {
  file_size_ = end.size;
  file_.has_nothing_after_end = end.has_marker && (end.after.empty() || pdf::IsLineEnd(end.after));
}

void FileCheck::OnXrefTable(const pdf::XrefTableSyntax& table) {
  if (xref_) {
    findings_->Check(*xref_);
  }
  xref_ = XrefFacts{.keyword_ends_line = pdf::IsLineEnd(table.after_keyword)};
}

void FileCheck::OnXrefSubsection(const pdf::XrefSubsectionSyntax& subsection) {
  if (xref_ && subsection.between != " ") {
    xref_->numbers_have_a_space = false;
  }
}

// The file's first and last trailer are those whose places are first and last.
void FileCheck::OnTrailer(const pdf::TrailerSyntax& trailer) {
  tokens_.SetPlace({});
  file_.has_xref_stream |= trailer.is_stream;
  findings_->Check(TrailerFacts{.is_encrypted = trailer.dictionary.Has("Encrypt")});
  pdf::Arena arena;
  if (!first_trailer_ || trailer.offset < *first_trailer_) {
    first_trailer_ = trailer.offset;
    file_.first_id = IdOf(trailer.dictionary.Get("ID"));
  }
  if (!last_trailer_ || trailer.offset > *last_trailer_) {
    last_trailer_ = trailer.offset;
    file_.last_id = IdOf(trailer.dictionary.Get("ID"));
  }
}

void FileCheck::OnLinearization(const pdf::LinearizationSyntax& linearization) {
  const std::int64_t length = linearization.dictionary.Get("L").IntegerOr(-1);
  file_.is_linearized = length >= 0 && static_cast<std::uint64_t>(length) == file_size_;
}

void FileCheck::OnObject(const pdf::ObjectSyntax& object) {
  ++file_.objects;
  tokens_.SetPlace({.object = object.reference.number});
  is_stream_ = false;
  object_is_regular_ =
      object.holder != 0 ||
      (StartsLine(object) && IsOneSpace(object.after_number) &&
       IsOneSpace(object.after_generation) && pdf::StartsWithLineEnd(object.after_keyword));
}

void FileCheck::OnToken(const pdf::TokenSyntax& token) {
  tokens_.Check(token.token);
}

void FileCheck::OnStream(const pdf::StreamSyntax& stream) {
  is_stream_ = true;
  const std::uint64_t length = stream.end - DataOf(stream) - LineEndBefore(stream);
  const bool begins_line =
      stream.after_keyword.starts_with("\r\n") || stream.after_keyword.starts_with('\n');
  // Without any data the two keywords have one line end between them, where two are due.
  const bool has_data = !stream.before_end.empty();
  stream_.length_is_right = has_data && stream.claimed && *stream.claimed >= 0 &&
                            static_cast<std::uint64_t>(*stream.claimed) == length;
  stream_.keywords_are_on_lines =
      begins_line && stream.has_end && (!has_data || pdf::EndsWithLineEnd(stream.before_end));
}

void FileCheck::OnObjectEnd(const pdf::ObjectEndSyntax& end) {
  const std::uint32_t number = end.reference.number;
  if (end.has_keyword) {
    object_is_regular_ &= pdf::EndsWithLineEnd(end.before) &&
                          (end.after.empty() || pdf::StartsWithLineEnd(end.after));
  }
  findings_->Check(ObjectFacts{object_is_regular_}, {.object = number});
  CheckContainers(end.value, number);
  if (is_stream_) {
    CheckStream(end.value, number);
  }
}

// Of the value and what stands in it.
void FileCheck::CheckContainers(const pdf::Object& value, std::uint32_t number) {
  containers_.assign(1, value);
  bool is_first = true;
  while (!containers_.empty()) {
    const pdf::Object container = containers_.back();
    containers_.pop_back();
    const bool is_whole = std::exchange(is_first, false);
    if (container.IsArray()) {
      findings_->Check(ArrayFacts{container.Items().size()}, {.object = number});
      for (const pdf::Object& item : container.Items()) {
        AddContainer(item);
      }
    } else if (container.IsDictionary()) {
      findings_->Check(DictionaryFacts{container.Entries().size()}, {.object = number});
      files_.Note(container, number, is_whole);
      for (const pdf::DictionaryEntry& entry : container.Entries()) {
        AddContainer(entry.value);
      }
    }
  }
}

void FileCheck::AddContainer(const pdf::Object& value) {
  if (value.IsArray() || value.IsDictionary()) {
    containers_.push_back(value);
  }
}

void FileCheck::CheckStream(const pdf::Object& dictionary, std::uint32_t number) {
  StreamFacts facts = stream_;
  facts.is_in_other_file =
      dictionary.Has("F") || dictionary.Has("FFilter") || dictionary.Has("FDecodeParms");
  findings_->Check(facts, {.object = number});
  if (dictionary.Get("Type").IsName("Metadata")) {
    checked_->NoteMetadata(number);
  }
  const pdf::Object filter = dictionary.Get("Filter");
  if (filter.IsName() && filter.Text() != "Crypt") {
    findings_->Check(FilterFacts{.name = filter.Text()}, {.object = number});
  } else if (!filter.IsNull()) {
    noted_.push_back(number);
  }
}

void FileCheck::CheckNoted() {
  pdf::Arena arena;
  for (const std::uint32_t number : noted_) {
    arena.Reset();
    const pdf::Object dictionary = checked_->document().Load({number, 0}, arena);
    CheckFilters(dictionary, number);
  }
}

// What decodes an encrypted stream is the identity where the parameters do not name another filter.
void FileCheck::CheckFilters(const pdf::Object& dictionary, std::uint32_t number) {
  pdf::Arena arena;
  const auto resolve = [&](const pdf::Object& value) {
    return checked_->document().Resolve(value, arena);
  };
  const pdf::Object filters = resolve(dictionary.Get("Filter"));
  const pdf::Object parameters = resolve(dictionary.Get("DecodeParms"));
  const std::size_t count = filters.IsArray() ? filters.Items().size() : 1;
  for (std::size_t i = 0; i < count; ++i) {
    const pdf::Object filter = filters.IsArray() ? resolve(filters.Items()[i]) : filters;
    const bool has_own = parameters.IsArray() && i < parameters.Items().size();
    const pdf::Object of_filter = has_own ? resolve(parameters.Items()[i]) : parameters;
    const pdf::Object name = resolve(of_filter.Get("Name"));
    if (filter.IsName()) {
      findings_->Check(FilterFacts{.name = filter.Text(),
                                   .is_identity_crypt = name.IsNull() || name.IsName("Identity")},
                       {.object = number});
    }
  }
}

}  // namespace TarnixTools::engines::pdfa
