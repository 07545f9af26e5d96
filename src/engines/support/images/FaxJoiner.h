// Joins strips of group 4 fax data (ITU-T T.6) to one picture. Each strip is coded as if a white
// row were above it; so its first row is coded anew, below the last row of the strip before, and
// all other bits stay as they are.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_FAXJOINER_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_FAXJOINER_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::images {

class FaxJoiner {
 public:
  explicit FaxJoiner(std::uint32_t columns);

  // False for a strip that is damaged or shorter than it says, or that is coded in a way that is
  // not known here; nothing can be made of what was joined then.
  bool Add(std::string_view strip, std::uint32_t rows);

  // The joined data, with its end mark. Once, at the end.
  std::string Take();

 private:
  void PutBit(bool bit);
  void PutCode(std::string_view code);
  void PutBits(std::string_view data, std::size_t from, std::size_t to);
  void PutRun(std::int64_t columns, bool is_black);
  void PutRow(const std::vector<std::int64_t>& row, const std::vector<std::int64_t>& above);

  std::uint32_t columns_;
  std::vector<std::int64_t> last_row_;  // where its colour changes
  std::string data_;
  unsigned free_bits_ = 0;  // of the last byte
};

}  // namespace TarnixTools::engines::images

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_FAXJOINER_H_
