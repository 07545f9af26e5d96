// What becomes of PDF/A documents in jobs that have nothing to do with PDF/A.
#include <ostream>
#include <string>
#include <vector>

#include "Pdf2PdfATask.h"
#include "PdfCompressTask.h"
#include "PdfMergeTask.h"
#include "PdfPageNumberTask.h"
#include "PdfRepairTask.h"
#include "PdfRotateTask.h"
#include "PdfStampTextTask.h"
#include "support/DocumentTest.h"
#include "support/Surroundings.h"

namespace TarnixTools {
namespace {

using ::testing::Contains;
using ::testing::Not;
using ::testing::StartsWith;

// Named as what claims it.
struct LevelCase {
  const char* name;
  PdfCompliance level;
};

void PrintTo(const LevelCase& level, std::ostream* out) {
  *out << level.name;
}

constexpr LevelCase kLevels[] = {{"1b", PdfCompliance::PdfA1B}, {"1a", PdfCompliance::PdfA1A},
                                 {"2b", PdfCompliance::PdfA2B}, {"2u", PdfCompliance::PdfA2U},
                                 {"2a", PdfCompliance::PdfA2A}, {"3b", PdfCompliance::PdfA3B}};

class PdfAJobsTest : public testing::DocumentTest {
 protected:
  std::string MakeArchive(const std::string& name, PdfCompliance level,
                          const std::string& example = "letter.pdf") const {
    Pdf2PdfATask task(PdfDoc(testing::ExamplesDir() + "/" + example, "", true), name);
    task.SetOutputPath(Path(""));
    task.SetCompliance(level);
    task.Execute();
    return Path(name);
  }

  // The output of a task with a name for it.
  template <typename Task>
  std::string Run(Task task) {
    task.SetOutputPath(Path(""));
    task.SetOutName("out.pdf");
    return Execute(task, Path("out.pdf"));
  }

  template <typename Task>
  std::string Execute(Task& task, const std::string& output) {
    task.SetOutputPath(Path(""));
    task.Execute();
    lines_.clear();
    for (const PdfReportEntry& entry : task.GetReport().GetEntries()) {
      lines_.push_back(PdfReport::GetText(entry));
    }
    return output;
  }

  void ExpectToBe(const std::string& path, PdfCompliance level, const char* job) const {
    PdfDoc document(path, "", true);
    EXPECT_EQ(document.GetPdfaCompliance(), level) << job;
    EXPECT_TRUE(document.ValidatePdfA()) << job;
    for (const PdfFinding& finding : document.GetFindings()) {
      ADD_FAILURE() << job << ": " << finding.clause << "-" << finding.test << " "
                    << finding.message;
    }
    EXPECT_THAT(lines_, Not(Contains(StartsWith("1 PDF/A claim dropped")))) << job;
  }

  void ExpectNoClaim(const std::string& path) const {
    EXPECT_EQ(static_cast<int>(PdfDoc(path, "", true).GetPdfaCompliance()) & 0xFF, 0);
  }

  std::vector<std::string> lines_;  // of the last report
};

class PdfALevelsTest : public PdfAJobsTest, public ::testing::WithParamInterface<LevelCase> {
 protected:
  void SetUp() override { archive_ = MakeArchive("a.pdf", GetParam().level); }

  PdfDoc Archive() const {
    PdfDoc document(archive_, "", true);
    document.SetKeepMetadata(true);
    return document;
  }

  void ExpectToHold(const std::string& path, const char* job) const {
    ExpectToBe(path, GetParam().level, job);
  }

  std::string archive_;
};

INSTANTIATE_TEST_SUITE_P(All, PdfALevelsTest, ::testing::ValuesIn(kLevels),
                         [](const auto& test) { return test.param.name; });

TEST_P(PdfALevelsTest, SurvivesPaintedPages) {
  PdfPageNumberTask numbers(Archive());
  ExpectToHold(Run(numbers), "page numbers");
  PdfStampTextTask stamp(Archive());
  stamp.SetInputText("Approved");
  ExpectToHold(Run(stamp), "stamp");
}

TEST_P(PdfALevelsTest, SurvivesOtherPages) {
  PdfRotateTask rotate(Archive());
  rotate.SetRotationAngle(PdfRotationAngle::Rotate90);
  ExpectToHold(Run(rotate), "rotate");
  const std::string longer = MakeArchive("b.pdf", GetParam().level, "report.pdf");
  PdfDoc(longer, "", true).Split(2, Path(""), "", "");
  ExpectToHold(Path("b-01.pdf"), "split");
  PdfMergeTask merge({Archive(), PdfDoc(longer, "", true)});
  merge.SetOutDocName("merged.pdf");
  ExpectToHold(Execute(merge, Path("merged.pdf")), "merge");
}

TEST_P(PdfALevelsTest, SurvivesNewMetadata) {
  PdfDoc document = Archive();
  document.SetMetaData({"Ada & Bob", "a, b", "Pen", "Press"}, Path("out.pdf"), "");
  ExpectToHold(Path("out.pdf"), "metadata");
  document.SetKeepMetadata(false);
  document.SetMetaData({"Ada", "", "Pen", ""}, Path("out.pdf"), "");
  ExpectToHold(Path("out.pdf"), "metadata in place of all");
}

TEST_P(PdfALevelsTest, SurvivesOtherEngines) {
  PdfCompressTask compress(Archive());
  compress.SetOutPdfName("small.pdf");
  ExpectToHold(Execute(compress, Path("small.pdf")), "compress");
  PdfRepairTask repair(Archive());
  ExpectToHold(Run(repair), "repair");
}

TEST_F(PdfAJobsTest, ClaimsTheLowerOfTwoLevels) {
  const PdfDoc tagged(MakeArchive("a.pdf", PdfCompliance::PdfA2A), "", true);
  const PdfDoc plain(MakeArchive("b.pdf", PdfCompliance::PdfA2B), "", true);
  PdfMergeTask merge({tagged, plain});
  merge.SetOutDocName("merged.pdf");
  Execute(merge, Path("merged.pdf"));
  EXPECT_EQ(Doc("merged.pdf").GetPdfaCompliance(), PdfCompliance::PdfA2B);
  EXPECT_TRUE(Doc("merged.pdf").ValidatePdfA());
  EXPECT_THAT(lines_, Contains("1 PDF/A claim kept"));
  EXPECT_THAT(lines_,
              Contains("1 PDF/A claim dropped: only a lower level holds for what is written"));
}

TEST_F(PdfAJobsTest, ClaimsNothingOfDifferentParts) {
  const PdfDoc second(MakeArchive("a.pdf", PdfCompliance::PdfA2B), "", true);
  const PdfDoc third(MakeArchive("b.pdf", PdfCompliance::PdfA3B), "", true);
  PdfMergeTask merge({second, third});
  merge.SetOutDocName("merged.pdf");
  Execute(merge, Path("merged.pdf"));
  ExpectNoClaim(Path("merged.pdf"));
  EXPECT_THAT(lines_, Contains("2 PDF/A claims dropped: not every document claims that part"));
}

TEST_F(PdfAJobsTest, ClaimsNothingWhereItDoesNotHold) {
  PdfStampTextTask stamp(PdfDoc(MakeArchive("a.pdf", PdfCompliance::PdfA1B), "", true));
  stamp.SetInputText("Draft");
  stamp.SetTextOpacity(50);
  ExpectNoClaim(Run(stamp));
  EXPECT_THAT(lines_, Contains("1 PDF/A claim dropped: does not hold for what is written"));
  PdfStampTextTask later(PdfDoc(MakeArchive("a.pdf", PdfCompliance::PdfA2B), "", true));
  later.SetInputText("Draft");
  later.SetTextOpacity(50);
  ExpectToBe(Run(later), PdfCompliance::PdfA2B, "part 2 has transparency");
}

TEST_F(PdfAJobsTest, ClaimsNothingOnceEncrypted) {
  PdfDoc document(MakeArchive("a.pdf", PdfCompliance::PdfA2B), "", true);
  document.SetKeepMetadata(true);
  document.Lock("pw", Path("out.pdf"));
  EXPECT_NE(Doc("out.pdf", "pw").GetPdfaCompliance(), PdfCompliance::PdfA2B);
}

}  // namespace
}  // namespace TarnixTools
