#include "engines/optimizer/fonts/Type1Program.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>
#include <vector>

#include "engines/optimizer/fonts/Type1Code.h"
#include "engines/support/fonts/BaseEncodings.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::engines::optimizer {

namespace {

constexpr std::size_t kRandomBytes = 4;  // at the start of the encrypted part
constexpr std::size_t kMaxEntries = 65'536;
// Those that the interpreter's routines for flexes and hints go by.
constexpr std::size_t kCommonSubroutines = 4;

std::string FromHex(std::string_view text) {
  std::string bytes;
  int high = -1;
  for (const char c : text) {
    const int digit = pdf::HexValue(c);
    if (digit >= 0 && high >= 0) {
      bytes += static_cast<char>(high << 4 | digit);
      high = -1;
    } else if (digit >= 0) {
      high = digit;
    }
  }
  return bytes;
}

bool IsHex(std::string_view cipher) {
  const std::string_view start = cipher.substr(0, kRandomBytes);
  return std::all_of(start.begin(), start.end(), [](char c) { return pdf::HexValue(c) >= 0; });
}

bool IsOnce(std::string_view text, std::string_view word) {
  const std::size_t found = text.find(word);
  return found != std::string_view::npos && found == text.rfind(word);
}

}  // namespace

// Words of PostScript, as far as these programs have them.
class Type1Program::Words {
 public:
  Words(std::string_view text, std::size_t at) : text_(text), at_(at) {}

  std::size_t at() const { return at_; }

  bool is_at_end() const { return at_ >= text_.size(); }

  void Skip(std::size_t count) { at_ += std::min(count, text_.size() - at_); }

  // A name comes with its slash. Empty at the end.
  std::string_view Next() {
    while (at_ < text_.size() && pdf::IsSpace(text_[at_])) {
      ++at_;
    }
    const std::size_t start = at_;
    Skip(1);
    while (at_ < text_.size() && pdf::IsRegular(text_[at_])) {
      ++at_;
    }
    return text_.substr(start, at_ - start);
  }

  std::optional<std::size_t> NextNumber() {
    const std::string_view word = Next();
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    const bool is_whole = error == std::errc() && end == word.data() + word.size();
    return is_whole ? std::optional(number) : std::nullopt;
  }

 private:
  std::string_view text_;
  std::size_t at_;
};

// Glyphs and subroutines that are needed, and those that they need.
class Type1Program::Needs {
 public:
  Needs(const Type1Program& program, const std::set<std::string>& names) : program_(&program) {
    AddGlyph(".notdef");
    for (const std::string& name : names) {
      AddGlyph(name);
    }
    for (std::size_t number = 0; number < kCommonSubroutines; ++number) {
      AddSubroutine(static_cast<std::int64_t>(number));
    }
    while (!waiting_.empty()) {
      const Entry entry = waiting_.back();
      waiting_.pop_back();
      AddCalls(entry);
    }
  }

  const std::set<std::string, std::less<>>& glyphs() const { return glyphs_; }

  bool HasSubroutine(std::size_t number) const { return subroutines_.contains(number); }

 private:
  void AddGlyph(std::string_view name) {
    const auto found = program_->glyphs_.find(name);
    if (found != program_->glyphs_.end() && glyphs_.insert(std::string(name)).second) {
      waiting_.push_back(found->second);
    }
  }

  void AddSubroutine(std::int64_t number) {
    if (number < 0) {
      return;
    }
    const auto found = program_->subroutines_.find(static_cast<std::size_t>(number));
    if (found != program_->subroutines_.end() && subroutines_.insert(found->first).second) {
      waiting_.push_back(found->second);
    }
  }

  void AddCalls(const Entry& entry) {
    const auto cipher =
        std::string_view(program_->private_).substr(entry.code_start, entry.code_size);
    const std::string code = DecryptType1(cipher, kType1CodeKey);
    const Type1Calls calls = ReadType1Calls(
        std::string_view(code).substr(std::min(code.size(), program_->random_bytes_)));
    for (const std::int64_t number : calls.subroutines) {
      AddSubroutine(number);
    }
    for (const std::uint8_t part : calls.parts) {
      AddGlyph(fonts::GlyphNameIn(fonts::BaseEncoding::kStandard, part));
    }
  }

  const Type1Program* program_;
  std::set<std::string, std::less<>> glyphs_;
  std::set<std::size_t> subroutines_;
  std::vector<Entry> waiting_;
};

std::optional<Type1Program> Type1Program::Read(std::string_view bytes) {
  Type1Program program;
  const bool is_read = program.Split(bytes) && program.ReadPrivate();
  return is_read ? std::optional(std::move(program)) : std::nullopt;
}

// Before the word that ends the program there are zeros, which some programs lack. What is taken
// for encrypted although it is of them comes after the end of the private part.
bool Type1Program::Split(std::string_view bytes) {
  constexpr std::string_view kStart = "currentfile eexec";
  const std::size_t found = bytes.find(kStart);
  if (!bytes.starts_with("%!") || found == std::string_view::npos ||
      bytes.substr(0, found).find("/WeightVector") != std::string_view::npos) {
    return false;
  }
  constexpr std::string_view kSpace = " \t\r\n";
  const std::size_t start =
      std::min(bytes.find_first_not_of(kSpace, found + kStart.size()), bytes.size());
  const std::size_t mark = std::min(bytes.rfind("cleartomark"), bytes.size());
  const std::size_t last = bytes.substr(0, mark).find_last_not_of("0 \t\r\n");
  const std::size_t end = std::max(start, last == std::string_view::npos ? 0 : last + 1);
  const std::string_view cipher = bytes.substr(start, end - start);
  clear_ = bytes.substr(0, start);
  trailer_ = "\n" + std::string(bytes.substr(end));
  return Decrypt(cipher);
}

bool Type1Program::Decrypt(std::string_view cipher) {
  constexpr std::string_view kClose = "closefile";
  private_ = DecryptType1(IsHex(cipher) ? FromHex(cipher) : std::string(cipher), kType1ProgramKey);
  private_.erase(0, kRandomBytes);
  const std::size_t close = private_.rfind(kClose);
  private_.resize(close == std::string::npos ? 0 : close + kClose.size());
  private_ += '\n';
  return close != std::string::npos;
}

bool Type1Program::ReadPrivate() {
  constexpr std::string_view kGlyphs = "/CharStrings";
  constexpr std::string_view kSubroutines = "/Subrs";
  constexpr std::string_view kRandom = "/lenIV";
  const std::string_view text = private_;
  if (!IsOnce(text, kGlyphs)) {
    return false;
  }
  if (text.find(kRandom) != std::string_view::npos) {
    const auto count = Words(text, text.find(kRandom) + kRandom.size()).NextNumber();
    random_bytes_ = count.value_or(kRandomBytes + 1);
  }
  const std::size_t subroutines = text.find(kSubroutines);
  const bool has_subroutines = subroutines != std::string_view::npos;
  if (random_bytes_ > kRandomBytes || (has_subroutines && !IsOnce(text, kSubroutines))) {
    return false;
  }
  return (!has_subroutines || ReadSubroutines(subroutines + kSubroutines.size())) &&
         ReadGlyphs(text.find(kGlyphs) + kGlyphs.size());
}

// "20 RD <20 bytes>"; then words that end the definition, which are not read here.
bool Type1Program::ReadCode(Words& words, Entry& entry) const {
  const auto size = words.NextNumber();
  if (!size || *size > private_.size()) {
    return false;
  }
  entry.code_size = *size;
  entry.size_end = words.at();
  entry.size_start = words.at() - std::to_string(*size).size();
  words.Next();
  entry.code_start = words.at() + 1;
  words.Skip(1 + *size);
  return !words.is_at_end();
}

// "/Subrs 5 array", then "dup 0 15 RD <15 bytes> NP" or "... noaccess put" for each.
bool Type1Program::ReadSubroutines(std::size_t at) {
  Words words(private_, at);
  const auto count = words.NextNumber();
  if (!count || *count > kMaxEntries || words.Next() != "array") {
    return false;
  }
  for (std::size_t i = 0; i < *count && words.Next() == "dup"; ++i) {
    const auto number = words.NextNumber();
    Entry entry;
    if (!number || !ReadCode(words, entry) || !subroutines_.emplace(*number, entry).second) {
      return false;
    }
    if (words.Next() == "noaccess") {
      words.Next();
    }
  }
  return true;
}

// "/CharStrings 3 dict dup begin", then "/A 20 RD <20 bytes> ND" for each, then "end".
bool Type1Program::ReadGlyphs(std::size_t at) {
  Words words(private_, at);
  const auto count = words.NextNumber();
  count_end_ = words.at();
  count_start_ = count ? count_end_ - std::to_string(*count).size() : 0;
  if (!count || words.Next() != "dict" || words.Next() != "dup" || words.Next() != "begin") {
    return false;
  }
  while (glyphs_.size() < kMaxEntries && ReadGlyph(words)) {
  }
  return words.Next() == "end" && glyphs_.contains(".notdef");
}

// False at the end of the glyphs, and for what is none.
bool Type1Program::ReadGlyph(Words& words) {
  Entry entry;
  entry.start = words.at();
  const std::string_view name = words.Next();
  if (!name.starts_with('/') || !ReadCode(words, entry)) {
    words = Words(private_, entry.start);
    return false;
  }
  if (words.Next() == "noaccess") {
    words.Next();
  }
  entry.end = words.at();
  return glyphs_.emplace(name.substr(1), entry).second;
}

void Type1Program::EmptySubroutines(const Needs& needs, Edits& edits) const {
  constexpr char kReturn = 11;
  const std::string nothing =
      EncryptType1(std::string(random_bytes_, '\0') + kReturn, kType1CodeKey);
  for (const auto& [number, entry] : subroutines_) {
    if (!needs.HasSubroutine(number)) {
      edits[entry.size_start] = {entry.size_end, std::to_string(nothing.size())};
      edits[entry.code_start] = {entry.code_start + entry.code_size, nothing};
    }
  }
}

void Type1Program::RemoveGlyphs(const Needs& needs, Edits& edits) const {
  edits[count_start_] = {count_end_, std::to_string(needs.glyphs().size())};
  for (const auto& [name, entry] : glyphs_) {
    if (!needs.glyphs().contains(name)) {
      edits[entry.start] = {entry.end, {}};
    }
  }
}

std::string Type1Program::Edited(const Edits& edits) const {
  std::string text;
  std::size_t done = 0;
  for (const auto& [start, edit] : edits) {
    text.append(private_, done, start - done);
    text += edit.text;
    done = edit.end;
  }
  return text.append(private_, done);
}

Type1Text Type1Program::With(const std::set<std::string>& names) const {
  const Needs needs(*this, names);
  Edits edits;
  EmptySubroutines(needs, edits);
  RemoveGlyphs(needs, edits);
  const std::string cipher =
      EncryptType1(std::string(kRandomBytes, '\0') + Edited(edits), kType1ProgramKey);
  return {clear_ + cipher + trailer_, clear_.size(), cipher.size()};
}

}  // namespace TarnixTools::engines::optimizer
