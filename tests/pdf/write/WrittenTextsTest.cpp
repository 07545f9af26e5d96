// Written files as a whole.
#include <string>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/file/ByteSink.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/NameTreeWriter.h"
#include "pdf/write/PageTreeWriter.h"
#include "pdf/write/Serialize.h"
#include "pdf/write/TreeWriter.h"
#include "support/Expected.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::pdf {
namespace {

using testing::IsAsExpected;
using testing::ObjectsText;
using testing::QpdfComplaints;
using testing::TempDir;
using testing::WriteBytes;

// Printable characters as they are, others in digits.
std::string Shown(std::string_view bytes) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n' || (byte >= ' ' && byte < 127)) {
      text += c;
    } else {
      text += std::string("\\") + kDigits[byte / 16] + kDigits[byte % 16];
    }
  }
  return text;
}

// Objects of each kind, and numbers that are never used.
void WriteObjects(FileWriter& writer) {
  const std::uint32_t catalog = writer.Reserve();
  writer.Reserve();
  PageTreeWriter pages(writer);
  const PageTreeWriter::Leaf leaf = pages.AddPage();
  const std::uint32_t info = writer.Reserve();
  writer.Reserve();
  writer.Reserve();
  const std::uint32_t known = writer.Reserve();
  const std::uint32_t unknown = writer.Reserve();
  writer.WriteObject(
      leaf.page, "<</Type/Page/MediaBox[0 0 9 8]/Parent " + std::to_string(leaf.parent) + " 0 R>>");
  writer.BeginStream(known, "<</A 1", 10);
  writer.AppendStream("01234");
  writer.AppendStream("");
  writer.AppendStream("56789");
  writer.EndStream();
  writer.BeginStream(unknown, "<</B 2");
  writer.AppendStream("abc");
  writer.AppendStream("de");
  writer.EndStream();
  writer.WriteObject(info, "<</Title(A \\(title\\))/Own<00ff>>>");
  TreeWriter names(writer, "Names");
  names.Add("(a)", "1");
  names.Add("(b)", "/N");
  writer.WriteObject(catalog, "<</Type/Catalog/Pages " + std::to_string(pages.Finish()) +
                                  " 0 R/Names<</Dests" + names.Finish() + ">>>>");
  writer.Finish({.catalog = catalog, .info = info, .first_id = "first id", .entries = "/Own 5"});
}

TEST(WrittenTexts, OfATable) {
  StringSink sink;
  FileWriter writer(sink, nullptr, {.layout = FileLayout::kTable, .version = "1.4"});
  WriteObjects(writer);
  EXPECT_EQ(writer.bytes_written(), sink.bytes().size());
  EXPECT_TRUE(IsAsExpected("write/table.txt", Shown(sink.bytes())));
  const TempDir directory;
  const std::string path = WriteBytes(directory.Path("a.pdf"), sink.bytes());
  EXPECT_EQ(QpdfComplaints(path), "");
  EXPECT_TRUE(IsAsExpected("write/table_as_read.txt", ObjectsText(path)));
}

TEST(WrittenTexts, OfObjectStreams) {
  const TempDir directory;
  for (const Packing packing : {Packing::kFast, Packing::kDense}) {
    StringSink sink;
    FileWriter writer(sink, nullptr, {.packing = packing});
    WriteObjects(writer);
    const std::string path = WriteBytes(directory.Path("a.pdf"), sink.bytes());
    EXPECT_EQ(QpdfComplaints(path), "");
    EXPECT_TRUE(IsAsExpected("write/object_streams.txt", ObjectsText(path)));
    EXPECT_TRUE(
        sink.bytes().starts_with("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n8 0 obj\n<</A 1/Length 10>>\n"
                                 "stream\n0123456789\nendstream\nendobj\n"));
    EXPECT_TRUE(sink.bytes().ends_with("\nendstream\nendobj\nstartxref\n" +
                                       std::to_string(sink.bytes().rfind("12 0 obj")) +
                                       "\n%%EOF\n"));
  }
}

TEST(WrittenTexts, OfEncryptedFiles) {
  const Security security = Security::Create("user", "owner", -44);
  const TempDir directory;
  for (const FileLayout layout : {FileLayout::kTable, FileLayout::kObjectStreams}) {
    StringSink sink;
    FileWriter writer(sink, &security, {.layout = layout, .version = "1.4"});
    WriteObjects(writer);
    EXPECT_TRUE(sink.bytes().starts_with("%PDF-2.0\n"));
    const std::string path = WriteBytes(directory.Path("a.pdf"), sink.bytes());
    EXPECT_EQ(QpdfComplaints(path, "user"), "");
    std::string text = ObjectsText(path, "owner");
    const std::size_t encrypt = text.find("\"/CF\"");
    ASSERT_NE(encrypt, std::string::npos);
    // What is random in it.
    for (const char* key : {"/O", "/OE", "/U", "/UE", "/Perms"}) {
      const std::size_t at = text.find("\"" + std::string(key) + "\": \"b:", encrypt);
      ASSERT_NE(at, std::string::npos) << key;
      const std::size_t begin = text.find("b:", at);
      text.replace(begin, text.find('"', begin) - begin, "random");
    }
    EXPECT_TRUE(IsAsExpected(
        layout == FileLayout::kTable ? "write/encrypted_table.txt" : "write/encrypted_streams.txt",
        text));
  }
}

TEST(WrittenTexts, OfStreamsThatAreNotAsAnnounced) {
  StringSink sink;
  FileWriter writer(sink, nullptr);
  const auto message_of = [](auto&& call) {
    try {
      call();
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kInternal);
      return std::string(error.what());
    }
    return std::string();
  };
  writer.BeginStream(writer.Reserve(), "<<", 3);
  EXPECT_EQ(message_of([&] { writer.AppendStream("abcd"); }), "a stream is longer than announced");
  EXPECT_EQ(message_of([&] { writer.CommitStream(4); }), "a stream is longer than announced");
  writer.AppendStream("ab");
  EXPECT_EQ(message_of([&] { writer.EndStream(); }), "a stream is shorter than announced");
  ASSERT_FALSE(writer.StreamRoom().empty());
  writer.StreamRoom()[0] = 'c';
  writer.CommitStream(1);
  EXPECT_EQ(message_of([&] { writer.EndStream(); }), "");
  writer.Finish(1, 0);
  EXPECT_NE(sink.bytes().find("<</Length 3>>\nstream\nabc\nendstream"), std::string::npos);
}

// How many objects, and how many bytes of them, an object stream holds.
TEST(WrittenTexts, OfFullObjectStreams) {
  const auto counts = [](Packing packing, int objects, std::size_t size) {
    StringSink sink;
    FileWriter writer(sink, nullptr, {.packing = packing});
    const std::uint32_t catalog = writer.Reserve();
    for (int i = 0; i < objects; ++i) {
      writer.WriteObject(writer.Reserve(), "(" + std::string(size, 'x') + ")");
    }
    writer.WriteObject(catalog, "<</Type/Catalog>>");
    writer.Finish(catalog, 0);
    std::string text;
    const std::string mark = "/Type/ObjStm/N ";
    for (std::size_t at = 0; (at = sink.bytes().find(mark, at)) != std::string::npos;) {
      at += mark.size();
      text += sink.bytes().substr(at, sink.bytes().find('/', at) - at) + " ";
    }
    return text;
  };
  EXPECT_EQ(counts(Packing::kFast, 199, 1), "200 ");
  EXPECT_EQ(counts(Packing::kFast, 200, 1), "200 1 ");
  EXPECT_EQ(counts(Packing::kDense, 499, 1), "500 ");
  EXPECT_EQ(counts(Packing::kDense, 500, 1), "500 1 ");
  EXPECT_EQ(counts(Packing::kFast, 70, 1021), "64 7 ");
  EXPECT_EQ(counts(Packing::kFast, 70, 1020), "65 6 ");
  EXPECT_EQ(counts(Packing::kDense, 260, 1021), "256 5 ");
  EXPECT_EQ(counts(Packing::kDense, 260, 1020), "257 4 ");
}

TEST(WrittenTexts, OfTreesOfSeveralLevels) {
  const auto text_of = [](int count) {
    StringSink sink;
    FileWriter writer(sink, nullptr, {.layout = FileLayout::kTable, .version = "1.4"});
    TreeWriter tree(writer, "Nums");
    for (int i = 0; i < count; ++i) {
      tree.Add(std::to_string(i), "(v)");
    }
    const std::string root = tree.Finish();
    writer.Finish(1, 0);
    std::string text = std::to_string(count) + ": " + root + "\n";
    for (std::size_t at = 0; (at = sink.bytes().find("/Limits", at)) != std::string::npos; ++at) {
      text += "  " + sink.bytes().substr(at, sink.bytes().find(']', at) + 6 - at) + "\n";
    }
    return text;
  };
  std::string text;
  for (const int count : {0, 1, 64, 65, 129, 4096, 4097}) {
    text += text_of(count);
  }
  EXPECT_TRUE(IsAsExpected("write/trees.txt", text));
}

TEST(WrittenTexts, OfPageTreesOfSeveralLevels) {
  const auto nodes_of = [](int count) {
    StringSink sink;
    FileWriter writer(sink, nullptr, {.layout = FileLayout::kTable, .version = "1.4"});
    PageTreeWriter pages(writer);
    std::string leaves;
    for (int i = 0; i < count; ++i) {
      const PageTreeWriter::Leaf leaf = pages.AddPage();
      if (i % 64 == 0) {
        leaves += " " + std::to_string(leaf.page) + "<" + std::to_string(leaf.parent);
      }
    }
    const std::uint32_t root = pages.Finish();
    writer.Finish(1, 0);
    std::string text =
        std::to_string(count) + ": root " + std::to_string(root) + ", leaves" + leaves + "\n";
    for (std::size_t at = 0;
         (at = sink.bytes().find(" 0 obj\n<</Type/Pages", at)) != std::string::npos; ++at) {
      const std::size_t begin = sink.bytes().rfind('\n', at) + 1;
      std::string node = sink.bytes().substr(begin, sink.bytes().find("endobj", at) - begin);
      const std::size_t kids = node.find("/Kids[") + 6;
      const std::size_t first = node.find(" R", kids);
      const std::size_t end = node.find(']', kids);
      if (first != std::string::npos && first + 2 < end) {
        node.replace(first + 2, end - first - 2, "...");
      }
      text += "  " + node;
    }
    return text;
  };
  std::string text;
  for (const int count : {0, 1, 64, 65, 130, 4097}) {
    text += nodes_of(count);
  }
  EXPECT_TRUE(IsAsExpected("write/page_trees.txt", text));
}

}  // namespace
}  // namespace TarnixTools::pdf
