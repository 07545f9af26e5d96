#include "engines/optimizer/images/InkImage.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "engines/optimizer/images/SamplePicture.h"
#include "engines/support/images/RasterEncoder.h"
#include "engines/support/pictures/Plane.h"

namespace TarnixTools::engines::optimizer {

namespace {

// The samples as they are, but for those of sixteen bits, which become eight.
std::optional<Plane> WholePlane(SampleRows& samples) {
  const SampleFormat& format = samples.format();
  Plane plane(format.width, format.height, format.components, std::min(format.bits, 8));
  for (std::uint32_t y = 0; y < format.height; ++y) {
    const std::span<const std::uint8_t> row = samples.ReadRow();
    if (row.size() != format.row_bytes()) {
      return std::nullopt;
    }
    if (format.bits > 8) {
      UnpackSamples(row.data(), format.bits, format.samples_in_row(), plane.row(y));
    } else {
      std::copy(row.begin(), row.end(), plane.row(y));
    }
  }
  return plane;
}

// A picture of gray for each ink.
std::optional<std::vector<SamplePicture>> ReadInks(SampleRows& samples) {
  const SampleFormat& format = samples.format();
  const auto inks = static_cast<std::size_t>(format.components);
  std::vector<SamplePicture> pictures(inks);
  for (SamplePicture& picture : pictures) {
    picture.width = format.width;
    picture.height = format.height;
    picture.samples.reserve(picture.pixels());
  }
  const unsigned most = (1U << static_cast<unsigned>(std::min(format.bits, 8))) - 1;
  std::vector<std::uint8_t> values(format.samples_in_row());
  for (std::uint32_t y = 0; y < format.height; ++y) {
    const std::span<const std::uint8_t> row = samples.ReadRow();
    if (row.size() != format.row_bytes()) {
      return std::nullopt;
    }
    UnpackSamples(row.data(), format.bits, values.size(), values.data());
    for (std::size_t i = 0; i < values.size(); ++i) {
      pictures[i % inks].samples.push_back(static_cast<std::uint8_t>(values[i] * 255 / most));
    }
  }
  return pictures;
}

Plane Joined(const std::vector<SamplePicture>& pictures) {
  const SamplePicture& first = pictures.front();
  Plane plane(first.width, first.height, static_cast<int>(pictures.size()), 8);
  for (std::uint32_t y = 0; y < first.height; ++y) {
    unsigned char* to = plane.row(y);
    for (std::uint32_t x = 0; x < first.width; ++x) {
      for (const SamplePicture& picture : pictures) {
        *to++ = picture.row(y)[x];
      }
    }
  }
  return plane;
}

std::optional<Plane> WantedPlane(InkTask& task) {
  const SampleFormat& format = task.samples->format();
  if (task.wanted.width >= format.width && task.wanted.height >= format.height) {
    return WholePlane(*task.samples);
  }
  std::optional<std::vector<SamplePicture>> pictures = ReadInks(*task.samples);
  if (!pictures) {
    return std::nullopt;
  }
  for (SamplePicture& picture : *pictures) {
    picture = Scaled(picture, std::min(task.wanted.width, format.width),
                     std::min(task.wanted.height, format.height));
  }
  return Joined(*pictures);
}

}  // namespace

std::optional<CodedPicture> CodeInks(InkTask& task) {
  std::optional<Plane> plane = WantedPlane(task);
  task.samples.reset();
  if (!plane) {
    return std::nullopt;
  }
  CodedPicture coded = CodePlane(*std::move(plane));
  if (coded.data.size() >= task.encoded_bytes) {
    return std::nullopt;
  }
  return coded;
}

}  // namespace TarnixTools::engines::optimizer
