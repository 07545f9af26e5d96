#include "engines/toolbox/copy/navigation/PageLabels.h"

#include <algorithm>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/tree/KeyedTree.h"
#include "pdf/write/Serialize.h"
#include "pdf/write/TreeWriter.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

constexpr std::int64_t kHighestNumber = 0x7FFFFFFF;

PageLabel LabelOf(const Object& dictionary, pdf::Document& document, pdf::Arena& arena) {
  PageLabel label;
  const std::string_view style = document.Resolve(dictionary.Get("S"), arena).Text();
  const bool is_known =
      style.size() == 1 && std::string_view("DRrAa").find(style) != std::string_view::npos;
  label.style = is_known ? style.front() : '\0';
  label.number = std::clamp<std::int64_t>(
      document.Resolve(dictionary.Get("St"), arena).IntegerOr(1), 1, kHighestNumber);
  const Object prefix = document.Resolve(dictionary.Get("P"), arena);
  label.prefix = prefix.Text().size() <= limits::kMaxLabelPrefix && prefix.IsString()
                     ? prefix.Text()
                     : std::string_view();
  return label;
}

std::string TextOf(const PageLabel& label) {
  std::string text = "<<";
  if (label.style != 0) {
    text += "/S/";
    text += label.style;
  }
  if (!label.prefix.empty()) {
    text += "/P";
    pdf::AppendString(text, label.prefix, false);
  }
  if (label.style != 0 && label.number != 1) {
    text += "/St";
    pdf::AppendInteger(text, label.number);
  }
  return text + ">>";
}

}  // namespace

SourcePageLabels::SourcePageLabels(SourceDocument& source) {
  pdf::Document& document = source.document();
  const auto page_count = static_cast<std::int64_t>(source.pages().pages().size());
  pdf::Arena arena;
  const Object catalog = document.Catalog(arena);
  const auto add = [&](const Object& key, const Object& value) {
    pdf::Arena scratch;
    const Object dictionary = document.Resolve(value, scratch);
    const std::int64_t start = key.IntegerOr(-1);
    if (dictionary.IsDictionary() && start >= 0 && start < page_count) {
      ranges_.push_back(
          {static_cast<std::uint32_t>(start), LabelOf(dictionary, document, scratch)});
    }
  };
  pdf::ForEachInTree(document, catalog.Get("PageLabels"), "Nums", add);
  std::stable_sort(ranges_.begin(), ranges_.end(),
                   [](const Range& a, const Range& b) { return a.start < b.start; });
  ranges_.erase(std::unique(ranges_.begin(), ranges_.end(),
                            [](const Range& a, const Range& b) { return a.start == b.start; }),
                ranges_.end());
}

PageLabel SourcePageLabels::Of(std::uint32_t page_index) const {
  const auto after =
      std::upper_bound(ranges_.begin(), ranges_.end(), page_index,
                       [](std::uint32_t index, const Range& range) { return index < range.start; });
  if (after == ranges_.begin()) {
    return {'D', std::int64_t{page_index} + 1, {}};
  }
  const Range& range = *(after - 1);
  PageLabel label = range.label;
  label.number += page_index - range.start;
  return label;
}

void TargetPageLabels::Add(std::uint32_t position, PageLabel label, bool is_given) {
  is_given_ = is_given_ || is_given;
  if (!ranges_.empty()) {
    Range& last = ranges_.back();
    if (last.start + last.count == position && last.label.LeadsTo(label, last.count)) {
      ++last.count;
      return;
    }
  }
  ranges_.push_back({position, 1, std::move(label)});
}

void TargetPageLabels::Finish(pdf::FileWriter& writer, std::string& catalog) {
  if (!is_given_) {
    return;
  }
  std::sort(ranges_.begin(), ranges_.end(),
            [](const Range& a, const Range& b) { return a.start < b.start; });
  pdf::TreeWriter tree(writer, "Nums");
  const Range* written = nullptr;
  for (const Range& range : ranges_) {
    if (written == nullptr || !written->label.LeadsTo(range.label, range.start - written->start)) {
      tree.Add(std::to_string(range.start), TextOf(range.label));
      written = &range;
    }
  }
  catalog += "/PageLabels" + tree.Finish();
}

void PageLabelCopier::Copy() {
  const SourcePageLabels& labels = context_->source().parts().page_labels();
  TargetPageLabels& target = context_->parts().page_labels;
  for (const PageRequest& request : context_->requests()) {
    target.Add(request.target_position, labels.Of(request.page_index), !labels.empty());
  }
  if (!labels.empty()) {
    context_->report().Kept(CopiedKind::kPageLabel, context_->requests().size());
  }
}

}  // namespace TarnixTools::engines::toolbox
