#include "engines/office/writers/package/EncodedUri.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::string_view kAllowed =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~:/?#@!$&'()*+,;=";
constexpr std::string_view kDigits = "0123456789ABCDEF";

bool IsHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool IsEncoded(std::string_view uri, std::size_t i) {
  return uri[i] == '%' && i + 2 < uri.size() && IsHexDigit(uri[i + 1]) && IsHexDigit(uri[i + 2]);
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
      target += kDigits[static_cast<unsigned char>(c) >> 4];
      target += kDigits[static_cast<unsigned char>(c) & 15];
    }
  }
  return target;
}

}  // namespace TarnixTools::engines::office
