#include "support/TestPdf.h"

#include <cstdio>
#include <sstream>
#include <stdexcept>

#include "support/TempDir.h"

namespace TarnixTools::testing {
namespace {

// The numbers of the objects that every file has; pages follow, two objects each, then named
// objects, then annotations.
constexpr int kCatalog = 1;
constexpr int kPageTree = 2;
constexpr int kFont = 3;
constexpr int kInfo = 4;
constexpr int kFirstPage = 5;

std::string Reference(int number) {
  return std::to_string(number) + " 0 R";
}

std::string Number(double value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

std::string Stream(const std::string& data) {
  return "<< /Length " + std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream";
}

std::string LiteralString(const std::string& text) {
  std::string literal = "(";
  for (const char c : text) {
    if (c == '(' || c == ')' || c == '\\') {
      literal += '\\';
    }
    literal += c;
  }
  return literal + ")";
}

std::string MediaBox(double width, double height) {
  return "/MediaBox [0 0 " + Number(width) + " " + Number(height) + "]";
}

}  // namespace

TestPdf& TestPdf::Pages(int count, const std::string& label) {
  for (int i = 1; i <= count; ++i) {
    Page(label + " " + std::to_string(i));
  }
  return *this;
}

TestPdf& TestPdf::Page(const std::string& text) {
  PageSource page;
  page.media_box = MediaBox(kDefaultWidth, kDefaultHeight);
  page.content = "BT /F1 24 Tf 72 100 Td " + LiteralString(text) + " Tj ET";
  pages_.push_back(page);
  return *this;
}

TestPdf& TestPdf::Size(double width, double height) {
  LastPage().media_box = MediaBox(width, height);
  return *this;
}

TestPdf& TestPdf::NoMediaBox() {
  LastPage().media_box.clear();
  return *this;
}

TestPdf& TestPdf::Rotate(int degrees) {
  return PageEntry("/Rotate " + std::to_string(degrees));
}

TestPdf& TestPdf::PageEntry(const std::string& entry) {
  LastPage().entries.push_back(entry);
  return *this;
}

TestPdf& TestPdf::Annotation(const std::string& entries) {
  LastPage().annotations.push_back(entries);
  return *this;
}

TestPdf& TestPdf::Content(const std::string& content_operators) {
  LastPage().content = content_operators;
  return *this;
}

TestPdf& TestPdf::InheritedEntry(const std::string& entry) {
  inherited_entries_ += " " + entry;
  return *this;
}

TestPdf& TestPdf::CatalogEntry(const std::string& entry) {
  catalog_entries_ += " " + entry;
  return *this;
}

TestPdf& TestPdf::InfoEntry(const std::string& entry) {
  info_entries_ += " " + entry;
  return *this;
}

TestPdf& TestPdf::CatalogInTrailer() {
  is_catalog_in_trailer_ = true;
  return *this;
}

TestPdf& TestPdf::Object(const std::string& name, const std::string& body) {
  object_indices_[name] = static_cast<int>(objects_.size());
  objects_.push_back(body);
  return *this;
}

std::string TestPdf::Bytes() const {
  const std::vector<std::string> bodies = ObjectBodies();
  std::string file = "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n";
  std::string table = "xref\n0 " + std::to_string(bodies.size() + 1) + "\n0000000000 65535 f \n";
  for (std::size_t i = 0; i < bodies.size(); ++i) {
    if (is_catalog_in_trailer_ && i + 1 == kCatalog) {
      table += "0000000000 00001 f \n";
      continue;
    }
    char row[32];
    std::snprintf(row, sizeof(row), "%010zu 00000 n \n", file.size());
    table += row;
    file += std::to_string(i + 1) + " 0 obj\n" + bodies[i] + "\nendobj\n";
  }
  const std::size_t start = file.size();
  const std::string root = is_catalog_in_trailer_ ? bodies[kCatalog - 1] : Reference(kCatalog);
  return file + table + "trailer\n<< /Size " + std::to_string(bodies.size() + 1) + " /Root " +
         root + " /Info " + Reference(kInfo) + " >>\nstartxref\n" + std::to_string(start) +
         "\n%%EOF\n";
}

std::string TestPdf::Write(const std::string& path) const {
  return WriteBytes(path, Bytes());
}

TestPdf::PageSource& TestPdf::LastPage() {
  if (pages_.empty()) {
    throw std::logic_error("TestPdf: add a page first");
  }
  return pages_.back();
}

int TestPdf::PageObject(int page_number) const {
  return kFirstPage + 2 * (page_number - 1);
}

// The bodies of the objects 1, 2, ...
std::vector<std::string> TestPdf::ObjectBodies() const {
  const int page_count = static_cast<int>(pages_.size());
  std::string kids;
  for (int number = 1; number <= page_count; ++number) {
    kids += " " + Reference(PageObject(number));
  }
  std::vector<std::string> bodies = {
      "<< /Type /Catalog /Pages " + Reference(kPageTree) + Expand(catalog_entries_) + " >>",
      "<< /Type /Pages /Count " + std::to_string(page_count) + " /Kids [" + kids + " ]" +
          " /Resources << /Font << /F1 " + Reference(kFont) + " >> >>" +
          Expand(inherited_entries_) + " >>",
      "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>",
      "<<" + Expand(info_entries_) + " >>",
  };
  int next_annotation = PageObject(page_count + 1) + static_cast<int>(objects_.size());
  for (int number = 1; number <= page_count; ++number) {
    const PageSource& page = pages_[static_cast<std::size_t>(number - 1)];
    bodies.push_back(PageBody(page, PageObject(number) + 1, next_annotation));
    bodies.push_back(Stream(page.content));
  }
  for (const std::string& body : objects_) {
    bodies.push_back(Expand(body));
  }
  for (const PageSource& page : pages_) {
    for (const std::string& entries : page.annotations) {
      bodies.push_back("<< /Type /Annot " + Expand(entries) + " >>");
    }
  }
  return bodies;
}

std::string TestPdf::PageBody(const PageSource& page, int content_number,
                              int& next_annotation) const {
  std::string body = "<< /Type /Page /Parent " + Reference(kPageTree) + " /Contents " +
                     Reference(content_number) + " " + page.media_box;
  for (const std::string& entry : page.entries) {
    body += " " + Expand(entry);
  }
  if (!page.annotations.empty()) {
    body += " /Annots [";
    for (std::size_t i = 0; i < page.annotations.size(); ++i) {
      body += " " + Reference(next_annotation++);
    }
    body += " ]";
  }
  return body + " >>";
}

std::string TestPdf::Expand(const std::string& text) const {
  std::string expanded;
  std::size_t position = 0;
  for (std::size_t open = text.find("{{"); open != std::string::npos;
       open = text.find("{{", position)) {
    const std::size_t close = text.find("}}", open);
    if (close == std::string::npos) {
      throw std::logic_error("TestPdf: {{ without }} in " + text);
    }
    const std::string name = text.substr(open + 2, close - open - 2);
    const int number = name.starts_with("page ") ? PageObject(std::stoi(name.substr(5)))
                                                 : PageObject(static_cast<int>(pages_.size()) + 1) +
                                                       object_indices_.at(name);
    expanded += text.substr(position, open - position) + Reference(number);
    position = close + 2;
  }
  return expanded + text.substr(position);
}

}  // namespace TarnixTools::testing
