// Bounds of the engines for PDF/A.
#ifndef TARNIX_ENGINES_PDFA_LIMITS_H_
#define TARNIX_ENGINES_PDFA_LIMITS_H_

#include <cstddef>

namespace TarnixTools::engines::pdfa::limits {

// Findings of one rule that are kept; those beyond are only counted.
inline constexpr std::size_t kMaxFindingsOfRule = 100;
// Bytes of the name of what a finding is about.
inline constexpr std::size_t kMaxSubjectBytes = 200;
// Documents embedded in each other that are validated, and bytes of one.
inline constexpr int kMaxEmbeddedDepth = 2;
inline constexpr std::size_t kMaxEmbeddedFile = std::size_t{256} << 20;
// Bytes of a colour profile.
inline constexpr std::size_t kMaxProfileBytes = std::size_t{64} << 20;
// Colour spaces that are looked at where one is used: those within it.
inline constexpr std::size_t kMaxNestedSpaces = 1000;
// Spot colours whose definitions are compared; how deep references are followed in one, and how
// many of its bytes count.
inline constexpr std::size_t kMaxSpotColors = 10'000;
inline constexpr int kMaxDefinitionDepth = 8;
inline constexpr std::size_t kMaxDefinitionBytes = std::size_t{1} << 20;
// Bytes of JPEG 2000 data whose header is read.
inline constexpr std::size_t kMaxJpxBytes = std::size_t{256} << 20;
// Bytes of an embedded font program, and of a CMap or a set of glyphs that belongs to a font.
inline constexpr std::size_t kMaxProgramBytes = std::size_t{64} << 20;
inline constexpr std::size_t kMaxFontMapBytes = std::size_t{16} << 20;
// Fonts that are checked, those written in place that are told apart, ranges of the maps of all of
// them, and codes that are shown in one.
inline constexpr std::size_t kMaxShownFonts = 200'000;
inline constexpr std::size_t kMaxKeptRanges = 2'000'000;
inline constexpr std::size_t kMaxFontsInPlace = 1000;
inline constexpr std::size_t kMaxShownCodes = 70'000;
// Colours that are remembered of one content while it runs.
inline constexpr std::size_t kMaxUsedColors = 1000;
// Structure elements that marked content belongs to, and those around one.
inline constexpr std::size_t kMaxStructureParents = 20'000'000;
inline constexpr std::size_t kMaxElementDepth = 1000;
// Numbers that are read and written to draw annotations that have no appearance.
inline constexpr std::size_t kMaxDrawnNumbers = 10'000'000;
// Characters that are written for annotations that have no appearance.
inline constexpr std::size_t kMaxDrawnCharacters = 2'000'000;
// Annotations of a page that become pictures, each of which is drawn by itself.
inline constexpr std::size_t kMaxPicturedAnnotations = 64;
// When tags are made: parts of a page that are marked, or marks that are taken out of it; and of a
// document these together with the elements, all of which are held until it is written.
inline constexpr std::size_t kMaxMarkedParts = 200'000;
inline constexpr std::size_t kMaxTaggedParts = 2'000'000;
// Bytes of objects that are made of what a document has in place, and of the entries that refer to
// them, all of which are held until they are written.
inline constexpr std::size_t kMaxLiftedBytes = std::size_t{256} << 20;
// Types of structure elements that a role map is given.
inline constexpr std::size_t kMaxMadeRoles = 1000;

}  // namespace TarnixTools::engines::pdfa::limits

#endif  // TARNIX_ENGINES_PDFA_LIMITS_H_
