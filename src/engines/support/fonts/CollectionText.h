// The text of the identifiers of Adobe's character collections (ISO 32000-2, 9.10.2), from the CMap
// files that the system has of them, as of the package poppler-data.
//
//   const CollectionText* text = CollectionText::Of("Japan1");
//   if (text != nullptr) ... text->TextOf(cid)
//
// May be used by several threads at once.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_COLLECTIONTEXT_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_COLLECTIONTEXT_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engines/support/fonts/CMapFile.h"

namespace TarnixTools::engines::fonts {

class CollectionText {
 public:
  // Null for a collection that is not known, and where the system has no file of it. Each file is
  // read once; what it says is kept for the life of the process.
  static const CollectionText* Of(std::string_view ordering);

  // From a file; null where there is none.
  static std::unique_ptr<CollectionText> Read(const std::string& path);

  // Empty for an identifier that stands for no character.
  std::u32string TextOf(std::uint32_t cid) const;

 private:
  explicit CollectionText(CMapFile file) : file_(std::move(file)) {}

  CMapFile file_;
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_COLLECTIONTEXT_H_
