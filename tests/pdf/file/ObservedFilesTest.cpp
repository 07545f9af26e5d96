// What an observer hears of real documents holds against their bytes and against what is read of
// them without an observer.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/file/Document.h"
#include "pdf/syntax/SyntaxObserver.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"

namespace TarnixTools::pdf {
namespace {

using testing::DocumentsIn;
using testing::OpenBytes;
using testing::ReadBytes;

// Holds what is told against the bytes, and counts objects.
class Checker : public SyntaxObserver {
 public:
  explicit Checker(const std::string& bytes) : bytes_(&bytes) {}

  void OnHeader(const HeaderSyntax& header) override {
    ExpectAt(header.offset, std::string(header.line) + std::string(header.line_end));
  }

  void OnStartXref(const StartXrefSyntax& start) override {
    ExpectAt(start.offset, "startxref" + std::string(start.after_keyword));
  }

  void OnFileEnd(const FileEndSyntax& end) override {
    EXPECT_EQ(end.size, bytes_->size());
    ExpectAt(end.offset, end.has_marker ? "%%EOF" + std::string(end.after) : "");
  }

  void OnXrefTable(const XrefTableSyntax& table) override {
    ExpectAt(table.offset, "xref" + std::string(table.after_keyword));
  }

  void OnXrefEntry(const XrefEntrySyntax& entry) override { ExpectAt(entry.offset, entry.text); }

  void OnObject(const ObjectSyntax& object) override {
    ++count;
    reference_ = object.reference;
    is_in_file_ = object.holder == 0;
    if (is_in_file_) {
      ExpectAt(object.offset - object.before.size(), object.before);
      offsets.push_back(object.offset);
    }
  }

  void OnToken(const TokenSyntax& token) override {
    if (is_in_file_) {
      ExpectAt(token.offset, token.token.text);
    }
  }

  void OnStream(const StreamSyntax& stream) override {
    ExpectAt(stream.offset, "stream" + std::string(stream.after_keyword));
    ExpectAt(stream.end - stream.before_end.size(), stream.before_end);
    ExpectAt(stream.end, stream.has_end ? "endstream" : "");
    EXPECT_GE(stream.end, stream.data);
  }

  void OnObjectEnd(const ObjectEndSyntax& end) override {
    EXPECT_EQ(end.reference.number, reference_->number);
    if (is_in_file_) {
      ExpectAt(end.offset - end.before.size(), end.before);
      ExpectAt(end.offset, end.has_keyword ? "endobj" + std::string(end.after) : "");
    }
  }

  std::size_t count = 0;
  std::vector<std::uint64_t> offsets;  // of those in the file

 private:
  void ExpectAt(std::uint64_t offset, std::string_view text) {
    ASSERT_LE(offset + text.size(), bytes_->size());
    EXPECT_EQ(std::string_view(*bytes_).substr(offset, text.size()), text) << "at " << offset;
  }

  const std::string* bytes_;
  std::optional<Reference> reference_;
  bool is_in_file_ = true;  // a trailer's tokens are, too
};

std::size_t ObjectsOf(Document& document) {
  std::size_t count = 0;
  for (std::uint32_t number = 1; number < document.object_limit(); ++number) {
    count += document.Locate(number) ? 1 : 0;
  }
  return count;
}

void ExpectToHear(const std::string& path) {
  SCOPED_TRACE(path);
  const std::string bytes = ReadBytes(path);
  try {
    const auto document = OpenBytes(bytes);
    Checker checker(bytes);
    const bool was_rebuilt = document->is_rebuilt();
    document->Observe(checker);
    EXPECT_TRUE(document->is_rebuilt() != was_rebuilt ||
                std::is_sorted(checker.offsets.begin(), checker.offsets.end()));
    EXPECT_EQ(checker.count, ObjectsOf(*document));
  } catch (const Error& error) {
    EXPECT_TRUE(error.code() == ErrorCode::kPasswordRequired ||
                error.code() == ErrorCode::kDamagedSecurity || error.code() == ErrorCode::kNotAPdf)
        << error.what();
  }
}

TEST(ObservedFiles, OfTheExamples) {
  for (const std::string& path : DocumentsIn(testing::ExamplesDir())) {
    ExpectToHear(path);
  }
}

// Every twelfth document of the corpus, in four tests that run side by side.
class ObservedCorpus : public ::testing::TestWithParam<std::size_t> {};

TEST_P(ObservedCorpus, IsHeardAsItIsWritten) {
  TARNIX_NEED_CORPUS("general");
  const std::vector<std::string> paths = DocumentsIn(testing::CorpusDir());
  for (std::size_t i = 12 * GetParam(); i < paths.size(); i += 12 * 4) {
    ExpectToHear(paths[i]);
  }
}

INSTANTIATE_TEST_SUITE_P(Every12th, ObservedCorpus,
                         ::testing::Range(std::size_t{0}, std::size_t{4}));

}  // namespace
}  // namespace TarnixTools::pdf
