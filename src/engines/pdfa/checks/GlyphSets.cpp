#include "engines/pdfa/checks/GlyphSets.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "engines/support/fonts/GlyphFinder.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr std::uint32_t kCids = 65536;
constexpr std::string_view kNotdef = ".notdef";

std::set<std::string, std::less<>> NamesIn(std::string_view names) {
  names.remove_prefix(std::min(names.find('/'), names.size()));
  std::set<std::string, std::less<>> found;
  while (!names.empty()) {
    names.remove_prefix(1);
    const std::size_t end = std::min(names.find('/'), names.size());
    std::string name(names.substr(0, end));
    while (!name.empty() && static_cast<unsigned char>(name.back()) <= ' ') {
      name.pop_back();
    }
    found.insert(std::move(name));
    names.remove_prefix(end);
  }
  found.erase("");
  found.erase(std::string(kNotdef));
  return found;
}

bool HasBit(std::string_view bits, std::uint32_t cid) {
  const std::size_t byte = cid / 8;
  return byte < bits.size() && (static_cast<unsigned char>(bits[byte]) >> (7 - cid % 8) & 1) != 0;
}

// Whether the program has a glyph for each identifier.
std::vector<bool> CidsOf(const fonts::DocumentFont& font, const fonts::FontProgram& program) {
  std::vector<bool> cids(kCids);
  for (std::uint32_t cid = 1; cid < kCids; ++cid) {
    if (program.is_cid_keyed()) {
      cids[cid] = program.GlyphOfCid(cid) != 0;
    } else {
      const std::uint32_t glyph = program.is_cff() ? cid : font.MappedGlyphOf(cid);
      cids[cid] = glyph != 0 && glyph < program.glyph_count();
    }
  }
  return cids;
}

}  // namespace

SetAgreement CompareCharSet(std::string_view names, fonts::FontProgram* program) {
  SetAgreement agreement;
  if (program == nullptr || !program->has_glyph_names()) {
    return agreement;
  }
  const auto listed = NamesIn(names);
  std::set<std::string, std::less<>> own;
  for (std::uint32_t glyph = 0; glyph < program->glyph_count(); ++glyph) {
    own.insert(program->NameOf(glyph));
  }
  own.erase("");
  own.erase(std::string(kNotdef));
  agreement.is_true = std::includes(own.begin(), own.end(), listed.begin(), listed.end());
  agreement.is_whole = std::includes(listed.begin(), listed.end(), own.begin(), own.end());
  return agreement;
}

SetAgreement CompareCidSet(std::string_view bits, const fonts::DocumentFont& font,
                           const fonts::FontProgram* program) {
  SetAgreement agreement;
  if (program == nullptr) {
    return agreement;
  }
  const std::vector<bool> cids = CidsOf(font, *program);
  for (std::uint32_t cid = 1; cid < kCids; ++cid) {
    const bool is_listed = HasBit(bits, cid);
    agreement.is_true &= !is_listed || cids[cid];
    agreement.is_whole &= is_listed || !cids[cid];
  }
  return agreement;
}

bool CharSetHasShown(std::string_view names, const fonts::DocumentFont& font,
                     fonts::FontProgram* program, const ShownFonts::Font& shown) {
  if (program == nullptr || !program->has_glyph_names()) {
    return true;
  }
  const auto listed = NamesIn(names);
  fonts::GlyphFinder finder(font, *program);
  return std::all_of(shown.codes.begin(), shown.codes.end(), [&](const auto& code) {
    const std::uint32_t glyph = finder.StandardGlyphOf(code.first);
    return !code.second.is_rendered || glyph == 0 || listed.contains(program->NameOf(glyph));
  });
}

bool CidSetHasShown(std::string_view bits, const fonts::DocumentFont& font,
                    const ShownFonts::Font& shown) {
  return std::all_of(shown.codes.begin(), shown.codes.end(), [&](const auto& code) {
    const std::uint32_t cid = font.CidOf(code.first);
    return !code.second.is_rendered || cid == 0 || HasBit(bits, cid);
  });
}

}  // namespace TarnixTools::engines::pdfa
