// Text: the input is read as UTF-8, as a text string of a document, and as units of UTF-16. What
// comes out is well formed, and goes through once more without a change.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "foundation/Utf8.h"
#include "pdf/crypt/Saslprep.h"
#include "pdf/tree/TextString.h"

namespace {

using namespace TarnixTools;

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

bool IsWellFormed(std::string_view text) {
  while (!text.empty()) {
    const DecodedCharacter next = DecodeUtf8(text);
    if (!next.is_well_formed) {
      return false;
    }
    text.remove_prefix(next.length);
  }
  return true;
}

void ReadUtf8(std::string_view text) {
  const std::size_t kept = Utf8LengthWithin(text, text.size() / 2);
  Require(kept <= text.size() / 2);
  const std::string written = WideToUtf8(Utf8ToWide(text));
  Require(IsWellFormed(written));
  Require(WideToUtf8(Utf8ToWide(written)) == written);
}

void ReadUtf16(std::string_view bytes) {
  std::wstring units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    units += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) << 8 |
                                  static_cast<unsigned char>(bytes[i + 1]));
  }
  Require(IsWellFormed(WideToUtf8(units)));
  Require(WideToUtf32(units) == Utf8ToUtf32(WideToUtf8(units)));
}

void ReadTextString(std::string_view bytes) {
  const std::string text = pdf::TextStringToUtf8(bytes);
  Require(IsWellFormed(text));
  Require(pdf::TextStringToUtf8(pdf::Utf8ToTextString(text)) == text ||
          text.find('\x1B') != std::string::npos);
  const std::string longer = pdf::TextStringWith(bytes, "_1");
  Require(pdf::EncodingOf(longer) == pdf::EncodingOf(bytes));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  ReadUtf8(text);
  ReadUtf16(text);
  ReadTextString(text);
  pdf::crypt::PreparePassword(text);
  return 0;
}
