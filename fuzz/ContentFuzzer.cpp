// Content streams: the input is one. Its operators are walked, the operands of each are parsed and
// written out again, and the names of resources that it uses are collected. What is told lies
// within the content and in its order, whatever the content is; the quick way to the names misses
// none that reading operator by operator finds. What a content leaves open is closed by what is
// said to close it. A page, its forms, patterns, glyphs, soft masks and appearances have the input
// for their content, and a walk goes through them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "ContentProbe.h"
#include "pdf/Error.h"
#include "pdf/content/ContentBalance.h"
#include "pdf/content/ContentReader.h"
#include "pdf/content/ResourceNames.h"
#include "pdf/file/ByteSource.h"
#include "pdf/write/Serialize.h"

namespace {

using TarnixTools::pdf::Arena;
using TarnixTools::pdf::ContentNames;
using TarnixTools::pdf::ContentReader;
using TarnixTools::pdf::Object;
using TarnixTools::pdf::Operation;
using TarnixTools::pdf::ParseOperands;
using TarnixTools::pdf::ResourceCategory;

constexpr std::size_t kMaxBytes = std::size_t{1} << 20;

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

bool IsWithin(std::string_view part, std::string_view whole) {
  return part.empty() ||
         (part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size());
}

void Walk(std::string_view content) {
  ContentReader reader(content);
  Operation operation;
  Arena arena;
  const char* last = content.data();
  while (reader.Next(operation)) {
    Require(IsWithin(operation.name, content) && IsWithin(operation.operands, content));
    Require(IsWithin(operation.image_entries, content) && IsWithin(operation.image_data, content));
    Require(!operation.name.empty() && operation.name.data() >= last);
    last = operation.name.data();
    arena.Reset();
    std::string text;
    for (const Object& operand : ParseOperands(operation.operands, arena)) {
      TarnixTools::pdf::AppendObject(text, operand);
    }
  }
}

using Names = std::set<std::pair<ResourceCategory, std::string>>;

void CompareNames(std::string_view content) {
  Names quick;
  Names read;
  TarnixTools::pdf::CollectResourceNames(
      content,
      [&](ResourceCategory category, std::string_view name) { quick.emplace(category, name); });
  const ContentNames outcome = TarnixTools::pdf::ReadResourceNames(
      content,
      [&](ResourceCategory category, std::string_view name) { read.emplace(category, name); });
  Require(!outcome.is_complete ||
          std::includes(quick.begin(), quick.end(), read.begin(), read.end()));
}

void CloseWhatIsOpen(std::string_view content) {
  const auto balance = TarnixTools::pdf::MeasureBalance(content);
  for (const std::size_t position : balance.restore_positions()) {
    Require(content[position] == 'Q');
  }
  std::string closed(content);
  for (const std::size_t position : balance.restore_positions()) {
    closed[position] = ' ';
  }
  closed += '\n' + balance.closing() + '\n';
  const auto again = TarnixTools::pdf::MeasureBalance(closed);
  // Where the data of an inline image ends may depend on what follows.
  Require(content.find("BI") != std::string_view::npos ||
          (!again.is_cut() && again.surplus_restores() == 0 && again.closing().empty()));
}

std::string StreamObject(int number, const std::string& entries, std::string_view data) {
  return std::to_string(number) + " 0 obj<<" + entries + "/Length " + std::to_string(data.size()) +
         ">>stream\n" + std::string(data) + "\nendstream endobj\n";
}

// The cross-reference is left to recovery.
std::string DocumentWith(std::string_view page, std::string_view within) {
  const std::string resources =
      "/Resources<</XObject<</F 5 0 R/I 9 0 R>>/Pattern<</P 6 0 R/S<</PatternType 2>>>>/Font<</T 7 "
      "0 R>>/ExtGState<</G 8 0 R>>/Properties<</L 10 0 R>>/ColorSpace<</C[/Pattern/DeviceRGB]>>"
      "/Shading<</H<</ShadingType 2>>>>>>";
  return "%PDF-1.7\n1 0 obj<</Type/Catalog/Pages 2 0 R/OCProperties<</D<</OFF[10 0 R]>>>>>>endobj\n"
         "2 0 obj<</Type/Pages/Count 1/Kids[3 0 R]>>endobj\n3 0 obj<</Type/Page/Parent 2 0 "
         "R/Contents"
         "[4 0 R 4 0 R]/Annots[<</AP<</N 5 0 R>>/Rect[0 0 9 9]>>]" +
         resources + ">>endobj\n" + StreamObject(4, "", page) +
         StreamObject(5, "/Subtype/Form/BBox[0 0 9 9]/Matrix[1 1 0 1 0 0]" + resources, within) +
         StreamObject(6, "/PatternType 1/PaintType 2", within) +
         "7 0 obj<</Subtype/Type3/CharProcs<</a 11 0 R>>/Encoding<</Differences[97/a]>>>>endobj\n"
         "8 0 obj<</SMask<</G 12 0 R>>/Font[7 0 R 9]/D[[1]2]/LW 3/BM/Screen>>endobj\n" +
         StreamObject(9, "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8", "x") +
         "10 0 obj<</Type/OCG>>endobj\n" + StreamObject(11, "", within) +
         StreamObject(12, "/Subtype/Form/BBox[0 0 9 9]", within) + "trailer<</Root 1 0 R>>";
}

void WalkPage(std::string_view content) {
  const std::size_t half = content.size() / 2;
  const std::string bytes = DocumentWith(content.substr(0, half), content.substr(half));
  const auto document =
      TarnixTools::pdf::Document::Open(std::make_unique<TarnixTools::pdf::MemorySource>(bytes), "");
  const TarnixTools::pdf::PageTree pages(*document);
  if (!pages.pages().empty()) {
    TarnixTools::pdf::ProbePage(*document, pages, 0);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view content(reinterpret_cast<const char*>(data),
                                 size < kMaxBytes ? size : kMaxBytes);
  try {
    Walk(content);
    CompareNames(content);
    CloseWhatIsOpen(content);
    WalkPage(content);
  } catch (const TarnixTools::pdf::Error&) {
  }
  return 0;
}
