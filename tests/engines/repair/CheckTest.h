// Fixture of tests of checks: a document is analysed and repaired, and what was listed and written
// is looked at.
#ifndef TARNIX_TESTS_ENGINES_REPAIR_CHECK_TEST_H_
#define TARNIX_TESTS_ENGINES_REPAIR_CHECK_TEST_H_

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/repair/RepairedDocument.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::repair {

class CheckTest : public ::testing::Test {
 protected:
  using Codes = std::vector<ProblemCode>;

  // Repairs the document into "out.pdf".
  void Repair(const std::string& bytes, const std::string& password = "") {
    testing::WriteBytes(Path("in.pdf"), bytes);
    RepairedDocument document(platform::WidePath(Path("in.pdf")), password);
    document.Analyze(kAnalyzeAll);
    problems_ = document.problems();
    document.Save(platform::WidePath(Path("out.pdf")), {.is_repaired = true});
  }

  // The damage is this, and none is left once it is repaired.
  void ExpectMended(const std::string& bytes, const Codes& damage) {
    Repair(bytes);
    EXPECT_EQ(Damage(), damage);
    Repair(Output());
    EXPECT_EQ(Damage(), Codes());
  }

  // A page (3) with these entries; objects from 10 on are free.
  static testing::RawPdf OnePage(const std::string& entries, const std::string& catalog = "") {
    return testing::RawPdf()
        .Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>")
        .Object(2, "<</Type/Pages/Count 1/Kids[3 0 R]>>")
        .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]" + entries + ">>");
  }

  Codes Damage() const { return CodesOf(problems_.damage()); }

  Codes Lint() const { return CodesOf(problems_.lint()); }

  std::vector<std::string> Messages() const {
    std::vector<std::string> messages;
    for (const Problem& problem : problems_.damage()) {
      messages.push_back(MessageOf(problem, Tense::kDone));
    }
    return messages;
  }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  std::vector<std::string> Texts() const { return testing::PageTexts(Path("out.pdf")); }

  std::string Complaints() const { return testing::QpdfComplaints(Path("out.pdf")); }

  // All that the output has, streams decoded, by qpdf.
  std::string Held() const {
    return testing::RunProgram({"qpdf", "--qdf", "--object-streams=disable", Path("out.pdf"), "-"})
        .output;
  }

  std::string Output() const { return testing::ReadBytes(Path("out.pdf")); }

  // The text with the first occurrence of a part replaced, which must be there.
  static std::string With(std::string text, const std::string& part, const std::string& by) {
    const std::size_t at = text.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    return at == std::string::npos ? text : text.replace(at, part.size(), by);
  }

  ProblemList problems_;
  testing::TempDir directory_;

 private:
  static Codes CodesOf(std::span<const Problem> problems) {
    Codes codes;
    for (const Problem& problem : problems) {
      codes.push_back(problem.code);
    }
    return codes;
  }
};

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_TESTS_ENGINES_REPAIR_CHECK_TEST_H_
