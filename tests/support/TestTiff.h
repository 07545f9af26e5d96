// TIFF files, made field by field.
//
//   const std::string file =
//       TestTiff().Sides(5, 4).Set(258, {8}).Set(259, {1}).Set(262, {1}).Data({samples}).Bytes();
#ifndef TARNIX_TESTS_SUPPORT_TESTTIFF_H_
#define TARNIX_TESTS_SUPPORT_TESTTIFF_H_

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/TestImages.h"

namespace TarnixTools::testing {

// A directory by its fields, whole numbers only, with data at its end. The fields that tell where
// the data is are put in.
class TestTiff {
 public:
  TestTiff& Set(int tag, std::vector<std::uint32_t> values) {
    fields_[tag] = std::move(values);
    return *this;
  }

  // A field of bytes, at least five.
  TestTiff& SetBytes(int tag, std::string bytes) {
    bytes_[tag] = std::move(bytes);
    return Set(tag, {});
  }

  TestTiff& Sides(std::uint32_t width, std::uint32_t height) {
    return Set(256, {width}).Set(257, {height});
  }

  // One strip or tile each.
  TestTiff& Data(std::vector<std::string> parts, bool tiled = false) {
    parts_ = std::move(parts);
    tiled_ = tiled;
    return *this;
  }

  // The directory as it stands at `start` of the file, the next one after it or none.
  std::string Directory(std::uint32_t start, bool has_next) const {
    auto fields = fields_;
    std::uint32_t place = start + DirectorySize();
    for (const std::string& part : parts_) {
      fields[tiled_ ? 324 : 273].push_back(place);
      fields[tiled_ ? 325 : 279].push_back(static_cast<std::uint32_t>(part.size()));
      place += static_cast<std::uint32_t>(part.size());
    }
    std::string head = Little16(static_cast<std::uint32_t>(fields.size()));
    std::string values;
    const auto values_start = start + 2 + 12 * static_cast<std::uint32_t>(fields.size()) + 4;
    for (const auto& [tag, numbers] : fields) {
      if (const auto bytes = bytes_.find(tag); bytes != bytes_.end()) {
        head += Little16(static_cast<std::uint32_t>(tag)) + Little16(7) +
                Little32(static_cast<std::uint32_t>(bytes->second.size())) +
                Little32(values_start + static_cast<std::uint32_t>(values.size()));
        values += bytes->second;
        continue;
      }
      head += Little16(static_cast<std::uint32_t>(tag)) + Little16(4) +
              Little32(static_cast<std::uint32_t>(numbers.size()));
      if (numbers.size() == 1) {
        head += Little32(numbers[0]);
      } else {
        head += Little32(values_start + static_cast<std::uint32_t>(values.size()));
        for (const std::uint32_t number : numbers) {
          values += Little32(number);
        }
      }
    }
    std::string all = head + Little32(has_next ? place : 0) + values;
    for (const std::string& part : parts_) {
      all += part;
    }
    return all;
  }

  std::string Bytes() const { return Join({*this}); }

  static std::string Join(const std::vector<TestTiff>& pictures) {
    std::string file = std::string("II*\0", 4) + Little32(8);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
      file +=
          pictures[i].Directory(static_cast<std::uint32_t>(file.size()), i + 1 < pictures.size());
    }
    return file;
  }

 private:
  std::uint32_t DirectorySize() const {
    std::size_t size = 2 + 12 * (fields_.size() + (parts_.empty() ? 0 : 2)) + 4;
    for (const auto& [tag, numbers] : fields_) {
      size += numbers.size() > 1 ? 4 * numbers.size() : 0;
    }
    for (const auto& [tag, bytes] : bytes_) {
      size += bytes.size();
    }
    size += parts_.size() > 1 ? 8 * parts_.size() : 0;
    return static_cast<std::uint32_t>(size);
  }

  std::map<int, std::vector<std::uint32_t>> fields_;
  std::map<int, std::string> bytes_;
  std::vector<std::string> parts_;
  bool tiled_ = false;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TESTTIFF_H_
