#include "engines/pdfa/checks/GraphicsStateCheck.h"

#include <vector>

#include "engines/pdfa/rules/GraphicsFacts.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;

namespace {

class StateCheck {
 public:
  StateCheck(CheckedDocument& checked, const Object& state, const Place& place)
      : checked_(&checked), state_(state), place_(place) {}

  bool Run() {
    const GraphicsStateFacts facts = {.has_transfer_function = state_.Has("TR"),
                                      .newer_transfer = NameOf("TR2"),
                                      .has_halftone_phase = state_.Has("HTP"),
                                      .soft_mask = NameOf("SMask"),
                                      .blend_mode = NameOf("BM"),
                                      .stroke_alpha = Get("CA").NumberOr(1),
                                      .fill_alpha = Get("ca").NumberOr(1)};
    checked_->findings().Check(facts, place_);
    CheckRenderingIntent(*checked_, Get("RI"), place_);
    CheckHalftones();
    const bool blends = CheckBlendModes();
    return blends || Get("SMask").IsDictionary() || facts.stroke_alpha < 1 || facts.fill_alpha < 1;
  }

 private:
  Object Get(std::string_view key) { return checked_->Get(state_, key, arena_); }

  std::optional<std::string_view> NameOf(std::string_view key) {
    if (!state_.Has(key)) {
      return std::nullopt;
    }
    const Object value = Get(key);
    return value.IsName() ? value.Text() : std::string_view();
  }

  // One mode, or several of which readers take the first that they know.
  bool CheckBlendModes() {
    const Object modes = Get("BM");
    bool blends = false;
    const auto check = [&](const Object& value) {
      const Object mode = checked_->document().Resolve(value, arena_);
      if (mode.IsName()) {
        checked_->findings().Check(BlendModeFacts{mode.Text()}, place_);
        blends = blends || !(mode.IsName("Normal") || mode.IsName("Compatible"));
      }
    };
    check(modes);
    for (const Object& mode : modes.Items()) {
      check(mode);
    }
    return blends;
  }

  // That for several colorants has one for each (ISO 32000-1, 10.5.5.6).
  void CheckHalftones() {
    const Object halftone = Get("HT");
    if (!halftone.IsDictionary()) {
      return;
    }
    CheckHalftone(halftone, std::nullopt);
    for (const pdf::DictionaryEntry& entry : halftone.Entries()) {
      const Object inner = checked_->document().Resolve(entry.value, arena_);
      if (inner.IsDictionary() && inner.Has("HalftoneType")) {
        CheckHalftone(inner, entry.Key());
      }
    }
  }

  void CheckHalftone(const Object& halftone, std::optional<std::string_view> colorant) {
    const Object type = checked_->Get(halftone, "HalftoneType", arena_);
    HalftoneFacts facts;
    if (type.IsInteger()) {
      facts.type = type.IntegerOr(0);
    }
    facts.has_name = halftone.Has("HalftoneName");
    facts.colorant = colorant;
    facts.has_transfer_function = halftone.Has("TransferFunction");
    checked_->findings().Check(facts, place_);
  }

  CheckedDocument* checked_;
  pdf::Arena arena_;
  Object state_;
  Place place_;
};

}  // namespace

bool CheckGraphicsState(CheckedDocument& checked, const Object& state, const Place& place) {
  return StateCheck(checked, state, place).Run();
}

void CheckRenderingIntent(CheckedDocument& checked, const Object& intent, const Place& place) {
  if (intent.IsName()) {
    checked.findings().Check(RenderingIntentFacts{intent.Text()}, place);
  }
}

}  // namespace TarnixTools::engines::pdfa
