#include "engines/support/pictures/IccTransform.h"

#include <algorithm>
#include <list>
#include <mutex>
#include <string>
#include <utility>

#include <lcms2.h>

#include "engines/support/files/DynamicLibrary.h"

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

// The transforms used last: a document has many images of few profiles, and a transform takes
// longer to make than a small image to convert.
class RecentTransforms {
 public:
  std::shared_ptr<const IccTransform> Find(std::string_view profile, int components) {
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
      return entry.components == components && entry.profile == profile;
    });
    if (found == entries_.end()) {
      return nullptr;
    }
    entries_.splice(entries_.begin(), entries_, found);
    return found->transform;
  }

  void Add(std::string_view profile, int components,
           std::shared_ptr<const IccTransform> transform) {
    if (profile.size() > kMaxKeptBytes) {
      return;
    }
    const std::lock_guard lock(mutex_);
    entries_.push_front({std::string(profile), components, std::move(transform)});
    if (entries_.size() > kMaxCount) {
      entries_.pop_back();
    }
  }

 private:
  static constexpr std::size_t kMaxCount = 4;
  static constexpr std::size_t kMaxKeptBytes = std::size_t{1} << 20;

  struct Entry {
    std::string profile;
    int components;
    std::shared_ptr<const IccTransform> transform;
  };

  std::mutex mutex_;
  std::list<Entry> entries_;  // last used first
};

RecentTransforms& Recent() {
  static RecentTransforms recent;
  return recent;
}

}  // namespace

std::shared_ptr<const IccTransform> IccTransform::Make(std::string_view profile, int components) {
  std::shared_ptr<const IccTransform> transform = Recent().Find(profile, components);
  if (transform == nullptr) {
    transform = MakeAnew(profile, components);
    if (transform != nullptr) {
      Recent().Add(profile, components, transform);
    }
  }
  return transform;
}

std::shared_ptr<const IccTransform> IccTransform::MakeAnew(std::string_view profile,
                                                           int components) {
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
