#include "engines/support/pixels/IccTransform.h"

#include <lcms2.h>

#include "engines/support/DynamicLibrary.h"

namespace TarnixTools::engines {
namespace {

// Little CMS, loaded when the first profile is met.
struct Lcms {
  Lcms() {
    const DynamicLibrary library({"liblcms2.so.2"});
    is_complete = library.Resolve("cmsOpenProfileFromMem", open_profile) &&
                  library.Resolve("cmsCreate_sRGBProfile", create_srgb) &&
                  library.Resolve("cmsCloseProfile", close_profile) &&
                  library.Resolve("cmsGetColorSpace", color_space) &&
                  library.Resolve("cmsCreateTransform", create_transform) &&
                  library.Resolve("cmsDeleteTransform", delete_transform) &&
                  library.Resolve("cmsDoTransform", do_transform);
  }

  static const Lcms& Get() {
    static const Lcms lcms;
    return lcms;
  }

  decltype(&cmsOpenProfileFromMem) open_profile = nullptr;
  decltype(&cmsCreate_sRGBProfile) create_srgb = nullptr;
  decltype(&cmsCloseProfile) close_profile = nullptr;
  decltype(&cmsGetColorSpace) color_space = nullptr;
  decltype(&cmsCreateTransform) create_transform = nullptr;
  decltype(&cmsDeleteTransform) delete_transform = nullptr;
  decltype(&cmsDoTransform) do_transform = nullptr;
  bool is_complete = false;
};

struct ProfileCloser {
  void operator()(void* profile) const { Lcms::Get().close_profile(profile); }
};

using ProfilePtr = std::unique_ptr<void, ProfileCloser>;

}  // namespace

std::shared_ptr<const IccTransform> IccTransform::Make(std::string_view profile, int components) {
  const Lcms& lcms = Lcms::Get();
  if (!lcms.is_complete) {
    return nullptr;
  }
  const ProfilePtr source(
      lcms.open_profile(profile.data(), static_cast<cmsUInt32Number>(profile.size())));
  const ProfilePtr target(lcms.create_srgb());
  const cmsColorSpaceSignature wanted = components == 3 ? cmsSigRgbData : cmsSigCmykData;
  if (source == nullptr || target == nullptr || lcms.color_space(source.get()) != wanted) {
    return nullptr;
  }
  void* transform = lcms.create_transform(source.get(), components == 3 ? TYPE_RGB_8 : TYPE_CMYK_8,
                                          target.get(), TYPE_RGB_8, INTENT_RELATIVE_COLORIMETRIC,
                                          cmsFLAGS_BLACKPOINTCOMPENSATION);
  return transform != nullptr ? std::shared_ptr<const IccTransform>(new IccTransform(transform))
                              : nullptr;
}

bool IccTransform::IsSrgb(std::string_view profile) {
  constexpr std::string_view kWide("s\0R\0G\0B\0 \0I\0E\0C", 15);
  return profile.find("sRGB IEC61966") != std::string_view::npos ||
         profile.find(kWide) != std::string_view::npos;
}

IccTransform::~IccTransform() {
  // There are none unless the library is complete.
  // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage)
  Lcms::Get().delete_transform(transform_);
}

void IccTransform::Convert(const std::uint8_t* components, std::uint8_t* rgb,
                           std::size_t pixel_count) const {
  // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage)
  Lcms::Get().do_transform(transform_, components, rgb, static_cast<cmsUInt32Number>(pixel_count));
}

}  // namespace TarnixTools::engines
