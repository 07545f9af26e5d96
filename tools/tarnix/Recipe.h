// Recipes: JSON files that list decorations.
//
//   [{"type": "number", "template": "Page {n} of {p}", "position": "bottom-right"},
//    {"type": "stamp-text", "text": "DRAFT", "rotate": 45, "opacity": 30, "pages": "2-5"},
//    {"type": "stamp-image", "image": "logo.png", "margin": [20, 20]}]
//
// The fields of an entry are the options of the job that its type names, with or without the dashes
// inside their names. Values are those of the command line; numbers, pairs of numbers and true for
// a flag may be written as JSON has them.
#ifndef TARNIX_CLI_RECIPE_H_
#define TARNIX_CLI_RECIPE_H_

#include <string>
#include <vector>

#include "PdfDoc.h"
#include "PdfTransformation.h"

namespace TarnixTools::cli {

//   document - the one that is decorated, which has to have the pages that entries name.
// Throws PdfException: FileNotFound for a recipe or an image of it that cannot be opened, else
// InvalidParameter. The message names the recipe and, where it is about one, the entry.
std::vector<PdfTransformation> ReadRecipe(const std::string& path, const PdfDoc& document);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_RECIPE_H_
