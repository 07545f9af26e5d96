// A Type 1 font program taken apart (Adobe Type 1 Font Format): its clear text, and its decrypted
// private part with the glyphs and subroutines in it.
//
//   if (const auto program = Type1Program::Read(bytes)) {
//     const Type1Text cut = program->With({"A", "eacute"});
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_TYPE1PROGRAM_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_TYPE1PROGRAM_H_

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace TarnixTools::engines::optimizer {

// A program's bytes: clear ones, encrypted ones, then those that end it.
struct Type1Text {
  std::string bytes;
  std::size_t clear = 0;
  std::size_t encrypted = 0;
};

class Type1Program {
 public:
  // Nothing for a program that is not written plainly: it comes in pieces with headers of their
  // own, varies along axes, or has its glyphs twice.
  static std::optional<Type1Program> Read(std::string_view bytes);

  // The program with these glyphs, those that they are put together of, and .notdef. Subroutines
  // that none of them calls do nothing.
  Type1Text With(const std::set<std::string>& names) const;

 private:
  // A glyph or a subroutine: where in the private part its definition starts and ends, and where
  // its size and its encrypted code are.
  struct Entry {
    std::size_t start = 0;
    std::size_t size_start = 0;
    std::size_t size_end = 0;
    std::size_t code_start = 0;
    std::size_t code_size = 0;
    std::size_t end = 0;
  };

  // What stands in place of bytes of the private part.
  struct Edit {
    std::size_t end = 0;
    std::string text;
  };

  using Edits = std::map<std::size_t, Edit>;  // by where they start

  class Words;
  class Needs;

  bool Split(std::string_view bytes);
  bool Decrypt(std::string_view cipher);
  bool ReadPrivate();
  bool ReadSubroutines(std::size_t at);
  bool ReadGlyphs(std::size_t at);
  bool ReadGlyph(Words& words);
  bool ReadCode(Words& words, Entry& entry) const;
  void EmptySubroutines(const Needs& needs, Edits& edits) const;
  void RemoveGlyphs(const Needs& needs, Edits& edits) const;
  std::string Edited(const Edits& edits) const;

  std::string clear_;
  std::string private_;                       // without the bytes for the encryption
  std::string trailer_;                       // zeros and what ends them
  std::size_t random_bytes_ = 4;              // at the start of each code
  std::map<std::size_t, Entry> subroutines_;  // by number
  std::map<std::string, Entry, std::less<>> glyphs_;
  std::size_t count_start_ = 0;  // of the glyphs' count
  std::size_t count_end_ = 0;
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_TYPE1PROGRAM_H_
