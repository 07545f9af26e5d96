// The tag by which the name of a font says that it is a subset: six capital letters and a plus sign, as in
// "ABCDEF+Times-Roman" (ISO 32000-2, 9.9.2).
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_SUBSETTAG_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_SUBSETTAG_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace TarnixTools::engines::fonts {

// Without the plus sign.
inline constexpr std::size_t kSubsetTagLength = 6;

inline bool HasSubsetTag(std::string_view name) {
  return name.size() > kSubsetTagLength && name[kSubsetTagLength] == '+' &&
         name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == kSubsetTagLength;
}

inline std::string_view WithoutSubsetTag(std::string_view name) {
  return HasSubsetTag(name) ? name.substr(kSubsetTagLength + 1) : name;
}

// The tag that differs for other things that the subset is made of.
//
//   SubsetTag tag;
//   for (...) tag.Add(glyph);
//   std::string name = tag.Before(face.name());
class SubsetTag {
 public:
  void Add(std::uint64_t part) { hash_ = (hash_ ^ part) * 1099511628211U; }

  std::string Before(std::string_view name) const {
    std::uint64_t left = hash_ ^ hash_ >> 32;
    std::string tagged;
    for (std::size_t i = 0; i < kSubsetTagLength; ++i) {
      tagged += static_cast<char>('A' + left % 26);
      left /= 26;
    }
    return tagged.append("+").append(name);
  }

 private:
  std::uint64_t hash_ = 14695981039346656037U;
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_SUBSETTAG_H_
