// Fonts, paints and text objects through the contract.
#include <cmath>

#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

constexpr std::int32_t kRgb = 2;
constexpr std::size_t kRgbComponents = 3;

bool IsShare(double value) {
  return value >= 0 && value <= 1;
}

double WidthOf(TPdfTextGenerator* generator, const std::u32string& text) {
  return generator->text->target->Shape(*generator->face, text)->width * generator->size;
}

}  // namespace

TPdfFont* PdfDocumentCreateSystemFontA(TPdfDocument* target, const char* name, const char* style,
                                       std::int32_t) {
  if (target == nullptr) {
    return nullptr;
  }
  return Guarded([&]() -> TPdfFont* {
    if (target->target == nullptr || name == nullptr) {
      throw ToolboxException(kArgumentError);
    }
    TargetContent& content = target->target->content();
    const fonts::InstalledFace& face = content.FindFace(name, style == nullptr ? "" : style);
    return std::make_unique<TPdfFont>(TPdfFont{&content, &face}).release();
  });
}

double PdfFontGetAscent(TPdfFont* font) {
  if (font == nullptr) {
    return 0;
  }
  const fonts::FontFace& face = *font->target->Load(*font->face);
  return static_cast<double>(face.ascent()) / face.units_per_em();
}

double PdfFontGetDescent(TPdfFont* font) {
  if (font == nullptr) {
    return 0;
  }
  const fonts::FontFace& face = *font->target->Load(*font->face);
  return static_cast<double>(face.descent()) / face.units_per_em();
}

TPdfColorSpace* PdfDocumentCreateDeviceColorSpace(TPdfDocument* target, std::int32_t kind) {
  if (target == nullptr) {
    return nullptr;
  }
  return Guarded([&]() -> TPdfColorSpace* {
    if (target->target == nullptr || kind != kRgb) {
      throw ToolboxException(kArgumentError);
    }
    return std::make_unique<TPdfColorSpace>().release();
  });
}

TPdfPaint* PdfDocumentCreateAlphaPaint(TPdfDocument* target, TPdfColorSpace* space, double alpha,
                                       const double* values, std::int32_t count) {
  if (target == nullptr || space == nullptr) {
    return nullptr;
  }
  return Guarded([&]() -> TPdfPaint* {
    auto paint = std::make_unique<TPdfPaint>();
    if (target->target == nullptr || values == nullptr || !IsShare(alpha) ||
        count != static_cast<std::int32_t>(kRgbComponents)) {
      throw ToolboxException(kArgumentError);
    }
    for (std::size_t i = 0; i < kRgbComponents; ++i) {
      if (!IsShare(values[i])) {
        throw ToolboxException(kArgumentError);
      }
      paint->paint.rgb[i] = values[i];
    }
    paint->paint.alpha = alpha;
    return paint.release();
  });
}

TPdfText* PdfDocumentCreateText(TPdfDocument* target) {
  if (target == nullptr) {
    return nullptr;
  }
  return Guarded([&]() -> TPdfText* {
    if (target->target == nullptr) {
      throw ToolboxException(kArgumentError);
    }
    return std::make_unique<TPdfText>(TPdfText{&target->target->content(), {}}).release();
  });
}

TPdfTextGenerator* PdfNewTextGenerator(TPdfText* text, TPdfFont* font, double size, std::int32_t) {
  if (text == nullptr || font == nullptr) {
    return nullptr;
  }
  return Guarded([&]() -> TPdfTextGenerator* {
    if (text->target != font->target || !(size > 0) || !std::isfinite(size)) {
      throw ToolboxException(kArgumentError);
    }
    return std::make_unique<TPdfTextGenerator>(TPdfTextGenerator{text, font->face, size, {}, {}})
        .release();
  });
}

int PdfTextGeneratorSetRendering(TPdfTextGenerator* generator, TPdfPaint* fill, TPdfPaint*,
                                 std::int32_t) {
  if (generator == nullptr || fill == nullptr) {
    return 0;
  }
  generator->paint = fill->paint;
  return 1;
}

double PdfTextGeneratorGetWidthW(TPdfTextGenerator* generator, const std::wstring& text) {
  if (generator == nullptr) {
    return 0;
  }
  return Guarded([&] { return WidthOf(generator, WideToUtf32(text)); });
}

double PdfTextGeneratorGetWidthA(TPdfTextGenerator* generator, const char* text) {
  if (generator == nullptr || text == nullptr) {
    return 0;
  }
  return Guarded([&] { return WidthOf(generator, Utf8ToUtf32(text)); });
}

int PdfTextGeneratorMoveTo(TPdfTextGenerator* generator, const TPdfPoint* point) {
  if (generator == nullptr || point == nullptr) {
    return 0;
  }
  if (!std::isfinite(point->x) || !std::isfinite(point->y)) {
    SetLastError(kArgumentError);
    return 0;
  }
  generator->point = *point;
  return 1;
}

int PdfTextGeneratorShowW(TPdfTextGenerator* generator, const std::wstring& text) {
  if (generator == nullptr) {
    return 0;
  }
  return Guarded([&]() -> int {
    const auto line = generator->text->target->Shape(*generator->face, WideToUtf32(text));
    if (line->missing != 0) {
      SetLastErrorCharacter(line->missing);
      throw ToolboxException(kCharacterError);
    }
    if (!line->runs.empty()) {
      generator->text->lines.push_back({line, generator->size, generator->point, generator->paint});
      generator->point.x += line->width * generator->size;
    }
    return 1;
  });
}

int PdfClose(TPdfFont* font) {
  delete font;
  return font != nullptr ? 1 : 0;
}

int PdfClose(TPdfColorSpace* space) {
  delete space;
  return space != nullptr ? 1 : 0;
}

int PdfClose(TPdfPaint* paint) {
  delete paint;
  return paint != nullptr ? 1 : 0;
}

int PdfClose(TPdfText* text) {
  delete text;
  return text != nullptr ? 1 : 0;
}

int PdfClose(TPdfTextGenerator* generator) {
  delete generator;
  return generator != nullptr ? 1 : 0;
}

}  // namespace TarnixTools::engines
