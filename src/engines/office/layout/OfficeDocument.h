// A document that has been analysed: what all writers write from.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_OFFICEDOCUMENT_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_OFFICEDOCUMENT_H_

#include <vector>

#include "engines/office/pages/DocumentReader.h"
#include "engines/support/layout/PageLayout.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines::office {

struct OfficePage {
  // Its images, paths and links, which the layout refers to; text and glyphs are gone by now.
  // PageModel::number is its place in the document, from 0.
  PageModel model;
  PageLayout layout;
};

struct OfficeDocument {
  DocumentFacts facts;
  std::vector<OfficePage> pages;  // those that are converted, in order
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_OFFICEDOCUMENT_H_
