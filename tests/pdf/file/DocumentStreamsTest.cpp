// How a document gives the bytes of its streams, and what becomes of those that cannot be had.
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/crypt/EncryptedFile.h"
#include "pdf/file/Document.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;

// A source that can be made to fail, and tells how much was asked of it at once.
class FailingSource : public MemorySource {
 public:
  struct State {
    bool fails = false;
    bool is_shorter = false;
    std::size_t largest_read = 0;
  };

  FailingSource(std::string_view bytes, State& state) : MemorySource(bytes), state_(&state) {}

  std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override {
    if (state_->fails) {
      throw Error(ErrorCode::kReadFailed, "the disk is on fire");
    }
    state_->largest_read = std::max(state_->largest_read, size);
    return state_->is_shorter ? 0 : MemorySource::ReadAt(offset, buffer, size);
  }

 private:
  State* state_;
};

class Opened {
 public:
  explicit Opened(std::string bytes, std::string_view password = "") : bytes_(std::move(bytes)) {
    document_ = Document::Open(std::make_unique<FailingSource>(bytes_, source), password);
  }

  Document* operator->() { return document_.get(); }

  FailingSource::State source;

 private:
  std::string bytes_;
  std::unique_ptr<Document> document_;
};

// A document whose object 4 is the stream.
Opened WithStream(const std::string& entries, const std::string& data) {
  RawPdf pdf;
  pdf.Pages(1).Stream(4, entries, data);
  return Opened(pdf.Table());
}

std::string Deflated(std::string_view data) {
  std::string out;
  DeflateTo(out, data, 6);
  return out;
}

std::string Noise(std::size_t size) {
  std::string bytes(size, '\0');
  std::uint32_t state = 1;
  for (char& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

ErrorCode ErrorOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const Error& error) {
    return error.code();
  }
  ADD_FAILURE() << "nothing was thrown";
  return ErrorCode::kInternal;
}

TEST(DecodedStream, IsWholeWhereTheDataIsSound) {
  Opened document = WithStream("/Filter/FlateDecode", Deflated("content"));
  const auto decoded = document->TryDecodeStream(4);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->data, "content");
  EXPECT_TRUE(decoded->complete);
}

TEST(DecodedStream, IsNoneOfWhatIsNoStream) {
  Opened document(RawPdf().Pages(1).Object(4, "<</A 1>>").Object(5, "(text)").Table());
  EXPECT_FALSE(document->TryDecodeStream(4));
  EXPECT_FALSE(document->TryDecodeStream(5));
  EXPECT_FALSE(document->TryDecodeStream(99));
  EXPECT_FALSE(document->StreamOf(4));
}

TEST(DecodedStream, EndsWhereTheDataIsCut) {
  const std::string whole = Deflated(Noise(100'000));
  Opened document = WithStream("/Filter/FlateDecode", whole.substr(0, whole.size() / 2));
  const auto decoded = document->TryDecodeStream(4);
  ASSERT_TRUE(decoded);
  EXPECT_FALSE(decoded->complete);
  EXPECT_FALSE(decoded->is_too_long);
  EXPECT_GT(decoded->data.size(), 40'000U);
  EXPECT_EQ(decoded->data, Noise(100'000).substr(0, decoded->data.size()));
}

TEST(DecodedStream, IsEmptyWhereTheFilterCannotBeUndone) {
  std::string many = "/Filter[";
  for (int i = 0; i < 1000; ++i) {
    many += "/AHx ";
  }
  for (const std::string& filter :
       {std::string("/Filter/Fancy"), std::string("/Filter/DCTDecode"),
        std::string("/Filter/FlateDecode/DecodeParms<</Predictor 12/Colors 0>>"),
        std::string("/Filter/LZWDecode/DecodeParms<</EarlyChange 7>>"), many + "]"}) {
    Opened document = WithStream(filter, "data");
    const auto decoded = document->TryDecodeStream(4);
    ASSERT_TRUE(decoded) << filter;
    EXPECT_EQ(decoded->data, "") << filter;
    EXPECT_FALSE(decoded->complete) << filter;
    EXPECT_FALSE(decoded->is_too_long) << filter;
  }
}

TEST(DecodedStream, IsEmptyBeyondTheBound) {
  Opened document = WithStream("/Filter/FlateDecode", Deflated(std::string(1 << 20, 'x')));
  const auto bomb = document->TryDecodeStream(4, 100'000);
  ASSERT_TRUE(bomb);
  EXPECT_EQ(bomb->data, "");
  EXPECT_FALSE(bomb->complete);
  EXPECT_TRUE(bomb->is_too_long);
  EXPECT_TRUE(document->TryDecodeStream(4, 1 << 20)->complete);
  Opened plain = WithStream("", std::string(1001, 'x'));
  EXPECT_TRUE(plain->TryDecodeStream(4, 1000)->is_too_long);
  EXPECT_TRUE(plain->TryDecodeStream(4, 1001)->complete);
}

TEST(DecodedStream, FailsWithItsSource) {
  Opened document = WithStream("/Filter/FlateDecode", Deflated(Noise(200'000)));
  document.source.is_shorter = true;
  EXPECT_EQ(ErrorOf([&] { document->TryDecodeStream(4); }), ErrorCode::kSourceChanged);
  document.source.fails = true;
  EXPECT_EQ(ErrorOf([&] { document->TryDecodeStream(4); }), ErrorCode::kReadFailed);
}

TEST(ObjectStreams, FailWithTheirSource) {
  RawPdf pdf;
  pdf.Pages(1).Stream(8, "/Type/ObjStm/N 1/First 4", "9 0 (hidden)" + std::string(200'000, ' '));
  pdf.Stream(7, "/Type/XRef/Size 10/W[1 2 1]/Index[9 1]", std::string("\x02\x00\x08\x00", 4));
  const std::string bytes = pdf.Table("/Root 1 0 R/XRefStm " + std::to_string(pdf.OffsetOf(7)));
  Opened document(bytes);
  document.source.fails = true;
  Arena arena;
  EXPECT_EQ(ErrorOf([&] { document->Load({9, 0}, arena); }), ErrorCode::kReadFailed);
  document.source.fails = false;
  EXPECT_EQ(document->Load({9, 0}, arena).Text(), "hidden");
}

TEST(ObjectStreams, AreDamageWhereTheirDataIs) {
  for (const char* filter : {"/Filter/Fancy", "/Filter/FlateDecode"}) {
    RawPdf pdf;
    pdf.Pages(1).Stream(8, std::string("/Type/ObjStm/N 1/First 4") + filter, "9 0 (hidden)");
    pdf.Stream(7, "/Type/XRef/Size 10/W[1 2 1]/Index[9 1]", std::string("\x02\x00\x08\x00", 4));
    Opened document(pdf.Table("/Root 1 0 R/XRefStm " + std::to_string(pdf.OffsetOf(7))));
    Arena arena;
    EXPECT_TRUE(document->Load({9, 0}, arena).IsNull());
    EXPECT_TRUE(document->findings().Has(FindingCode::kObjectStreamDamaged)) << filter;
  }
}

TEST(CrossReferenceStreams, FailWithTheirSource) {
  RawPdf pdf;
  pdf.Pages(1);
  pdf.Stream(7, "/Type/XRef/Size 8/W[1 2 1]/Root 1 0 R", Noise(300'000));
  pdf.Raw("startxref\n" + std::to_string(pdf.OffsetOf(7)) + "\n%%EOF\n");

  // Fails where more is read at once than a block: that is the stream's data.
  class DataFails : public MemorySource {
   public:
    using MemorySource::MemorySource;

    std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override {
      if (size > (std::size_t{64} << 10)) {
        throw Error(ErrorCode::kReadFailed, "the disk is on fire");
      }
      return MemorySource::ReadAt(offset, buffer, size);
    }
  };

  EXPECT_EQ(ErrorOf([&] { Document::Open(std::make_unique<DataFails>(pdf.bytes()), ""); }),
            ErrorCode::kReadFailed);
}

TEST(CrossReferenceStreams, ThatCannotBeDecodedAreDoneWithout) {
  for (const char* filter : {"/Filter/Fancy", "/Filter/FlateDecode", "/W[9 9 9]"}) {
    RawPdf pdf;
    pdf.Pages(1);
    pdf.Stream(7, std::string(filter) + "/Type/XRef/Size 8/W[1 2 1]/Root 1 0 R", "nonsense");
    pdf.Raw("startxref\n" + std::to_string(pdf.OffsetOf(7)) + "\n%%EOF\n");
    Opened document(pdf.bytes());
    EXPECT_TRUE(document->is_rebuilt());
    EXPECT_TRUE(document->IsCatalogObject(1));
  }
}

TEST(CopiedStream, ComesAsItStands) {
  Opened document = WithStream("/Filter/Fancy", "any data");
  StringSink sink;
  EXPECT_TRUE(document->CopyStreamData(4, sink));
  EXPECT_EQ(sink.bytes(), "any data");
  EXPECT_FALSE(document->CopyStreamData(3, sink));
  EXPECT_FALSE(document->CopyStreamData(99, sink));
  EXPECT_EQ(sink.bytes(), "any data");
}

TEST(CopiedStream, EndsWhereNoMoreIsWanted) {
  Opened document = WithStream("", Noise(100'000));
  for (const std::size_t most : {0U, 1U, 40'000U, 99'999U, 100'000U, 200'000U}) {
    StringSink sink;
    document->CopyStreamData(4, sink, most);
    EXPECT_EQ(sink.bytes(), Noise(100'000).substr(0, most));
  }
}

// Keeps the sizes of what is written to it, and offers memory of its own when it is told to.
class PieceSink : public ByteSink {
 public:
  explicit PieceSink(bool has_room) : has_room_(has_room) {}

  void Write(std::string_view bytes) override {
    ++writes;
    largest = std::max(largest, bytes.size());
    all += bytes;
  }

  std::span<char> Room() override { return has_room_ ? std::span(room_) : std::span<char>(); }

  void Commit(std::size_t count) override { all.append(room_, count); }

  std::string all;
  std::size_t largest = 0;
  int writes = 0;

 private:
  bool has_room_;
  char room_[5000];
};

TEST(CopiedStream, IsNeverHeldAsAWhole) {
  constexpr std::size_t kSize = std::size_t{3} << 20;
  Opened document = WithStream("", Noise(kSize));
  PieceSink sink(false);
  document->CopyStreamData(4, sink);
  EXPECT_EQ(sink.all, Noise(kSize));
  EXPECT_LE(sink.largest, std::size_t{256} << 10);
  EXPECT_LE(document.source.largest_read, std::size_t{256} << 10);
}

TEST(CopiedStream, GoesStraightToTheMemoryOfItsSink) {
  Opened document = WithStream("", Noise(100'001));
  PieceSink sink(true);
  document->CopyStreamData(4, sink);
  EXPECT_EQ(sink.all, Noise(100'001));
  EXPECT_EQ(sink.writes, 0);
}

TEST(CopiedStream, FailsWithItsSource) {
  for (const bool has_room : {false, true}) {
    Opened document = WithStream("", Noise(500'000));
    const auto stream = document->StreamOf(4);
    ASSERT_TRUE(stream);
    PieceSink sink(has_room);
    document.source.is_shorter = true;
    EXPECT_EQ(ErrorOf([&] { document->CopyStreamData(*stream, sink); }), ErrorCode::kSourceChanged);
    document.source.fails = true;
    EXPECT_EQ(ErrorOf([&] { document->CopyStreamData(*stream, sink); }), ErrorCode::kReadFailed);
  }
}

TEST(CopiedStream, FailsWithItsSink) {
  class FullSink : public ByteSink {
   public:
    void Write(std::string_view) override { throw Error(ErrorCode::kWriteFailed, "full"); }
  };

  Opened document = WithStream("", "data");
  FullSink sink;
  EXPECT_EQ(ErrorOf([&] { document->CopyStreamData(4, sink); }), ErrorCode::kWriteFailed);
}

TEST(HeldStream, KeepsToTheBound) {
  Opened document = WithStream("", Noise(70'000));
  const auto stream = document->StreamOf(4);
  ASSERT_TRUE(stream);
  EXPECT_EQ(document->ReadStreamData(*stream), Noise(70'000));
  EXPECT_EQ(document->ReadStreamData(*stream, 70'000).size(), 70'000U);
  EXPECT_EQ(ErrorOf([&] { document->ReadStreamData(*stream, 69'999); }), ErrorCode::kLimitExceeded);
}

std::string Hex(std::string_view bytes) {
  std::string hex = "<";
  for (const unsigned char byte : bytes) {
    hex += "0123456789abcdef"[byte >> 4];
    hex += "0123456789abcdef"[byte & 15];
  }
  return hex + ">";
}

std::string Passed(std::unique_ptr<Cipher> cipher, std::string_view input) {
  std::string out;
  cipher->Update(input, out);
  cipher->Finish(out);
  return out;
}

// A document with AES-256, whose object 4 is a stream of these bytes, which are encrypted already.
Opened WithEncryptedStream(const Security& security, const std::string& entries,
                           const std::string& data) {
  const EncryptionFacts& facts = security.facts();
  RawPdf pdf;
  pdf.Pages(1).Stream(4, entries, data);
  pdf.Object(6, "<</Filter/Standard/V 5/R 6/Length 256/P " + std::to_string(facts.permissions) +
                    "/O" + Hex(facts.owner) + "/U" + Hex(facts.user) + "/OE" +
                    Hex(facts.owner_key) + "/UE" + Hex(facts.user_key) + "/Perms" +
                    Hex(facts.perms) +
                    "/StmF/StdCF/StrF/StdCF/CF<</StdCF<</CFM/AESV3/Length 32>>>>>>");
  return Opened(pdf.Table("/Root 1 0 R/Encrypt 6 0 R/ID[<00><00>]"), "user");
}

std::string Copied(Opened& document) {
  StringSink sink;
  EXPECT_TRUE(document->CopyStreamData(4, sink));
  return sink.Take();
}

TEST(EncryptedStream, ComesPlain) {
  const Security security = Security::Create("user", "owner", -4);
  for (const std::size_t size : {0U, 1U, 15U, 16U, 17U, 5'000U, 300'000U}) {
    const std::string plain = Noise(size);
    Opened document = WithEncryptedStream(security, "", Passed(security.Encryptor(), plain));
    EXPECT_EQ(Copied(document), plain);
    EXPECT_EQ(document->TryDecodeStream(4)->data, plain);
    EXPECT_EQ(document->ReadStreamData(*document->StreamOf(4)), plain);
    EXPECT_EQ(document->PlainLength(*document->StreamOf(4)), size);
  }
}

TEST(EncryptedStream, IsDecodedBehindItsEncryption) {
  const Security security = Security::Create("user", "owner", -4);
  Opened document = WithEncryptedStream(security, "/Filter/FlateDecode",
                                        Passed(security.Encryptor(), Deflated("content")));
  EXPECT_EQ(document->TryDecodeStream(4)->data, "content");
  EXPECT_EQ(Copied(document), Deflated("content"));
}

TEST(EncryptedStream, IsPlainWhereItsOwnFilterSaysSo) {
  const Security security = Security::Create("user", "owner", -4);
  for (const char* entries :
       {"/Filter/Crypt", "/Filter[/Crypt]/DecodeParms[<</Name/Identity>>]", "/Type/XRef"}) {
    Opened document = WithEncryptedStream(security, entries, "plain data");
    EXPECT_EQ(document->TryDecodeStream(4)->data, "plain data") << entries;
    EXPECT_EQ(Copied(document), "plain data") << entries;
  }
  Opened named = WithEncryptedStream(security, "/Filter[/Crypt]/DecodeParms[<</Name/StdCF>>]",
                                     Passed(security.Encryptor(), "named"));
  EXPECT_EQ(named->TryDecodeStream(4)->data, "named");
}

TEST(EncryptedStream, KeepsItsPlainLengthWhenItIsDamaged) {
  const Security security = Security::Create("user", "owner", -4);
  const std::string whole = Passed(security.Encryptor(), Noise(100'000));
  for (const std::size_t cut : {0U, 1U, 5U, 16U, 17U, 33U, 60'000U, 90'000U}) {
    for (const std::size_t size : {whole.size() - cut, std::size_t{cut % 70}}) {
      Opened document = WithEncryptedStream(security, "", whole.substr(0, size));
      const auto stream = document->StreamOf(4);
      ASSERT_TRUE(stream);
      EXPECT_EQ(document->PlainLength(*stream), Copied(document).size()) << size;
      EXPECT_EQ(document->TryDecodeStream(4)->data, Copied(document)) << size;
    }
  }
}

TEST(EncryptedStream, ComesInPiecesToo) {
  const Security security = Security::Create("user", "owner", -4);
  constexpr std::size_t kSize = std::size_t{1} << 20;
  Opened document = WithEncryptedStream(security, "", Passed(security.Encryptor(), Noise(kSize)));
  PieceSink sink(true);
  document->CopyStreamData(4, sink);
  EXPECT_EQ(sink.all, Noise(kSize));
  EXPECT_LE(sink.largest, (std::size_t{256} << 10) + 32);
  StringSink start;
  document->CopyStreamData(4, start, 40'000);
  EXPECT_EQ(start.bytes(), Noise(kSize).substr(0, start.bytes().size()));
  EXPECT_GT(start.bytes().size(), 39'900U);
}

TEST(EncryptedStream, FailsWithItsSource) {
  const Security security = Security::Create("user", "owner", -4);
  Opened document = WithEncryptedStream(security, "", Passed(security.Encryptor(), Noise(500'000)));
  const auto stream = document->StreamOf(4);
  ASSERT_TRUE(stream);
  document.source.is_shorter = true;
  EXPECT_EQ(ErrorOf([&] { document->PlainLength(*stream); }), ErrorCode::kSourceChanged);
  EXPECT_EQ(ErrorOf([&] { document->ReadStreamData(*stream); }), ErrorCode::kSourceChanged);
  document.source.fails = true;
  EXPECT_EQ(ErrorOf([&] { document->TryDecodeStream(4); }), ErrorCode::kReadFailed);
}

TEST(EncryptedStream, ComesPlainFromRc4) {
  // What qpdf wrote for the user password "user" and the owner password "owner".
  RawPdf pdf;
  const std::string dictionary =
      "<</Filter/Standard/V 2/R 3/Length 128/P -4"
      "/O<0ba3835f88f90388e74e54584125ce142be0de24c6b0d37746e075b891756671>"
      "/U<763f954d16622015ee88b60b3eb8f7590122456a91bae5134273a6db134c87c4>>>";
  pdf.Pages(1).Stream(4, "", Noise(100'000)).Object(6, dictionary);
  Opened document(pdf.Table("/Root 1 0 R/Encrypt 6 0 R/ID[<31415926535897932384626433832795>]"),
                  "user");
  const std::string plain = Copied(document);
  ASSERT_EQ(plain.size(), 100'000U);
  EXPECT_NE(plain, Noise(100'000));
  EXPECT_EQ(Passed(document->security()->DecryptorFor(CryptTarget::kStream, 4, 0), plain),
            Noise(100'000))
      << "RC4 takes itself back";
  EXPECT_EQ(document->PlainLength(*document->StreamOf(4)), plain.size());
  EXPECT_EQ(document->TryDecodeStream(4)->data, plain);
}

}  // namespace
}  // namespace TarnixTools::pdf
