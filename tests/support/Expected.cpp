#include "support/Expected.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <sstream>

#include <zlib.h>

#include "support/QpdfDocument.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"

namespace TarnixTools::testing {
namespace {

using Json = nlohmann::json;

// "line 7: "a" for "b"" of two texts that differ.
std::string FirstDifference(const std::string& text, const std::string& expected) {
  std::istringstream own(text);
  std::istringstream other(expected);
  std::string own_line;
  std::string other_line;
  for (int number = 1;; ++number) {
    const bool has_own = static_cast<bool>(std::getline(own, own_line));
    const bool has_other = static_cast<bool>(std::getline(other, other_line));
    if (has_own != has_other || own_line != other_line) {
      return "line " + std::to_string(number) + ": " +
             (has_own ? '"' + own_line + '"' : "the end") + " for " +
             (has_other ? '"' + other_line + '"' : "the end");
    }
    if (!has_own) {
      return "the end of the last line";
    }
  }
}

bool IsPlainText(const std::string& bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](unsigned char byte) {
    return (byte >= ' ' && byte < 127) || byte == '\n' || byte == '\r' || byte == '\t';
  });
}

std::string FromBase64(const std::string& text) {
  std::string bytes;
  unsigned bits = 0;
  int count = 0;
  for (const char letter : text) {
    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t value = letters.find(letter);
    if (value == std::string::npos) {
      break;
    }
    bits = bits << 6U | static_cast<unsigned>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      bytes.push_back(static_cast<char>(bits >> static_cast<unsigned>(count) & 0xFFU));
    }
  }
  return bytes;
}

// What is another in each run, and how long a stream was before it was decoded.
Json WithoutChanging(const std::string& name, Json dictionary) {
  for (const char* key : {"/CreationDate", "/ModDate", "/Length", "/Filter", "/DecodeParms"}) {
    if (dictionary.is_object()) {
      dictionary.erase(key);
    }
  }
  if (name == "trailer") {
    dictionary.erase("/ID");
  }
  return dictionary;
}

std::string WithoutDates(const std::string& packet) {
  return std::regex_replace(packet, std::regex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[-+:.0-9Z]+"), "DATE");
}

std::string ObjectText(const std::string& name, const Json& object) {
  if (!object.contains("stream")) {
    return name + " " + WithoutChanging(name, object.value("value", Json())).dump(1) + "\n";
  }
  const Json dictionary = object["stream"].value("dict", Json());
  const std::string bytes = FromBase64(object["stream"].value("data", ""));
  const bool is_packet = dictionary.value("/Type", "") == "/Metadata";
  return name + " " + WithoutChanging(name, dictionary).dump(1) + "\n" +
         DataText(is_packet ? WithoutDates(bytes) : bytes) + "\n";
}

bool IsTable(const Json& object) {
  return object.contains("stream") &&
         object["stream"].value("dict", Json()).value("/Type", "") == "/XRef";
}

std::string DocumentText(const std::string& path, const std::string& password, bool with_tables) {
  const ProgramResult read =
      RunProgram({"qpdf", "--password=" + password, "--json", "--json-key=qpdf",
                  "--decode-level=generalized", "--json-stream-data=inline", path});
  const Json json = Json::parse(read.output, nullptr, false);
  if (!json.is_object() || !json.contains("qpdf")) {
    return "qpdf cannot read it: " + read.errors;
  }
  std::string text;
  for (const auto& [name, object] : json["qpdf"][1].items()) {
    text += with_tables || !IsTable(object) ? ObjectText(name, object) : "";
  }
  return text;
}

}  // namespace

std::string DataText(const std::string& bytes) {
  if (IsPlainText(bytes)) {
    return bytes;
  }
  const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
  std::ostringstream text;
  text << bytes.size() << " bytes, checksum " << std::hex
       << crc32(0, data, static_cast<unsigned>(bytes.size()));
  return text.str();
}

::testing::AssertionResult IsAsExpected(const std::string& name, const std::string& text) {
  const std::string path = SourceDir() + "/tests/expected/" + name;
  if (std::getenv("TARNIX_RENEW") != nullptr) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    WriteBytes(path, text);
  }
  if (!Exists(path)) {
    return ::testing::AssertionFailure() << path << " is missing; TARNIX_RENEW=1 writes it";
  }
  const std::string expected = ReadBytes(path);
  if (text == expected) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << name << ", " << FirstDifference(text, expected);
}

std::string PdfText(const std::string& path, const std::string& password) {
  return DocumentText(path, password, true);
}

std::string ObjectsText(const std::string& path, const std::string& password) {
  return DocumentText(path, password, false);
}

}  // namespace TarnixTools::testing
