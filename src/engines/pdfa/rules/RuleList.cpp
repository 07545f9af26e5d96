#include "engines/pdfa/rules/RuleList.h"

#include "engines/pdfa/rules/ActionFacts.h"
#include "engines/pdfa/rules/AnnotationFacts.h"
#include "engines/pdfa/rules/ColorFacts.h"
#include "engines/pdfa/rules/ContentFacts.h"
#include "engines/pdfa/rules/DocumentFacts.h"
#include "engines/pdfa/rules/EmbeddedFileFacts.h"
#include "engines/pdfa/rules/FileFacts.h"
#include "engines/pdfa/rules/FontFacts.h"
#include "engines/pdfa/rules/FormFacts.h"
#include "engines/pdfa/rules/GraphicsFacts.h"
#include "engines/pdfa/rules/MetadataFacts.h"
#include "engines/pdfa/rules/ProfileFacts.h"
#include "engines/pdfa/rules/StructureFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

template <typename Facts>
void AddRules(std::vector<RuleText>& rules) {
  for (const Rule<Facts>& rule : RulesFor<Facts>()) {
    rules.push_back({rule.levels, rule.part1, rule.later, rule.wrong, rule.cure});
  }
}

template <typename... Facts>
void AddRulesOf(std::vector<RuleText>& rules) {
  (AddRules<Facts>(rules), ...);
}

}  // namespace

std::vector<RuleText> AllRules() {
  std::vector<RuleText> rules;
  AddRulesOf<HeaderFacts, FileFacts, TrailerFacts, XrefFacts, ObjectFacts, StreamFacts, FilterFacts,
             IntegerFacts, RealFacts, StringFacts, NameFacts, ArrayFacts, DictionaryFacts,
             ReadableNameFacts>(rules);
  AddRulesOf<OutputProfileFacts, OutputIntentsFacts, OutputIntentFacts>(rules);
  AddRulesOf<DeviceColorFacts, InputProfileFacts, ProfileComponentsFacts, IccCmykFacts,
             DeviceNFacts, SeparationFacts>(rules);
  AddRulesOf<GraphicsStateFacts, BlendModeFacts, HalftoneFacts, RenderingIntentFacts, GroupFacts,
             PageTransparencyFacts>(rules);
  AddRulesOf<OperatorFacts, SavedStateFacts, ResourceNamesFacts, InlineFilterFacts,
             PaintedObjectFacts, PaintedImageFacts, PaintedFormFacts, JpxFacts>(rules);
  AddRulesOf<FontFacts, SimpleFontFacts, CollectionFacts, CidFontFacts, CodeMapFacts, UsedMapFacts,
             Type1FontFacts, TrueTypeFontFacts, TrueTypeProgramFacts, GlyphFacts>(rules);
  AddRulesOf<CatalogFacts, PageFacts, PageBoxFacts, LayerConfigurationFacts>(rules);
  AddRulesOf<AnnotationFacts, WidgetFacts, ActionFacts, NamedActionFacts>(rules);
  AddRulesOf<FormFacts, FieldFacts, SignatureFacts, SignatureMessageFacts, PermissionsFacts,
             SignatureReferenceFacts>(rules);
  AddRulesOf<StructureElementFacts, LanguageFacts>(rules);
  AddRulesOf<FileSpecificationFacts, EmbeddedFileFacts>(rules);
  AddRulesOf<DocumentMetadataFacts, PacketFacts, PropertyFacts, ExtensionsFacts, ExtensionFacts,
             ExtensionEntryFacts, ClaimFacts, InformationFacts>(rules);
  return rules;
}

}  // namespace TarnixTools::engines::pdfa
