#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/tree/NameTree.h"
#include "pdf/write/NameTreeWriter.h"
#include "pdf/write/Serialize.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;

// "name=value" of each pair of the tree that is object 10.
std::vector<std::string> PairsOf(RawPdf& file) {
  const std::string bytes = file.Table();
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  std::vector<std::string> pairs;
  ReadNameTree(*document, Object::Ref({10, 0}), [&](std::string_view name, const Object& value) {
    std::string text;
    AppendObject(text, value);
    pairs.push_back(std::string(name) + "=" + text);
  });
  return pairs;
}

using Pairs = std::vector<std::string>;

TEST(NameTree, ReadsASingleNode) {
  RawPdf file;
  file.Pages(1).Object(10, "<</Names[(a) 1 (b) 3 0 R]>>");
  EXPECT_EQ(PairsOf(file), (Pairs{"a=1", "b=3 0 R"}));
}

TEST(NameTree, ReadsLevelsInOrder) {
  RawPdf file;
  file.Pages(1)
      .Object(10, "<</Kids[11 0 R<</Kids[<</Names[(c)3]>>12 0 R]>>13 0 R]>>")
      .Object(11, "<</Limits[(x)(y)]/Names 14 0 R>>")
      .Object(12, "<</Names[(d)4]>>")
      .Object(13, "<</Names[(e)5]>>")
      .Object(14, "[(a)1 15 0 R 2]")
      .Object(15, "(b)");
  EXPECT_EQ(PairsOf(file), (Pairs{"a=1", "b=2", "c=3", "d=4", "e=5"}));
}

TEST(NameTree, EndsLoopsAndPassesOverWrongTypes) {
  RawPdf file;
  file.Pages(1)
      .Object(10, "<</Kids[11 0 R 10 0 R 12 0 R 99 0 R 7 [] 13 0 R]/Names[(top)0]>>")
      .Object(11, "<</Kids[10 0 R 11 0 R]/Names[(a)1(odd)]>>")
      .Object(12, "<</Kids 12 0 R/Names[/b 2 (c)3]>>")
      .Object(13, "13 0 R");
  EXPECT_EQ(PairsOf(file), (Pairs{"top=0", "a=1", "c=3"}));
}

TEST(NameTree, ReadsNoObjectTwice) {
  RawPdf file;
  std::string kids;
  for (int i = 20; i < 520; ++i) {
    kids += std::to_string(i) + " 0 R ";
    file.Object(i, "<</Names 11 0 R>>");
  }
  file.Pages(1).Object(10, "<</Kids[" + kids + "]>>").Object(11, "[(a)1]");
  EXPECT_EQ(PairsOf(file), (Pairs{"a=1"}));
}

TEST(NameTree, ReadsAChainOfAnyDepth) {
  RawPdf file;
  file.Pages(1);
  constexpr int kDepth = 50'000;
  for (int i = 0; i < kDepth; ++i) {
    file.Object(10 + i, "<</Kids[" + std::to_string(11 + i) + " 0 R]>>");
  }
  file.Object(10 + kDepth, "<</Names[(deep)1]>>");
  EXPECT_EQ(PairsOf(file), (Pairs{"deep=1"}));
}

TEST(NameTree, TakesWhatIsNoTreeForEmpty) {
  for (const char* root : {"null", "[]", "(a)", "<<>>", "<</Names 1/Kids 2>>"}) {
    RawPdf file;
    file.Pages(1).Object(10, root);
    EXPECT_EQ(PairsOf(file), Pairs{}) << root;
  }
}

// A file with a tree of `count` names, each with an object that holds its index.
std::string FileWithTree(int count) {
  StringSink sink;
  FileWriter writer(sink, nullptr);
  std::vector<NamedObject> objects;
  for (int i = 0; i < count; ++i) {
    const int index = (i * 7919) % count;  // in no particular order
    const std::uint32_t number = writer.Reserve();
    writer.WriteObject(number, std::to_string(index));
    char name[16];
    std::snprintf(name, sizeof name, "%06d", index);
    objects.push_back({name, number});
  }
  const std::uint32_t root = WriteNameTree(writer, objects);
  const std::uint32_t pages = writer.Reserve();
  writer.WriteObject(pages, "<</Type/Pages/Kids[]/Count 0>>");
  const std::uint32_t catalog = writer.Reserve();
  std::string text = "<</Type/Catalog/Pages";
  AppendReference(text, pages);
  text += "/Tree";
  AppendReference(text, root);
  writer.WriteObject(catalog, text + ">>");
  writer.Finish(catalog, 0);
  return sink.bytes();
}

TEST(NameTreeWriter, WritesWhatIsReadBackInOrder) {
  for (const int count : {0, 1, 64, 65, 10'000}) {
    const std::string bytes = FileWithTree(count);
    const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
    Arena arena;
    const Object root = document->Catalog(arena).Get("Tree");
    int next = 0;
    ReadNameTree(*document, root, [&](std::string_view name, const Object& value) {
      EXPECT_EQ(std::stoi(std::string(name)), next);
      EXPECT_EQ(document->Resolve(value, arena).IntegerOr(-1), next);
      ++next;
    });
    EXPECT_EQ(next, count);
  }
}

TEST(NameTreeWriter, LimitsEveryNodeButTheRoot) {
  const std::string bytes = FileWithTree(65);
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  Arena arena;
  const Object root = document->Resolve(document->Catalog(arena).Get("Tree"), arena);
  EXPECT_FALSE(root.Has("Limits"));
  ASSERT_EQ(root.Get("Kids").Items().size(), 2U);
  const Object limits = document->Resolve(root.Get("Kids").Items()[0], arena).Get("Limits");
  EXPECT_EQ(limits.Items()[0].Text(), "000000");
  EXPECT_EQ(limits.Items()[1].Text(), "000063");
}

}  // namespace
}  // namespace TarnixTools::pdf
