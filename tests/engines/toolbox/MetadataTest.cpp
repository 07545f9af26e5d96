// Document information and reports through the engine's contract.
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/ErrorCodes.h"
#include "engines/toolbox/Toolbox.h"
#include "support/MemoryFile.h"
#include "support/TestPackets.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using namespace std::string_view_literals;
using ::TarnixTools::testing::ClaimOf;
using ::TarnixTools::testing::TestPacket;
using ::TarnixTools::testing::TestPdf;

// A document of one page that is open for reading.
struct Source {
  explicit Source(const std::string& bytes, const char* password = "") : file{bytes} {
    const TPdfStream stream = file.Descriptor();
    document = PdfDocumentOpenA(&stream, password);
  }

  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

  ~Source() { PdfClose(document); }

  MemoryFile file;
  TPdfDocument* document = nullptr;
};

struct Target {
  explicit Target(const TPdfEncryption* encryption = nullptr) {
    const TPdfStream stream = file.Descriptor();
    document = PdfDocumentCreateW(&stream, 0, encryption);
  }

  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;

  ~Target() { PdfDocumentDiscard(document); }

  void Copy(Source& source) {
    TPdfPageList* pages = PdfDocumentGetPages(source.document);
    TPdfPageList* list = PdfDocumentGetPages(document);
    for (int i = 0; i < PdfPageListGetCount(pages); ++i) {
      TPdfPage* page = PdfPageListGet(pages, i);
      TPdfPage* copy = PdfDocumentCopyPage(document, page, 15);
      EXPECT_EQ(PdfPageListAppend(list, copy), 1);
      PdfClose(copy);
      PdfClose(page);
    }
    PdfClose(list);
    PdfClose(pages);
  }

  int Close() {
    TPdfDocument* closing = document;
    document = nullptr;
    return PdfClose(closing);
  }

  MemoryFile file;
  TPdfDocument* document = nullptr;
};

using Getter = int (*)(TPdfMetadata*, char*, std::int32_t);
using Setter = int (*)(TPdfMetadata*, const char*, std::int64_t);

std::string Value(TPdfMetadata* metadata, Getter get) {
  char buffer[256] = "none";
  EXPECT_EQ(get(metadata, buffer, sizeof buffer), 1);
  return buffer;
}

int SetValue(TPdfMetadata* metadata, Setter set, std::string_view value) {
  return set(metadata, value.data(), static_cast<std::int64_t>(value.size()));
}

std::vector<std::string> Values(TPdfMetadata* metadata) {
  return {Value(metadata, PdfMetadataGetAuthorA), Value(metadata, PdfMetadataGetKeywordsA),
          Value(metadata, PdfMetadataGetCreatorA), Value(metadata, PdfMetadataGetProducerA)};
}

std::vector<std::string> ValuesIn(const std::string& bytes, const char* password = "") {
  Source source(bytes, password);
  TPdfMetadata* metadata = PdfDocumentGetMetadata(source.document);
  const std::vector<std::string> values = Values(metadata);
  PdfClose(metadata);
  return values;
}

using Texts = std::vector<std::string>;

TEST(DocumentInformation, IsWrittenAsItWasSet) {
  Target target;
  TPdfMetadata* metadata = PdfDocumentGetMetadata(target.document);
  EXPECT_EQ(Values(metadata), Texts({"", "", "", ""}));
  EXPECT_EQ(SetValue(metadata, PdfMetadataSetAuthorA, "A (b\\"), 1);
  EXPECT_EQ(SetValue(metadata, PdfMetadataSetKeywordsA, "\u65E5\U0001F600"), 1);
  EXPECT_EQ(SetValue(metadata, PdfMetadataSetProducerA, "\r"), 1);
  EXPECT_EQ(PdfDocumentSetMetadata(target.document, metadata), 1);
  SetValue(metadata, PdfMetadataSetAuthorA, "too late");
  PdfClose(metadata);
  EXPECT_EQ(target.Close(), 1);
  EXPECT_EQ(ValuesIn(target.file.bytes), Texts({"A (b\\", "\u65E5\U0001F600", "", "\r"}));
}

TEST(DocumentInformation, IsWrittenOnlyWhenItWasSet) {
  Target without;
  TPdfMetadata* metadata = PdfDocumentGetMetadata(without.document);
  SetValue(metadata, PdfMetadataSetAuthorA, "never given to the document");
  PdfClose(metadata);
  EXPECT_EQ(without.Close(), 1);
  EXPECT_EQ(without.file.bytes.find("/Info"), std::string::npos);

  Target with;
  metadata = PdfDocumentGetMetadata(with.document);
  SetValue(metadata, PdfMetadataSetAuthorA, "");
  EXPECT_EQ(PdfDocumentSetMetadata(with.document, metadata), 1);
  PdfClose(metadata);
  EXPECT_EQ(with.Close(), 1);
  EXPECT_NE(with.file.bytes.find("/Info"), std::string::npos);
}

TEST(DocumentInformation, IsEncryptedWithTheDocument) {
  TPdfEncryption encryption;
  encryption.user_password = encryption.owner_password = L"pw";
  encryption.permissions = 3900;
  Target target(&encryption);
  TPdfMetadata* metadata = PdfDocumentGetMetadata(target.document);
  SetValue(metadata, PdfMetadataSetCreatorA, "a secret");
  PdfDocumentSetMetadata(target.document, metadata);
  PdfClose(metadata);
  EXPECT_EQ(target.Close(), 1);
  EXPECT_EQ(ValuesIn(target.file.bytes, "pw"), Texts({"", "", "a secret", ""}));
}

TEST(DocumentInformation, IsCopiedFromAnotherDocument) {
  Source source(TestPdf().Page().InfoEntry("/Author (A) /Producer (P) /Creator null").Bytes());
  TPdfMetadata* theirs = PdfDocumentGetMetadata(source.document);
  Target target;
  TPdfMetadata* ours = PdfDocumentCopyMetadata(target.document, theirs);
  PdfClose(theirs);
  SetValue(ours, PdfMetadataSetProducerA, "Q");
  PdfDocumentSetMetadata(target.document, ours);
  PdfClose(ours);
  EXPECT_EQ(target.Close(), 1);
  EXPECT_EQ(ValuesIn(target.file.bytes), Texts({"A", "", "", "Q"}));
}

TEST(DocumentInformation, OfATargetIsWhatWasSetSoFar) {
  Target target;
  TPdfMetadata* metadata = PdfDocumentGetMetadata(target.document);
  SetValue(metadata, PdfMetadataSetAuthorA, "A");
  PdfDocumentSetMetadata(target.document, metadata);
  PdfClose(metadata);
  metadata = PdfDocumentGetMetadata(target.document);
  EXPECT_EQ(Values(metadata), Texts({"A", "", "", ""}));
  PdfClose(metadata);
}

TEST(DocumentInformation, IsKeptWhole) {
  Source source(TestPdf().Pages(1).InfoEntry("/Author(Ada)/Title(t)/Own(o)").Bytes());
  Target target;
  EXPECT_EQ(PdfDocumentKeepMetadata(target.document, source.document), 1);
  target.Copy(source);
  TPdfMetadata* metadata = PdfDocumentGetMetadata(target.document);
  EXPECT_EQ(Values(metadata), Texts({"Ada", "", "", ""}));
  SetValue(metadata, PdfMetadataSetAuthorA, "Bea");
  EXPECT_EQ(PdfDocumentSetMetadata(target.document, metadata), 1);
  PdfClose(metadata);
  EXPECT_EQ(target.Close(), 1);
  EXPECT_EQ(ValuesIn(target.file.bytes), Texts({"Bea", "", "", ""}));
  EXPECT_EQ(PdfDocumentKeepMetadata(nullptr, source.document), 0);
  EXPECT_EQ(PdfDocumentKeepMetadata(source.document, source.document), 0);
  EXPECT_EQ(PdfGetLastError(), kToolboxArgumentError);
}

TEST(DocumentInformation, KeepsWhatFollowsANulAndWhatIsLong) {
  Target target;
  TPdfMetadata* metadata = PdfDocumentGetMetadata(target.document);
  const std::string value(100000, 'x');
  SetValue(metadata, PdfMetadataSetAuthorA, value);
  SetValue(metadata, PdfMetadataSetCreatorA, "a\0b"sv);
  PdfDocumentSetMetadata(target.document, metadata);
  PdfClose(metadata);
  EXPECT_EQ(target.Close(), 1);
  Source source(target.file.bytes);
  metadata = PdfDocumentGetMetadata(source.document);
  std::string buffer(value.size() + 1, ' ');
  PdfMetadataGetAuthorA(metadata, buffer.data(), static_cast<std::int32_t>(buffer.size()));
  EXPECT_EQ(buffer, value + '\0');
  char creator[4] = {};
  PdfMetadataGetCreatorA(metadata, creator, sizeof creator);
  EXPECT_EQ(std::string_view(creator, 3), "a\0b"sv);
  PdfClose(metadata);
}

TEST(DocumentInformation, IsLeftAloneByCallsThatMakeNoSense) {
  Source source(TestPdf().Page().Bytes());
  Target target;
  TPdfMetadata* metadata = PdfDocumentGetMetadata(target.document);
  EXPECT_EQ(PdfDocumentSetMetadata(nullptr, metadata), 0);
  EXPECT_EQ(PdfDocumentSetMetadata(target.document, nullptr), 0);
  EXPECT_EQ(PdfDocumentCopyMetadata(nullptr, metadata), nullptr);
  EXPECT_EQ(PdfDocumentCopyMetadata(target.document, nullptr), nullptr);
  EXPECT_EQ(PdfMetadataSetAuthorA(nullptr, "x", 1), 0);
  EXPECT_EQ(PdfDocumentSetMetadata(source.document, metadata), 0);
  EXPECT_EQ(PdfGetLastError(), kToolboxArgumentError);
  EXPECT_EQ(PdfDocumentCopyMetadata(source.document, metadata), nullptr);
  EXPECT_EQ(PdfMetadataSetAuthorA(metadata, nullptr, 1), 0);
  EXPECT_EQ(PdfMetadataSetAuthorA(metadata, "x", -1), 0);
  EXPECT_EQ(PdfDocumentSetReport(nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(PdfDocumentSetReport(source.document, nullptr, nullptr), 0);
  EXPECT_EQ(Values(metadata), Texts({"", "", "", ""}));
  PdfClose(metadata);
}

class CopyReports : public ::testing::Test {
 protected:
  struct Entry {
    TPdfCopiedKind kind;
    TPdfCopyOutcome outcome;
    std::uint64_t count;
    std::string reason;

    bool operator==(const Entry&) const = default;
  };

  static void Note(void* context, const TPdfReportEntry* entry) {
    static_cast<CopyReports*>(context)->entries_.push_back(
        {entry->kind, entry->outcome, entry->count, entry->reason});
  }

  // The entries about one kind.
  std::vector<Entry> About(TPdfCopiedKind kind) const {
    std::vector<Entry> found;
    for (const Entry& entry : entries_) {
      if (entry.kind == kind) {
        found.push_back(entry);
      }
    }
    return found;
  }

  std::vector<Entry> entries_;
};

const char* const kThumb = "/Thumb {{thumb}}";

std::string ThumbPdf() {
  return TestPdf()
      .Object("thumb", "<</Width 1 /Height 1>>")
      .Page("a")
      .PageEntry(kThumb)
      .Page("b")
      .PageEntry(kThumb)
      .Bytes();
}

std::string CutPdf() {
  const std::string bytes = TestPdf().Page("a").Bytes();
  return bytes.substr(0, bytes.rfind("startxref"));
}

TEST_F(CopyReports, AreToldWhenTheTargetIsComplete) {
  Source source(ThumbPdf());
  Target target;
  EXPECT_EQ(PdfDocumentSetReport(target.document, &CopyReports::Note, this), 1);
  target.Copy(source);
  EXPECT_TRUE(entries_.empty());
  EXPECT_EQ(target.Close(), 1);
  const Entry expected = {TPdfCopiedKind::kThumbnail, TPdfCopyOutcome::kDropped, 2,
                          "not carried over"};
  EXPECT_EQ(About(TPdfCopiedKind::kThumbnail), std::vector<Entry>{expected});
  EXPECT_TRUE(About(TPdfCopiedKind::kDamage).empty());
}

TEST_F(CopyReports, AreNotToldWhenTheTargetFails) {
  Source source(ThumbPdf());
  Target target;
  PdfDocumentSetReport(target.document, &CopyReports::Note, this);
  target.Copy(source);
  target.file.room = 0;
  EXPECT_EQ(target.Close(), 0);
  EXPECT_TRUE(entries_.empty());
}

TEST_F(CopyReports, TellTheDamageOfASourceOnce) {
  Source source(CutPdf());
  Target first;
  PdfDocumentSetReport(first.document, &CopyReports::Note, this);
  first.Copy(source);
  EXPECT_EQ(first.Close(), 1);
  const std::vector<Entry> damage = About(TPdfCopiedKind::kDamage);
  ASSERT_FALSE(damage.empty());
  EXPECT_EQ(damage.front().reason, "start of the cross-reference not found");
  EXPECT_EQ(damage.front().outcome, TPdfCopyOutcome::kKept);

  entries_.clear();
  Target second;
  PdfDocumentSetReport(second.document, &CopyReports::Note, this);
  second.Copy(source);
  EXPECT_EQ(second.Close(), 1);
  EXPECT_TRUE(About(TPdfCopiedKind::kDamage).empty());
}

class CopiedClaims : public CopyReports {
 protected:
  static std::string Claiming(const std::string& part) {
    const std::string packet = TestPacket(ClaimOf(part));
    return TestPdf()
        .Pages(1)
        .Object("packet", "<</Type/Metadata/Subtype/XML/Length " + std::to_string(packet.size()) +
                              ">>\nstream\n" + packet + "\nendstream")
        .CatalogEntry("/Metadata {{packet}}")
        .Bytes();
  }

  // What is written of the pages of these, with a proof that answers so.
  std::string Join(const std::vector<std::string>& sources, TPdfClaimProof proof,
                   const TPdfEncryption* encryption = nullptr) {
    Target target(encryption);
    PdfDocumentSetReport(target.document, &CopyReports::Note, this);
    if (proof != nullptr) {
      EXPECT_EQ(PdfDocumentSetClaimProof(target.document, proof, stdin), 1);
    }
    for (const std::string& bytes : sources) {
      Source source(bytes);
      EXPECT_EQ(PdfDocumentKeepClaim(target.document, source.document), 1);
      target.Copy(source);
    }
    return target.Close() == 1 ? target.file.bytes : "failed";
  }

  std::string Reason() { return About(TPdfCopiedKind::kPdfAClaim).at(0).reason; }
};

TEST_F(CopiedClaims, AreKeptWhereTheyAreProven) {
  const std::string written = Join({Claiming("2")}, [](std::FILE*) { return 0x1701; });
  EXPECT_NE(written.find("<pdfaid:part>2<"), std::string::npos);
  EXPECT_EQ(About(TPdfCopiedKind::kPdfAClaim).at(0).outcome, TPdfCopyOutcome::kKept);
}

TEST_F(CopiedClaims, AreWrittenForReadersOfPart1) {
  const std::string written = Join({Claiming("1")}, [](std::FILE*) { return 0x1401; });
  EXPECT_TRUE(written.starts_with("%PDF-1.4\n"));
  EXPECT_EQ(written.find("/ObjStm"), std::string::npos);
}

TEST_F(CopiedClaims, AreToldWhereTheyDoNotSurvive) {
  Join({Claiming("2")}, [](std::FILE*) { return 0; });
  EXPECT_EQ(Reason(), "does not hold for what is written");
  entries_.clear();
  Join({Claiming("2"), Claiming("3")}, [](std::FILE*) { return -1; });
  EXPECT_EQ(Reason(), "not every document claims that part");
  entries_.clear();
  Join({Claiming("2")}, nullptr);
  EXPECT_EQ(Reason(), "not proven of what is written");
  entries_.clear();
  const TPdfEncryption encryption = {L"pw", L"pw", 0};
  Join(
      {Claiming("2")}, [](std::FILE*) { return -1; }, &encryption);
  EXPECT_EQ(Reason(), "what is encrypted cannot be PDF/A");
}

TEST_F(CopiedClaims, FailTheTargetWhereTheyCannotBeLookedAt) {
  EXPECT_EQ(Join({Claiming("2")}, [](std::FILE*) { return -1; }), "failed");
  EXPECT_EQ(PdfGetLastError(), kToolboxWriteError);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
