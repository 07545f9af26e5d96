// Colours of an ICC profile as sRGB.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_ICCTRANSFORM_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_ICCTRANSFORM_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace TarnixTools::engines {

class IccTransform {
 public:
  // components: 3 or 4, of RGB or CMYK. Null for a profile that cannot be used, and where the
  // library that reads profiles is not installed. May be shared with others, threads too.
  static std::shared_ptr<const IccTransform> Make(std::string_view profile, int components);

  // Whether the profile says that it is sRGB, so that nothing needs to be computed.
  static bool IsSrgb(std::string_view profile);

  ~IccTransform();
  IccTransform(const IccTransform&) = delete;
  IccTransform& operator=(const IccTransform&) = delete;

  // Eight bits a component on both sides; `rgb` has room for three for each pixel.
  void Convert(const std::uint8_t* components, std::uint8_t* rgb, std::size_t pixel_count) const;

 private:
  static std::shared_ptr<const IccTransform> MakeAnew(std::string_view profile, int components);

  explicit IccTransform(void* transform) : transform_(transform) {}

  void* transform_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_ICCTRANSFORM_H_
