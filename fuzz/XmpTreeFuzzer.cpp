// XMP packets as trees: the input is one. Written again it says the same, and the packet of PDF/A that
// is made of it has nothing in it but what PDF/A allows.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "engines/support/metadata/PdfAClaim.h"
#include "engines/support/metadata/PdfAPacket.h"
#include "engines/support/metadata/XmpExtensions.h"
#include "engines/support/metadata/XmpTree.h"
#include "engines/support/metadata/XmpWriter.h"

namespace {

using namespace TarnixTools::engines;

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

void RequireAllowed(const XmpTree& tree, XmpRelease release) {
  const XmpJudge judge(release, ReadXmpExtensions(tree));
  for (const XmpNode& property : tree.properties) {
    const XmpPropertyFacts facts = judge.FactsOf(property, {});
    Require((facts.is_predefined || facts.is_declared) && facts.has_right_type);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const XmpTree tree = ReadXmp({reinterpret_cast<const char*>(data), size});
  if (tree.state == XmpState::kFine) {
    const std::string written = WriteXmp(tree.properties);
    const XmpTree again = ReadXmp(written);
    Require(again.state == XmpState::kFine);
    Require(WriteXmp(again.properties) == written);
  }
  for (const int part : {1, 2}) {
    const PdfAPacket packet = MakePdfAPacket(tree, {part, 'b'}, {});
    const XmpTree made = ReadXmp(packet.bytes);
    Require(made.state == XmpState::kFine && ClaimedPdfACode(made) == PdfACode(part, 'b'));
    RequireAllowed(made, part == 1 ? XmpRelease::k2004 : XmpRelease::k2005);
  }
  return 0;
}
