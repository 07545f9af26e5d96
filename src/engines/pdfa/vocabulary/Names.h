// Names that PDF/A allows, for the rules and for the converter.
#ifndef TARNIX_ENGINES_PDFA_VOCABULARY_NAMES_H_
#define TARNIX_ENGINES_PDFA_VOCABULARY_NAMES_H_

#include <array>
#include <string_view>

#include "engines/pdfa/vocabulary/OneOf.h"

namespace TarnixTools::engines::pdfa {

// Actions of all parts (ISO 19005-1, 6.6.1; -2 and -3, 6.5.1).
inline constexpr std::array<std::string_view, 6> kPlainActions = {"GoTo", "GoToR", "Thread",
                                                                  "URI",  "Named", "SubmitForm"};
// That parts 2 and 3 have beside those.
inline constexpr std::string_view kLaterAction = "GoToE";
// What a named action may do.
inline constexpr std::array<std::string_view, 4> kPageActions = {"NextPage", "PrevPage",
                                                                 "FirstPage", "LastPage"};

// ISO 32000-1, 8.6.5.8.
inline constexpr std::array<std::string_view, 4> kIntents = {
    "RelativeColorimetric", "AbsoluteColorimetric", "Perceptual", "Saturation"};
// ISO 32000-1, 11.3.5.
inline constexpr std::array<std::string_view, 17> kBlendModes = {
    "Normal",    "Compatible", "Multiply",   "Screen",    "Overlay",   "Darken",
    "Lighten",   "ColorDodge", "ColorBurn",  "HardLight", "SoftLight", "Difference",
    "Exclusion", "Hue",        "Saturation", "Color",     "Luminosity"};

// Annotations of all parts (ISO 19005-1, 6.5.2; -2 and -3, 6.3.1).
inline constexpr std::array<std::string_view, 16> kPlainAnnotations = {
    "Text",     "Link",      "FreeText", "Line", "Square", "Circle", "Highlight",   "Underline",
    "Squiggly", "StrikeOut", "Stamp",    "Ink",  "Popup",  "Widget", "PrinterMark", "TrapNet"};
// That parts 2 and 3 have beside those.
inline constexpr std::array<std::string_view, 6> kLaterAnnotations = {
    "Polygon", "PolyLine", "Caret", "FileAttachment", "Watermark", "Redact"};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_VOCABULARY_NAMES_H_
