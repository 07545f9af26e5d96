// Pictures in memory, for tests of what is done to them.
#ifndef TARNIX_TESTS_ENGINES_OPTIMIZER_IMAGES_SCENEPICTURE_H_
#define TARNIX_TESTS_ENGINES_OPTIMIZER_IMAGES_SCENEPICTURE_H_

#include <cstdint>
#include <functional>

#include "engines/optimizer/images/SamplePicture.h"
#include "support/TestScene.h"

namespace TarnixTools::engines::optimizer {

inline SamplePicture PictureOf(int width, int height, int components,
                               const std::function<double(int x, int y, int component)>& sample) {
  const std::string samples = testing::PackedSamples({width, height}, components, 8, sample);
  SamplePicture picture;
  picture.width = static_cast<std::uint32_t>(width);
  picture.height = static_cast<std::uint32_t>(height);
  picture.components = components;
  picture.samples.assign(samples.begin(), samples.end());
  return picture;
}

inline SamplePicture ScenePicture(int components, const testing::SceneSize& size = {}) {
  const std::string samples = testing::SceneSamples(size, components, 8);
  SamplePicture picture =
      PictureOf(size.width, size.height, components, [](int, int, int) { return 0.0; });
  picture.samples.assign(samples.begin(), samples.end());
  return picture;
}

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_TESTS_ENGINES_OPTIMIZER_IMAGES_SCENEPICTURE_H_
