// What the rules of every level say of facts, on both sides of every bound: of annotations, documents and metadata.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/Sayings.h"
#include "engines/pdfa/rules/ActionFacts.h"
#include "engines/pdfa/rules/AnnotationFacts.h"
#include "engines/pdfa/rules/DocumentFacts.h"
#include "engines/pdfa/rules/EmbeddedFileFacts.h"
#include "engines/pdfa/rules/FormFacts.h"
#include "engines/pdfa/rules/MetadataFacts.h"
#include "engines/pdfa/rules/StructureFacts.h"
#include "support/Expected.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::IsAsExpected;

AnnotationFacts SoundAnnotation() {
  AnnotationFacts annotation;
  annotation.subtype = "Text";
  annotation.flags = 4;
  annotation.width = 10;
  annotation.height = 10;
  annotation.has_appearance = true;
  annotation.has_only_normal = true;
  annotation.normal = NormalAppearance::kStream;
  return annotation;
}

template <typename Change>
void SayAnnotation(Sayings& sayings, const std::string& what, const Change& change) {
  AnnotationFacts annotation = SoundAnnotation();
  change(annotation);
  sayings.Say("annotation " + what, annotation);
}

void SayAppearances(Sayings& sayings) {
  for (const char* subtype : {"Text", "Link", "Popup", "Widget"}) {
    for (int bits = 0; bits < 16; ++bits) {
      SayAnnotation(sayings, subtype + std::to_string(bits), [&](AnnotationFacts& annotation) {
        annotation.subtype = subtype;
        annotation.is_button = (bits & 1) != 0;
        annotation.normal = static_cast<NormalAppearance>(std::min(bits >> 1 & 3, 2));
        annotation.has_only_normal = annotation.normal != NormalAppearance::kNone;
        annotation.has_states = (bits & 8) != 0;
      });
    }
    SayAnnotation(sayings, std::string("without an appearance ") + subtype,
                  [&](AnnotationFacts& annotation) {
                    annotation.subtype = subtype;
                    annotation.has_appearance = false;
                    annotation.has_only_normal = false;
                  });
  }
}

TEST(DocumentFactFindings, AreThoseOfAnnotations) {
  Sayings sayings;
  for (const char* subtype :
       {"Text",        "Link",     "FreeText",  "Line",     "Square", "Circle",         "Highlight",
        "Underline",   "Squiggly", "StrikeOut", "Stamp",    "Ink",    "Popup",          "Widget",
        "PrinterMark", "TrapNet",  "Polygon",   "PolyLine", "Caret",  "FileAttachment", "Watermark",
        "Redact",      "Sound",    "Movie",     "Screen",   "3D",     "RichMedia",      ""}) {
    SayAnnotation(sayings, subtype,
                  [&](AnnotationFacts& annotation) { annotation.subtype = subtype; });
  }
  for (std::int64_t flags = 0; flags <= 1024; flags = flags == 0 ? 1 : 2 * flags) {
    for (const std::int64_t print : {0, 4}) {
      SayAnnotation(sayings, "flags " + std::to_string(flags | print),
                    [&](AnnotationFacts& annotation) { annotation.flags = flags | print; });
    }
  }
  SayAnnotation(sayings, "no flags", [](AnnotationFacts& annotation) { annotation.flags.reset(); });
  for (const double opacity : {0.0, 0.99, 1.0, 1.01}) {
    SayAnnotation(sayings, "opacity " + std::to_string(opacity),
                  [&](AnnotationFacts& annotation) { annotation.opacity = opacity; });
  }
  for (const bool is_rgb : {false, true}) {
    SayAnnotation(sayings, "colored " + std::to_string(is_rgb), [&](AnnotationFacts& annotation) {
      annotation.has_color = true;
      annotation.output_is_rgb = is_rgb;
    });
  }
  for (const auto& size : {std::pair(0, 0), std::pair(1, 0), std::pair(0, 1)}) {
    SayAnnotation(sayings,
                  "of " + std::to_string(size.first) + " by " + std::to_string(size.second),
                  [&](AnnotationFacts& annotation) {
                    annotation.width = size.first;
                    annotation.height = size.second;
                    annotation.has_appearance = false;
                    annotation.has_only_normal = false;
                  });
  }
  SayAppearances(sayings);
  SayEach(sayings, "widget ",
          {&WidgetFacts::has_action, &WidgetFacts::has_additional_actions,
           &WidgetFacts::has_appearance});
  for (const char* type : {"GoTo", "GoToR", "GoToE", "Thread", "URI", "Named", "SubmitForm",
                           "Launch", "Sound", "Movie", "Hide", "ResetForm", "ImportData",
                           "JavaScript", "SetOCGState", "Rendition", "Trans", "GoTo3DView", ""}) {
    sayings.Say(std::string("action ") + type, ActionFacts{type});
  }
  for (const char* name : {"NextPage", "PrevPage", "FirstPage", "LastPage", "Print", ""}) {
    sayings.Say(std::string("named ") + name, NamedActionFacts{name});
  }
  EXPECT_TRUE(IsAsExpected("pdfa/facts/annotations.txt", sayings.text()));
}

TEST(DocumentFactFindings, AreThoseOfDocuments) {
  Sayings sayings;
  for (bool CatalogFacts::*const member :
       {&CatalogFacts::has_additional_actions, &CatalogFacts::has_layers,
        &CatalogFacts::has_embedded_files, &CatalogFacts::has_alternate_presentations,
        &CatalogFacts::needs_rendering, &CatalogFacts::has_requirements, &CatalogFacts::is_marked,
        &CatalogFacts::has_structure}) {
    CatalogFacts catalog;
    catalog.*member = true;
    sayings.Say("catalog", catalog);
  }
  SayEach(sayings, "page ",
          {&PageFacts::has_additional_actions, &PageFacts::has_presentation_steps});
  for (const double side : {2.99, 3.0, 14400.0, 14400.01}) {
    sayings.Say("wide " + std::to_string(side), PageBoxFacts{side, 100});
    sayings.Say("high " + std::to_string(side), PageBoxFacts{100, side});
  }
  SayEach(sayings, "layers ",
          {&LayerConfigurationFacts::has_name, &LayerConfigurationFacts::has_name_of_another,
           &LayerConfigurationFacts::lists_all, &LayerConfigurationFacts::has_automatic_states});
  SayEach(sayings, "form ", {&FormFacts::needs_appearances, &FormFacts::has_xfa});
  SayEach(sayings, "field ", {&FieldFacts::has_additional_actions});
  SayEach(sayings, "signature ", {&SignatureFacts::covers_document});
  for (const std::size_t signers : {0U, 1U, 2U}) {
    for (const bool has_certificate : {false, true}) {
      sayings.Say("signers " + std::to_string(signers) + (has_certificate ? " known" : ""),
                  SignatureMessageFacts{.has_certificate = has_certificate, .signers = signers});
    }
  }
  SayEach(sayings, "permissions ", {&PermissionsFacts::has_others});
  SayEach(sayings, "reference ",
          {&SignatureReferenceFacts::has_digest, &SignatureReferenceFacts::document_has_mdp});
  SayEach(
      sayings, "element ",
      {&StructureElementFacts::leads_to_standard_type, &StructureElementFacts::is_mapped_in_circle,
       &StructureElementFacts::is_remapped_standard_type});
  for (const char* tag :
       {"",        "a",  "de", "de-DE", "abcdefgh", "abcdefghi", "de-abcdefgh", "de-abcdefghi",
        "de-1901", "d1", "1",  "-",     "de-",      "-de",       "de--DE",      "de_DE",
        "DE-z9",   "@",  "[",  "`",     "{",        "aZ-Az",     "de-/",        "de-:"}) {
    sayings.Say(std::string("language ") + tag, LanguageFacts{tag});
  }
  SayEach(sayings, "file specification ",
          {&FileSpecificationFacts::embeds_file, &FileSpecificationFacts::has_names,
           &FileSpecificationFacts::has_relationship, &FileSpecificationFacts::is_associated});
  for (const char* type : {"", "text", "text/", "/plain", "text/plain", "a-_+.9/Z0z", "a b/c",
                           "a/b/c", "a@/b", "a/[", "`/a", "{/a", "a/,", "a/:"}) {
    sayings.Say(std::string("media type ") + type, EmbeddedFileFacts{.media_type = type});
  }
  sayings.Say("archive", EmbeddedFileFacts{.media_type = "a/b", .is_pdfa = true});
  EXPECT_TRUE(IsAsExpected("pdfa/facts/documents.txt", sayings.text()));
}

ClaimFacts ClaimOf(const char* part, const char* conformance) {
  ClaimFacts claim;
  claim.has_identification = true;
  claim.part = part;
  claim.conformance = conformance;
  return claim;
}

void SayClaims(Sayings& sayings) {
  for (const char* part : {"", "0", "1", "2", "3", "4"}) {
    sayings.Say(std::string("part ") + part, ClaimOf(part, "A"));
  }
  for (const char* part : {"1", "2", "3"}) {
    for (const char* conformance : {"", "A", "B", "U", "C", "a", "AB"}) {
      sayings.Say(part + std::string(conformance), ClaimOf(part, conformance));
    }
    for (bool ClaimFacts::*const member :
         {&ClaimFacts::has_identification, &ClaimFacts::part_has_prefix,
          &ClaimFacts::conformance_has_prefix, &ClaimFacts::amendment_has_prefix,
          &ClaimFacts::corrigendum_has_prefix}) {
      ClaimFacts claim = ClaimOf(part, "A");
      claim.*member = false;
      sayings.Say(std::string("claim of part ") + part, claim);
    }
  }
}

void SayExtensions(Sayings& sayings) {
  for (const auto& [part_name, part] : {std::pair("schema", XmpExtensionPart::kSchema),
                                        std::pair("property", XmpExtensionPart::kProperty),
                                        std::pair("type", XmpExtensionPart::kValueType),
                                        std::pair("field", XmpExtensionPart::kField)}) {
    for (const char* name : {"schema", "namespaceURI", "prefix", "property", "valueType", "name",
                             "category", "description", "type", "field", "other"}) {
      for (int bits = 0; bits < 4; ++bits) {
        sayings.Say(std::string(part_name) + "." + name + std::to_string(bits),
                    ExtensionEntryFacts{.part = part,
                                        .name = name,
                                        .is_there = (bits & 1) != 0,
                                        .is_right = (bits & 2) != 0});
      }
    }
  }
}

TEST(DocumentFactFindings, AreThoseOfMetadata) {
  Sayings sayings;
  SayEach(sayings, "metadata ",
          {&DocumentMetadataFacts::has_stream, &DocumentMetadataFacts::has_filter});
  SayEach(sayings, "packet ",
          {&PacketFacts::has_bytes, &PacketFacts::has_encoding, &PacketFacts::is_sound,
           &PacketFacts::is_utf8});
  SayEach(sayings, "property ", {&PropertyFacts::is_defined, &PropertyFacts::has_right_type});
  SayEach(sayings, "schemas ", {&ExtensionsFacts::is_bag, &ExtensionsFacts::has_right_prefix});
  SayEach(sayings, "extension ", {&ExtensionFacts::has_other_fields});
  for (bool InformationFacts::*const member :
       {&InformationFacts::creation_date_agrees, &InformationFacts::title_agrees,
        &InformationFacts::author_agrees, &InformationFacts::subject_agrees,
        &InformationFacts::keywords_agree, &InformationFacts::creator_agrees,
        &InformationFacts::producer_agrees, &InformationFacts::modification_date_agrees}) {
    InformationFacts information;
    information.*member = false;
    sayings.Say("information", information);
  }
  SayClaims(sayings);
  EXPECT_TRUE(IsAsExpected("pdfa/facts/metadata.txt", sayings.text()));
  Sayings of_extensions;
  SayExtensions(of_extensions);
  EXPECT_TRUE(IsAsExpected("pdfa/facts/extensions.txt", of_extensions.text()));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
