#include "pdf/syntax/Object.h"

#include <charconv>
#include <cmath>

namespace TarnixTools::pdf {

std::int64_t Object::IntegerOr(std::int64_t fallback) const {
  if (kind_ == Kind::kInteger) {
    return value_.integer;
  }
  if (kind_ == Kind::kReal) {
    const double number = NumberOr(0);
    if (std::abs(number) < 9e18) {
      return static_cast<std::int64_t>(number);
    }
  }
  return fallback;
}

double Object::NumberOr(double fallback) const {
  if (kind_ == Kind::kInteger) {
    return static_cast<double>(value_.integer);
  }
  if (kind_ == Kind::kReal) {
    std::string_view text = Text();
    if (!text.empty() && text.front() == '+') {
      text.remove_prefix(1);
    }
    double number = fallback;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
  }
  return fallback;
}

Object Object::Get(std::string_view key) const {
  const auto entries = Entries();
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    if (entry->Key() == key) {
      return entry->value;
    }
  }
  return {};
}

bool Object::Has(std::string_view key) const {
  return !Get(key).IsNull();
}

void CollectReferences(const Object& value, std::vector<std::uint32_t>& numbers) {
  std::vector<Object> waiting = {value};
  while (!waiting.empty()) {
    const Object next = waiting.back();
    waiting.pop_back();
    if (next.IsReference()) {
      numbers.push_back(next.AsReference().number);
    }
    waiting.insert(waiting.end(), next.Items().begin(), next.Items().end());
    for (const DictionaryEntry& entry : next.Entries()) {
      waiting.push_back(entry.value);
    }
  }
}

}  // namespace TarnixTools::pdf
