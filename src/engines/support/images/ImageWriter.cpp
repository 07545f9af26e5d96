#include "engines/support/images/ImageWriter.h"

#include <algorithm>
#include <span>

#include "pdf/Error.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kBlock = std::size_t{256} << 10;
constexpr int kProfileLevel = 9;

int ComponentsOf(PictureSpace space) {
  switch (space) {
    case PictureSpace::kGray:
      return 1;
    case PictureSpace::kCmyk:
      return 4;
    default:
      return 3;
  }
}

const char* DeviceSpace(PictureSpace space) {
  switch (space) {
    case PictureSpace::kGray:
      return "/DeviceGray";
    case PictureSpace::kCmyk:
      return "/DeviceCMYK";
    case PictureSpace::kLab:
      return "[/Lab<</WhitePoint[.9642 1 .8249]/Range[-128 127 -128 127]>>]";
    default:
      return "/DeviceRGB";
  }
}

void AppendEntry(std::string& text, const char* key, std::int64_t value) {
  text += key;
  pdf::AppendInteger(text, value);
}

void AppendReferenceEntry(std::string& text, const char* key, std::uint32_t number) {
  text += key;
  pdf::AppendReference(text, number);
}

[[noreturn]] void ThrowShorter() {
  throw pdf::Error(pdf::ErrorCode::kSourceChanged, "the image file has become shorter");
}

void AppendArray(std::string& text, const char* key, const std::string& numbers) {
  if (!numbers.empty()) {
    text += key;
    text += '[' + numbers + ']';
  }
}

}  // namespace

DataPiece Hold(std::string_view bytes) {
  DataPiece piece;
  piece.held = HoldCopy(bytes);
  return piece;
}

std::uint32_t ImageWriter::Write(const EncodedImage& image, pdf::ByteSource& source) {
  block_size_ = 0;
  const std::uint32_t mask = image.soft_mask ? WriteStream(*image.soft_mask, 0, source) : 0;
  return WriteStream(image.image, mask, source);
}

// The dictionary up to its end.
std::string ImageWriter::DictionaryText(const ImageStream& stream, std::uint32_t soft_mask) {
  std::string text = "<</Type/XObject/Subtype/Image";
  AppendEntry(text, "/Width", stream.width);
  AppendEntry(text, "/Height", stream.height);
  if (stream.bits != 0) {
    AppendEntry(text, "/BitsPerComponent", stream.bits);
  }
  if (stream.space != PictureSpace::kNone) {
    text += "/ColorSpace" + ColorSpaceText(stream);
  }
  if (!stream.filter.empty()) {
    text += "/Filter/" + stream.filter;
  }
  if (!stream.parameters.empty()) {
    text += "/DecodeParms<<" + stream.parameters + ">>";
  }
  AppendArray(text, "/Decode", stream.decode);
  AppendArray(text, "/Mask", stream.color_key);
  if (soft_mask != 0) {
    AppendReferenceEntry(text, "/SMask", soft_mask);
  }
  return text + stream.entries;
}

std::uint32_t ImageWriter::WriteStream(const ImageStream& stream, std::uint32_t soft_mask,
                                       pdf::ByteSource& source) {
  const std::string text = DictionaryText(stream, soft_mask);
  std::uint64_t length = 0;
  for (const DataPiece& piece : stream.data) {
    length += piece.size();
  }
  const std::uint32_t number = writer_->Reserve();
  writer_->BeginStream(number, text, length);
  for (const DataPiece& piece : stream.data) {
    CopyPiece(piece, source);
  }
  writer_->EndStream();
  return number;
}

// A name, or a reference to an array; strings of palettes are better off outside of the stream's
// dictionary, where they are compressed.
std::string ImageWriter::ColorSpaceText(const ImageStream& stream) {
  const bool is_indexed = stream.space == PictureSpace::kIndexed;
  std::string base = DeviceSpace(stream.space);
  if (!stream.profile.empty()) {
    const std::uint32_t profile = WriteProfile(stream.profile, ComponentsOf(stream.space));
    base = "[/ICCBased";
    pdf::AppendReference(base, profile);
    base += ']';
  }
  if (!is_indexed) {
    return base;
  }
  std::string text = "[/Indexed" + base;
  pdf::AppendInteger(text, static_cast<std::int64_t>(stream.palette.size() / 3) - 1);
  pdf::AppendString(text, stream.palette, false);
  const std::uint32_t number = writer_->Reserve();
  writer_->WriteObject(number, text + "]");
  std::string reference;
  pdf::AppendReference(reference, number);
  return ' ' + reference;
}

std::uint32_t ImageWriter::WriteProfile(const std::string& profile, int components) {
  const auto [place, is_new] = profiles_.try_emplace(profile, 0);
  if (!is_new) {
    return place->second;
  }
  std::string data;
  pdf::DeflateTo(data, profile, kProfileLevel);
  std::string text = "<<";
  AppendEntry(text, "/N", components);
  text += "/Filter/FlateDecode";
  const std::uint32_t number = writer_->Reserve();
  writer_->BeginStream(number, text, data.size());
  writer_->AppendStream(data);
  writer_->EndStream();
  place->second = number;
  return number;
}

void ImageWriter::CopyPiece(const DataPiece& piece, pdf::ByteSource& source) {
  if (piece.held.data != nullptr) {
    writer_->AppendStream(piece.held.view());
  } else if (piece.length >= kBlock && writer_->StoresPlainStreams()) {
    CopyLarge(piece, source);
  } else {
    CopySmall(piece, source);
  }
}

void ImageWriter::CopyLarge(const DataPiece& piece, pdf::ByteSource& source) {
  for (std::uint64_t done = 0; done < piece.length;) {
    const std::span<char> room = writer_->StreamRoom();
    const std::size_t count = source.ReadAt(
        piece.offset + done, room.data(),
        static_cast<std::size_t>(std::min<std::uint64_t>(room.size(), piece.length - done)));
    if (count == 0) {
      ThrowShorter();
    }
    writer_->CommitStream(count);
    done += count;
  }
}

// Small pieces are close to each other: one read serves many of them.
void ImageWriter::CopySmall(const DataPiece& piece, pdf::ByteSource& source) {
  if (block_ == nullptr) {
    block_ = std::make_unique_for_overwrite<char[]>(kBlock);
  }
  std::uint64_t offset = piece.offset;
  std::uint64_t left = piece.length;
  while (left > 0) {
    if (offset < block_start_ || offset >= block_start_ + block_size_) {
      block_size_ = 0;
      block_size_ = source.ReadAt(offset, block_.get(), kBlock);
      block_start_ = offset;
      if (block_size_ == 0) {
        ThrowShorter();
      }
    }
    const auto start = static_cast<std::size_t>(offset - block_start_);
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(left, block_size_ - start));
    writer_->AppendStream({block_.get() + start, count});
    offset += count;
    left -= count;
  }
}

}  // namespace TarnixTools::engines
