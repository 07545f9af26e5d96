#include "pdf/crypt/EncryptedFile.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>

namespace TarnixTools::testing {
namespace {

bool IsSpace(char c) {
  return c == '\0' || std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool IsDelimiter(char c) {
  return c != '\0' && std::strchr("()<>[]{}/%", c) != nullptr;
}

// The end of the string, name, number or bracket that starts at `at`.
std::size_t TokenEnd(std::string_view text, std::size_t at) {
  if (text[at] == '(') {
    int depth = 0;
    for (std::size_t i = at; i < text.size(); ++i) {
      if (text[i] == '\\') {
        ++i;
      } else if (text[i] == '(') {
        ++depth;
      } else if (text[i] == ')' && --depth == 0) {
        return i + 1;
      }
    }
    return text.size();
  }
  if (text.substr(at, 2) == "<<" || text.substr(at, 2) == ">>") {
    return at + 2;
  }
  if (text[at] == '<') {
    return std::min(text.find('>', at), text.size() - 1) + 1;
  }
  std::size_t end = at + 1;
  if (text[at] == '/' || !IsDelimiter(text[at])) {
    while (end < text.size() && !IsSpace(text[end]) && !IsDelimiter(text[end])) {
      ++end;
    }
  }
  return end;
}

// The next token at or after `at`, which moves behind it; empty at the end.
std::string_view NextToken(std::string_view text, std::size_t& at) {
  while (at < text.size() && IsSpace(text[at])) {
    ++at;
  }
  if (at >= text.size()) {
    return {};
  }
  const std::size_t start = at;
  at = TokenEnd(text, at);
  return text.substr(start, at - start);
}

// The text from the "<<" at `start` to its ">>".
std::string_view DictionaryAt(std::string_view text, std::size_t start) {
  std::size_t at = start;
  int depth = 0;
  for (std::string_view token = NextToken(text, at); !token.empty(); token = NextToken(text, at)) {
    if (token == "<<") {
      ++depth;
    } else if (token == ">>" && --depth == 0) {
      break;
    }
  }
  return text.substr(start, at - start);
}

std::int64_t IntegerOf(std::string_view dictionary, std::string_view key) {
  return std::atoll(ValueOf(dictionary, key).c_str());
}

pdf::CryptMethod MethodOf(const std::string& dictionary) {
  const std::size_t at = dictionary.find("/CFM");
  if (at == std::string::npos) {
    return pdf::CryptMethod::kRc4;
  }
  std::size_t behind = at + 4;
  const std::string_view name = NextToken(dictionary, behind);
  return name == "/AESV3"   ? pdf::CryptMethod::kAes256
         : name == "/AESV2" ? pdf::CryptMethod::kAes128
                            : pdf::CryptMethod::kRc4;
}

// The dictionary around the only "/Standard".
std::string EncryptionDictionary(std::string_view bytes) {
  for (std::size_t at = bytes.find("<<"); at != std::string_view::npos;
       at = bytes.find("<<", at + 2)) {
    const std::string_view head = bytes.substr(at, 4096);
    if (ValueOf(head, "/Filter") == "/Standard") {
      return std::string(DictionaryAt(bytes, at));
    }
  }
  return {};
}

}  // namespace

std::string ValueOf(std::string_view dictionary, std::string_view key) {
  std::size_t at = 0;
  int depth = 0;
  bool expect_key = true;
  for (std::string_view token = NextToken(dictionary, at); !token.empty();
       token = NextToken(dictionary, at)) {
    const bool opens = token == "<<" || token == "[";
    const bool closes = token == ">>" || token == "]";
    depth += opens ? 1 : closes ? -1 : 0;
    if (depth <= 0) {
      break;
    }
    if (depth == 1 && token.front() == '/' && expect_key && token == key) {
      return std::string(NextToken(dictionary, at));
    }
    // A name right after a key is its value, not a key.
    expect_key = depth == 1 && !(token.front() == '/' && expect_key);
  }
  return {};
}

std::string StringBytes(std::string_view text) {
  std::string bytes;
  if (text.size() < 2) {
    return bytes;
  }
  const std::string_view inside = text.substr(1, text.size() - 2);
  if (text.front() == '<') {
    std::string digits;
    std::copy_if(inside.begin(), inside.end(), std::back_inserter(digits),
                 [](char c) { return !IsSpace(c); });
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
      bytes.push_back(static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
  }
  static const std::map<char, char> kEscapes = {
      {'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'b', '\b'}, {'f', '\f'}};
  for (std::size_t i = 0; i < inside.size(); ++i) {
    if (inside[i] == '\r') {  // a line end is one "\n", however it is written
      i += inside.substr(i + 1, 1) == "\n" ? 1 : 0;
      bytes.push_back('\n');
    } else if (inside[i] != '\\' || i + 1 == inside.size()) {
      bytes.push_back(inside[i]);
    } else if (inside[++i] >= '0' && inside[i] <= '7') {
      int value = 0;
      std::size_t digits = 0;
      for (; digits < 3 && i < inside.size() && inside[i] >= '0' && inside[i] <= '7';
           ++digits, ++i) {
        value = value * 8 + inside[i] - '0';
      }
      --i;
      bytes.push_back(static_cast<char>(value));
    } else if (inside[i] != '\n' && inside[i] != '\r') {
      const auto escape = kEscapes.find(inside[i]);
      bytes.push_back(escape == kEscapes.end() ? inside[i] : escape->second);
    }
  }
  return bytes;
}

std::string EncryptedFile::FileId() const {
  for (std::size_t at = bytes_.rfind("/ID"); at != std::string::npos && at > 0;
       at = bytes_.rfind("/ID", at - 1)) {
    std::size_t behind = at + 3;
    if (NextToken(bytes_, behind) == "[") {
      return StringBytes(NextToken(bytes_, behind));
    }
  }
  return {};
}

pdf::EncryptionFacts EncryptedFile::Facts() const {
  const std::string dictionary = EncryptionDictionary(bytes_);
  pdf::EncryptionFacts facts;
  facts.version = static_cast<int>(IntegerOf(dictionary, "/V"));
  facts.revision = static_cast<int>(IntegerOf(dictionary, "/R"));
  if (const auto length = IntegerOf(dictionary, "/Length"); length != 0) {
    facts.key_bits = static_cast<int>(length);
  }
  facts.permissions = static_cast<std::int32_t>(IntegerOf(dictionary, "/P"));
  facts.owner = StringBytes(ValueOf(dictionary, "/O"));
  facts.user = StringBytes(ValueOf(dictionary, "/U"));
  facts.owner_key = StringBytes(ValueOf(dictionary, "/OE"));
  facts.user_key = StringBytes(ValueOf(dictionary, "/UE"));
  facts.perms = StringBytes(ValueOf(dictionary, "/Perms"));
  facts.encrypt_metadata = ValueOf(dictionary, "/EncryptMetadata") != "false";
  facts.file_id = FileId();
  facts.string_method = facts.stream_method = facts.embedded_file_method = MethodOf(dictionary);
  return facts;
}

std::size_t EncryptedFile::LengthOf(std::string_view stream_dictionary) const {
  const std::string value = ValueOf(stream_dictionary, "/Length");
  std::size_t behind =
      stream_dictionary.find(value, stream_dictionary.find("/Length")) + value.size();
  NextToken(stream_dictionary, behind);  // a generation
  if (NextToken(stream_dictionary, behind) != "R") {
    return static_cast<std::size_t>(std::atoll(value.c_str()));
  }
  const std::string opening = "\n" + value + " 0 obj";
  const std::size_t at = bytes_.find(opening);
  return at == std::string::npos
             ? 0
             : static_cast<std::size_t>(std::atoll(bytes_.c_str() + at + opening.size()));
}

std::vector<EncryptedFile::Stream> EncryptedFile::Streams() const {
  std::vector<Stream> streams;
  for (std::size_t at = bytes_.find(" obj"); at != std::string::npos;
       at = bytes_.find(" obj", at + 1)) {
    std::size_t behind = at + 4;
    if (NextToken(bytes_, behind) != "<<") {
      continue;
    }
    Stream stream;
    stream.dictionary = DictionaryAt(bytes_, behind - 2);
    behind += stream.dictionary.size() - 2;
    const std::size_t length = LengthOf(stream.dictionary);
    if (NextToken(bytes_, behind) != "stream" || length == 0 ||
        ValueOf(stream.dictionary, "/Type") == "/XRef") {
      continue;
    }
    behind += bytes_.compare(behind, 2, "\r\n") == 0 ? 2 : 1;
    stream.data = bytes_.substr(behind, length);
    // "12 0 obj": back over the generation to the number.
    const std::size_t space = bytes_.find_last_of(' ', at - 1);
    const std::size_t start = bytes_.find_last_not_of("0123456789", space - 1) + 1;
    stream.number = static_cast<std::uint32_t>(std::atoi(bytes_.c_str() + start));
    stream.generation = static_cast<std::uint16_t>(std::atoi(bytes_.c_str() + space + 1));
    streams.push_back(std::move(stream));
  }
  return streams;
}

std::string Decrypt(const pdf::Security& security, const EncryptedFile::Stream& stream) {
  std::string plain;
  const std::unique_ptr<pdf::Cipher> cipher =
      security.DecryptorFor(pdf::CryptTarget::kStream, stream.number, stream.generation);
  if (!cipher) {
    return stream.data;
  }
  cipher->Update(stream.data, plain);
  cipher->Finish(plain);
  return plain;
}

}  // namespace TarnixTools::testing
