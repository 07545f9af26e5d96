// Content of pages through the contract.
#include <cmath>

#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "engines/toolbox/content/ContentText.h"

namespace TarnixTools::engines {

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
  if (page == nullptr) {
    return nullptr;
  }
  return Guarded([&]() -> TPdfContent* {
    if (page->target == nullptr) {
      throw ToolboxException(kArgumentError);
    }
    if (page->content == nullptr) {
      page->content = std::make_shared<PageContent>();
    }
    return std::make_unique<TPdfContent>(
               TPdfContent{&page->target->content(), page->Geometry(), page->content})
        .release();
  });
}

TPdfContentGenerator* PdfNewContentGenerator(TPdfContent* content, bool prepend) {
  if (content == nullptr) {
    return nullptr;
  }
  return Guarded([&]() -> TPdfContentGenerator* {
    auto generator = std::make_unique<TPdfContentGenerator>();
    generator->content = *content;
    generator->prepends = prepend;
    return generator.release();
  });
}

int PdfContentGeneratorPaintText(TPdfContentGenerator* generator, TPdfText* text) {
  if (generator == nullptr || text == nullptr) {
    return 0;
  }
  return Guarded([&]() -> int {
    if (text->target != generator->content.target) {
      throw ToolboxException(kArgumentError);
    }
    PaintLines(text->lines, *text->target, generator->operators, generator->used);
    return 1;
  });
}

int PdfContentGeneratorSave(TPdfContentGenerator* generator) {
  if (generator == nullptr) {
    return 0;
  }
  return Guarded([&]() -> int {
    generator->operators += "q ";
    ++generator->open_saves;
    return 1;
  });
}

int PdfContentGeneratorRestore(TPdfContentGenerator* generator) {
  if (generator == nullptr) {
    return 0;
  }
  return Guarded([&]() -> int {
    if (generator->open_saves == 0) {
      throw ToolboxException(kArgumentError);
    }
    generator->operators += "Q ";
    --generator->open_saves;
    return 1;
  });
}

int PdfContentGeneratorTransform(TPdfContentGenerator* generator,
                                 TPdfTransformation* transformation) {
  if (generator == nullptr || transformation == nullptr) {
    return 0;
  }
  return Guarded([&]() -> int {
    if (!transformation->matrix.IsFinite()) {
      throw ToolboxException(kArgumentError);
    }
    if (!transformation->matrix.IsIdentity()) {
      AppendTransform(generator->operators, transformation->matrix);
      generator->operators += '\n';
    }
    return 1;
  });
}

TPdfTransformation* PdfNewTransformationIdentity() {
  return Guarded(
      []() -> TPdfTransformation* { return std::make_unique<TPdfTransformation>().release(); });
}

int PdfTransformationTranslate(TPdfTransformation* transformation, double dx, double dy) {
  if (transformation == nullptr) {
    return 0;
  }
  if (!std::isfinite(dx) || !std::isfinite(dy)) {
    SetLastError(kArgumentError);
    return 0;
  }
  transformation->matrix = pdf::Matrix::Translation(dx, dy) * transformation->matrix;
  return 1;
}

int PdfTransformationRotate(TPdfTransformation* transformation, double angle) {
  if (transformation == nullptr) {
    return 0;
  }
  if (!std::isfinite(angle)) {
    SetLastError(kArgumentError);
    return 0;
  }
  transformation->matrix = pdf::Matrix::Rotation(angle) * transformation->matrix;
  return 1;
}

int PdfClose(TPdfContent* content) {
  delete content;
  return content != nullptr ? 1 : 0;
}

int PdfClose(TPdfContentGenerator* generator) {
  if (generator == nullptr) {
    return 0;
  }
  const std::unique_ptr<TPdfContentGenerator> owned(generator);
  return Guarded([&]() -> int {
    if (!owned->used.resources.empty()) {
      AddToPage(*owned);
    }
    return 1;
  });
}

int PdfClose(TPdfTransformation* transformation) {
  delete transformation;
  return transformation != nullptr ? 1 : 0;
}

}  // namespace TarnixTools::engines
