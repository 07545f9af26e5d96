// What a conversion has changed, left out, or could not mend.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONVERSIONREPORT_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONVERSIONREPORT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::pdfa {

enum class ConversionOutcome : std::uint8_t {
  kChanged,   // it is there, in another way
  kDropped,   // it is not in the output
  kBlocking,  // it stands in the way of the level that was wanted
};

struct ConversionEntry {
  ConversionOutcome outcome{};
  std::string what;  // in English, in a few words
  std::uint64_t count = 0;
};

class ConversionReport {
 public:
  // The same thing told again counts on.
  void Add(ConversionOutcome outcome, std::string_view what, std::uint64_t count = 1);

  void Changed(std::string_view what, std::uint64_t count = 1) {
    Add(ConversionOutcome::kChanged, what, count);
  }

  void Dropped(std::string_view what, std::uint64_t count = 1) {
    Add(ConversionOutcome::kDropped, what, count);
  }

  void Blocking(std::string_view what, std::uint64_t count = 1) {
    Add(ConversionOutcome::kBlocking, what, count);
  }

  // Adds what stood in the way elsewhere.
  void TakeBlocking(const ConversionReport& other);

  const std::vector<ConversionEntry>& entries() const { return entries_; }

  // How much stands in the way of the level that was wanted.
  std::uint64_t BlockingCount() const;

  // The entries, one a line; without details only what stands in the way.
  std::string Text(bool with_details) const;

 private:
  std::vector<ConversionEntry> entries_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONVERSIONREPORT_H_
