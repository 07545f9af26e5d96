#include "engines/support/imagefiles/JpegFile.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "engines/support/codecs/JpegTranscoder.h"
#include "engines/support/imagefiles/ImageFileLimits.h"
#include "engines/support/pictures/IccProfile.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines {

namespace {

// Whether a document can hold such a picture.
bool IsKnown(const JpegHeader& header) {
  return header.coding != JpegCoding::kOther && header.bits == 8 &&
         (header.components == 1 || header.components == 3 || header.components == 4);
}

bool IsNamedRgb(const JpegHeader& header) {
  const auto& component = header.component;
  return header.components == 3 && component[0].id == 'R' && component[1].id == 'G' &&
         component[2].id == 'B';
}

}  // namespace

bool JpegFile::Recognises(ByteReader& reader) {
  return reader.View(0, 3) == "\xFF\xD8\xFF";
}

JpegFile::JpegFile(pdf::ByteSource& source) : reader_(source) {
  std::optional<JpegHeader> header = ReadJpegHeader(reader_);
  if (header && !IsKnown(*header)) {
    throw ImageError(ImageErrorCode::kUnsupported, "a kind of JPEG that PDF does not have");
  }
  if (!header || header->scan_start == 0) {
    throw ImageError(ImageErrorCode::kDamaged, "the JPEG data ends before the picture starts");
  }
  header_ = *std::move(header);
  AddFrame({.width = header_.width,
            .height = header_.height,
            .dpi_x = header_.jfif_dpi_x > 0 ? header_.jfif_dpi_x : header_.exif.dpi_x,
            .dpi_y = header_.jfif_dpi_y > 0 ? header_.jfif_dpi_y : header_.exif.dpi_y,
            .orientation = header_.exif.orientation});
}

std::string JpegFile::Profile() {
  std::vector<JpegProfilePart>& parts = header_.profile_parts;
  std::stable_sort(
      parts.begin(), parts.end(),
      [](const JpegProfilePart& a, const JpegProfilePart& b) { return a.number < b.number; });
  std::string profile;
  for (const JpegProfilePart& part : parts) {
    if (profile.size() + part.length > limits::kMaxProfileBytes) {
      return {};
    }
    profile += reader_.Read(part.offset, part.length);
  }
  return UsableProfile(profile, header_.components);
}

EncodedImage JpegFile::Embed(std::size_t) {
  EncodedImage result;
  ImageStream& image = result.image;
  image.width = header_.width;
  image.height = header_.height;
  image.space = header_.components == 1   ? PictureSpace::kGray
                : header_.components == 3 ? PictureSpace::kRgb
                                          : PictureSpace::kCmyk;
  image.filter = "DCTDecode";
  image.profile = Profile();
  const bool has_adobe = header_.adobe_transform >= 0;
  if (header_.components == 4 && has_adobe) {
    image.decode = "1 0 1 0 1 0 1 0";  // programs that write this marker store the complement
  }
  if (IsNamedRgb(header_) && !header_.has_jfif && !has_adobe) {
    image.parameters = "/ColorTransform 0";
  }
  image.data = header_.coding == JpegCoding::kArithmetic ? RecodedData() : Data();
  return result;
}

std::vector<DataPiece> JpegFile::RecodedData() {
  if (reader_.size() > limits::kMaxHeldFileBytes) {
    throw ImageError(ImageErrorCode::kLimit, "the JPEG file is too large to be coded anew");
  }
  const std::optional<RecodedJpeg> recoded =
      CodeByHuffman(reader_.Read(0, static_cast<std::size_t>(reader_.size())));
  if (!recoded) {
    throw ImageError(ImageErrorCode::kUnsupported, "a kind of JPEG that PDF does not have");
  }
  if (!recoded->is_whole) {
    NoteCut();
  }
  std::vector<DataPiece> pieces;
  pieces.push_back(Hold(recoded->data));
  return pieces;
}

// Of a file without the mark of its end: some programs leave out nothing else.
void JpegFile::NoteWhatIsMissing() {
  if (reader_.size() > limits::kMaxHeldFileBytes ||
      !IsWholeJpeg(reader_.Read(0, static_cast<std::size_t>(reader_.size())).append(kJpegEnd))) {
    NoteCut();
  }
}

// The file, but for what follows the end of the picture. Data that was cut gets the end it lacks.
std::vector<DataPiece> JpegFile::Data() {
  std::vector<DataPiece> pieces;
  const std::uint64_t size = reader_.size();
  const bool ends_well = size >= 4 && reader_.View(size - 2, 2) == kJpegEnd;
  const std::uint64_t end =
      ends_well && !header_.has_more_pictures ? size : FindJpegEnd(reader_, header_.scan_start);
  if (end != 0) {
    pieces.push_back({0, end, {}});
  } else {
    NoteWhatIsMissing();
    pieces.push_back({0, size, {}});
    pieces.push_back(Hold(kJpegEnd));
  }
  return pieces;
}

}  // namespace TarnixTools::engines
