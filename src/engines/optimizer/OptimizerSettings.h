// What the optimizer is told to do, and the profiles: whole sets of settings by one number.
//
//   OptimizerSettings settings = *ProfileSettings(kImageProfile);
//   settings.resolution_dpi = 150;
#ifndef TARNIX_ENGINES_OPTIMIZER_OPTIMIZERSETTINGS_H_
#define TARNIX_ENGINES_OPTIMIZER_OPTIMIZERSETTINGS_H_

#include <cstdint>
#include <optional>

namespace TarnixTools::engines::optimizer {

enum class ColorConversion : std::int32_t {
  kNone = 0,
  kRgb = 1,  // CMYK images of documents without a CMYK output intent become RGB
};

// Lossy codecs that may be used, and JBIG2, as sets of bits. Flate, fax and "as it was" always may.
// Bits that are not named here add nothing.
inline constexpr std::uint32_t kBitonalJbig2 = 0x80;
inline constexpr std::uint32_t kContinuousJpeg = 0x2;

// What is taken out of a document, as a set of bits. Bits that are not named here take out nothing.
enum StripBits : std::uint32_t {
  kStripThreads = 0x1,            // article threads and beads
  kStripMetadata = 0x2,           // metadata of components; the document's own stays
  kStripPrivateData = 0x4,        // /PieceInfo and its like
  kStripStructure = 0x8,          // the structure tree; /ActualText in content stays
  kStripThumbnails = 0x10,        // pictures of pages
  kStripWebCapture = 0x20,        // /SpiderInfo and the content database of web capture
  kStripAlternates = 0x40,        // alternate images
  kStripAuthoringOutput = 0x400,  // such as embedded print settings
};

struct OptimizerSettings {
  ColorConversion color_conversion = ColorConversion::kNone;
  std::uint32_t bitonal_codecs = 0;
  std::uint32_t continuous_codecs = 0;
  int image_quality = 75;     // of lossy codecs, 1 to 100
  float resolution_dpi = 0;   // continuous images are resampled to this, never below; 0: to none
  float threshold_dpi = 0;    // those that are placed above this; 0: none
  bool clips_images = false;  // parts of images that no page shows are dropped
  bool optimizes_resources = false;        // resources that nothing uses are dropped
  bool removes_redundant_objects = false;  // equal objects become one
  bool removes_standard_fonts = false;     // embedded programs of the standard fonts are dropped
  bool subsets_fonts = false;              // font programs keep the glyphs that are used
  bool drops_hints = false;                // of programs that are cut; no viewer needs them
  // Gray in RGB becomes gray, few colours a palette, scanned text ink over a background.
  bool reduces_color_complexity = false;
  std::uint32_t strip = 0;  // StripBits
};

inline constexpr std::int32_t kDefaultProfile = 0;
inline constexpr std::int32_t kImageProfile = 2;

// Nothing for a number that is no profile's.
std::optional<OptimizerSettings> ProfileSettings(std::int32_t profile);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_OPTIMIZERSETTINGS_H_
