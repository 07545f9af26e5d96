#include "engines/pdfa/convert/annotations/Annotations.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/convert/annotations/AppearanceFonts.h"
#include "engines/pdfa/convert/annotations/ButtonAppearance.h"
#include "engines/pdfa/convert/annotations/DrawnAppearance.h"
#include "engines/pdfa/convert/annotations/FieldEntries.h"
#include "engines/pdfa/convert/annotations/MadeAppearance.h"
#include "engines/pdfa/convert/annotations/TextAppearance.h"
#include "engines/pdfa/vocabulary/Names.h"
#include "pdf/tree/VisibleLayers.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;

namespace {

// Bits of /F (ISO 32000-2, table 167).
constexpr std::int64_t kInvisible = 1 << 0;
constexpr std::int64_t kHidden = 1 << 1;
constexpr std::int64_t kPrint = 1 << 2;
constexpr std::int64_t kNoView = 1 << 5;
constexpr std::int64_t kToggleNoView = 1 << 8;

class AnnotationMender {
 public:
  explicit AnnotationMender(Conversion& conversion)
      : conversion_(&conversion), layers_(conversion.document), fonts_(conversion) {}

  // When all pages are mended.
  void WriteFonts() { fonts_.Write(); }

  void MendPage(const pdf::PageTree::Page& page) {
    arena_.Reset();
    const Object dictionary = conversion_->pages.Load(page, arena_);
    const Object annotations = document().Resolve(dictionary.Get("Annots"), arena_);
    if (page.number == 0 || annotations.IsNull()) {
      return;
    }
    std::string text = "[";
    bool has_changed = !annotations.IsArray();
    for (const Object& item : annotations.Items()) {
      const std::uint32_t number = MendItem(item);
      has_changed = has_changed || number != item.AsReference().number || number == 0;
      if (number != 0) {
        pdf::AppendReference(text, number);
      }
    }
    if (has_changed) {
      conversion_->rewriter.SetEntry(page.number, "Annots", text + "]");
    }
  }

 private:
  pdf::Document& document() { return conversion_->document; }

  pdf::DocumentRewriter& rewriter() { return conversion_->rewriter; }

  // The annotation's number; 0 for one that does not stay.
  std::uint32_t MendItem(const Object& item) {
    const pdf::Followed found = document().Follow(item, arena_);
    if (!found.value.IsDictionary()) {
      return 0;
    }
    std::uint32_t number = found.number;
    if (number == 0) {
      std::string text;
      pdf::AppendObject(text, found.value);
      number = rewriter().Add(pdf::ObjectChange::Value(std::move(text)));
    }
    const auto [seen, is_new] = mended_.try_emplace(number, true);
    if (is_new) {
      seen->second = Mend(number, IsOnHiddenLayer(found.value));
    }
    return seen->second ? number : 0;
  }

  Object Get(const Object& dictionary, std::string_view key) {
    return document().Resolve(dictionary.Get(key), arena_);
  }

  // Where there are no layers any more it would be seen.
  bool IsOnHiddenLayer(const Object& annotation) const {
    return conversion_->is_part1() && !layers_.IsSeen(annotation.Get("OC"));
  }

  // False for one that does not stay.
  bool Mend(std::uint32_t number, bool is_on_hidden_layer) {
    const Object annotation = rewriter().Load(number, arena_);
    const Object subtype = Get(annotation, "Subtype");
    if (!IsAllowed(subtype.Text()) && !MakeStamp(number, annotation)) {
      conversion_->report.Dropped("annotations of types that are not allowed");
      return false;
    }
    const std::int64_t flags = Get(annotation, "F").IntegerOr(0);
    const std::int64_t allowed =
        (flags | kPrint) & ~(kInvisible | kHidden | kNoView | kToggleNoView);
    if (allowed != flags || !annotation.Has("F")) {
      rewriter().SetEntry(number, "F", std::to_string(allowed));
    }
    MendAppearance(number, annotation, is_on_hidden_layer || (flags & (kHidden | kNoView)) != 0);
    return true;
  }

  bool IsAllowed(std::string_view type) const {
    return IsOneOf(type, kPlainAnnotations) ||
           (!conversion_->is_part1() && IsOneOf(type, kLaterAnnotations));
  }

  // What has a picture of itself goes on showing it.
  bool MakeStamp(std::uint32_t number, const Object& annotation) {
    if (NormalAppearance(annotation) == 0) {
      return false;
    }
    rewriter().SetEntry(number, "Subtype", "/Stamp");
    conversion_->report.Changed("annotations of types that are not allowed into stamps");
    return true;
  }

  // Number of the one that is seen; 0 for none.
  std::uint32_t NormalAppearance(const Object& annotation) {
    const Object normal = Get(annotation, "AP").Get("N");
    const pdf::Followed found = document().Follow(normal, arena_);
    if (found.number != 0 && document().IsStream(found.number)) {
      return found.number;
    }
    const Object state = Get(annotation, "AS");
    const pdf::Followed of_state = document().Follow(found.value.Get(state.Text()), arena_);
    return state.IsName() && of_state.number != 0 && document().IsStream(of_state.number)
               ? of_state.number
               : 0;
  }

  bool IsButton(const Object& annotation) {
    return FieldEntries(document(), annotation).Type() == "Btn";
  }

  void MendAppearance(std::uint32_t number, const Object& annotation, bool is_hidden) {
    const Object subtype = Get(annotation, "Subtype");
    const Object appearance = Get(annotation, "AP");
    if (subtype.IsName("Popup") || (subtype.IsName("Link") && !appearance.IsDictionary())) {
      rewriter().RemoveEntry(number, "AP");
      return;
    }
    const bool is_button = subtype.IsName("Widget") && IsButton(annotation);
    if (is_hidden) {
      conversion_->report.Changed("hidden annotations into empty ones");
      SetNormal(number, AddForm(EmptyAppearance(annotation, document())), is_button);
      return;
    }
    const std::uint32_t shown = NormalAppearance(annotation);
    const bool is_stream = document().IsStream(appearance.Get("N").AsReference().number);
    if (is_button ? HasStates(Get(appearance, "N")) : is_stream) {
      KeepOnlyNormal(number, appearance);
    } else if (shown != 0) {
      SetNormal(number, shown, is_button);
    } else {
      SetMadeAppearance(number, annotation, is_button);
    }
  }

  // Nothing for one that no reader shows anything of, or that cannot be drawn here.
  std::optional<MadeAppearance> Drawn(const Object& annotation) {
    const bool may_blend = !conversion_->is_part1();
    return ShowsText(annotation, document())
               ? TextAppearance(annotation, document(), fonts_, may_blend, characters_left_)
               : DrawnAppearance(annotation, document(), may_blend, numbers_left_);
  }

  void SetStates(std::uint32_t number, const Object& annotation) {
    const MadeButton made = ButtonAppearance(annotation, document());
    std::string text = "<</N<</Off";
    pdf::AppendReference(text, AddForm(made.off));
    pdf::AppendName(text, made.on_state);
    pdf::AppendReference(text, AddForm(made.on));
    rewriter().SetEntry(number, "AP", text + ">>>>");
    std::string state;
    pdf::AppendName(state, made.is_on ? made.on_state : "Off");
    rewriter().SetEntry(number, "AS", state);
    conversion_->report.Changed("annotations without an appearance, which are drawn");
  }

  // A mark that hides nothing is drawn with the page where there is no transparency.
  void SetMadeAppearance(std::uint32_t number, const Object& annotation, bool is_button) {
    if (HasButtonStates(annotation, document())) {
      SetStates(number, annotation);
      return;
    }
    const std::optional<MadeAppearance> drawn = Drawn(annotation);
    if (drawn) {
      conversion_->report.Changed("annotations without an appearance, which are drawn",
                                  drawn->shows_nothing() ? 0 : 1);
    } else if (conversion_->is_part1() && Get(annotation, "Subtype").IsName("Highlight")) {
      conversion_->pictured_annotations.insert(number);
    } else {
      conversion_->report.Dropped("what viewers draw for annotations without an appearance");
    }
    SetNormal(number, AddForm(drawn ? *drawn : EmptyAppearance(annotation, document())), is_button);
  }

  // Whether it is a dictionary of appearances by state, with any in it.
  bool HasStates(const Object& normal) {
    return std::any_of(normal.Entries().begin(), normal.Entries().end(),
                       [&](const DictionaryEntry& entry) {
                         const std::uint32_t number = entry.value.AsReference().number;
                         return entry.Key() != "Resources" && entry.Key() != "Metadata" &&
                                number != 0 && document().IsStream(number) && !normal.Has("BBox");
                       });
  }

  std::uint32_t AddForm(const MadeAppearance& made) {
    return rewriter().Add(pdf::ObjectChange::Stream(made.dictionary, made.content));
  }

  void KeepOnlyNormal(std::uint32_t number, const Object& appearance) {
    if (appearance.Entries().size() == 1) {
      return;
    }
    std::string text = "<</N";
    pdf::AppendObject(text, appearance.Get("N"));
    rewriter().SetEntry(number, "AP", text + ">>");
  }

  void SetNormal(std::uint32_t number, std::uint32_t form, bool is_button) {
    std::string text = is_button ? "<</N<</Off" : "<</N";
    pdf::AppendReference(text, form);
    rewriter().SetEntry(number, "AP", text + (is_button ? ">>>>" : ">>"));
    if (is_button) {
      rewriter().SetEntry(number, "AS", "/Off");
    } else {
      rewriter().RemoveEntry(number, "AS");
    }
  }

  Conversion* conversion_;
  pdf::VisibleLayers layers_;
  AppearanceFonts fonts_;
  Arena arena_;
  std::size_t numbers_left_ = limits::kMaxDrawnNumbers;
  std::size_t characters_left_ = limits::kMaxDrawnCharacters;
  std::map<std::uint32_t, bool> mended_;  // by number: whether it stays
};

}  // namespace

void MendAnnotations(Conversion& conversion) {
  AnnotationMender mender(conversion);
  for (const pdf::PageTree::Page& page : conversion.pages.pages()) {
    mender.MendPage(page);
  }
  mender.WriteFonts();
}

}  // namespace TarnixTools::engines::pdfa
