#include "engines/parser/ImageStore.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>
#include <vector>

#include "engines/parser/ExpaFailure.h"
#include "engines/parser/Limits.h"
#include "engines/parser/OriginalImage.h"
#include "engines/support/codecs/BilevelJpegWriter.h"
#include "engines/support/codecs/JpegWriter.h"
#include "engines/support/files/SavedFile.h"
#include "engines/support/images/Picture.h"
#include "engines/support/images/ReadyJpeg.h"
#include "engines/support/pictures/UprightPicture.h"
#include "foundation/Platform.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::parser {
namespace {

platform::OutputFile Create(const platform::WidePath& path) {
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(path);
  if (!output) {
    throw ExpaFailure(kExpaCreateError, errno);
  }
  return *std::move(output);
}

// A file under way, with a copy of what goes into it as long as that is short enough to be kept.
class StoredFile : public pdf::ByteSink {
 public:
  // most_kept: bytes.
  StoredFile(const platform::WidePath& path, std::size_t most_kept)
      : file_(Create(path)), most_kept_(most_kept) {}

  void Write(std::string_view bytes) override {
    file_.sink().Write(bytes);
    if (is_kept_ && copy_.size() + bytes.size() > most_kept_) {
      is_kept_ = false;
      copy_ = std::string();
    }
    if (is_kept_) {
      copy_ += bytes;
    }
  }

  void KeepNoCopy() { is_kept_ = false; }

  void Finish() { file_.Complete(); }

  // Null when it was too long.
  std::shared_ptr<const std::string> TakeCopy() {
    return is_kept_ ? std::make_shared<const std::string>(std::move(copy_)) : nullptr;
  }

 private:
  SavedFile file_;
  std::size_t most_kept_;
  bool is_kept_ = true;
  std::string copy_;
};

bool EncodeBilevel(RowSource& picture, pdf::ByteSink& sink) {
  BilevelJpegWriter writer(sink, picture.width(), picture.height());
  std::vector<std::uint8_t> row((picture.width() + 7) / 8);
  bool is_complete = true;
  for (std::uint32_t y = 0; y < picture.height(); ++y) {
    is_complete = picture.ReadBits(row.data()) && is_complete;
    writer.WriteRow(row.data());
  }
  writer.Finish();
  return is_complete;
}

// Whether all of it was there.
bool Encode(RowSource& picture, pdf::ByteSink& sink) {
  if (picture.is_bilevel()) {
    return EncodeBilevel(picture, sink);
  }
  JpegWriter writer(sink, {.width = picture.width(),
                           .height = picture.height(),
                           .layout = picture.layout(),
                           .quality = 100});
  constexpr std::size_t kRowsAtOnce = 16;
  const std::size_t stride = picture.row_bytes();
  std::vector<std::uint8_t> rows(stride * kRowsAtOnce);
  bool is_complete = true;
  for (std::uint32_t y = 0; y < picture.height();) {
    std::size_t count = 0;
    for (; count < kRowsAtOnce && y < picture.height(); ++count, ++y) {
      is_complete = picture.ReadRow(rows.data() + count * stride) && is_complete;
    }
    writer.WriteRows(rows.data(), stride, count);
  }
  writer.Finish();
  return is_complete;
}

}  // namespace

std::optional<PreparedImage> ImageStore::Prepare(const DocumentImage& image,
                                                 const ImageFacts& facts, int orientation) {
  PreparedImage prepared{.image = image, .facts = &facts, .orientation = orientation};
  if (!facts.has_default_space && Find(KeyOf(image, orientation)) != nullptr) {
    return prepared;
  }
  try {
    prepared.is_ready_jpeg = IsReadyJpeg(image, facts, orientation);
    if (prepared.is_ready_jpeg) {
      return prepared;
    }
    RowSourcePtr picture = OpenPicture(image, facts);
    if (picture == nullptr || picture->width() > kMaxJpegSide || picture->height() > kMaxJpegSide) {
      return std::nullopt;
    }
    prepared.picture = MakeUpright(std::move(picture), orientation);
    return prepared;
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    return std::nullopt;
  }
}

bool ImageStore::StoreOriginal(const DocumentImage& image, const ImageFacts& facts,
                               const platform::WidePath& path) {
  SavedFile file(Create(path));
  const bool is_complete = WriteOriginal(image, facts, file.sink());
  file.Complete();
  return is_complete;
}

ImageStore::Outcome ImageStore::Store(PreparedImage& prepared, const platform::WidePath& path) {
  const std::uint64_t key = KeyOf(prepared.image, prepared.orientation);
  StoredFile file(path, stored_.contains(key) ? limits::kMaxKeptImage : limits::kMaxKeptOnce);
  Outcome outcome = Outcome::kComplete;
  if (prepared.is_ready_jpeg) {
    file.KeepNoCopy();  // it is as easily read again
    CopyEncoded(prepared.image, file);
  } else if (prepared.picture != nullptr) {
    outcome = Encode(*prepared.picture, file) ? Outcome::kComplete : Outcome::kPartial;
    prepared.picture.reset();  // its rows are gone
  } else if (const Kept* kept = Find(key)) {
    file.KeepNoCopy();
    file.Write(*kept->bytes);
    outcome = kept->outcome;
  } else {
    throw ExpaFailure(kExpaArgumentError);
  }
  file.Finish();
  // Nobody can tell whether an inline image comes again.
  if (prepared.image.number != 0 && !prepared.facts->has_default_space) {
    Keep({key, outcome, file.TakeCopy()});
  }
  return outcome;
}

std::uint64_t ImageStore::KeyOf(const DocumentImage& image, int orientation) {
  return std::uint64_t{image.number} << 8U | static_cast<std::uint8_t>(orientation);
}

const ImageStore::Kept* ImageStore::Find(std::uint64_t key) {
  const auto found = stored_.find(key);
  if (found == stored_.end() || !found->second) {
    return nullptr;
  }
  kept_.splice(kept_.begin(), kept_, *found->second);
  return &kept_.front();
}

void ImageStore::Keep(Kept kept) {
  auto& place = stored_[kept.key];
  if (kept.bytes == nullptr || place) {
    return;
  }
  kept_bytes_ += kept.bytes->size();
  kept_.push_front(std::move(kept));
  place = kept_.begin();
  while (kept_bytes_ > limits::kMaxKeptImages) {
    kept_bytes_ -= kept_.back().bytes->size();
    stored_[kept_.back().key].reset();
    kept_.pop_back();
  }
}

}  // namespace TarnixTools::engines::parser
