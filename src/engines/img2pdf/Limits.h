// Bounds of the engine that makes documents of images.
#ifndef TARNIX_ENGINES_IMG2PDF_LIMITS_H_
#define TARNIX_ENGINES_IMG2PDF_LIMITS_H_

namespace TarnixTools::engines::img2pdf::limits {

// Width of a page's border, in points.
inline constexpr float kMaxBorder = 1e6F;

}  // namespace TarnixTools::engines::img2pdf::limits

#endif  // TARNIX_ENGINES_IMG2PDF_LIMITS_H_
