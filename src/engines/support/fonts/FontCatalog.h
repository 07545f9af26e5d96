// The fonts installed on this system, found by name and by the characters they have.
//
//   const FontCatalog& catalog = FontCatalog::Get();
//   const InstalledFace* face = catalog.Find("Arial", "Bold Italic");
//
// Only faces whose outlines a PDF file can hold are known: TrueType and OpenType, also in
// collections. May be used from several threads at once.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_FONTCATALOG_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_FONTCATALOG_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::fonts {

// A face in a font file. Lives as long as the process.
struct InstalledFace {
  std::string file;
  // In a collection; times 65,536, a named instance of a variable font, from 1 on; 0: as it is.
  int index = 0;
  std::string family;
  std::vector<std::string> styles;  // names of its style, in several languages
  // As fontconfig has them: 80 regular, 200 bold; 0 upright, 100 italic, 110 oblique; 100 normal.
  int weight = 80;
  int slant = 0;
  int width = 100;
};

class FontCatalog {
 public:
  // Read on first use. Throws LibraryMissing.
  static const FontCatalog& Get();

  ~FontCatalog();
  FontCatalog(const FontCatalog&) = delete;
  FontCatalog& operator=(const FontCatalog&) = delete;

  // The face of that family, or of one with the same metrics ("Arial" is Liberation Sans where
  // Arial is not installed), or of a generic one ("sans-serif"), that is closest to the style: a
  // style's name ("Condensed Bold") or any of its words. Without a style, of faces that are equally
  // close it is one that is called Regular, Book or Roman. Null when there is no such family. Both
  // are UTF-8 and taken literally; case does not matter.
  const InstalledFace* Find(std::string_view family, std::string_view style) const;

  // The face that programs show text of the family in on this system: one that Find gives, else what
  // the configuration puts in place of a family that it does not know. Null without any font.
  const InstalledFace* FindShown(std::string_view family, std::string_view style) const;

  // Whether the face has the style, by name or by all of its words, and is not merely the closest
  // there is.
  static bool HasStyle(const InstalledFace& face, std::string_view style);

  // Whether the face is said to have a character.
  bool Has(const InstalledFace& face, char32_t character) const;

  // Faces to take characters from that a face lacks, best first: in its style, and for a language
  // ("ja") where that matters.
  std::vector<const InstalledFace*> Substitutes(const InstalledFace& face,
                                                std::string_view language) const;

 private:
  class Lists;

  FontCatalog();

  std::unique_ptr<Lists> lists_;
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_FONTCATALOG_H_
