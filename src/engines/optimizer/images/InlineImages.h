// Images that stand within content (inline images; ISO 32000-2, 8.9.7), coded anew where they stand.
//
//   for (const std::uint32_t number : survey.ContentsWithImages()) {
//     RecodeInlineImages(document, number, goals, store, rewriter);
//   }
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_INLINEIMAGES_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_INLINEIMAGES_H_

#include <cstdint>

#include "engines/optimizer/images/ImageGoals.h"
#include "engines/support/files/DataStore.h"
#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

// Has a content stream written with its larger images in fewer bytes, where all of it takes fewer
// then. Images stay in their pixels: nobody knows how large they are seen. What has been changed
// already is left alone. Throws pdf::Error for a document that cannot be read any more.
void RecodeInlineImages(pdf::Document& document, std::uint32_t number, const ImageGoals& goals,
                        DataStore& store, pdf::DocumentRewriter& rewriter);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_INLINEIMAGES_H_
