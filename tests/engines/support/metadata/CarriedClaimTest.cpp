#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/metadata/CarriedClaim.h"
#include "pdf/Error.h"
#include "pdf/file/ByteSource.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"
#include "support/TestPackets.h"

namespace TarnixTools::engines {
namespace {

using testing::RawPdf;

// A file of one page whose packet says this, in this version.
std::string FileWith(const std::string& packet, const std::string& version = "%PDF-1.4\n") {
  RawPdf file(version);
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 4 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>");
  return file.Stream(4, "/Type/Metadata/Subtype/XML", packet).Table();
}

std::string PacketWith(const std::string& part) {
  return testing::TestPacket(testing::ClaimOf(part));
}

// The claim that is carried, the options that it sets, and what is written.
struct Carried {
  CarriedClaim claim;
  pdf::RewriteOptions options;
  std::string bytes;
};

Carried Carry(const std::string& file, bool can_be_proven) {
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(file), "");
  pdf::DocumentRewriter rewriter(*document);
  Carried carried;
  carried.claim = CarryPdfAClaim(*document, rewriter, carried.options, can_be_proven);
  pdf::StringSink sink;
  rewriter.Write(sink, carried.options);
  carried.bytes = sink.bytes();
  return carried;
}

bool Has(const Carried& carried, const std::string& text) {
  return carried.bytes.find(text) != std::string::npos;
}

TEST(CarriedClaim, WaitsForAProof) {
  const Carried carried = Carry(FileWith(PacketWith("2")), true);
  EXPECT_EQ(carried.claim.level, 0x1701);
  EXPECT_TRUE(carried.claim.was_there);
  EXPECT_FALSE(carried.claim.was_packet_lost);
  EXPECT_TRUE(Has(carried, PacketWith("2")));
  EXPECT_TRUE(Has(carried, "<</Type/Metadata/Subtype/XML/Length "));
}

TEST(CarriedClaim, GoesWhereItCannotBeProven) {
  const Carried carried = Carry(FileWith(PacketWith("2")), false);
  EXPECT_EQ(carried.claim.level, 0);
  EXPECT_TRUE(carried.claim.was_there);
  EXPECT_FALSE(carried.claim.was_packet_lost);
  EXPECT_FALSE(Has(carried, "pdfaid:part"));
  EXPECT_TRUE(Has(carried, "<dc:title>A title</dc:title>"));
}

TEST(CarriedClaim, GoesWhereItIsOfNoLevel) {
  const Carried carried = Carry(FileWith(PacketWith("7")), true);
  EXPECT_EQ(carried.claim.level, 0);
  EXPECT_TRUE(carried.claim.was_there);
  EXPECT_FALSE(Has(carried, "pdfaid:part"));
}

TEST(CarriedClaim, HasAVersionAndALayoutThatReadersOfPart1Know) {
  for (const bool can_be_proven : {false, true}) {
    const Carried old = Carry(FileWith(PacketWith("1"), "%PDF-1.3\n"), can_be_proven);
    EXPECT_EQ(old.options.version, "1.4");
    EXPECT_EQ(old.options.layout, pdf::FileLayout::kTable);
    EXPECT_TRUE(old.bytes.starts_with("%PDF-1.4\n"));
    EXPECT_EQ(Carry(FileWith(PacketWith("1"), "%PDF-1.4\n"), can_be_proven).options.version, "1.4");
    EXPECT_EQ(Carry(FileWith(PacketWith("1"), "%PDF-1.6\n"), can_be_proven).options.version, "1.6");
    EXPECT_EQ(Carry(FileWith(PacketWith("1"), "%PDF-2.0\n"), can_be_proven).options.version, "2.0");
    const Carried later = Carry(FileWith(PacketWith("2")), can_be_proven);
    EXPECT_EQ(later.options.version, pdf::RewriteOptions().version);
    EXPECT_EQ(later.options.layout, pdf::RewriteOptions().layout);
  }
}

TEST(CarriedClaim, IsLostWithAPacketThatCannotBeRead) {
  const Carried carried = Carry(FileWith("<x"), true);
  EXPECT_EQ(carried.claim.level, 0);
  EXPECT_FALSE(carried.claim.was_there);
  EXPECT_TRUE(carried.claim.was_packet_lost);
  EXPECT_FALSE(Has(carried, "/Metadata"));
}

TEST(CarriedClaim, IsNoneWithoutAPacketOrWithAnother) {
  for (const std::string& file : {FileWith(testing::TestPacket("")), RawPdf().Pages(1).Table()}) {
    const Carried carried = Carry(file, true);
    EXPECT_EQ(carried.claim.level, 0);
    EXPECT_FALSE(carried.claim.was_there);
    EXPECT_FALSE(carried.claim.was_packet_lost);
    EXPECT_EQ(carried.options.version, pdf::RewriteOptions().version);
  }
}

TEST(CarriedClaim, HasAFate) {
  EXPECT_STREQ(ReasonOf(ClaimFate::kKept), "");
  EXPECT_STREQ(ReasonOf(ClaimFate::kLowered), "only a lower level holds for what is written");
  EXPECT_STREQ(ReasonOf(ClaimFate::kDropped), "does not hold for what is written");
  EXPECT_STREQ(ReasonOf(ClaimFate::kUnproven), "not proven of what is written");
  const auto fate = [](std::int32_t level, std::int32_t (*proof)(std::FILE*)) {
    return ProvePdfAClaim(level, proof, nullptr);
  };
  EXPECT_EQ(fate(0, nullptr), ClaimFate::kUnproven);
  EXPECT_EQ(fate(0x1702, [](std::FILE*) { return 0x1702; }), ClaimFate::kKept);
  EXPECT_EQ(fate(0x1702, [](std::FILE*) { return 0x1701; }), ClaimFate::kLowered);
  EXPECT_EQ(fate(0x1702, [](std::FILE*) { return 0; }), ClaimFate::kDropped);
  try {
    fate(0x1702, [](std::FILE*) { return -1; });
    FAIL() << "nobody said that it could not be proven";
  } catch (const pdf::Error& error) {
    EXPECT_EQ(error.code(), pdf::ErrorCode::kWriteFailed);
    EXPECT_STREQ(error.what(), "the claim of PDF/A cannot be proven");
  }
}

}  // namespace
}  // namespace TarnixTools::engines
