// What the tests of walks through content share: a page, gone through, and what was told of it as
// text.
#ifndef TARNIX_TESTS_PDF_CONTENT_WALKFIXTURE_H_
#define TARNIX_TESTS_PDF_CONTENT_WALKFIXTURE_H_

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/content/ContentFixture.h"
#include "pdf/content/ContentWalker.h"

namespace TarnixTools::pdf {

inline std::string NameOf(ResourceKind kind) {
  static const std::vector<std::string> kNames = {
      "unknown",    "page",   "form",  "tiling", "group",     "glyph",
      "appearance", "type3",  "font",  "image",  "mask",      "alternate",
      "shading",    "shaded", "space", "state",  "properties"};
  return kNames.at(static_cast<std::size_t>(kind));
}

inline std::string TextOf(const Matrix& m) {
  std::ostringstream out;
  out << '[' << m.a << ' ' << m.b << ' ' << m.c << ' ' << m.d << ' ' << m.e << ' ' << m.f << ']';
  return out.str();
}

inline std::string TextOf(const Box& box) {
  std::ostringstream out;
  out << '[' << box.left << ' ' << box.bottom << ' ' << box.right << ' ' << box.top << ']';
  return out.str();
}

inline std::string TextOf(ContentTrouble trouble) {
  static const std::vector<std::string> kNames = {
      "unreadable",    "damaged",   "operands left", "operands missing",
      "no resource",   "surplus Q", "unclosed q",    "surplus EMC",
      "unclosed mark", "loop",      "too deep",      "too much"};
  return kNames.at(static_cast<std::size_t>(trouble));
}

// Writes down what it is told, each thing as one line.
class Recorder : public ContentVisitor {
 public:
  bool EnterContent(const ContentEntry& entry) override {
    if (entry.kind != ResourceKind::kPage) {
      Add("enter " + NameOf(entry.kind) + " " + std::to_string(entry.number));
    }
    return entry.number != declined;
  }

  void LeaveContent(const ContentEntry& entry) override {
    if (entry.kind != ResourceKind::kPage) {
      Add("leave " + std::to_string(entry.number));
    }
  }

  void Operator(const Operation& operation, std::size_t offset) override {
    Add(std::string(operation.name) + "@" + std::to_string(offset));
  }

  void LookUp(ResourceCategory category, std::string_view name, const Object& entry) override {
    Add("look up " + std::string(kResourceCategoryKeys.at(static_cast<std::size_t>(category))) +
        "/" + std::string(name) + (entry.IsNull() ? " in vain" : ""));
  }

  void DrawImage(const ImageUse& image) override {
    Add("image " + std::to_string(image.number) + " " + TextOf(image.state.matrix));
    Look(image.state);
  }

  std::optional<TextAdvance> ShowText(const StringUse& string) override {
    Add("text " + std::string(string.bytes) + " " + TextOf(string.state.text.GlyphMatrix()) +
        (string.is_hidden ? " hidden" : ""));
    Look(string.state);
    return advance;
  }

  bool IsVertical(const TextState& /*text*/) override { return is_vertical; }

  void PaintPath(const PathUse& path) override {
    Add(std::string("path ") + (path.fills ? "f" : "") + (path.strokes ? "s" : "") +
        (path.rule == FillRule::kEvenOdd ? "*" : "") + " " + TextOf(path.box));
    Look(path.state);
  }

  void PaintShading(const ShadingUse& shading) override {
    Add("shading " + std::to_string(shading.number));
  }

  void SetClip(const PathUse& path) override {
    Add("clip " + TextOf(path.state.clip.box) + (path.state.clip.is_rectangle ? "" : " or less"));
  }

  void BeginMarked(const MarkedContent& mark) override { Add("begin " + Mark(mark)); }

  void EndMarked(const MarkedContent& mark) override { Add("end " + std::string(mark.tag)); }

  void MarkPoint(const MarkedContent& mark) override { Add("point " + Mark(mark)); }

  void Trouble(ContentTrouble trouble, std::size_t /*offset*/) override {
    Add("trouble: " + TextOf(trouble));
  }

  std::vector<std::string> lines;
  std::uint32_t declined = ~std::uint32_t{0};
  std::optional<TextAdvance> advance;
  bool is_vertical = false;
  // Looks at the state that something is painted with.
  std::function<void(const GraphicsState&)> look;

 private:
  static std::string Mark(const MarkedContent& mark) {
    return std::string(mark.tag) + (mark.id ? " " + std::to_string(*mark.id) : "") +
           (mark.properties.IsDictionary() ? " with properties" : "") +
           (mark.is_hidden ? " hidden" : "");
  }

  void Add(std::string line) { lines.push_back(std::move(line)); }

  void Look(const GraphicsState& state) const {
    if (look) {
      look(state);
    }
  }
};

class WalkTest : public ::testing::Test {
 protected:
  using Lines = std::vector<std::string>;

  // What is told of the page with this content.
  Lines Walk(const std::string& content, const WalkOptions& options,
             const std::string& page_entries = "") {
    file_.Page(page_entries, content);
    return WalkPage(options);
  }

  Lines WalkPage(const WalkOptions& options, const Matrix& matrix = {}) {
    ContentWalker walker(file_.Open(), recorder_, options);
    walker.BeginPage(file_.pages(), 0, matrix);
    walker.Run();
    return recorder_.lines;
  }

  // Looks at the state that a path is painted with after the content.
  void AfterRunning(const std::string& content,
                    const std::function<void(const GraphicsState&)>& check,
                    const std::string& page_entries = "") {
    int count = 0;
    recorder_.look = [&](const GraphicsState& state) {
      ++count;
      check(state);
    };
    Walk(content + " 0 0 9 9 re f", {.paths = true, .clips = true, .style = true}, page_entries);
    EXPECT_EQ(count, 1);
  }

  ContentDocument file_;
  Recorder recorder_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_TESTS_PDF_CONTENT_WALKFIXTURE_H_
