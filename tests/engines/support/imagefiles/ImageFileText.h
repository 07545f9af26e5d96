// An image file in words: what it says of its pictures, and what goes into a document.
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILETEXT_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILETEXT_H_

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "engines/support/imagefiles/OpenedImage.h"
#include "support/ByteText.h"

namespace TarnixTools::testing {

inline std::string FrameText(const engines::ImageFrame& frame) {
  char dpi[64];
  std::snprintf(dpi, sizeof dpi, " at %.6g x %.6g", frame.dpi_x, frame.dpi_y);
  return std::to_string(frame.width) + " x " + std::to_string(frame.height) +
         (frame.dpi_x != 0 || frame.dpi_y != 0 ? dpi : "") +
         (frame.orientation != 1 ? " turned " + std::to_string(frame.orientation) : "");
}

inline std::string StreamText(const OpenedImage& opened, const engines::ImageStream& stream) {
  static constexpr std::array kSpaces = {"none", "gray", "rgb", "cmyk", "lab", "indexed"};
  std::string text = std::to_string(stream.width) + " x " + std::to_string(stream.height) + " x " +
                     std::to_string(stream.bits) + " " +
                     kSpaces[static_cast<std::size_t>(stream.space)] + " " + stream.filter +
                     stream.parameters;
  const auto add = [&](const char* name, const std::string& value) {
    text += value.empty() ? "" : std::string(" ") + name + " " + value;
  };
  add("palette", ShortBytes(stream.palette));
  add("profile", ShortBytes(stream.profile));
  add("decode", stream.decode);
  add("key", stream.color_key);
  add("with", stream.entries);
  bool is_held = true;
  for (const engines::DataPiece& piece : stream.data) {
    is_held = piece.held.data != nullptr;
    text +=
        is_held ? " held" : " " + std::to_string(piece.length) + "@" + std::to_string(piece.offset);
  }
  const std::string data = opened.DataOf(stream);
  if (!is_held) {
    return text;
  }
  if (stream.filter != "FlateDecode") {
    return text + " = " + ShortBytes(data);
  }
  const bool is_filtered = stream.parameters.find("Predictor") != std::string::npos;
  return text + " = " +
         ShortBytes(is_filtered
                        ? opened.SamplesOf(stream)
                        : pdf::TryDecode({{pdf::FilterKind::kFlate, {}}}, data, 1 << 20).data);
}

// A line: each picture with its image, or why there is none. Data of the file that becomes an image's is
// told by its place, other data by what it is when it is decoded.
inline std::string ImageFileText(const std::string& bytes) {
  std::string text;
  try {
    OpenedImage opened(bytes);
    for (std::size_t i = 0; i < opened.file().frame_count(); ++i) {
      text += (i == 0 ? "" : "; ") + FrameText(opened.frame(i));
      const engines::EncodedImage image = opened.Embed(i);
      text += ": " + StreamText(opened, image.image);
      text += image.soft_mask ? ", mask " + StreamText(opened, *image.soft_mask) : "";
    }
    return text + (opened.file().is_cut() ? ", cut" : "");
  } catch (const engines::ImageError& error) {
    return text + "! " + std::to_string(static_cast<int>(error.code())) + " " + error.what();
  } catch (const pdf::Error& error) {
    return text + "! " + error.what();
  }
}

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILETEXT_H_
