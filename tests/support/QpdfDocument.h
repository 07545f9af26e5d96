// A PDF file's objects as qpdf reads them: dictionaries, arrays and references ("3 0 R") in JSON,
// names as "/Name", strings as "u:TEXT" or "b:HEX".
//
//   const QpdfDocument written(path);
//   EXPECT_EQ(written.Catalog()["/Lang"], "u:de");
#ifndef TARNIX_TESTS_SUPPORT_QPDF_DOCUMENT_H_
#define TARNIX_TESTS_SUPPORT_QPDF_DOCUMENT_H_

#include <string>

#include <nlohmann/json.hpp>

#include "support/Readers.h"

namespace TarnixTools::testing {

class QpdfDocument {
 public:
  using Json = nlohmann::json;

  // Null values stand for everything in a file that qpdf cannot read.
  explicit QpdfDocument(const std::string& path, const std::string& password = "")
      : json_(Json::parse(QpdfJson(path, password), nullptr, false)) {}

  Json Trailer() const { return Value(json_, "qpdf", 1)["trailer"]["value"]; }

  Json Catalog() const { return Follow(Trailer()["/Root"]); }

  // The object that a reference leads to, of a stream its dictionary; other values as they are.
  Json Follow(const Json& value) const {
    if (!value.is_string()) {
      return value;
    }
    const Json object = Value(json_, "qpdf", 1)["obj:" + value.get<std::string>()];
    return object.is_null()            ? value
           : object.contains("stream") ? object["stream"]["dict"]
                                       : object["value"];
  }

  // The reference to a page, one-based.
  Json Page(std::size_t number) const { return Value(json_, "pages", number - 1)["object"]; }

 private:
  static Json Value(const Json& json, const char* key, std::size_t index) {
    const Json list = json.is_object() ? json.value(key, Json()) : Json();
    return index < list.size() ? list[index] : Json();
  }

  Json json_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_QPDF_DOCUMENT_H_
