// The font that a text is set in.
#ifndef TARNIX_DOCUMENT_SYSTEM_FONT_H_
#define TARNIX_DOCUMENT_SYSTEM_FONT_H_

#include <string>

#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {

// What is taken where the font that was asked for cannot be used.
inline constexpr const char* kFallbackFont = "Arial";

struct SystemFont {
  FontPtr font;  // never null
  bool is_fallback = false;
};

// A font of this system, to be embedded in the document. Throws EngineError when neither it nor the
// fallback can be used.
SystemFont MakeSystemFont(engines::TPdfDocument* target, const std::string& name,
                          const std::string& style);

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_SYSTEM_FONT_H_
