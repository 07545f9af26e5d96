// A walk that is told everything and goes into everything.
#ifndef TARNIX_TESTS_PDF_CONTENT_WHOLEWALK_H_
#define TARNIX_TESTS_PDF_CONTENT_WHOLEWALK_H_

#include "pdf/content/ContentVisitor.h"

namespace TarnixTools::pdf {

inline constexpr WalkOptions kEverything = {.images = true,
                                            .text = true,
                                            .paths = true,
                                            .shadings = true,
                                            .clips = true,
                                            .style = true,
                                            .marks = true,
                                            .names = true,
                                            .operators = true,
                                            .forms = true,
                                            .patterns = true,
                                            .soft_masks = true,
                                            .glyphs = true,
                                            .appearances = true};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_TESTS_PDF_CONTENT_WHOLEWALK_H_
