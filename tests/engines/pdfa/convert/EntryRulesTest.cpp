// Each entry that is taken out of a document: where it is, and what is told of it.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/OpenedConversion.h"
#include "engines/pdfa/convert/structure/ForbiddenEntries.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::RawPdf;

constexpr LevelSet kNever = 0;
constexpr LevelSet kPartsNot1 = kParts2And3;

struct Row {
  const char* key;
  const char* object;  // "stream ENTRIES" for a stream
  LevelSet levels;     // at which the entry goes
  const char* what = "";
};

constexpr const char* kAction = "actions that run something or depend on the viewer";
constexpr const char* kPrinting = "settings of a printing device";
constexpr const char* kTransparency = "settings of transparency, which this part does not have";
constexpr const char* kOutside = "references to data outside of the file";

constexpr Row kActions[] = {
    {"A", "<</A<</S/JavaScript>>>>", kAllLevels, kAction},
    {"A", "<</A<</S/Launch>>>>", kAllLevels, kAction},
    {"A", "<</A<</S/ResetForm>>>>", kAllLevels, kAction},
    {"A", "<</A<</S/GoToE>>>>", kPart1, kAction},
    {"A", "<</A<</S/GoTo>>>>", kNever},
    {"A", "<</A<</S/GoToR>>>>", kNever},
    {"A", "<</A<</S/Thread>>>>", kNever},
    {"A", "<</A<</S/URI>>>>", kNever},
    {"A", "<</A<</S/SubmitForm>>>>", kNever},
    {"A", "<</A<</S/Named/N/NextPage>>>>", kNever},
    {"A", "<</A<</S/Named/N/PrevPage>>>>", kNever},
    {"A", "<</A<</S/Named/N/FirstPage>>>>", kNever},
    {"A", "<</A<</S/Named/N/LastPage>>>>", kNever},
    {"A", "<</A<</S/Named/N/Print>>>>", kAllLevels, kAction},
    {"A", "<</A<</S/Named>>>>", kAllLevels, kAction},
    {"A", "<</A<</D[0]>>>>", kNever},
    {"A", "<</A[<</S/GoTo>><</S/Launch>>]>>", kAllLevels, kAction},
    {"A", "<</A[<</S/GoTo>>]>>", kNever},
    {"A", "<</Subtype/Widget/A<</S/GoTo>>>>", kAllLevels, kAction},
    {"PA", "<</PA<</S/Launch>>>>", kAllLevels, kAction},
    {"PA", "<</PA<</S/URI>>>>", kNever},
    {"OpenAction", "<</OpenAction<</S/Launch>>>>", kAllLevels, kAction},
    {"OpenAction", "<</OpenAction[3 0 R/Fit]>>", kNever},
    {"Next", "<</Next<</S/Launch>>>>", kAllLevels, kAction},
    {"Next", "<</Next 3 0 R>>", kNever},
    {"AA", "<</AA<</O<<>>>>>>", kAllLevels, kAction},
    {"AA", "<</AA<</Type/Font>>>>", kNever},
    {"AA", "<</AA<</Subtype/Form>>>>", kNever},
    {"AA", "<</AA 1>>", kNever},
    {"JavaScript", "<</JavaScript<</Names[]>>>>", kAllLevels, "scripts"},
    {"JavaScript", "<</JavaScript<</Kids[]>>>>", kAllLevels, "scripts"},
    {"JavaScript", "<</JavaScript<<>>>>", kNever},
};

constexpr Row kStreams[] = {
    {"Alternates", "stream /Subtype/Image/Alternates[]", kAllLevels, "alternate images"},
    {"Alternates", "stream /Subtype/Form/Alternates[]", kNever},
    {"Alternates", "<</Subtype/Image/Alternates[]>>", kNever},
    {"OPI", "stream /Subtype/Image/OPI<<>>", kAllLevels, kOutside},
    {"OPI", "stream /Subtype/Form/OPI<<>>", kAllLevels, kOutside},
    {"OPI", "stream /OPI<<>>", kNever},
    {"Interpolate", "stream /Subtype/Image/Interpolate true", kAllLevels,
     "interpolation of images"},
    {"Interpolate", "stream /Subtype/Image/Interpolate false", kNever},
    {"Interpolate", "stream /Subtype/Image/Interpolate 1", kAllLevels, "interpolation of images"},
    {"Interpolate", "stream /Subtype/Form/Interpolate true", kNever},
    {"Intent", "stream /Subtype/Image/Intent/Odd", kAllLevels,
     "rendering intents that are not known"},
    {"Intent", "stream /Subtype/Image/Intent/RelativeColorimetric", kNever},
    {"Intent", "stream /Subtype/Image/Intent/AbsoluteColorimetric", kNever},
    {"Intent", "stream /Subtype/Image/Intent/Perceptual", kNever},
    {"Intent", "stream /Subtype/Image/Intent/Saturation", kNever},
    {"Intent", "<</Type/OCG/Intent/View>>", kNever},
    {"PS", "stream /Subtype/Form/PS 3 0 R", kAllLevels, "PostScript"},
    {"PS", "stream /Subtype/Image/PS 3 0 R", kNever},
    {"Subtype2", "stream /Subtype/Form/Subtype2/PS", kAllLevels, "PostScript"},
    {"Subtype2", "stream /Subtype/Image/Subtype2/PS", kNever},
    {"Ref", "stream /Subtype/Form/Ref<<>>", kAllLevels, kOutside},
    {"Ref", "<</Subtype/Form/Ref<<>>>>", kNever},
    {"F", "stream /F(elsewhere)", kAllLevels, kOutside},
    {"F", "<</F(elsewhere)>>", kNever},
    {"FFilter", "stream /FFilter/FlateDecode", kAllLevels, kOutside},
    {"FDecodeParms", "stream /FDecodeParms<<>>", kAllLevels, kOutside},
};

constexpr Row kStates[] = {
    {"RI", "<</RI/Odd>>", kAllLevels, "rendering intents that are not known"},
    {"RI", "<</RI/Perceptual>>", kNever},
    {"RI", "<</RI/Odd/S/P>>", kNever},
    {"RI", "<</RI(Odd)>>", kNever},
    {"TR", "<</TR/Identity>>", kAllLevels, kPrinting},
    {"TR", "<</TR[/Identity]>>", kAllLevels, kPrinting},
    {"TR", "<</TR<</FunctionType 2>>>>", kAllLevels, kPrinting},
    {"TR", "<</TR<<>>>>", kNever},
    {"TR", "<</TR/Identity/G 3 0 R>>", kNever},
    {"TR2", "<</TR2/Identity>>", kAllLevels, kPrinting},
    {"TR2", "<</TR2<</FunctionType 2>>>>", kAllLevels, kPrinting},
    {"TR2", "<</TR2/Default>>", kNever},
    {"TR2", "<</TR2<<>>>>", kNever},
    {"HTP", "<</HTP[0 0]>>", kAllLevels, kPrinting},
    {"HTP", "<</HTP 1>>", kNever},
    {"HT", "<</HT/Default>>", kAllLevels, kPrinting},
    {"HT", "<</HT<</HalftoneType 1>>>>", kAllLevels, kPrinting},
    {"HT", "<</HT<<>>>>", kNever},
    {"OPM", "<</OPM 1>>", kPartsNot1, kPrinting},
    {"OPM", "<</OPM 0>>", kNever},
    {"OPM", "<</OPM 1/FT/Tx>>", kNever},
    {"OPM", "<</OPM/Odd>>", kNever},
    {"BM", "<</BM/Odd>>", kAllLevels, "blend modes that are not known"},
    {"BM", "<</BM[/Normal/Odd]>>", kAllLevels, "blend modes that are not known"},
    {"BM", "<</BM[]>>", kAllLevels, "blend modes that are not known"},
    {"BM", "<</BM[/Multiply]>>", kPart1, kTransparency},
    {"BM", "<</BM/Normal>>", kNever},
    {"BM", "<</BM/Compatible>>", kNever},
    {"BM", "<</BM 1>>", kNever},
    {"BM", "<</BM/Multiply>>", kPart1, kTransparency},
    {"BM", "<</BM/Screen>>", kPart1, kTransparency},
    {"BM", "<</BM/Overlay>>", kPart1, kTransparency},
    {"BM", "<</BM/Darken>>", kPart1, kTransparency},
    {"BM", "<</BM/Lighten>>", kPart1, kTransparency},
    {"BM", "<</BM/ColorDodge>>", kPart1, kTransparency},
    {"BM", "<</BM/ColorBurn>>", kPart1, kTransparency},
    {"BM", "<</BM/HardLight>>", kPart1, kTransparency},
    {"BM", "<</BM/SoftLight>>", kPart1, kTransparency},
    {"BM", "<</BM/Difference>>", kPart1, kTransparency},
    {"BM", "<</BM/Exclusion>>", kPart1, kTransparency},
    {"BM", "<</BM/Hue>>", kPart1, kTransparency},
    {"BM", "<</BM/Saturation>>", kPart1, kTransparency},
    {"BM", "<</BM/Color>>", kPart1, kTransparency},
    {"BM", "<</BM/Luminosity>>", kPart1, kTransparency},
    {"CA", "<</CA .5>>", kPart1, kTransparency},
    {"CA", "<</CA 1>>", kNever},
    {"CA", "<</CA(text)>>", kNever},
    {"CA", "<</CA 1/Rect[0 0 9 9]/Subtype/Square>>", kPart1, "opacity of annotations"},
    {"CA", "<</CA 1/Rect[0 0 9 9]>>", kNever},
    {"CA", "<</CA 1/Subtype/Square>>", kNever},
    {"ca", "<</ca .5>>", kPart1, kTransparency},
    {"ca", "<</ca 1>>", kNever},
    {"SMask", "<</SMask<</S/Alpha/G 3 0 R>>>>", kPart1, kTransparency},
    {"SMask", "<</SMask<</S/Alpha>>>>", kNever},
    {"SMask", "<</SMask<</G 3 0 R>>>>", kNever},
    {"SMask", "<</SMask/None>>", kNever},
    {"SMask", "stream /SMask<</S/Alpha/G 3 0 R>>", kNever},
    {"Group", "<</Group<</S/Transparency>>>>", kPart1, "transparency groups"},
    {"Group", "<</Group<</S/Other>>>>", kNever},
};

constexpr Row kOthers[] = {
    {"Metadata", "<</Metadata<</Subtype/XML>>>>", kAllLevels, "metadata of parts of the document"},
    {"Metadata", "<</Metadata<</Subtype/Other>>>>", kNever},
    {"Metadata", "<</Metadata<<>>>>", kNever},
    {"Metadata", "<</Metadata<</Subtype/XML>>/Type/Catalog>>", kNever},
    {"Metadata", "<</Metadata<</Subtype/XML>>/Pages 2 0 R>>", kNever},
    {"EF", "<</F(a)/EF<<>>>>", kPart1, "embedded files"},
    {"EF", "<</UF(a)/EF<<>>>>", kPart1, "embedded files"},
    {"EF", "<</F(a)/EF 1>>", kNever},
    {"EF", "<</EF<<>>>>", kNever},
    {"EmbeddedFiles", "<</EmbeddedFiles<</Names[]>>>>", kPart1, "embedded files"},
    {"EmbeddedFiles", "<</EmbeddedFiles<</Kids[]>>>>", kPart1, "embedded files"},
    {"EmbeddedFiles", "<</EmbeddedFiles<<>>>>", kPart1, "embedded files"},
    {"EmbeddedFiles", "<</EmbeddedFiles<</Own 1>>>>", kNever},
    {"EmbeddedFiles", "<</EmbeddedFiles 1>>", kNever},
    {"NeedAppearances", "<</NeedAppearances true/Fields[]>>", kAllLevels,
     "the wish that viewers draw fields themselves"},
    {"NeedAppearances", "<</NeedAppearances true>>", kNever},
    {"XFA", "<</XFA[]/Fields[]>>", kAllLevels, "XFA forms"},
    {"XFA", "<</XFA[]>>", kNever},
    {"NeedsRendering", "<</NeedsRendering true/Type/Catalog>>", kAllLevels, "XFA forms"},
    {"NeedsRendering", "<</NeedsRendering true>>", kNever},
    {"Requirements", "<</Requirements[]/Pages 2 0 R>>", kAllLevels, "requirements on the viewer"},
    {"Requirements", "<</Requirements[]>>", kNever},
    {"Perms", "<</Perms<<>>/Type/Catalog>>", kAllLevels, "permissions granted by signatures"},
    {"Perms", "<</Perms<<>>>>", kNever},
    {"Version", "<</Version/1.7/Type/Catalog>>", kAllLevels, "a version of the catalog's own"},
    {"Version", "<</Version/1.7>>", kNever},
    {"AlternatePresentations", "<</AlternatePresentations 1>>", kAllLevels,
     "alternate presentations"},
    {"Lang", "<</Lang(de-DE)>>", kNever},
    {"Lang", "<</Lang()>>", kNever},
    {"Lang", "<</Lang(de-1996)>>", SetOf(Level::k1a),
     "languages that are not named as they should be"},
    {"Lang", "<</Lang(d3)>>", kTaggedLevels, "languages that are not named as they should be"},
    {"Lang", "<</Lang(de-)>>", kTaggedLevels, "languages that are not named as they should be"},
    {"Lang", "<</Lang(-de)>>", kTaggedLevels, "languages that are not named as they should be"},
    {"Lang", "<</Lang(azAZbcde)>>", kNever},
    {"Lang", "<</Lang(azAZbcdef)>>", kTaggedLevels,
     "languages that are not named as they should be"},
    {"Lang", "<</Lang(d@)>>", kTaggedLevels, "languages that are not named as they should be"},
    {"Lang", "<</Lang(d[)>>", kTaggedLevels, "languages that are not named as they should be"},
    {"Lang", "<</Lang(d`)>>", kTaggedLevels, "languages that are not named as they should be"},
    {"Lang", "<</Lang(d{)>>", kTaggedLevels, "languages that are not named as they should be"},
    {"Lang", "<</Lang/x!>>", kNever},
    {"PresSteps", "<</PresSteps<<>>/Type/Page>>", kAllLevels, "steps of a presentation"},
    {"PresSteps", "<</PresSteps<<>>>>", kNever},
};

void ExpectRow(const Row& row, Level level) {
  SCOPED_TRACE(std::string(NameOf(level)) + " " + row.object);
  constexpr std::string_view kStream = "stream ";
  const std::string object = row.object;
  RawPdf file = RawPdf().Pages(1);
  if (object.starts_with(kStream)) {
    file.Stream(4, object.substr(kStream.size()), "x");
  } else {
    file.Object(4, object);
  }
  OpenedConversion opened(file, level);
  RemoveForbiddenEntries(opened.conversion());
  const bool goes = Contains(row.levels, level);
  EXPECT_NE(opened.Changed(4).Has(row.key), goes);
  EXPECT_EQ(opened.Report(), goes ? std::string("left out: ") + row.what + "\n" : "");
}

constexpr Level kLevels[] = {Level::k1b, Level::k1a, Level::k2b, Level::k2a, Level::k3u};

TEST(EntryRules, TakeActionsOut) {
  for (const Row& row : kActions) {
    for (const Level level : kLevels) {
      ExpectRow(row, level);
    }
  }
}

TEST(EntryRules, TakeEntriesOfStreamsOut) {
  for (const Row& row : kStreams) {
    for (const Level level : kLevels) {
      ExpectRow(row, level);
    }
  }
}

TEST(EntryRules, TakeEntriesOfGraphicsStatesOut) {
  for (const Row& row : kStates) {
    for (const Level level : kLevels) {
      ExpectRow(row, level);
    }
  }
}

TEST(EntryRules, TakeOtherEntriesOut) {
  for (const Row& row : kOthers) {
    for (const Level level : kLevels) {
      ExpectRow(row, level);
    }
  }
}

// Part 2 has files that are PDF/A themselves.
TEST(EntryRules, TakeFilesOutThatAreNoPdfA) {
  for (const Level level : kLevels) {
    RawPdf file = RawPdf().Pages(1).Object(4, "<</F(a)/EF<</F 5 0 R>>>>").Stream(5, "", "x");
    OpenedConversion opened(file, level);
    RemoveForbiddenEntries(opened.conversion());
    EXPECT_EQ(opened.Changed(4).Has("EF"), PartOf(level) == 3);
    EXPECT_EQ(opened.Report(), PartOf(level) == 3   ? ""
                               : PartOf(level) == 2 ? "left out: embedded files that are no PDF/A\n"
                                                    : "left out: embedded files\n");
  }
}

// A length alone makes no stream.
TEST(EntryRules, TakeFilesOnlyOutOfStreams) {
  for (const Level level : kLevels) {
    OpenedConversion opened(RawPdf()
                                .Pages(1)
                                .Object(4, "<</Length 5/F(x)/FFilter/Own>>")
                                .Stream(5, "/FFilter/Own/F(x)", "x"),
                            level);
    RemoveForbiddenEntries(opened.conversion());
    EXPECT_TRUE(opened.Changed(4).Has("F"));
    EXPECT_TRUE(opened.Changed(4).Has("FFilter"));
    EXPECT_FALSE(opened.Changed(5).Has("F"));
    EXPECT_FALSE(opened.Changed(5).Has("FFilter"));
  }
}

TEST(EntryRules, CountAtAnyDepth) {
  OpenedConversion opened(
      RawPdf()
          .Pages(1)
          .Object(4, "<</One[1<</PA<</S/Launch>>/B 2>>]/Two<</C<</HTP[0]/D[<</TR/Identity>>]>>>>>>")
          .Object(5, "[<</OPM 1/E 3>>]"));
  RemoveForbiddenEntries(opened.conversion());
  EXPECT_EQ(opened.ChangedText(4), "<</One[1<</B 2>>]/Two<</C<</D[<<>>]>>>>>>");
  EXPECT_EQ(opened.ChangedText(5), "[<</E 3>>]");
  EXPECT_EQ(opened.Report(),
            "left out: actions that run something or depend on the viewer\n"
            "left out: settings of a printing device (3)\n");
}

// An action that is followed by too many others goes with them.
TEST(EntryRules, LookAtSoManyActionsOnly) {
  const auto keeps = [](int count) {
    std::string actions;
    for (int i = 0; i < count; ++i) {
      actions += "<</S/URI>>";
    }
    OpenedConversion opened(RawPdf().Pages(1).Object(4, "<</Next[" + actions + "]>>"));
    RemoveForbiddenEntries(opened.conversion());
    return opened.Changed(4).Has("Next");
  };
  EXPECT_TRUE(keeps(1'000));
  EXPECT_FALSE(keeps(1'001));
}

TEST(EntryRules, RoundLargeNumbersInPart1) {
  RawPdf file = RawPdf().Pages(1).Object(4, "<</A 40000.4/B[-40000.6 1.5]/C<</D 32767.0>>>>");
  OpenedConversion part1(file, Level::k1b);
  RemoveForbiddenEntries(part1.conversion());
  EXPECT_EQ(part1.ChangedText(4), "<</A 40000/B[-40001 1.5]/C<</D 32767.0>>>>");
  EXPECT_EQ(part1.Report(), "changed: numbers that are too large for real ones (2)\n");
  OpenedConversion part2(file, Level::k2b);
  RemoveForbiddenEntries(part2.conversion());
  EXPECT_EQ(part2.Report(), "");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
