// PDF files put together object by object, for tests of the core: what is written is exactly what
// is given.
//
//   const std::string bytes = RawPdf()
//                                 .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
//                                 .Object(2, "...")
//                                 .Table("/Root 1 0 R");
#ifndef TARNIX_TESTS_SUPPORT_RAW_PDF_H_
#define TARNIX_TESTS_SUPPORT_RAW_PDF_H_

#include <cstdio>
#include <map>
#include <sstream>
#include <string>

namespace TarnixTools::testing {

class RawPdf {
 public:
  explicit RawPdf(const std::string& header = "%PDF-1.7\n") : bytes_(header) {}

  RawPdf& Object(int number, const std::string& body, int generation = 0) {
    offsets_[number] = bytes_.size();
    return Raw(std::to_string(number) + " " + std::to_string(generation) + " obj\n" + body +
               "\nendobj\n");
  }

  RawPdf& Stream(int number, const std::string& entries, const std::string& data) {
    return Object(number, "<<" + entries + "/Length " + std::to_string(data.size()) +
                              ">>\nstream\n" + data + "\nendstream");
  }

  // Objects, one a line: "3 <</Type/Page>>". What follows " stream " is the data of a stream, and a
  // line that starts with a space belongs to the one before.
  RawPdf& Lines(const std::string& text) {
    std::istringstream lines(text);
    std::string object;
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with(' ')) {
        object += '\n' + line;
        continue;
      }
      Line(object);
      object = line;
    }
    return Line(object);
  }

  // What comes next is the object, whatever it is.
  RawPdf& Mark(int number) {
    offsets_[number] = bytes_.size();
    return *this;
  }

  RawPdf& Raw(const std::string& text) {
    bytes_ += text;
    return *this;
  }

  // A catalog (1), a page tree root (2) and pages from 3 on, each with the entries.
  RawPdf& Pages(int count, const std::string& entries = "/MediaBox[0 0 200 100]") {
    Object(1, "<</Type/Catalog/Pages 2 0 R>>");
    std::string kids;
    for (int i = 0; i < count; ++i) {
      kids += std::to_string(3 + i) + " 0 R ";
    }
    Object(2, "<</Type/Pages/Kids[" + kids + "]/Count " + std::to_string(count) + ">>");
    for (int i = 0; i < count; ++i) {
      Object(3 + i, "<</Type/Page/Parent 2 0 R" + entries + ">>");
    }
    return *this;
  }

  std::size_t OffsetOf(int number) const { return offsets_.at(number); }

  std::size_t size() const { return bytes_.size(); }

  const std::string& bytes() const { return bytes_; }

  // The file with a table of all objects and a trailer; shift is added to every offset.
  std::string Table(const std::string& trailer = "/Root 1 0 R", int shift = 0) {
    const std::size_t start = bytes_.size();
    bytes_ += "xref\n0 1\n0000000000 65535 f \n";
    for (const auto& [number, offset] : offsets_) {
      char line[32];
      std::snprintf(line, sizeof line, "%010zu 00000 n \n",
                    offset + static_cast<std::size_t>(shift));
      bytes_ += std::to_string(number) + " 1\n" + line;
    }
    const int size = offsets_.empty() ? 1 : offsets_.rbegin()->first + 1;
    bytes_ += "trailer\n<</Size " + std::to_string(size) + trailer + ">>\nstartxref\n" +
              std::to_string(start) + "\n%%EOF\n";
    return bytes_;
  }

 private:
  RawPdf& Line(const std::string& line) {
    if (line.empty()) {
      return *this;
    }
    const std::size_t body = line.find(' ') + 1;
    const int number = std::stoi(line);
    const std::string mark = ">> stream ";
    const std::size_t data = line.find(mark);
    return data == std::string::npos ? Object(number, line.substr(body))
                                     : Stream(number, line.substr(body + 2, data - body - 2),
                                              line.substr(data + mark.size()));
  }

  std::string bytes_;
  std::map<int, std::size_t> offsets_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_RAW_PDF_H_
