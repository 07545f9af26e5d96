// Fonts, paints and text objects through the contract.
#include <cmath>

#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

using namespace toolbox;

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
  return Guarded({target}, [&] {
    Require(target->target != nullptr && name != nullptr);
    TargetContent& content = target->target->content();
    const fonts::InstalledFace& face = content.FindFace(name, style == nullptr ? "" : style);
    return std::make_unique<TPdfFont>(TPdfFont{&content, &face}).release();
  });
}

int PdfFontHasStyleA(TPdfFont* font, const char* style) {
  return Guarded({font, style},
                 [&] { return fonts::FontCatalog::HasStyle(*font->face, style) ? 1 : 0; });
}

double PdfFontGetAscent(TPdfFont* font) {
  return Guarded({font}, [&] {
    const fonts::FontFace& face = *font->target->Load(*font->face);
    return static_cast<double>(face.ascent()) / face.units_per_em();
  });
}

double PdfFontGetDescent(TPdfFont* font) {
  return Guarded({font}, [&] {
    const fonts::FontFace& face = *font->target->Load(*font->face);
    return static_cast<double>(face.descent()) / face.units_per_em();
  });
}

TPdfColorSpace* PdfDocumentCreateDeviceColorSpace(TPdfDocument* target, std::int32_t kind) {
  return Guarded({target}, [&] {
    Require(target->target != nullptr && kind == kRgb);
    return std::make_unique<TPdfColorSpace>().release();
  });
}

TPdfPaint* PdfDocumentCreateAlphaPaint(TPdfDocument* target, TPdfColorSpace* space, double alpha,
                                       const double* values, std::int32_t count) {
  return Guarded({target, space}, [&] {
    auto paint = std::make_unique<TPdfPaint>();
    Require(target->target != nullptr && values != nullptr && IsShare(alpha) &&
            count == static_cast<std::int32_t>(kRgbComponents));
    for (std::size_t i = 0; i < kRgbComponents; ++i) {
      Require(IsShare(values[i]));
      paint->paint.rgb[i] = values[i];
    }
    paint->paint.alpha = alpha;
    return paint.release();
  });
}

TPdfText* PdfDocumentCreateText(TPdfDocument* target) {
  return Guarded({target}, [&] {
    Require(target->target != nullptr);
    return std::make_unique<TPdfText>(TPdfText{&target->target->content(), {}}).release();
  });
}

TPdfTextGenerator* PdfNewTextGenerator(TPdfText* text, TPdfFont* font, double size, std::int32_t) {
  return Guarded({text, font}, [&] {
    Require(text->target == font->target && size > 0 && std::isfinite(size));
    return std::make_unique<TPdfTextGenerator>(TPdfTextGenerator{text, font->face, size, {}, {}})
        .release();
  });
}

int PdfTextGeneratorSetRendering(TPdfTextGenerator* generator, TPdfPaint* fill, TPdfPaint*,
                                 std::int32_t) {
  return Guarded({generator, fill}, [&] { generator->paint = fill->paint; });
}

double PdfTextGeneratorGetWidthW(TPdfTextGenerator* generator, const std::wstring& text) {
  return Guarded({generator}, [&] { return WidthOf(generator, WideToUtf32(text)); });
}

double PdfTextGeneratorGetWidthA(TPdfTextGenerator* generator, const char* text) {
  return Guarded({generator, text}, [&] { return WidthOf(generator, Utf8ToUtf32(text)); });
}

int PdfTextGeneratorMoveTo(TPdfTextGenerator* generator, const TPdfPoint* point) {
  return Guarded({generator, point}, [&] {
    Require(std::isfinite(point->x) && std::isfinite(point->y));
    generator->point = *point;
  });
}

int PdfTextGeneratorShowW(TPdfTextGenerator* generator, const std::wstring& text) {
  return Guarded({generator}, [&] {
    const auto line = generator->text->target->Shape(*generator->face, WideToUtf32(text));
    if (line->missing != 0) {
      SetLastErrorCharacter(line->missing);
      throw ToolboxFailure(kToolboxCharacterError);
    }
    if (!line->runs.empty()) {
      generator->text->lines.push_back({line, generator->size, generator->point, generator->paint});
      generator->point.x += line->width * generator->size;
    }
  });
}

int PdfClose(TPdfFont* font) {
  return Release(font);
}

int PdfClose(TPdfColorSpace* space) {
  return Release(space);
}

int PdfClose(TPdfPaint* paint) {
  return Release(paint);
}

int PdfClose(TPdfText* text) {
  return Release(text);
}

int PdfClose(TPdfTextGenerator* generator) {
  return Release(generator);
}

}  // namespace TarnixTools::engines
