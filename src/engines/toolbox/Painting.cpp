// Content of pages through the contract.
#include <cmath>

#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "engines/toolbox/content/ContentText.h"

namespace TarnixTools::engines {

using namespace toolbox;

namespace {

// What is painted is no part of what tagged documents say (ISO 32000-2, 14.8.2.2).
constexpr std::string_view kArtifactStart = "/Artifact<</Type/Pagination>>BDC ";
constexpr std::string_view kArtifactEnd = "EMC\n";

// What the generator has gathered, as a piece of content that leaves nothing behind.
std::string PieceOf(const TPdfContentGenerator& generator) {
  std::string piece(kArtifactStart);
  const pdf::Matrix matrix = generator.content.geometry.FromSeenPoints();
  piece += "q ";
  if (!matrix.IsIdentity()) {
    AppendTransform(piece, matrix);
    piece += '\n';
  }
  piece += generator.operators;
  for (int i = 0; i < generator.open_saves; ++i) {
    piece += "Q ";
  }
  piece += "Q ";
  piece += kArtifactEnd;
  return piece;
}

void AddToPage(const TPdfContentGenerator& generator) {
  PageContent& page = *generator.content.page;
  for (const AddedResource& resource : generator.used.resources) {
    page.Add(resource);
  }
  if (generator.prepends) {
    page.under.insert(0, PieceOf(generator));
  } else {
    page.over += PieceOf(generator);
  }
}

}  // namespace

TPdfContent* PdfPageGetContent(TPdfPage* page) {
  return Guarded({page}, [&] {
    Require(page->target != nullptr);
    if (page->content == nullptr) {
      page->content = std::make_shared<PageContent>();
    }
    return std::make_unique<TPdfContent>(
               TPdfContent{&page->target->content(), page->Geometry(), page->content})
        .release();
  });
}

TPdfContentGenerator* PdfNewContentGenerator(TPdfContent* content, bool prepend) {
  return Guarded({content}, [&] {
    auto generator = std::make_unique<TPdfContentGenerator>();
    generator->content = *content;
    generator->prepends = prepend;
    return generator.release();
  });
}

int PdfContentGeneratorPaintText(TPdfContentGenerator* generator, TPdfText* text) {
  return Guarded({generator, text}, [&] {
    Require(text->target == generator->content.target);
    std::string painted;  // all of it appears, or nothing
    PaintLines(text->lines, *text->target, painted, generator->used);
    generator->operators += painted;
  });
}

int PdfContentGeneratorSave(TPdfContentGenerator* generator) {
  return Guarded({generator}, [&] {
    generator->operators += "q ";
    ++generator->open_saves;
  });
}

int PdfContentGeneratorRestore(TPdfContentGenerator* generator) {
  return Guarded({generator}, [&] {
    Require(generator->open_saves > 0);
    generator->operators += "Q ";
    --generator->open_saves;
  });
}

int PdfContentGeneratorTransform(TPdfContentGenerator* generator,
                                 TPdfTransformation* transformation) {
  return Guarded({generator, transformation}, [&] {
    Require(transformation->matrix.IsFinite());
    if (!transformation->matrix.IsIdentity()) {
      AppendTransform(generator->operators, transformation->matrix);
      generator->operators += '\n';
    }
  });
}

TPdfTransformation* PdfNewTransformationIdentity() {
  return Guarded([] { return std::make_unique<TPdfTransformation>().release(); });
}

int PdfTransformationTranslate(TPdfTransformation* transformation, double dx, double dy) {
  return Guarded({transformation}, [&] {
    Require(std::isfinite(dx) && std::isfinite(dy));
    transformation->matrix = pdf::Matrix::Translation(dx, dy) * transformation->matrix;
  });
}

int PdfTransformationRotate(TPdfTransformation* transformation, double angle) {
  return Guarded({transformation}, [&] {
    Require(std::isfinite(angle));
    transformation->matrix = pdf::Matrix::Rotation(angle) * transformation->matrix;
  });
}

int PdfClose(TPdfContent* content) {
  return Release(content);
}

int PdfClose(TPdfContentGenerator* generator) {
  return Guarded({generator}, [&] {
    const std::unique_ptr<TPdfContentGenerator> owned(generator);
    if (!owned->used.resources.empty()) {
      AddToPage(*owned);
    }
  });
}

int PdfClose(TPdfTransformation* transformation) {
  return Release(transformation);
}

}  // namespace TarnixTools::engines
