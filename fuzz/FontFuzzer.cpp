// Font programs and maps of codes: the first byte chooses what font embeds the rest of the input as
// its program. Whatever comes, what is cut of it is smaller.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engines/optimizer/fonts/FontCutter.h"
#include "engines/support/fonts/CodeMap.h"
#include "pdf/file/Document.h"
#include "support/RawPdf.h"

namespace {

using TarnixTools::engines::fonts::CodeMap;
using TarnixTools::engines::fonts::DocumentFont;
using TarnixTools::engines::optimizer::CutFont;
using TarnixTools::engines::optimizer::CutResult;
using TarnixTools::engines::optimizer::FontJob;
using TarnixTools::pdf::Document;
using TarnixTools::pdf::MemorySource;
using TarnixTools::pdf::Object;

constexpr std::size_t kMaxBytes = std::size_t{1} << 20;
constexpr std::string_view kFonts[] = {
    "<</Subtype/TrueType/Encoding/WinAnsiEncoding>>",
    "<</Subtype/Type1/Encoding<</Differences[1/A/eacute/uni0042/g3]>>>>",
    "<</Subtype/Type0/Encoding/Identity-H/DescendantFonts[<</Subtype/CIDFontType2>>]>>",
    "<</Subtype/TrueType>>",
};

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

std::shared_ptr<const DocumentFont> FontOf(std::string_view dictionary) {
  const std::string bytes = TarnixTools::testing::RawPdf()
                                .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
                                .Object(2, "<</Type/Pages/Kids[]/Count 0>>")
                                .Object(3, std::string(dictionary))
                                .Table();
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  return std::make_shared<const DocumentFont>(*document, Object::Ref({3, 0}));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || size > kMaxBytes) {
    return 0;
  }
  const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  if (const auto map = CodeMap::Read(rest)) {
    std::vector<std::uint32_t> codes;
    map->Split(rest, codes);
    map->CidOf(codes.empty() ? 0 : codes.front());
  }
  FontJob job;
  job.encoded_bytes = size;
  job.drops_hints = (data[0] & 4) != 0;
  job.uses.push_back({FontOf(kFonts[data[0] & 3]), {1, 2, 3, 'A', 'B', 0xE9}});
  const CutResult result = CutFont(rest, job);
  if (result.cut) {
    Require(result.cut->data.size() < size);
  }
  return 0;
}
