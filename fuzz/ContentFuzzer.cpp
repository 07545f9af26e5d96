// Content streams: the input is one. Its operators are walked, the operands of each are parsed and
// written out again, and the names of resources that it uses are collected. What is told lies
// within the content and in its order, whatever the content is; the quick way to the names misses
// none that reading operator by operator finds. What a content leaves open is closed by what is
// said to close it.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "pdf/Error.h"
#include "pdf/content/ContentBalance.h"
#include "pdf/content/ContentReader.h"
#include "pdf/content/ResourceNames.h"
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view content(reinterpret_cast<const char*>(data),
                                 size < kMaxBytes ? size : kMaxBytes);
  try {
    Walk(content);
    CompareNames(content);
    CloseWhatIsOpen(content);
  } catch (const TarnixTools::pdf::Error&) {
  }
  return 0;
}
