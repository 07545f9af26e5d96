#include "engines/support/drawing/DrawingCost.h"

#include <algorithm>
#include <array>
#include <optional>

#include "engines/support/drawing/DrawingLimits.h"
#include "pdf/Limits.h"
#include "pdf/content/Appearances.h"
#include "pdf/content/PageContents.h"
#include "pdf/syntax/Chars.h"
#include "pdf/syntax/Lexer.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;

constexpr std::array kCategoriesWithContent = {
    pdf::ResourceCategory::kXObject, pdf::ResourceCategory::kPattern,
    pdf::ResourceCategory::kExtGState, pdf::ResourceCategory::kFont};

// Encoded data up to this size cannot become too much.
constexpr std::uint64_t kHarmlessBytes =
    limits::kMaxDrawnStreamBytes / pdf::limits::kMaxExpansion / 4;

constexpr std::uint64_t kEndless = DrawingCost::kEndless;

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

DrawingCost::PageCost DrawingCost::CostOf(const pdf::PageTree& pages, std::size_t page_index) {
  pdf::Arena arena;
  const Object page = pages.Load(pages.pages()[page_index], arena);
  const Scope scope{.names = pdf::ScopeOfPage(*document_, pages, page_index, arena)};
  PageCost cost;
  std::vector<Child> children = ChildrenOf(scope, arena);
  for (const std::uint32_t number :
       pdf::StreamsOfContents(*document_, page.Get("Contents")).numbers) {
    cost.contents = Sum(cost.contents, CostOfContent(number, children));
  }
  if (cost.contents > limits::kMaxDrawnBytes) {
    return cost;
  }
  for (const Child& child : children) {
    if (child.uses > 0) {
      cost.resources.emplace_back(child.name, Product(child.uses, CostOfChild(child, scope)));
    }
  }
  for (const Object& annotation : document_->Resolve(page.Get("Annots"), arena).Items()) {
    cost.annotations.push_back(CostOfAnnotation(annotation, scope));
  }
  return cost;
}

DrawingCost::Excess DrawingCost::ExcessOf(const pdf::PageTree& pages, std::size_t page_index) {
  const PageCost cost = CostOf(pages, page_index);
  Excess excess;
  excess.contents = cost.contents > limits::kMaxDrawnBytes;
  std::uint64_t total = cost.contents;
  const auto fits = [&total](std::uint64_t bytes) {
    const bool does = total + bytes <= limits::kMaxDrawnBytes;
    total += does ? bytes : 0;
    return does;
  };
  for (const auto& [name, bytes] : cost.resources) {
    if (!fits(bytes)) {
      excess.resources.push_back(name);
    }
  }
  for (std::size_t i = 0; i < cost.annotations.size(); ++i) {
    if (!fits(cost.annotations[i])) {
      excess.annotations.push_back(i);
    }
  }
  return excess;
}

std::vector<DrawingCost::Child> DrawingCost::ChildrenOf(const Scope& scope, pdf::Arena& arena) {
  std::vector<Child> children;
  for (const pdf::ResourceCategory category : kCategoriesWithContent) {
    const std::string_view key = pdf::kResourceCategoryKeys[static_cast<std::size_t>(category)];
    for (const pdf::DictionaryEntry& entry :
         document_->Resolve(scope.names.resources.Get(key), arena).Entries()) {
      const pdf::ContentPlace content = ContentOf(category, entry.value);
      if (content.kind != pdf::ResourceKind::kUnknown) {
        children.push_back(
            {.name = {key, std::string(entry.Key())}, .content = content, .entry = entry.value});
      }
    }
  }
  return children;
}

pdf::ContentPlace DrawingCost::ContentOf(pdf::ResourceCategory category, const Object& entry) {
  const std::uint32_t number = entry.AsReference().number;
  if (number == 0) {
    return pdf::ContentOf(*document_, category, entry);
  }
  const std::uint64_t key = std::uint64_t{number} << 8 | static_cast<std::uint64_t>(category);
  const auto [found, is_new] = contents_.try_emplace(key);
  if (is_new) {
    found->second = pdf::ContentOf(*document_, category, entry);
  }
  return found->second;
}

std::uint64_t DrawingCost::CostOfChild(const Child& child, const Scope& scope) {
  return child.content.kind == pdf::ResourceKind::kType3Font
             ? CostOfFont(child.entry, scope)
             : CostOfStream(child.content.number, scope);
}

// The cost that is known; nothing for one that is new, which is under way from now on.
std::optional<std::uint64_t> DrawingCost::KnownCost(std::uint64_t key) {
  const auto [found, is_new] = costs_.emplace(key, 0);
  if (is_new) {
    return std::nullopt;
  }
  return found->second == 0 ? kEndless : found->second;
}

// The cost of a stream's content with that of all it draws.
std::uint64_t DrawingCost::CostOfStream(std::uint32_t number, const Scope& scope) {
  if (number == 0 || scope.depth > pdf::limits::kMaxResourceDepth) {
    return number == 0 ? 0 : kEndless;
  }
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
  const Scope inner{.names = pdf::ScopeOf(*document_, dictionary, number, scope.names, arena),
                    .depth = scope.depth + 1};
  const std::uint64_t key = std::uint64_t{number} << 32 | inner.names.owner;
  if (const auto known = KnownCost(key)) {
    return *known;
  }
  std::vector<Child> children = ChildrenOf(inner, arena);
  std::uint64_t cost = Sum(1, CostOfContent(number, children));
  for (const Child& child : children) {
    cost = child.uses == 0 ? cost : Sum(cost, Product(child.uses, CostOfChild(child, inner)));
  }
  costs_[key] = cost;
  return cost;
}

// PDFium reads each glyph once.
std::uint64_t DrawingCost::CostOfFont(const Object& font, const Scope& scope) {
  if (scope.depth > pdf::limits::kMaxResourceDepth) {
    return kEndless;
  }
  pdf::Arena arena;
  const pdf::Followed found = document_->Follow(font, arena);
  const Scope inner{
      .names = pdf::ScopeOf(*document_, found.value, found.number, scope.names, arena),
      .depth = scope.depth + 1};
  const std::uint64_t key = std::uint64_t{found.number} << 32 | inner.names.owner;
  if (const auto known = found.number != 0 ? KnownCost(key) : std::nullopt) {
    return *known;
  }
  std::uint64_t cost = 1;
  for (const std::uint32_t glyph : pdf::GlyphsOf(*document_, found.value)) {
    cost = Sum(cost, CostOfStream(glyph, inner));
  }
  if (found.number != 0) {
    costs_[key] = cost;
  }
  return cost;
}

// The cost of a stream's content alone. Counts how often it uses the children.
std::uint64_t DrawingCost::CostOfContent(std::uint32_t number, std::vector<Child>& children) {
  const std::optional<pdf::StreamData> stream = document_->StreamOf(number);
  if (!stream) {
    return 0;
  }
  const std::uint64_t length = stream->extent.length;
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
  const bool has_many_filters =
      document_->Resolve(dictionary.Get("Filter"), arena).Items().size() > 1;
  if (children.empty() && !has_many_filters && length <= kHarmlessBytes) {
    return length;
  }
  auto decoded = document_->TryDecodeStream(number, limits::kMaxDrawnStreamBytes);
  if (decoded && decoded->is_lost()) {
    return decoded->is_too_long ? kEndless : length;
  }
  const std::string content = decoded ? std::move(decoded->data) : std::string();
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
  const Object dictionary = document_->Resolve(annotation, arena);
  std::uint64_t cost = 0;
  for (const std::uint32_t number : pdf::AppearancesOf(*document_, dictionary)) {
    cost = Sum(cost, CostOfStream(number, scope));
  }
  return cost;
}

}  // namespace TarnixTools::engines
