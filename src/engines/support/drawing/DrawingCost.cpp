#include "engines/support/drawing/DrawingCost.h"

#include <algorithm>
#include <optional>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"
#include "pdf/syntax/Lexer.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;

// Bytes of decoded content: PDFium holds several times as much for what it finds in there.
constexpr std::uint64_t kMaxPageBytes = std::uint64_t{256} << 20;
constexpr std::size_t kMaxStreamBytes = std::size_t{128} << 20;
constexpr std::uint64_t kEndless = std::uint64_t{1} << 40;

// Encoded data up to this size cannot become too much.
constexpr std::uint64_t kHarmlessBytes = kMaxStreamBytes / pdf::limits::kMaxExpansion / 4;

constexpr int kMaxDepth = 64;
constexpr std::size_t kMaxContentStreams = 100'000;

std::uint64_t Sum(std::uint64_t a, std::uint64_t b) {
  return std::min(kEndless, a + b);
}

std::uint64_t Product(std::uint64_t uses, std::uint64_t cost) {
  return uses == 0 ? 0 : (cost >= kEndless / uses ? kEndless : uses * cost);
}

// Calls the function with every name in the content; what looks like one within strings and images
// counts too.
template <typename Function>
void ForEachName(std::string_view content, Function&& function) {
  std::string decoded;
  for (std::size_t at = content.find('/'); at != std::string_view::npos;) {
    std::size_t end = at + 1;
    while (end < content.size() && pdf::IsRegular(content[end])) {
      ++end;
    }
    const std::string_view name = content.substr(at, end - at);
    if (name.find('#') == std::string_view::npos) {
      function(name.substr(1));
    } else {
      decoded.clear();
      pdf::DecodeName(name, decoded);
      function(std::string_view(decoded));
    }
    at = content.find('/', end);
  }
}

}  // namespace

DrawingCost::Excess DrawingCost::ExcessOf(const Page& page) {
  Excess excess;
  const Scope scope{.resources = &page.resources, .owner = page.number, .depth = 0};
  std::vector<Child> children = ChildrenOf(page.resources);
  std::uint64_t total = 0;
  for (const std::uint32_t number : StreamsOf(page.contents)) {
    total = Sum(total, CostOfContent(number, children));
  }
  if (total > kMaxPageBytes) {
    excess.contents = true;
    return excess;
  }
  const auto fits = [&total](std::uint64_t cost) {
    const bool does = total + cost <= kMaxPageBytes;
    total += does ? cost : 0;
    return does;
  };
  for (const Child& child : children) {
    if (child.uses > 0 && !fits(Product(child.uses, CostOfChild(child, scope)))) {
      excess.resources.push_back(child.name);
    }
  }
  pdf::Arena arena;
  const auto annotations = document_->Resolve(page.annotations, arena).Items();
  for (std::size_t i = 0; i < annotations.size(); ++i) {
    if (!fits(CostOfAnnotation(annotations[i], scope))) {
      excess.annotations.push_back(i);
    }
  }
  return excess;
}

std::vector<std::uint32_t> DrawingCost::StreamsOf(const Object& contents) {
  pdf::Arena arena;
  const Object resolved = document_->Resolve(contents, arena);
  std::vector<std::uint32_t> numbers;
  for (const Object& item : resolved.Items()) {
    if (item.AsReference().number != 0 && numbers.size() < kMaxContentStreams) {
      numbers.push_back(item.AsReference().number);
    }
  }
  if (resolved.IsDictionary() && contents.AsReference().number != 0) {
    numbers.push_back(contents.AsReference().number);
  }
  return numbers;
}

std::vector<DrawingCost::Child> DrawingCost::ChildrenOf(const Object& resources) {
  std::vector<Child> children;
  for (const std::string_view category : {"XObject", "Pattern", "ExtGState", "Font"}) {
    pdf::Arena arena;
    for (const pdf::DictionaryEntry& entry :
         document_->Resolve(resources.Get(category), arena).Entries()) {
      if (const std::uint32_t number = ContentOf(category, entry.value); number != 0) {
        children.push_back({.name = {category, std::string(entry.Key())}, .number = number});
      }
    }
  }
  return children;
}

// The object with the content of a resource; 0 for one without.
std::uint32_t DrawingCost::ContentOf(std::string_view category, const Object& entry) {
  const std::uint32_t number = entry.AsReference().number;
  if (number == 0) {
    return FindContent(category, entry);
  }
  const auto [found, is_new] = contents_.emplace(number, 0);
  if (is_new) {
    found->second = FindContent(category, entry);
  }
  return found->second;
}

std::uint32_t DrawingCost::FindContent(std::string_view category, const Object& entry) {
  pdf::Arena arena;
  const Object value = document_->Resolve(entry, arena);
  const auto get = [&](const Object& dictionary, std::string_view key) {
    return document_->Resolve(dictionary.Get(key), arena);
  };
  if (category == "ExtGState") {
    return get(value, "SMask").Get("G").AsReference().number;
  }
  const bool has_content = category == "XObject"   ? get(value, "Subtype").Text() == "Form"
                           : category == "Pattern" ? get(value, "PatternType").IntegerOr(0) == 1
                                                   : get(value, "Subtype").Text() == "Type3";
  return has_content ? entry.AsReference().number : 0;
}

std::uint64_t DrawingCost::CostOfChild(const Child& child, const Scope& scope) {
  return child.name.category == "Font" ? CostOfFont(child.number, scope)
                                       : CostOfStream(child.number, scope);
}

// The cost of a stream's content with that of all it draws.
std::uint64_t DrawingCost::CostOfStream(std::uint32_t number, const Scope& scope) {
  if (number == 0 || scope.depth > kMaxDepth) {
    return number == 0 ? 0 : kEndless;
  }
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
  const Object own = document_->Resolve(dictionary.Get("Resources"), arena);
  const Scope inner{.resources = own.IsDictionary() ? &own : scope.resources,
                    .owner = own.IsDictionary() ? number : scope.owner,
                    .depth = scope.depth + 1};
  const std::uint64_t key = std::uint64_t{number} << 32 | inner.owner;
  if (const auto [found, is_new] = costs_.emplace(key, 0); !is_new) {
    return found->second == 0 ? kEndless : found->second;
  }
  std::vector<Child> children = ChildrenOf(*inner.resources);
  std::uint64_t cost = Sum(1, CostOfContent(number, children));
  for (const Child& child : children) {
    cost = child.uses == 0 ? cost : Sum(cost, Product(child.uses, CostOfChild(child, inner)));
  }
  costs_[key] = cost;
  return cost;
}

// PDFium reads each glyph once.
std::uint64_t DrawingCost::CostOfFont(std::uint32_t number, const Scope& scope) {
  if (number == 0 || scope.depth > kMaxDepth) {
    return number == 0 ? 0 : kEndless;
  }
  const std::uint64_t key = std::uint64_t{number} << 32 | number;
  if (const auto [found, is_new] = costs_.emplace(key, 0); !is_new) {
    return found->second == 0 ? kEndless : found->second;
  }
  pdf::Arena arena;
  const Object font = document_->Load({.number = number, .generation = 0}, arena);
  const Object own = document_->Resolve(font.Get("Resources"), arena);
  const Scope inner{.resources = own.IsDictionary() ? &own : scope.resources,
                    .owner = number,
                    .depth = scope.depth + 1};
  std::uint64_t cost = 1;
  for (const pdf::DictionaryEntry& glyph :
       document_->Resolve(font.Get("CharProcs"), arena).Entries()) {
    cost = Sum(cost, CostOfStream(glyph.value.AsReference().number, inner));
  }
  costs_[key] = cost;
  return cost;
}

// The cost of a stream's content alone. Counts how often it uses the children.
std::uint64_t DrawingCost::CostOfContent(std::uint32_t number, std::vector<Child>& children) {
  const std::optional<pdf::StreamExtent> extent = document_->StreamOf(number);
  if (!extent) {
    return 0;
  }
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
  const bool has_many_filters =
      document_->Resolve(dictionary.Get("Filter"), arena).Items().size() > 1;
  if (children.empty() && !has_many_filters && extent->length <= kHarmlessBytes) {
    return extent->length;
  }
  std::string content;
  try {
    if (auto decoded = document_->DecodeStream(number, kMaxStreamBytes)) {
      content = std::move(decoded->data);
    }
  } catch (const pdf::Error& error) {
    if (error.code() == pdf::ErrorCode::kReadFailed) {
      throw;
    }
    return error.code() == pdf::ErrorCode::kLimitExceeded ? kEndless : extent->length;
  }
  if (!children.empty()) {
    std::unordered_multimap<std::string_view, Child*> by_name;
    for (Child& child : children) {
      by_name.emplace(child.name.name, &child);
    }
    ForEachName(content, [&by_name](std::string_view name) {
      const auto [first, last] = by_name.equal_range(name);
      std::for_each(first, last, [](const auto& entry) { ++entry.second->uses; });
    });
  }
  return content.size();
}

// The cost of all appearances of an annotation.
std::uint64_t DrawingCost::CostOfAnnotation(const Object& annotation, const Scope& scope) {
  pdf::Arena arena;
  const auto get = [&](const Object& value, std::string_view key) {
    return document_->Resolve(value, arena).Get(key);
  };
  const Object appearances = get(annotation, "AP");
  std::uint64_t cost = 0;
  for (const std::string_view key : {"N", "D", "R"}) {
    const Object appearance = get(appearances, key);
    const Object resolved = document_->Resolve(appearance, arena);
    if (appearance.AsReference().number != 0 && resolved.Has("BBox")) {
      cost = Sum(cost, CostOfStream(appearance.AsReference().number, scope));
      continue;
    }
    for (const pdf::DictionaryEntry& state : resolved.Entries()) {
      cost = Sum(cost, CostOfStream(state.value.AsReference().number, scope));
    }
  }
  return cost;
}

}  // namespace TarnixTools::engines
