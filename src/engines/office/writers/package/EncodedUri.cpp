#include "engines/office/writers/package/EncodedUri.h"

#include "pdf/syntax/HexText.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::string_view kAllowed =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~:/?#@!$&'()*+,;=";

bool IsEncoded(std::string_view uri, std::size_t i) {
  return uri[i] == '%' && i + 2 < uri.size() && pdf::HexValue(uri[i + 1]) >= 0 &&
         pdf::HexValue(uri[i + 2]) >= 0;
}

}  // namespace

std::string EncodedUri(std::string_view uri) {
  std::string target;
  bool has_fragment = false;
  for (std::size_t i = 0; i < uri.size(); ++i) {
    const char c = uri[i];
    const bool is_second_fragment = c == '#' && has_fragment;
    has_fragment = has_fragment || c == '#';
    if (!is_second_fragment && (kAllowed.find(c) != std::string_view::npos || IsEncoded(uri, i))) {
      target += c;
    } else {
      target += '%';
      pdf::AppendHexByte(target, c);
    }
  }
  return target;
}

}  // namespace TarnixTools::engines::office
