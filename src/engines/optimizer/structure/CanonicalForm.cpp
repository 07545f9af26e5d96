#include "engines/optimizer/structure/CanonicalForm.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

#include "pdf/syntax/Arena.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::optimizer {

namespace {

using pdf::DictionaryEntry;

// Has every string written in hexadecimal digits.
class PlainStrings : public pdf::StringTransform {
 public:
  void Apply(std::string& /*bytes*/) override {}
};

// A real number stays one: where an integer is wanted, readers may take "1" only.
void AppendReal(std::string& out, std::string_view text) {
  const bool is_negative = text.starts_with('-');
  text.remove_prefix(is_negative || text.starts_with('+') ? 1 : 0);
  text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
  if (text.find('.') != std::string_view::npos) {
    text.remove_suffix(text.size() - 1 - text.find_last_not_of('0'));
  }
  pdf::AppendToken(out, (is_negative ? "-" : "") + std::string(text) + "r");
}

// By key, without those that are null: to be null and not to be there is the same (ISO 32000-2,
// 7.3.7). Of several with one key all stay, in their order.
std::span<const DictionaryEntry> Sorted(std::span<const DictionaryEntry> entries,
                                        pdf::Arena& arena) {
  std::vector<DictionaryEntry> sorted(entries.begin(), entries.end());
  std::erase_if(sorted, [](const DictionaryEntry& entry) { return entry.value.IsNull(); });
  std::stable_sort(
      sorted.begin(), sorted.end(),
      [](const DictionaryEntry& a, const DictionaryEntry& b) { return a.Key() < b.Key(); });
  return arena.CopyItems(std::span<const DictionaryEntry>(sorted));
}

}  // namespace

std::string CanonicalForm(const pdf::Object& value,
                          const std::function<std::uint32_t(std::uint32_t number)>& stand_in) {
  pdf::Arena arena;
  PlainStrings strings;
  pdf::SerializeHooks hooks;
  hooks.strings = &strings;
  hooks.real = AppendReal;
  hooks.reference = [&](std::string& out, pdf::Reference reference) {
    pdf::AppendReference(out, stand_in(reference.number));
  };
  hooks.entries = [&](std::span<const DictionaryEntry> entries) { return Sorted(entries, arena); };
  std::string text;
  pdf::AppendObject(text, value, hooks);
  return text;
}

}  // namespace TarnixTools::engines::optimizer
