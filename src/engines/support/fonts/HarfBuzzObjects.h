// What HarfBuzz makes, each with its owner.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_HARFBUZZOBJECTS_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_HARFBUZZOBJECTS_H_

#include <iterator>
#include <memory>
#include <string_view>

#include "engines/support/fonts/FontLibraries.h"

namespace TarnixTools::engines::fonts {

constexpr hb_tag_t TagOf(const char (&tag)[5]) {
  return HB_TAG(tag[0], tag[1], tag[2], tag[3]);
}

// Bytes that HarfBuzz keeps.
class Blob {
 public:
  explicit Blob(hb_blob_t* blob) : blob_(blob) {}

  Blob(hb_face_t* face, const char (&tag)[5])
      : Blob(HarfBuzz::Get().hb_face_reference_table(face, TagOf(tag))) {}

  // Bytes that outlive this and all that is made of it.
  explicit Blob(std::string_view bytes)
      : Blob(HarfBuzz::Get().hb_blob_create(bytes.data(), static_cast<unsigned>(bytes.size()),
                                            HB_MEMORY_MODE_READONLY, nullptr, nullptr)) {}

  ~Blob() { HarfBuzz::Get().hb_blob_destroy(blob_); }

  Blob(const Blob&) = delete;
  Blob& operator=(const Blob&) = delete;

  hb_blob_t* get() const { return blob_; }

  std::string_view bytes() const {
    unsigned length = 0;
    const char* data = HarfBuzz::Get().hb_blob_get_data(blob_, &length);
    return data == nullptr ? std::string_view() : std::string_view(data, length);
  }

 private:
  hb_blob_t* blob_;
};

struct FaceDestroyer {
  void operator()(hb_face_t* face) const { HarfBuzz::Get().hb_face_destroy(face); }
};

using FacePtr = std::unique_ptr<hb_face_t, FaceDestroyer>;

struct SubsetInputDestroyer {
  void operator()(hb_subset_input_t* input) const {
    HarfBuzzSubset::Get().hb_subset_input_destroy(input);
  }
};

using SubsetInputPtr = std::unique_ptr<hb_subset_input_t, SubsetInputDestroyer>;

// Calls take(tag) for every table of the face.
template <typename Take>
void ForEachTable(hb_face_t* face, const Take& take) {
  hb_tag_t tags[64];
  unsigned count = std::size(tags);
  for (unsigned first = 0; count == std::size(tags); first += count) {
    HarfBuzz::Get().hb_face_get_table_tags(face, first, &count, tags);
    for (unsigned i = 0; i < count; ++i) {
      take(tags[i]);
    }
  }
}

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_HARFBUZZOBJECTS_H_
