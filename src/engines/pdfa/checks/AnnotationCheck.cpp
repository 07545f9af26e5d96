#include "engines/pdfa/checks/AnnotationCheck.h"

#include <array>
#include <cmath>
#include <optional>

#include "engines/pdfa/rules/AnnotationFacts.h"
#include "pdf/Limits.h"

namespace TarnixTools::engines::pdfa {

namespace {

class OneAnnotation {
 public:
  OneAnnotation(CheckedDocument& checked, const pdf::Object& dictionary)
      : checked_(&checked), dictionary_(dictionary) {}

  AnnotationFacts Facts() {
    AnnotationFacts facts;
    facts.subtype = Get("Subtype").Text();
    const pdf::Object flags = Get("F");
    if (flags.IsNumber()) {
      facts.flags = flags.IntegerOr(0);
    }
    const pdf::Object opacity = Get("CA");
    if (opacity.IsNumber()) {
      facts.opacity = opacity.NumberOr(1);
    }
    facts.has_color = dictionary_.Has("C") || dictionary_.Has("IC");
    facts.output_is_rgb = checked_->output_space() == "RGB ";
    ReadRectangle(facts);
    ReadAppearance(facts);
    facts.is_button = Inherited("FT").IsName("Btn");
    return facts;
  }

  // Around the annotation, on the page.
  std::optional<pdf::Box> box() const { return box_; }

 private:
  pdf::Object Get(std::string_view key) { return checked_->Get(dictionary_, key, arena_); }

  void ReadRectangle(AnnotationFacts& facts) {
    const pdf::Object rectangle = Get("Rect");
    if (rectangle.Items().size() < 4) {
      return;
    }
    std::array<double, 4> corners{};
    for (std::size_t i = 0; i < corners.size(); ++i) {
      corners[i] = checked_->document().Resolve(rectangle.Items()[i], arena_).NumberOr(0);
    }
    box_ = pdf::Box::OfCorners(corners[0], corners[1], corners[2], corners[3]);
    facts.width = std::abs(corners[2] - corners[0]);
    facts.height = std::abs(corners[3] - corners[1]);
  }

  void ReadAppearance(AnnotationFacts& facts) {
    const pdf::Object appearance = Get("AP");
    facts.has_appearance = appearance.IsDictionary();
    facts.has_only_normal = appearance.Entries().size() == 1 && appearance.Has("N");
    const pdf::Followed normal = checked_->document().Follow(appearance.Get("N"), arena_);
    if (!normal.value.IsDictionary()) {
      return;
    }
    const bool is_stream = normal.number != 0 && checked_->document().IsStream(normal.number);
    facts.normal = is_stream ? NormalAppearance::kStream : NormalAppearance::kStates;
    facts.has_states = !is_stream && HasStreams(normal.value);
  }

  bool HasStreams(const pdf::Object& states) const {
    for (const pdf::DictionaryEntry& state : states.Entries()) {
      if (checked_->document().IsStream(state.value.AsReference().number)) {
        return true;
      }
    }
    return false;
  }

  // A field gives its widgets what they lack.
  pdf::Object Inherited(std::string_view key) {
    pdf::Object node = dictionary_;
    for (std::uint32_t i = 0; i < pdf::limits::kMaxFieldNesting && node.IsDictionary(); ++i) {
      const pdf::Object value = checked_->Get(node, key, arena_);
      if (!value.IsNull()) {
        return value;
      }
      node = checked_->Get(node, "Parent", arena_);
    }
    return {};
  }

  CheckedDocument* checked_;
  pdf::Object dictionary_;
  pdf::Arena arena_;
  std::optional<pdf::Box> box_;
};

void CheckAnnotation(CheckedDocument& checked, ActionCheck& actions,
                     const pdf::Followed& annotation, std::size_t page_number) {
  const pdf::Object& dictionary = annotation.value;
  OneAnnotation one(checked, dictionary);
  const AnnotationFacts facts = one.Facts();
  const Place place = {.object = annotation.number,
                       .page_number = page_number,
                       .box = one.box(),
                       .subject = facts.subtype};
  checked.findings().Check(facts, place);
  if (facts.IsWidget()) {
    checked.findings().Check(WidgetFacts{.has_action = dictionary.Has("A"),
                                         .has_additional_actions = dictionary.Has("AA"),
                                         .has_appearance = facts.has_appearance},
                             place);
  }
  actions.Check(dictionary.Get("A"), place);
  actions.CheckAll(dictionary.Get("AA"), place);
}

}  // namespace

void CheckAnnotations(CheckedDocument& checked, ActionCheck& actions, const pdf::Object& page,
                      std::size_t page_index) {
  pdf::Arena arena;
  const pdf::Object annotations = checked.Get(page, "Annots", arena);
  for (const pdf::Object& item : annotations.Items()) {
    pdf::Arena of_annotation;
    const pdf::Followed annotation = checked.document().Follow(item, of_annotation);
    if (annotation.value.IsDictionary()) {
      CheckAnnotation(checked, actions, annotation, page_index + 1);
    }
  }
}

}  // namespace TarnixTools::engines::pdfa
