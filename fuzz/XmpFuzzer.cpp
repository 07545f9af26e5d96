// XMP packets: the input is one. A claim of PDF/A is taken out and the creator replaced. What comes
// out is a packet again, in which there is no claim any more and the new creator stands in the old
// one's place.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "engines/support/metadata/XmpEdit.h"

namespace {

using TarnixTools::engines::EditXmp;
using TarnixTools::engines::XmpChange;

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view packet(reinterpret_cast<const char*>(data), size);
  const std::array<XmpChange, 2> changes = {{{"http://www.aiim.org/pdfa/ns/id/", "", "", ""},
                                             {"http://purl.org/dc/elements/1.1/", "creator", "dc",
                                              "<rdf:Seq><rdf:li>New</rdf:li></rdf:Seq>"}}};
  const auto edited = EditXmp(packet, changes);
  if (!edited) {
    return 0;
  }
  const auto again = EditXmp(edited->bytes, changes);
  Require(again.has_value());
  Require(again->found[0] == 0);
  Require(again->found[1] == (edited->found[1] > 0 ? 1 : 0));
  return 0;
}
