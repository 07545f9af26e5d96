// Rules about the catalog, pages, layers, annotations, actions, forms, structure and embedded files.
#include <gtest/gtest.h>

#include "engines/pdfa/RuleCase.h"

namespace TarnixTools::testing {
namespace {

constexpr RuleCase kCatalogCases[] = {
    {"1b", "6.1.11-2", Part::kCatalog, "/Names<<>>", "/Names<</EmbeddedFiles<</Names[]>>>>"},
    {"1b", "6.1.13-1", Part::kCatalog, "", "/OCProperties<<>>"},
    {"1b", "6.6.2-3", Part::kCatalog, "", "/AA<<>>"},
    {"2b", "6.5.2-1", Part::kCatalog, "", "/AA<<>>"},
    {"2b", "6.4.2-2", Part::kCatalog, "/NeedsRendering false", "/NeedsRendering true"},
    {"2b", "6.10-1", Part::kCatalog, "/Names<<>>", "/Names<</AlternatePresentations<<>>>>"},
    {"2b", "6.11-1", Part::kCatalog, "", "/Requirements[]"},
    {"1a", "6.8.2.2-1", Part::kBytes, "", "/Marked true|/Marked false"},
    {"2a", "6.7.2.2-1", Part::kBytes, "", "/MarkInfo|/MarkIn"},
    {"1a", "6.8.3.3-1", Part::kBytes, "", "/StructTreeRoot<<|/StructTree<<"},
    {"2a", "6.7.3.3-1", Part::kBytes, "", "/StructTreeRoot<<|/StructTree<<"},
    {"2b", "6.5.2-2", Part::kPage, "", "/AA<<>>"},
    {"2b", "6.10-2", Part::kPage, "", "/PresSteps<<>>"},
    {"2b", "6.1.13-11", Part::kPage, "/CropBox[0 0 3 3]", "/CropBox[0 0 2.9 100]"},
    {"2b", "6.1.13-11", Part::kPage, "/MediaBox[0 0 14400 100]", "/MediaBox[0 0 14401 100]"},
    {"1a", "6.8.4-1", Part::kCatalog, "/Lang(de-Latn)", "/Lang(de-1901)"},
    {"2a", "6.7.4-1", Part::kCatalog, "/Lang(de-1901)", "/Lang(de_DE)"},
    {"2b", "6.1.12-1", Part::kCatalog, "/Perms<</DocMDP 20 0 R>>", "/Perms<</Other 20 0 R>>"},
    {"3b", "6.1.12-1", Part::kCatalog, "/Perms<</UR3 20 0 R>>", "/Perms<</UR 20 0 R>>"},
};

TEST(CatalogRules, HoldAndBreak) {
  ExpectCases(kCatalogCases, "pdfa/findings/catalog.txt");
}

constexpr RuleCase kLayerCases[] = {
    {"2b", "6.9-1", Part::kCatalog, "{layers}/Name(a)>>>>", "{layers}/Name()>>>>"},
    {"2b", "6.9-2", Part::kCatalog, "{layers}/Name(a)>>/Configs[<</Name(b)>>]>>",
     "{layers}/Name(a)>>/Configs[<</Name(a)>>]>>"},
    {"3b", "6.9-3", Part::kCatalog, "{layers}/Name(a)/Order[(label)[3 0 R]]>>>>",
     "{layers}/Name(a)/Order[(label)[]]>>>>"},
    {"2b", "6.9-4", Part::kCatalog, "{layers}/Name(a)>>>>", "{layers}/Name(a)/AS[]>>>>"},
};

TEST(LayerRules, HoldAndBreak) {
  ExpectCases(kLayerCases, "pdfa/findings/layers.txt");
}

constexpr RuleCase kAnnotationCases[] = {
    {"1b", "6.5.2-1", Part::kAnnotation, "/Subtype/Link/F 4{rect}",
     "/Subtype/Caret/F 4{rect}{form}"},
    {"2b", "6.3.1-1", Part::kAnnotation, "/Subtype/Caret/F 4{rect}{form}",
     "/Subtype/Sound/F 4{rect}{form}"},
    {"1b", "6.5.3-1", Part::kAnnotation, "/Subtype/Link/F 4/CA 1.0{rect}",
     "/Subtype/Link/F 4/CA 0.9{rect}"},
    {"1b", "6.5.3-2", Part::kAnnotation, "/Subtype/Link/F 4{rect}", "/Subtype/Link/F 6{rect}"},
    {"1b", "6.5.3-2", Part::kAnnotation, "/Subtype/Link/F 12{rect}", "/Subtype/Link{rect}"},
    {"2b", "6.3.2-1", Part::kAnnotation, "/Subtype/Popup{rect}", "/Subtype/Link{rect}"},
    {"2b", "6.3.2-2", Part::kAnnotation, "/Subtype/Link/F 28{rect}", "/Subtype/Link/F 260{rect}"},
    {"1b", "6.5.3-4", Part::kAnnotation, "/Subtype/Text/F 4{rect}{form}",
     "/Subtype/Text/F 4/AP<</N 6 0 R/D 6 0 R>>{rect}"},
    {"2b", "6.3.3-2", Part::kAnnotation, "/Subtype/Text/F 4{rect}{form}",
     "/Subtype/Text/F 4/AP<</D 6 0 R>>{rect}"},
    {"1b", "6.5.3-5", Part::kAnnotation, "/Subtype/Widget/FT/Btn/F 4/AP<</N<</On 6 0 R>>>>{rect}",
     "/Subtype/Widget/FT/Btn/F 4{rect}{form}"},
    {"2b", "6.3.3-3", Part::kAnnotation, "/Subtype/Widget/FT/Btn/F 4/AP<</N<</On 6 0 R>>>>{rect}",
     "/Subtype/Widget/FT/Btn/F 4/AP<</N<<>>>>{rect}"},
    {"1b", "6.5.3-6", Part::kAnnotation, "/Subtype/Widget/FT/Tx/F 4{rect}{form}",
     "/Subtype/Widget/FT/Tx/F 4/AP<</N<</On 6 0 R>>>>{rect}"},
    {"2b", "6.3.3-4", Part::kAnnotation, "/Subtype/Text/F 4{rect}{form}",
     "/Subtype/Text/F 4/AP<</N<</On 6 0 R>>>>{rect}"},
    {"2b", "6.3.3-1", Part::kAnnotation, "/Subtype/Text/F 4/Rect[9 9 9 9]",
     "/Subtype/Text/F 4{rect}"},
    {"1b", "6.6.1-3", Part::kAnnotation, "/Subtype/Widget/F 4{rect}{form}",
     "/Subtype/Widget/F 4/A<</S/URI>>{rect}{form}"},
    {"1b", "6.6.2-1", Part::kAnnotation, "/Subtype/Widget/F 4{rect}{form}",
     "/Subtype/Widget/F 4/AA<<>>{rect}{form}"},
    {"1b", "6.9-2", Part::kAnnotation, "/Subtype/Widget/F 4{rect}{form}",
     "/Subtype/Widget/F 4{rect}"},
    {"2b", "6.4.1-1", Part::kAnnotation, "/Subtype/Widget/F 4{rect}{form}",
     "/Subtype/Widget/F 4/AA<<>>{rect}{form}"},
    {"1b", "6.5.3-3", Part::kAnnotation, "/Subtype/Link/F 4{rect}",
     "/Subtype/Link/F 4/C[1 0 0]{rect}", "/OutputIntents[]"},
};

TEST(AnnotationRules, HoldAndBreak) {
  ExpectCases(kAnnotationCases, "pdfa/findings/annotations.txt");
}

constexpr RuleCase kActionCases[] = {
    {"1b", "6.6.1-1", Part::kCatalog, "/OpenAction<</S/URI/URI(a)>>", "/OpenAction<</S/Launch>>"},
    {"2b", "6.5.1-1", Part::kCatalog, "/OpenAction<</S/GoToE>>", "/OpenAction<</S/JavaScript>>"},
    {"2b", "6.5.1-1", Part::kCatalog, "/OpenAction[3 0 R/Fit]",
     "/OpenAction<</S/URI/Next[<</S/GoTo>><</S/Hide>>]>>"},
    {"2b", "6.5.1-1", Part::kAnnotation, "/Subtype/Link/F 4/A<</S/GoTo>>{rect}",
     "/Subtype/Link/F 4/A<</S/Movie>>{rect}"},
    {"2b", "6.5.1-1", Part::kObject, "<</Title(a)/A<</S/GoTo>>>>",
     "<</Title(a)/Next 20 0 R/A<</S/Sound>>>>", "/Outlines<</First 20 0 R>>"},
    {"1b", "6.6.1-2", Part::kCatalog, "/OpenAction<</S/Named/N/LastPage>>",
     "/OpenAction<</S/Named/N/Print>>"},
    {"2b", "6.5.1-2", Part::kCatalog, "/OpenAction<</S/Named/N/PrevPage>>",
     "/OpenAction<</S/Named>>"},
};

TEST(ActionRules, HoldAndBreak) {
  ExpectCases(kActionCases, "pdfa/findings/actions.txt");
}

constexpr const char* kFields = "/AcroForm<</Fields[20 0 R]>>";

constexpr RuleCase kFormCases[] = {
    {"1b", "6.9-1", Part::kCatalog, "/AcroForm<</NeedAppearances false>>",
     "/AcroForm<</NeedAppearances true>>"},
    {"2b", "6.4.1-3", Part::kCatalog, "/AcroForm<<>>", "/AcroForm<</NeedAppearances true>>"},
    {"2b", "6.4.2-1", Part::kCatalog, "/AcroForm<<>>", "/AcroForm<</XFA()>>"},
    {"1b", "6.6.2-2", Part::kObject, "<</T(a)>>", "<</T(a)/AA<<>>>>", kFields},
    {"2b", "6.4.1-2", Part::kObject, "<</T(a)/Kids[<</T(b)>>]>>",
     "<</T(a)/Kids[<</T(b)/AA<<>>>>]>>", kFields},
};

TEST(FormRules, HoldAndBreak) {
  ExpectCases(kFormCases, "pdfa/findings/forms.txt");
}

constexpr const char* kRoles =
    "/StructTreeRoot<</K 20 0 R/RoleMap<</Own/P/A/B/B/A/Lost/Other/P/Own2>>>>";

constexpr RuleCase kStructureCases[] = {
    {"1a", "6.8.3.4-1", Part::kObject, "<</S/Own/K[1 <</Type/MCR>>]>>", "<</S/P/K<</S/Lost>>>>",
     kRoles},
    {"2a", "6.7.3.4-1", Part::kObject, "<</S/Table/K[<</S/THead>>]>>", "<</S/Unknown>>", kRoles},
    {"1a", "6.8.3.4-2", Part::kObject, "<</S/Own>>", "<</S/A>>", kRoles},
    {"2a", "6.7.3.4-2", Part::kObject, "<</S/Own>>", "<</S/B>>", kRoles},
    {"2a", "6.7.3.4-3", Part::kObject, "<</S/H1>>", "<</S/P>>", kRoles},
    {"2a", "6.7.4-1", Part::kObject, "<</S/H1/Lang(en-US)>>", "<</S/H1/Lang(en US)>>", kRoles},
    {"2b", "6.1.8-1", Part::kObject, "<</S/H#C3#A4>>", "<</S/H#E4>>", kRoles},
};

TEST(StructureRules, HoldAndBreak) {
  ExpectCases(kStructureCases, "pdfa/findings/structure.txt");
}

constexpr RuleCase kFileCases[] = {
    {"1b", "6.1.11-1", Part::kObject, "<</Type/Filespec/F(a)>>", "<</Type/Filespec{file}>>"},
    {"2b", "6.8-2", Part::kObject, "<</Type/Filespec/F(a)>>", "<</Type/Filespec/F(a){file}>>"},
    {"2b", "6.8-5", Part::kObject, "<</Type/Filespec/F(a)/UF(a)>>",
     "<</Type/Filespec/F(a)/UF(a){file}>>"},
    {"3b", "6.8-1", Part::kObject, "<</Type/Filespec/AFRelationship/Data>>",
     "<</Type/Filespec/F(a)/UF(a)/AFRelationship/Data{file}>>", "/AF[20 0 R]"},
    {"3b", "6.8-3", Part::kObject, "<</Type/Filespec/AFRelationship/Data>>", "<</Type/Filespec>>",
     "/AF[20 0 R]"},
    {"3b", "6.8-4", Part::kCatalog, "/AF[20 0 R]", "/Own<</Type/Filespec/AFRelationship/Data>>"},
};

TEST(EmbeddedFileRules, HoldAndBreak) {
  ExpectCases(kFileCases, "pdfa/findings/embedded-files.txt");
}

constexpr RuleCase kOutputCases[] = {
    {"2b", "6.2.3-2", Part::kCatalog, "",
     "/OutputIntents[<</DestOutputProfile 5 0 R>><</DestOutputProfile 6 0 R>>]"},
    {"1b", "6.2.2-1", Part::kBytes, "", "mntrRGB |scnrRGB "},
    {"2b", "6.2.3-1", Part::kBytes, "mntrRGB |prtrRGB ", "mntrRGB |mntrLab "},
    {"2b", "6.2.3-3", Part::kCatalog, "",
     "/OutputIntents[<</S/GTS_PDFX/DestOutputProfileRef<<>>>>]"},
    {"1b", "6.2.2-2", Part::kCatalog, "",
     "/OutputIntents[<</DestOutputProfile 5 0 R>><</DestOutputProfile 6 0 R>>]"},
};

TEST(OutputIntentRules, HoldAndBreak) {
  ExpectCases(kOutputCases, "pdfa/findings/output-intents.txt");
}

}  // namespace
}  // namespace TarnixTools::testing
