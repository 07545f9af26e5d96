#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "engines/toolbox/copy/layers/LayerTree.h"
#include "engines/toolbox/copy/layers/Layers.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::TempDir;
using ::TarnixTools::testing::TestPdf;

// Adds a page that shows the layers, given by the names that their objects have in the file.
void AddPage(TestPdf& file, const std::vector<std::string>& layers) {
  std::string properties;
  std::string content;
  for (std::size_t i = 0; i < layers.size(); ++i) {
    const std::string name = "/L" + std::to_string(i);
    properties += name + " {{" + layers[i] + "}}";
    content += "/OC" + name + " BDC " + std::to_string(100 * i) + " 0 90 90 re f EMC ";
  }
  file.Page().Content(content).PageEntry("/Resources<</Properties<<" + properties + ">>>>");
}

// A file with a page for each list of layers; its layers are a, b, c, d.
TestPdf FileWith(const std::vector<std::vector<std::string>>& pages,
                 const std::string& properties) {
  TestPdf file;
  for (const char* name : {"a", "b", "c", "d"}) {
    file.Object(name, std::string("<</Type/OCG/Name(") + name + ")>>");
  }
  for (const auto& layers : pages) {
    AddPage(file, layers);
  }
  return file.CatalogEntry("/OCProperties<<" + properties + ">>");
}

const std::string kAll = "/OCGs[{{a}} {{b}} {{c}} {{d}}]";

class Layers : public CopiedDocument {
 public:
  using CopiedDocument::CopiedDocument;

  Object Properties() { return Get(Catalog(), "OCProperties"); }

  Object Default() { return Get(Properties(), "D"); }

  // The value as text, with the names of layers in place of references to them.
  std::string Named(const Object& value) {
    pdf::SerializeHooks hooks;
    hooks.reference = [this](std::string& out, pdf::Reference reference) {
      out += ' ';
      out += Follow(Object::Ref(reference)).Get("Name").Text();
    };
    std::string text;
    pdf::AppendObject(text, value, hooks);
    return text;
  }

  std::string InDefault(std::string_view key) { return Named(Default().Get(key)); }

  // The object that a page's content calls by the name.
  Object OnPage(std::size_t page, std::string_view name) {
    return Get(Get(Page(page), "Resources"), "Properties").Get(name);
  }
};

TEST(Layers, BringNothingWhereThereAreNone) {
  Layers copy({{TestPdf().Pages(1).Bytes()}});
  EXPECT_FALSE(copy.Catalog().Has("OCProperties"));
}

TEST(Layers, ComeWithThePagesThatUseThem) {
  const std::string bytes = FileWith({{"a", "b"}, {"c"}}, kAll + "/D<</OFF[{{b}} {{c}}]>>").Bytes();
  Layers copy({{bytes, {0}}});
  EXPECT_EQ(copy.Named(copy.Properties().Get("OCGs")), "[ a b]");
  EXPECT_EQ(copy.InDefault("OFF"), "[ b]");
  EXPECT_EQ(copy.OnPage(0, "L1").AsReference(),
            copy.Properties().Get("OCGs").Items()[1].AsReference());
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kLayer, TPdfCopyOutcome::kKept), 2U);
  Layers other({{bytes, {1}}});
  EXPECT_EQ(other.Named(other.Properties().Get("OCGs")), "[ c]");
  EXPECT_EQ(other.InDefault("OFF"), "[ c]");
}

TEST(Layers, AreNotDeclaredWherePagesUseNone) {
  const std::string bytes = FileWith({{"a"}, {}}, kAll + "/D<</OFF[{{a}}]>>").Bytes();
  Layers copy({{bytes, {1}}});
  EXPECT_FALSE(copy.Catalog().Has("OCProperties"));
}

TEST(Layers, AllComeWithAWholeDocument) {
  const std::string bytes =
      FileWith({{"a"}, {}}, kAll + "/D<</Order[{{d}} {{a}}]/OFF[{{d}}]>>").Bytes();
  Layers copy({{bytes, {1, 0}}});
  EXPECT_EQ(copy.Named(copy.Properties().Get("OCGs")), "[ a b c d]");
  EXPECT_EQ(copy.InDefault("Order"), "[ d a]");
  EXPECT_EQ(copy.InDefault("OFF"), "[ d]");
}

TEST(Layers, ComeThroughMembershipDictionaries) {
  TestPdf file = FileWith({}, kAll + "/D<</OFF[{{a}} {{b}} {{c}} {{d}}]>>");
  file.Object("m", "<</Type/OCMD/OCGs[{{a}} null {{b}}]/P/AnyOff/VE[/Not[/Or {{c}}]]>>");
  AddPage(file, {"m"});
  file.Page();
  Layers copy({{file.Bytes(), {0}}});
  EXPECT_EQ(copy.InDefault("OFF"), "[ a b c]");
  EXPECT_EQ(copy.Named(copy.Get(copy.OnPage(0, "L0"), "VE")), "[/Not[/Or c]]");
}

TEST(Layers, ComeThroughFormsAndAnnotations) {
  TestPdf file = FileWith({}, kAll + "/D<</OFF[{{a}} {{b}} {{c}} {{d}}]>>");
  file.Object("form",
              "<</Type/XObject/Subtype/Form/BBox[0 0 9 9]/OC {{c}}/Length 0>>\nstream\n\nendstream")
      .Page()
      .Content("/X Do")
      .PageEntry("/Resources<</XObject<</X {{form}}>>>>")
      .Annotation("/Subtype/Square/Rect[0 0 9 9]/OC {{d}}")
      .Page();
  Layers copy({{file.Bytes(), {0}}});
  EXPECT_EQ(copy.InDefault("OFF"), "[ c d]");
}

TEST(Layers, KeepTheOrderOfThoseThatCameAlong) {
  const std::string bytes =
      FileWith({{"a", "c", "d"}, {}},
               kAll + "/D<</Order[(Top){{a}}[{{b}}[{{c}}]](Rest)[(Group){{b}}][(Last)[{{d}}]]]>>")
          .Bytes();
  Layers copy({{bytes, {0}}});
  EXPECT_EQ(copy.InDefault("Order"), "[(Top) a[ c](Rest)[(Last)[ d]]]");
}

TEST(Layers, MoveUpWhereTheLayerAboveIsMissing) {
  const std::string bytes =
      FileWith({{"b", "c"}, {}}, kAll + "/D<</Order[{{a}}[{{b}} {{c}}]{{d}}]>>").Bytes();
  Layers copy({{bytes, {0}}});
  EXPECT_EQ(copy.InDefault("Order"), "[ b c]");
}

TEST(Layers, KeepLinksLocksAndAutomaticStates) {
  const std::string bytes =
      FileWith({{"a", "b"}, {}},
               kAll +
                   "/D<</Name(n)/Creator(c)/Locked[{{b}} {{c}}]/ListMode/VisiblePages"
                   "/RBGroups[[{{a}} {{b}} {{c}}][{{c}} {{d}}]]"
                   "/AS[<</Event/Print/Category[/Print/Zoom]/OCGs[{{c}} {{b}}]>>"
                   "<</Event/View/Category[/View]/OCGs[{{d}}]>>]>>")
          .Bytes();
  Layers copy({{bytes, {0}}});
  EXPECT_EQ(copy.InDefault("Name"), "(n)");
  EXPECT_EQ(copy.InDefault("Creator"), "(c)");
  EXPECT_EQ(copy.InDefault("Locked"), "[ b]");
  EXPECT_EQ(copy.InDefault("ListMode"), "/VisiblePages");
  EXPECT_EQ(copy.InDefault("RBGroups"), "[[ a b]]");
  EXPECT_EQ(copy.InDefault("AS"), "[<</Event/Print/Category[/Print/Zoom]/OCGs[ b]>>]");
}

TEST(Layers, KeepWhatAlternateConfigurationsList) {
  const std::string bytes =
      FileWith({{"a", "b"}, {}},
               kAll + "/D<<>>/Configs[<</Name(one)/ListMode/VisiblePages>><</Name(two)>>]")
          .Bytes();
  Layers copy({{bytes, {0}}});
  const auto configurations = copy.Properties().Get("Configs").Items();
  ASSERT_EQ(configurations.size(), 2U);
  EXPECT_TRUE(copy.Follow(configurations[0]).Get("ListMode").IsName("VisiblePages"));
  EXPECT_FALSE(copy.Follow(configurations[1]).Has("ListMode"));
}

TEST(Layers, KeepAlternateConfigurations) {
  const std::string bytes =
      FileWith({{"a", "b"}, {}},
               kAll +
                   "/D<<>>/Configs[<</Name(one)/BaseState/OFF/ON[{{b}} {{c}}]/Intent/Design>>"
                   "<</Name(two)/BaseState/Unchanged/OFF[{{a}}]/Order[{{d}} {{a}}]>>]")
          .Bytes();
  Layers copy({{bytes, {0}}});
  EXPECT_EQ(copy.Named(copy.Properties().Get("Configs")),
            "[<</Name(one)/BaseState/OFF/Intent[/Design]/ON[ b]>>"
            "<</Name(two)/BaseState/Unchanged/OFF[ a]/Order[ a]>>]");
}

TEST(Layers, StartFromTheStateOfTheirDocument) {
  const std::string bytes = FileWith({{"a", "b"}}, kAll + "/D<</BaseState/OFF/ON[{{b}}]>>").Bytes();
  Layers copy({{bytes}});
  EXPECT_EQ(copy.InDefault("BaseState"), "/OFF");
  EXPECT_EQ(copy.InDefault("ON"), "[ b]");
}

TEST(Layers, OfTwoDocumentsStandOneAfterTheOther) {
  const std::string first =
      FileWith({{"a"}}, "/OCGs[{{a}} {{b}}]/D<</Order[(Label){{a}}]/OFF[{{a}}]/Name(first)>>")
          .Bytes();
  const std::string second =
      FileWith({{"c"}}, "/OCGs[{{c}} {{d}}]/D<</Order[{{c}} {{d}}]/OFF[{{d}}]/Name(second)>>")
          .Bytes();
  Layers copy({{first}, {TestPdf().Pages(1).Bytes()}, {second}});
  EXPECT_EQ(copy.Named(copy.Properties().Get("OCGs")), "[ a b c d]");
  EXPECT_EQ(copy.InDefault("Order"), "[[(Label) a] c d]");
  EXPECT_EQ(copy.InDefault("OFF"), "[ a d]");
  EXPECT_EQ(copy.InDefault("Name"), "(first)");
}

TEST(Layers, OfTwoDocumentsKeepTheirStates) {
  const std::string on = FileWith({{"a", "b"}}, "/OCGs[{{a}} {{b}}]/D<</OFF[{{b}}]>>").Bytes();
  const std::string off =
      FileWith({{"c", "d"}}, "/OCGs[{{c}} {{d}}]/D<</BaseState/OFF/ON[{{d}}]>>").Bytes();
  for (const auto& [first, second] : {std::pair(on, off), std::pair(off, on)}) {
    Layers copy({{first}, {second}});
    EXPECT_FALSE(copy.Default().Has("BaseState"));
    EXPECT_EQ(copy.InDefault("OFF"), first == on ? "[ b c]" : "[ c b]");
  }
}

TEST(Layers, OfTwoDocumentsKeepTheirIntents) {
  // The design layer of the first has no effect there: it must not begin to have one.
  TestPdf file = FileWith({}, "/OCGs[{{a}} {{x}}]/D<</OFF[{{a}} {{x}}]>>");
  file.Object("x", "<</Type/OCG/Name(x)/Intent/Design>>");
  AddPage(file, {"a", "x"});
  const std::string other =
      FileWith({{"c"}}, "/OCGs[{{c}}]/D<</Intent[/View/Design]/OFF[{{c}}]>>").Bytes();
  Layers copy({{file.Bytes()}, {other}});
  EXPECT_EQ(copy.InDefault("Intent"), "[/View/Design]");
  EXPECT_EQ(copy.InDefault("OFF"), "[ a c]");
}

TEST(Layers, OfADocumentMergedTwiceAreIndependent) {
  const std::string bytes = FileWith({{"a"}}, "/OCGs[{{a}}]/D<</OFF[{{a}}]/Order[{{a}}]>>").Bytes();
  Layers copy({{bytes}, {bytes}});
  EXPECT_EQ(copy.InDefault("OFF"), "[ a a]");
  EXPECT_EQ(copy.InDefault("Order"), "[ a a]");
  EXPECT_NE(copy.OnPage(0, "L0").AsReference(), copy.OnPage(1, "L0").AsReference());
  EXPECT_EQ(copy.Properties().Get("OCGs").Items()[1].AsReference(),
            copy.OnPage(1, "L0").AsReference());
}

TEST(Layers, AlternatesOfTwoDocumentsLeaveTheOthersAlone) {
  const std::string first =
      FileWith({{"a", "b"}},
               "/OCGs[{{a}} {{b}}]/D<<>>/Configs[<</Name(one)/BaseState/OFF/ON[{{b}}]>>]")
          .Bytes();
  const std::string second =
      FileWith({{"c"}}, "/OCGs[{{c}}]/D<</OFF[{{c}}]>>/Configs[<</Name(two)>>]").Bytes();
  Layers copy({{first}, {second}});
  EXPECT_EQ(copy.Named(copy.Properties().Get("Configs")),
            "[<</Name(one)/BaseState/Unchanged/ON[ b]/OFF[ a]>>"
            "<</Name(two)/BaseState/Unchanged/ON[ c]>>]");
}

TEST(Layers, ThatAreNotListedStayUnlistedAndHidden) {
  const std::string bytes = FileWith({{"a", "b"}}, "/OCGs[{{a}}]/D<</OFF[{{b}}]>>").Bytes();
  Layers copy({{bytes}});
  EXPECT_EQ(copy.Named(copy.Properties().Get("OCGs")), "[ a]");
  EXPECT_EQ(copy.InDefault("OFF"), "[ b]");
}

TEST(Layers, OfAPageCopiedTwiceAreTheSame) {
  const std::string bytes = FileWith({{"a"}}, "/OCGs[{{a}}]/D<</OFF[{{a}}]>>").Bytes();
  Layers copy({{bytes, {0, 0}}});
  EXPECT_EQ(copy.InDefault("OFF"), "[ a]");
  EXPECT_EQ(copy.OnPage(0, "L0").AsReference(), copy.OnPage(1, "L0").AsReference());
}

TEST(Layers, LeaveOutWhatIsNoLayer) {
  TestPdf file = FileWith(
      {{"a"}},
      "/OCGs[{{a}} 7 null /x <</Name(direct)>> {{page 1}} {{number}} {{array}} 999 0 R {{a}}]"
      "/D<</OFF[{{page 1}} {{a}} {{number}}]/Order[{{number}} {{a}} {{page 1}} 5 <<>>]/ON 3"
      "/RBGroups[{{a}}[{{a}} 1]/x]/AS[1 <</Event 2>> <</Event/View/OCGs 4>>]/Locked{{a}}>>"
      "/Configs[7 {{a}} null]");
  file.Object("number", "12").Object("array", "[1 2]");
  Layers copy({{file.Bytes()}});
  EXPECT_EQ(copy.Named(copy.Properties().Get("OCGs")), "[ a]");
  EXPECT_EQ(copy.InDefault("OFF"), "[ a]");
  EXPECT_EQ(copy.InDefault("Order"), "[ a]");
  EXPECT_EQ(copy.InDefault("RBGroups"), "[ a[ a]]");
}

TEST(Layers, SurvivePropertiesOfAnyType) {
  for (const char* properties : {"7", "[]", "(a)", "99 0 R", "<</OCGs 1/D 2/Configs 3>>",
                                 "<</OCGs[{{a}}]>>", "<</OCGs[{{a}}]/D[]>>"}) {
    TestPdf file;
    file.Object("a", "<</Type/OCG/Name(a)>>");
    AddPage(file, {"a"});
    Layers copy({{file.CatalogEntry(std::string("/OCProperties ") + properties).Bytes()}});
    EXPECT_EQ(copy.PageCount(), 1U) << properties;
    EXPECT_EQ(copy.Catalog().Has("OCProperties"),
              std::string(properties).find("{{a}}") != std::string::npos)
        << properties;
  }
}

TEST(Layers, EndLoopsInTheOrder) {
  TestPdf file = FileWith({{"a"}}, "/OCGs[{{a}}]/D<</Order {{x}}>>");
  file.Object("x", "[{{y}} {{a}} {{x}}]").Object("y", "[(y){{x}} {{a}} {{y}}]");
  Layers copy({{file.Bytes()}});
  EXPECT_EQ(copy.InDefault("Order"), "[[(y) a] a]");
}

// Each array holds the next one twice: read out, they would never end.
TEST(Layers, BoundAnOrderThatUnfoldsWithoutEnd) {
  TestPdf file = FileWith({{"a"}}, "/OCGs[{{a}}]/D<</Order {{x0}}/OFF[{{a}}]>>");
  for (int i = 0; i < 60; ++i) {
    const std::string next = "{{x" + std::to_string(i + 1) + "}} ";
    file.Object("x" + std::to_string(i), "[" + next + next + "]");
  }
  file.Object("x60", "[{{a}}]");
  Layers copy({{file.Bytes()}});
  EXPECT_EQ(copy.InDefault("OFF"), "[ a]");
}

TEST(Layers, BoundTheDepthOfTheOrder) {
  const std::string open(400, '[');
  const std::string close(400, ']');
  const std::string bytes =
      FileWith({{"a", "b"}}, "/OCGs[{{a}} {{b}}]/D<</Order[{{b}}" + open + "{{a}}" + close + "]>>")
          .Bytes();
  Layers copy({{bytes}});
  EXPECT_EQ(copy.InDefault("Order"), "[ b]");
}

TEST(LayerTree, KeepsWhatIsLeftOfManyLayers) {
  LayerTree tree;
  constexpr std::uint32_t kCount = 1000;
  for (std::uint32_t i = 0; i < kCount; ++i) {
    tree.Open();
    tree.AddLabel("(" + std::to_string(i) + ")");
    tree.AddLayer(kCount - 1 - i);
    tree.Close();
  }
  tree.Finish();
  std::string out;
  tree.AppendKept(out, std::vector<KeptLayer>{{3, 30}, {500, 40}});
  EXPECT_EQ(out, "[(499)40 0 R][(996)30 0 R]");
}

// What a layer hides, poppler must not show, before and after.
TEST(Layers, StayHiddenForAnIndependentReader) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  TempDir directory;
  const std::string on = FileWith({{"a", "b"}}, "/OCGs[{{a}} {{b}}]/D<</OFF[{{b}}]>>").Bytes();
  const std::string off =
      FileWith({{"c", "d"}}, "/OCGs[{{c}} {{d}}]/D<</BaseState/OFF/ON[{{d}}]>>").Bytes();
  const auto render = [&](const std::string& bytes, const std::string& page) {
    const std::string path = testing::WriteBytes(directory.Path("x.pdf"), bytes);
    return testing::RunProgram({"pdftoppm", "-r", "20", "-f", page, "-l", page, path}).output;
  };
  const std::string merged = CopyAll({{on}, {off}});
  ASSERT_NE(render(on, "1"), render(off, "1"));
  EXPECT_EQ(render(merged, "1"), render(on, "1"));
  EXPECT_EQ(render(merged, "2"), render(off, "1"));
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
