#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/file/Document.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/Serialize.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::pdf {
namespace {

struct Written {
  std::string bytes;
  std::uint32_t text = 0;
  std::uint32_t stream = 0;
};

const FileFormat kTable = {.layout = FileLayout::kTable, .version = "1.4"};

// A document with a text object, `fillers` more of them and a stream.
Written Write(const Security* security, int fillers, const FileFormat& format = {}) {
  StringSink sink;
  Written written;
  {
    FileWriter writer(sink, security, format);
    const std::uint32_t catalog = writer.Reserve();
    const std::uint32_t pages = writer.Reserve();
    writer.Reserve();  // never written
    written.text = writer.Reserve();
    written.stream = writer.Reserve();
    writer.WriteObject(catalog, "<</Type/Catalog/Pages 2 0 R>>");
    writer.WriteObject(pages, "<</Type/Pages/Kids[]/Count 0>>");
    writer.WriteObject(written.text, "(some text)");
    std::string name = "(name)";
    if (writer.StreamStrings() != nullptr) {
      std::string bytes = "name";
      writer.StreamStrings()->Apply(bytes);
      name.clear();
      AppendString(name, bytes, true);
    }
    writer.BeginStream(written.stream, "<</Title" + name, 10);
    writer.AppendStream("01234");
    writer.AppendStream("56789");
    writer.EndStream();
    for (int i = 0; i < fillers; ++i) {
      writer.WriteObject(writer.Reserve(), "[" + std::to_string(i) + "]");
    }
    writer.Finish(catalog, 0);
    EXPECT_EQ(writer.bytes_written(), sink.bytes().size());
  }
  written.bytes = sink.bytes();
  return written;
}

void ExpectReadable(const Written& written, std::string_view password, int fillers) {
  const auto document = Document::Open(std::make_unique<MemorySource>(written.bytes), password);
  Arena arena;
  EXPECT_EQ(document->Load({written.text, 0}, arena).Text(), "some text");
  EXPECT_EQ(document->Load({written.stream, 0}, arena).Get("Title").Text(), "name");
  EXPECT_EQ(document->TryDecodeStream(written.stream)->data, "0123456789");
  EXPECT_FALSE(document->Exists(3));
  for (int i = 0; i < fillers; ++i) {
    const Object filler =
        document->Load({written.stream + 1 + static_cast<std::uint32_t>(i), 0}, arena);
    if (filler.IsArray()) {  // the object streams' own numbers stand between
      EXPECT_EQ(filler.Items().size(), 1U);
    }
  }
  EXPECT_EQ(document->findings().count(), 0U);
  EXPECT_FALSE(document->is_rebuilt());
}

TEST(FileWriter, CanBeToldItsFormatBeforeTheFirstObject) {
  StringSink sink;
  FileWriter writer(sink, nullptr);
  const std::uint32_t catalog = writer.Reserve();
  EXPECT_EQ(writer.version(), 17);
  EXPECT_TRUE(writer.SetFormat(kTable));
  EXPECT_EQ(writer.version(), 14);
  writer.WriteObject(catalog, "<</Type/Catalog>>");
  EXPECT_FALSE(writer.SetFormat({}));
  writer.Finish(catalog, 0);
  EXPECT_TRUE(sink.bytes().starts_with("%PDF-1.4\n"));
  EXPECT_EQ(sink.bytes().find("%PDF", 1), std::string::npos);
  EXPECT_NE(sink.bytes().find("\nxref\n"), std::string::npos);
}

TEST(FileWriter, PacksObjectsDenselyWhenAsked) {
  const Written fast = Write(nullptr, 3000);
  const Written dense = Write(nullptr, 3000, {.packing = Packing::kDense});
  ExpectReadable(dense, "", 3000);
  EXPECT_LT(dense.bytes.size(), fast.bytes.size());
}

TEST(FileWriter, WritesWhatTheReaderReads) {
  ExpectReadable(Write(nullptr, 0), "", 0);
  ExpectReadable(Write(nullptr, 5000), "", 5000);
}

TEST(FileWriter, EncryptsEverything) {
  const Security security = Security::Create("user", "owner", 3900);
  const Written written = Write(&security, 300);
  EXPECT_EQ(written.bytes.find("0123456789"), std::string::npos);
  EXPECT_EQ(written.bytes.find("some text"), std::string::npos);
  ExpectReadable(written, "user", 300);
  ExpectReadable(written, "owner", 300);
  EXPECT_THROW(Document::Open(std::make_unique<MemorySource>(written.bytes), ""), Error);
}

TEST(FileWriter, WritesTables) {
  const Written written = Write(nullptr, 300, kTable);
  EXPECT_TRUE(written.bytes.starts_with("%PDF-1.4\n"));
  EXPECT_EQ(written.bytes.find("/ObjStm"), std::string::npos);
  EXPECT_NE(written.bytes.find("\ntrailer\n<</Size 306/Root 1 0 R/ID["), std::string::npos);
  EXPECT_NE(written.bytes.find("\nxref\n0 306\n0000000003 65535 f \n"), std::string::npos);
  ExpectReadable(written, "", 300);
}

TEST(FileWriter, EncryptsWhatATableLeadsTo) {
  const Security security = Security::Create("user", "owner", 3900);
  const Written written = Write(&security, 300, kTable);
  EXPECT_TRUE(written.bytes.starts_with("%PDF-2.0\n"));
  EXPECT_EQ(written.bytes.find("some text"), std::string::npos);
  ExpectReadable(written, "user", 300);
}

TEST(FileWriter, WritesWhatQpdfReads) {
  TARNIX_NEED_PROGRAM("qpdf");
  const testing::TempDir directory;
  const Security security = Security::Create("user", "owner", 3900);
  for (const FileFormat& format : {FileFormat(), kTable}) {
    for (const Security* secret : {static_cast<const Security*>(nullptr), &security}) {
      const std::string path = directory.Path("written.pdf");
      testing::WriteBytes(path, Write(secret, 300, format).bytes);
      EXPECT_EQ(testing::QpdfComplaints(path, secret == nullptr ? "" : "user"), "");
    }
  }
}

// A stream of this many bytes, whose length is not said before.
std::string WithLongStream(std::size_t size, const Security* security) {
  StringSink sink;
  FileWriter writer(sink, security);
  const std::uint32_t number = writer.Reserve();
  writer.BeginStream(number, "<<");
  for (std::size_t done = 0; done < size; done += 1000) {
    writer.AppendStream(std::string(1000, 'x'));
  }
  writer.EndStream();
  const std::uint32_t pages = writer.Reserve();
  const std::uint32_t catalog = writer.Reserve();
  writer.WriteObject(pages, "<</Type/Pages/Kids[]/Count 0>>");
  writer.WriteObject(catalog, "<</Type/Catalog/Pages 3 0 R/Data 1 0 R>>");
  writer.Finish(catalog, 0);
  return sink.Take();
}

TEST(FileWriter, WritesStreamsWhoseLengthShowsAtTheirEnd) {
  const Security security = Security::Create("", "owner", 3900);
  for (const Security* secret : {static_cast<const Security*>(nullptr), &security}) {
    for (const std::size_t size : {0, 1000, 700'000}) {
      const std::string bytes = WithLongStream(size, secret);
      const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
      EXPECT_EQ(document->TryDecodeStream(1)->data, std::string(size, 'x'));
      EXPECT_EQ(document->findings().count(), 0U);
    }
  }
}

TEST(FileWriter, SaysInTheTrailerWhatItIsTold) {
  for (const FileFormat& format : {FileFormat(), kTable}) {
    StringSink sink;
    FileWriter writer(sink, nullptr, format);
    const std::uint32_t catalog = writer.Reserve();
    const std::uint32_t info = writer.Reserve();
    writer.WriteObject(catalog, "<</Type/Catalog/Pages<</Kids[]/Count 0>>>>");
    writer.WriteObject(info, "<</Title(T)>>");
    writer.Finish({.catalog = catalog, .info = info, .first_id = "first", .entries = "/Own 17"});
    const std::string bytes = sink.Take();
    const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
    EXPECT_EQ(document->trailer().Get("Own").IntegerOr(0), 17);
    EXPECT_EQ(document->trailer().Get("Info").AsReference().number, info);
    const auto ids = document->trailer().Get("ID").Items();
    ASSERT_EQ(ids.size(), 2U);
    EXPECT_EQ(ids[0].Text(), "first");
    EXPECT_EQ(ids[1].Text().size(), 16U);
  }
}

TEST(FileWriter, WritesTheSameBytesForTheSameInput) {
  EXPECT_EQ(Write(nullptr, 1000).bytes, Write(nullptr, 1000).bytes);
  EXPECT_EQ(Write(nullptr, 1000, kTable).bytes, Write(nullptr, 1000, kTable).bytes);
}

TEST(FileWriter, IdentifiesFilesByTheirContent) {
  const auto id = [](const std::string& bytes) { return bytes.substr(bytes.rfind("/ID["), 70); };
  EXPECT_EQ(id(Write(nullptr, 10).bytes), id(Write(nullptr, 10).bytes));
  EXPECT_NE(id(Write(nullptr, 10).bytes), id(Write(nullptr, 11).bytes));
}

TEST(FileWriter, RefusesAStreamOfAnotherLengthThanAnnounced) {
  StringSink sink;
  FileWriter writer(sink, nullptr);
  writer.BeginStream(writer.Reserve(), "<<", 3);
  EXPECT_THROW(writer.AppendStream("1234"), Error);
  writer.AppendStream("12");
  EXPECT_THROW(writer.EndStream(), Error);
}

// Takes so many bytes and no more.
class FullSink : public ByteSink {
 public:
  explicit FullSink(std::size_t room) : room_(room) {}

  void Write(std::string_view bytes) override {
    if (bytes.size() > room_) {
      throw Error(ErrorCode::kWriteFailed, "full");
    }
    room_ -= bytes.size();
  }

 private:
  std::size_t room_;
};

TEST(FileWriter, PassesOnThatTheSinkIsFull) {
  for (const std::size_t room : {std::size_t{0}, std::size_t{300000}}) {
    FullSink sink(room);
    FileWriter writer(sink, nullptr);
    const std::uint32_t number = writer.Reserve();
    EXPECT_THROW(
        {
          writer.BeginStream(number, "<<", 1 << 20);
          writer.AppendStream(std::string(1 << 20, 'x'));
          writer.EndStream();
          writer.Finish(number, 0);
        },
        Error);
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
