#include "engines/toolbox/content/TargetImages.h"

#include <algorithm>

#include <nettle/sha2.h>

#include "pdf/Error.h"

namespace TarnixTools::engines::toolbox {

namespace {

constexpr std::uint64_t kSmallFile = std::uint64_t{1} << 20;
constexpr std::size_t kMaxKept = std::size_t{8} << 20;
constexpr std::size_t kBlock = std::size_t{256} << 10;

std::string ReadWhole(pdf::ByteSource& file) {
  std::string bytes(static_cast<std::size_t>(file.Size()), '\0');
  std::size_t done = 0;
  while (done < bytes.size()) {
    const std::size_t count = file.ReadAt(done, bytes.data() + done, bytes.size() - done);
    if (count == 0) {
      throw pdf::Error(pdf::ErrorCode::kSourceChanged, "the image file became shorter");
    }
    done += count;
  }
  return bytes;
}

std::string DigestOf(pdf::ByteSource& file) {
  sha256_ctx state;
  sha256_init(&state);
  const auto block = std::make_unique_for_overwrite<char[]>(kBlock);
  for (std::uint64_t done = 0; done < file.Size();) {
    const std::size_t count = file.ReadAt(done, block.get(), kBlock);
    if (count == 0) {
      throw pdf::Error(pdf::ErrorCode::kSourceChanged, "the image file became shorter");
    }
    sha256_update(&state, count, reinterpret_cast<const std::uint8_t*>(block.get()));
    done += count;
  }
  std::string digest(SHA256_DIGEST_SIZE, '\0');
  sha256_digest(&state, digest.size(), reinterpret_cast<std::uint8_t*>(digest.data()));
  return digest;
}

pdf::Matrix OrientationOf(const ImageFrame& frame) {
  const pdf::Matrix matrix = OrientationMatrix(frame.orientation);
  return {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f};
}

}  // namespace

// Small files are compared byte by byte, which is faster than digests: a picture may be asked for
// once for each page.
std::string TargetImages::IdentityOf(pdf::ByteSource& file) {
  if (file.Size() <= kSmallFile && kept_bytes_ < kMaxKept) {
    return "=" + ReadWhole(file);
  }
  return "#" + std::to_string(file.Size()) + ":" + DigestOf(file);
}

std::shared_ptr<StoredImage> TargetImages::Open(pdf::ByteSource& file) {
  std::string identity = IdentityOf(file);
  if (const auto known = by_identity_.find(identity); known != by_identity_.end()) {
    return known->second;
  }
  auto image = std::make_shared<StoredImage>();
  const std::unique_ptr<ImageFile> opened = ImageFile::Open(file);
  const ImageFrame& frame = opened->frame(0);
  image->width = frame.width;
  image->height = frame.height;
  if (SwapsSides(frame.orientation)) {
    std::swap(image->width, image->height);
  }
  image->orientation = OrientationOf(frame);
  image->picture = opened->Embed(0);
  kept_bytes_ += identity.size();
  by_identity_.emplace(std::move(identity), image);
  return image;
}

AddedResource TargetImages::ResourceOf(StoredImage& image, pdf::ByteSource& file) {
  if (!image.resource) {
    const std::uint32_t number = images_.Write(*image.picture, file);
    image.picture.reset();
    image.resource = {pdf::ResourceCategory::kXObject, "I" + std::to_string(written_), number};
    ++written_;
  }
  return *image.resource;
}

}  // namespace TarnixTools::engines::toolbox
