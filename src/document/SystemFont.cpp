#include "document/SystemFont.h"

#include "PdfException.h"

namespace TarnixTools {
namespace {

constexpr std::int32_t kEmbed = 1;

FontPtr Ask(engines::TPdfDocument* target, const std::string& name, const std::string& style) {
  return FontPtr(
      engines::PdfDocumentCreateSystemFontA(target, name.c_str(), style.c_str(), kEmbed));
}

}  // namespace

SystemFont MakeSystemFont(engines::TPdfDocument* target, const std::string& name,
                          const std::string& style) {
  SystemFont made{Ask(target, name, style), false};
  if (made.font == nullptr) {
    made = {Ask(target, kFallbackFont, ""), true};
  }
  if (made.font == nullptr) {
    const std::int32_t error = engines::PdfGetLastError();
    throw PdfException(PdfExceptionCode::EngineError, error,
                       "Unable to get system font from [%s] [%s] (error [%d])", name.c_str(),
                       style.c_str(), error);
  }
  return made;
}

}  // namespace TarnixTools
