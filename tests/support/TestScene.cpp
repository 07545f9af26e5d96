#include "support/TestScene.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace TarnixTools::testing {
namespace {

constexpr int kCell = 32;  // pixels of a letter's side
constexpr int kStroke = 8;

std::uint32_t Mixed(int x, int y) {
  std::uint32_t hash = static_cast<std::uint32_t>(x) * 0x9E3779B1U;
  hash ^= static_cast<std::uint32_t>(y) * 0x85EBCA77U;
  hash ^= hash >> 15U;
  hash *= 0xC2B2AE3DU;
  return hash ^ hash >> 13U;
}

// What cameras add: up to three of 255 up or down.
double NoiseAt(int x, int y) {
  return (static_cast<double>(Mixed(x, y) % 7) - 3) / 255;
}

}  // namespace

// Lines of letters in the upper third, each of some of the strokes that make an E or an H.
bool IsSceneStroke(int x, int y) {
  const int line = y / kCell;
  if (line < 2 || line > 6 || line % 2 != 0) {
    return false;
  }
  const std::uint32_t letter = Mixed(x / kCell, line);
  const int in_x = x % kCell;
  const int in_y = y % kCell;
  const bool is_upright = in_x < kStroke && (letter & 1U) != 0;
  const bool is_top = in_y < kStroke && in_x < 24 && (letter & 2U) != 0;
  const bool is_middle = in_y >= 12 && in_y < 12 + kStroke && in_x < 24 && (letter & 4U) != 0;
  return is_upright || is_top || is_middle;
}

std::array<double, 3> SceneColor(int x, int y) {
  if (IsSceneStroke(x, y)) {
    return {0.05, 0.05, 0.1};
  }
  const double noise = NoiseAt(x, y);
  return {std::clamp(0.55 + 0.35 * std::sin(x / 90.0) * std::cos(y / 120.0) + noise, 0.0, 1.0),
          std::clamp(0.5 + 0.4 * std::sin((x + y) / 110.0) + noise, 0.0, 1.0),
          std::clamp(0.5 + 0.4 * std::cos(y / 75.0 - x / 200.0) + noise, 0.0, 1.0)};
}

std::string PackedSamples(const SceneSize& size, int components, int bits,
                          const std::function<double(int x, int y, int component)>& sample) {
  const double most = std::pow(2.0, bits) - 1;
  std::string data;
  for (int y = 0; y < size.height; ++y) {
    std::uint32_t pending = 0;
    int pending_bits = 0;
    for (int i = 0; i < size.width * components; ++i) {
      const double value = sample(i / components, y, i % components);
      pending = pending << static_cast<unsigned>(bits) |
                static_cast<std::uint32_t>(std::lround(value * most));
      pending_bits += bits;
      for (; pending_bits >= 8; pending_bits -= 8) {
        data += static_cast<char>(pending >> static_cast<unsigned>(pending_bits - 8));
      }
    }
    if (pending_bits > 0) {
      data += static_cast<char>(pending << static_cast<unsigned>(8 - pending_bits));
    }
  }
  return data;
}

std::string SceneSamples(const SceneSize& size, int components, int bits) {
  return PackedSamples(size, components, bits, [&](int x, int y, int component) {
    const std::array<double, 3> rgb = SceneColor(x, y);
    if (components == 1) {
      return 0.3 * rgb[0] + 0.59 * rgb[1] + 0.11 * rgb[2];
    }
    if (components == 3) {
      return rgb.at(static_cast<std::size_t>(component));
    }
    if (component == 3) {
      return IsSceneStroke(x, y) ? 0.8 : 0.1;
    }
    return 0.9 * (1 - rgb.at(static_cast<std::size_t>(component % 3)));
  });
}

std::string SceneStrokes(const SceneSize& size) {
  return PackedSamples(size, 1, 1,
                       [](int x, int y, int) { return IsSceneStroke(x, y) ? 0.0 : 1.0; });
}

// Lines of letters, each of an upright and some of two bars, or of an upright alone.
ScanInk ScanInkAt(int x, int y) {
  constexpr int kLine = 30;
  constexpr int kLetter = 18;
  constexpr int kBar = 4;
  const int in_x = x % kLetter - 3;
  const int in_y = y % kLine - 5;
  if (x < 2 * kLetter || in_x < 0 || in_x >= 12 || in_y < 0 || in_y >= 20) {
    return ScanInk::kNone;
  }
  const std::uint32_t letter = Mixed(x / kLetter, y / kLine);
  const bool is_ink = in_x < kBar || (in_y < kBar && (letter & 1U) != 0) ||
                      (in_y >= 8 && in_y < 8 + kBar && (letter & 2U) != 0);
  return !is_ink ? ScanInk::kNone : y / kLine % 4 == 3 ? ScanInk::kRed : ScanInk::kBlack;
}

std::array<double, 3> ScanColor(int x, int y) {
  const double noise = NoiseAt(x, y);
  switch (ScanInkAt(x, y)) {
    case ScanInk::kBlack:
      return {0.14 + noise, 0.13 + noise, 0.15 + noise};
    case ScanInk::kRed:
      return {0.75 + noise, 0.1 + noise, 0.12 + noise};
    default: {
      const double light = 0.95 - x / 9000.0 + noise;
      return {light, light * 0.98, light * 0.95};
    }
  }
}

std::string ScanSamples(const SceneSize& size, int components) {
  return PackedSamples(size, components, 8, [&](int x, int y, int component) {
    const std::array<double, 3> rgb = ScanColor(x, y);
    return components == 1 ? 0.3 * rgb[0] + 0.59 * rgb[1] + 0.11 * rgb[2]
                           : rgb.at(static_cast<std::size_t>(component));
  });
}

}  // namespace TarnixTools::testing
