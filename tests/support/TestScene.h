// A picture with what pictures in documents have: smooth colours, as a photograph has, and sharp dark
// strokes, as text has. As samples of any number of components and bits.
//
//   const std::string rgb = SceneSamples(kScene, 3, 8);
//   const std::string inks = SceneSamples({600, 800}, 4, 8);
//   const std::string strokes = SceneStrokes(kScene);         // a bit a pixel
#ifndef TARNIX_TESTS_SUPPORT_TEST_SCENE_H_
#define TARNIX_TESTS_SUPPORT_TEST_SCENE_H_

#include <array>
#include <functional>
#include <string>

namespace TarnixTools::testing {

struct SceneSize {
  int width = 480;  // pixels
  int height = 640;
};

inline constexpr SceneSize kScene;

// Red, green and blue, 0 to 1.
std::array<double, 3> SceneColor(int x, int y);

bool IsSceneStroke(int x, int y);

// Rows of samples as images of documents have them, each from a byte of its own on.
//   sample - of a component of a pixel, 0 to 1
std::string PackedSamples(const SceneSize& size, int components, int bits,
                          const std::function<double(int x, int y, int component)>& sample);

// The scene in gray (1 component), RGB (3), CMYK (4), or any other number of inks.
std::string SceneSamples(const SceneSize& size, int components, int bits);

// The strokes alone, a bit a pixel: 0 is black.
std::string SceneStrokes(const SceneSize& size);

// A scanned page of text: letters in black, some lines of them in red, on uneven paper.
enum class ScanInk { kNone, kBlack, kRed };

ScanInk ScanInkAt(int x, int y);

// Red, green and blue, 0 to 1.
std::array<double, 3> ScanColor(int x, int y);

// The page in gray (1 component) or RGB (3), eight bits a component.
std::string ScanSamples(const SceneSize& size, int components);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TEST_SCENE_H_
