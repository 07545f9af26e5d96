#include "BenchDocuments.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <utility>
#include <vector>

#include "pdf/write/FileWriter.h"

namespace TarnixTools::bench {

namespace {

constexpr int kKidsPerNode = 32;
constexpr int kFontCount = 4;
constexpr std::size_t kContentSize = 1500;
constexpr std::size_t kFontSize = 40000;

// Where the objects of a document go, in the form of file that is wanted.
class ObjectSink {
 public:
  virtual ~ObjectSink() = default;
  virtual std::uint32_t Reserve() = 0;
  virtual void Object(std::uint32_t number, std::string_view body) = 0;
  virtual void Stream(std::uint32_t number, std::string_view open_dictionary,
                      std::string_view data) = 0;
  virtual std::string Finish(std::uint32_t catalog) = 0;
};

class ClassicFile : public ObjectSink {
 public:
  std::uint32_t Reserve() override {
    offsets_.push_back(0);
    return static_cast<std::uint32_t>(offsets_.size());
  }

  void Object(std::uint32_t number, std::string_view body) override {
    Begin(number);
    bytes_.append(body).append("\nendobj\n");
  }

  void Stream(std::uint32_t number, std::string_view open_dictionary,
              std::string_view data) override {
    Begin(number);
    bytes_.append(open_dictionary).append("/Length ").append(std::to_string(data.size()));
    bytes_.append(">>\nstream\n").append(data).append("\nendstream\nendobj\n");
  }

  std::string Finish(std::uint32_t catalog) override {
    const std::size_t start = bytes_.size();
    const std::string size = std::to_string(offsets_.size() + 1);
    bytes_ += "xref\n0 " + size + "\n0000000000 65535 f \n";
    for (const std::size_t offset : offsets_) {
      char line[32];
      std::snprintf(line, sizeof line, "%010zu 00000 n \n", offset);
      bytes_ += line;
    }
    bytes_ += "trailer\n<</Size " + size + "/Root " + std::to_string(catalog) + " 0 R>>\n";
    bytes_ += "startxref\n" + std::to_string(start) + "\n%%EOF\n";
    return std::move(bytes_);
  }

 private:
  void Begin(std::uint32_t number) {
    offsets_[number - 1] = bytes_.size();
    bytes_ += std::to_string(number) + " 0 obj\n";
  }

  std::string bytes_ = "%PDF-1.4\n";
  std::vector<std::size_t> offsets_;
};

class PackedFile : public ObjectSink {
 public:
  explicit PackedFile(bool is_encrypted)
      : security_(is_encrypted ? std::optional(pdf::Security::Create("", "owner", -4))
                               : std::nullopt),
        writer_(sink_, security_ ? &*security_ : nullptr) {}

  std::uint32_t Reserve() override { return writer_.Reserve(); }

  void Object(std::uint32_t number, std::string_view body) override {
    writer_.WriteObject(number, body);
  }

  void Stream(std::uint32_t number, std::string_view open_dictionary,
              std::string_view data) override {
    writer_.BeginStream(number, open_dictionary, data.size());
    writer_.AppendStream(data);
    writer_.EndStream();
  }

  std::string Finish(std::uint32_t catalog) override {
    writer_.Finish(catalog, 0);
    return sink_.bytes();
  }

 private:
  pdf::StringSink sink_;
  std::optional<pdf::Security> security_;
  pdf::FileWriter writer_;
};

std::unique_ptr<ObjectSink> MakeSink(FileForm form) {
  if (form == FileForm::kClassic) {
    return std::make_unique<ClassicFile>();
  }
  return std::make_unique<PackedFile>(form == FileForm::kEncrypted);
}

std::string Noise(std::mt19937& random, std::size_t size) {
  std::string bytes(size, '\0');
  std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random() >> 24); });
  return bytes;
}

std::string ReferenceTo(std::uint32_t number) {
  return std::to_string(number) + " 0 R";
}

// One document while it is made.
class DocumentMaker {
 public:
  explicit DocumentMaker(ObjectSink& sink) : sink_(&sink) {}

  std::string Make(int page_count) {
    AddFonts();
    const std::uint32_t root = sink_->Reserve();
    std::string nodes;
    for (int first = 0; first < page_count; first += kKidsPerNode) {
      nodes += ReferenceTo(AddNode(root, std::min(kKidsPerNode, page_count - first))) + " ";
    }
    sink_->Object(root,
                  "<</Type/Pages/Kids[" + nodes + "]/Count " + std::to_string(page_count) + ">>");
    const std::uint32_t catalog = sink_->Reserve();
    sink_->Object(catalog, "<</Type/Catalog/Pages " + ReferenceTo(root) + ">>");
    return sink_->Finish(catalog);
  }

 private:
  void AddFonts() {
    for (int i = 0; i < kFontCount; ++i) {
      const std::uint32_t program = sink_->Reserve();
      sink_->Stream(program, "<</Filter/FlateDecode", Noise(random_, kFontSize));
      const std::uint32_t descriptor = sink_->Reserve();
      sink_->Object(descriptor, "<</Type/FontDescriptor/FontName/Bench/Flags 32/FontFile2 " +
                                    ReferenceTo(program) + ">>");
      const std::uint32_t font = sink_->Reserve();
      std::string widths;
      for (int c = 32; c < 127; ++c) {
        widths += std::to_string(300 + random_() % 600) + " ";
      }
      sink_->Object(font,
                    "<</Type/Font/Subtype/TrueType/BaseFont/Bench/FirstChar 32/LastChar 126"
                    "/Widths[" +
                        widths + "]/FontDescriptor " + ReferenceTo(descriptor) + ">>");
      fonts_ += "/F" + std::to_string(i) + " " + ReferenceTo(font);
    }
  }

  std::uint32_t AddNode(std::uint32_t parent, int page_count) {
    const std::uint32_t node = sink_->Reserve();
    std::string kids;
    for (int i = 0; i < page_count; ++i) {
      kids += ReferenceTo(AddPage(node)) + " ";
    }
    sink_->Object(node, "<</Type/Pages/Parent " + ReferenceTo(parent) + "/Kids[" + kids +
                            "]/Count " + std::to_string(page_count) + ">>");
    return node;
  }

  std::uint32_t AddPage(std::uint32_t parent) {
    const std::uint32_t page = sink_->Reserve();
    const std::uint32_t content = sink_->Reserve();
    sink_->Stream(content, "<</Filter/FlateDecode", Noise(random_, kContentSize));
    const std::uint32_t link = sink_->Reserve();
    sink_->Object(link,
                  "<</Type/Annot/Subtype/Link/Rect[72 72 144 84]/Border[0 0 0]"
                  "/A<</S/URI/URI(https://example.org/)>>>>");
    sink_->Object(page, "<</Type/Page/Parent " + ReferenceTo(parent) +
                            "/MediaBox[0 0 595.28 841.89]/Resources<</ProcSet[/PDF/Text]/Font<<" +
                            fonts_ + ">>>>/Annots[" + ReferenceTo(link) + "]/Contents " +
                            ReferenceTo(content) + ">>");
    return page;
  }

  ObjectSink* sink_;
  std::mt19937 random_{20};
  std::string fonts_;
};

std::string ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Decoded streams that draw text or lines.
std::string ContentsOf(const std::string& bytes) {
  const auto document = OpenDocument(bytes);
  std::string contents;
  for (std::uint32_t number = 1; number < document->object_limit(); ++number) {
    const std::optional<pdf::Decoded> stream = document->TryDecodeStream(number);
    if (stream && stream->complete && stream->data.find("\nBT") != std::string::npos) {
      contents += stream->data + "\n";
    }
  }
  return contents;
}

std::string RepeatedTo(std::size_t size, const std::string& text) {
  std::string repeated;
  while (!text.empty() && repeated.size() < size) {
    repeated += text;
  }
  return repeated;
}

}  // namespace

std::string MakeDocument(FileForm form, int page_count) {
  const auto sink = MakeSink(form);
  return DocumentMaker(*sink).Make(page_count);
}

std::unique_ptr<pdf::Document> OpenDocument(std::string_view bytes) {
  return pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
}

std::string DictionarySyntax(std::size_t size) {
  return RepeatedTo(
      size,
      "<< /Type /Page /Parent 12 0 R /MediaBox [0 0 595.28 841.89] /Rotate 90\n/Resources << /Font "
      "<< /F1 105 0 R /F2 2047 0 R /F3 19 0 R >> /ProcSet [/PDF /Text /ImageC] >>\n/Annots [88 0 R "
      "89 0 R 90 0 R] /Contents [4711 0 R 4712 0 R] >>\n<</Type/Font/Subtype/TrueType/BaseFont"
      "/ABCDEF+Name#20Bold/FirstChar 32/LastChar 126/Widths[278 278 355 556 556 889 667 191 333 333"
      " 389 584 278 333 278 278 556 556 556]/Encoding/WinAnsiEncoding/FontDescriptor 77 0 R>>\n"
      "<</Title(A \\(nested\\) title of some length)/Author<FEFF00540065>/Open true/Next null>>\n");
}

std::string ExampleContent(std::size_t size) {
  std::vector<std::filesystem::path> paths;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(TARNIX_EXAMPLES_DIR, error)) {
    if (entry.path().extension() == ".pdf") {
      paths.push_back(entry.path());
    }
  }
  std::sort(paths.begin(), paths.end());
  std::string contents;
  for (const std::filesystem::path& path : paths) {
    contents += ContentsOf(ReadWholeFile(path));
  }
  return RepeatedTo(size, contents);
}

}  // namespace TarnixTools::bench
