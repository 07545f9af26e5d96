// Goes through all that a document's pages lead to and paint, wants to know everything, and aborts
// when what is told does not fit together.
#ifndef TARNIX_FUZZ_CONTENTPROBE_H_
#define TARNIX_FUZZ_CONTENTPROBE_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "pdf/content/ContentWalker.h"
#include "pdf/content/ResourceGraph.h"
#include "pdf/content/WholeWalk.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::pdf {

class ContentProbe : public ContentVisitor {
 public:
  // Stops a walk that would only be slow.
  static constexpr std::size_t kMaxSteps = 200'000;

  bool EnterContent(const ContentEntry& entry) override {
    Require(entry.depth == open_.size() && entry.state != nullptr);
    open_.push_back(0);
    return true;
  }

  void LeaveContent(const ContentEntry& entry) override {
    Require(!open_.empty() && open_.back() == 0);
    open_.pop_back();
    Require(entry.depth == open_.size());
  }

  void LookUp(ResourceCategory /*category*/, std::string_view name,
              const Object& /*entry*/) override {
    Touch(name);
  }

  void DrawImage(const ImageUse& image) override {
    Require(image.number == 0 || image.data.empty());
    Touch(image.data);
    Touch(image.dictionary);
    Look(image.state);
  }

  std::optional<TextAdvance> ShowText(const StringUse& string) override {
    Touch(string.bytes);
    Look(string.state);
    return string.index % 2 == 0 ? std::optional(TextAdvance{1, 0}) : std::nullopt;
  }

  void PaintPath(const PathUse& path) override {
    Require(!path.segments.empty());
    Look(path.state);
  }

  void PaintShading(const ShadingUse& shading) override { Touch(shading.dictionary); }

  void SetClip(const PathUse& path) override { Look(path.state); }

  void BeginMarked(const MarkedContent& mark) override {
    Touch(mark.tag);
    Touch(mark.properties);
    ++open_.back();
  }

  void EndMarked(const MarkedContent& mark) override {
    Touch(mark.tag);
    Require(open_.back()-- > 0);
  }

  std::size_t touched() const { return touched_; }

 private:
  static void Require(bool holds) {
    if (!holds) {
      std::abort();
    }
  }

  // Reads what was handed over, so that a sanitizer sees what does not live any more.
  void Touch(std::string_view text) {
    touched_ += static_cast<std::size_t>(std::count(text.begin(), text.end(), 'x'));
  }

  void Touch(const Object& value) {
    Touch(value.Text());
    for (const DictionaryEntry& entry : value.Entries()) {
      Touch(entry.Key());
      Touch(entry.value.Text());
    }
    for (const Object& item : value.Items()) {
      Touch(item.Text());
    }
  }

  void Look(const GraphicsState& state) {
    for (const Color& color : {state.fill, state.stroke}) {
      std::array<double, 4> numbers{};
      color.ReadComponents(numbers);
      Touch(color.space);
      Touch(color.pattern);
    }
    std::vector<double> lengths;
    state.line.ReadDash(lengths);
    Touch(state.rendering.intent);
    Touch(state.rendering.transfer_function);
    Touch(state.transparency.blend_mode);
    Touch(state.transparency.soft_mask);
    Touch(state.text.font);
  }

  std::vector<std::size_t> open_;  // contents, each with its open marks
  std::size_t touched_ = 0;
};

// Throws Error.
inline void ProbePage(Document& document, const PageTree& pages, std::size_t page_index) {
  const VisibleLayers layers(document);
  for (const VisibleLayers* const chosen : {&layers, static_cast<const VisibleLayers*>(nullptr)}) {
    ContentProbe probe;
    WalkOptions options = kEverything;
    options.layers = chosen;
    ContentWalker walker(document, probe, options);
    walker.BeginPage(pages, page_index);
    for (std::size_t i = 0; i < ContentProbe::kMaxSteps && walker.Step(); ++i) {
    }
  }
}

// Throws Error.
inline void ProbeResources(Document& document, const PageTree& pages, std::size_t page_index,
                           ResourceGraph& graph) {
  graph.AddPage(pages, page_index);
  while (const ResourceNode* node = graph.Next()) {
    if (node->kind == ResourceKind::kUnknown ||
        (HasContent(node->kind) && node->kind != ResourceKind::kPage && node->number == 0)) {
      std::abort();
    }
    if (node->number != 0 && node->number >= document.object_limit()) {
      std::abort();
    }
  }
}

}  // namespace TarnixTools::pdf

#endif  // TARNIX_FUZZ_CONTENTPROBE_H_
