// What every job says when the disk is full, and what it leaves behind then.
#include <set>

#include "tools/EveryJob.h"

namespace TarnixTools::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;

class FullDisk : public EveryJobTest {};

// The first write that finds the disk full is the first of the job, one in its middle, or the last.
TEST_P(FullDisk, IsToldInTheWordsOfTheSystem) {
  TARNIX_NEED_FAULT_INJECTOR();
  const RunResult sound = RunWith("");
  ASSERT_LT(sound.status, 2) << sound.err;
  const Files reference = FilesIn("out");
  ASSERT_FALSE(reference.empty());
  const int writes = Counts()["disk"];
  ASSERT_GT(writes, 0);
  for (const int place : std::set<int>{1, (writes + 1) / 2, writes}) {
    SCOPED_TRACE("disk:" + std::to_string(place) + " of " + std::to_string(writes));
    const RunResult result = RunWith("disk:" + std::to_string(place));
    EXPECT_GE(result.status, 10);
    EXPECT_LT(result.status, 64);
    EXPECT_THAT(result.err, HasSubstr("tarnix: "));
    EXPECT_THAT(result.err, EndsWith("No space left on device)\n"));
    EXPECT_EQ(FilesIn("."), inputs_);
    EXPECT_TRUE(FilesIn("tmp").empty());
    for (const auto& [name, bytes] : FilesIn("out")) {
      EXPECT_THAT(result.out, HasSubstr("out/" + name + "\n"));
      EXPECT_EQ(bytes, reference.contains(name) ? reference.at(name) : "no such output") << name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Jobs, FullDisk, ::testing::ValuesIn(EveryJobThatWrites()),
                         [](const auto& job) { return job.param.name; });

class RefusedOutputs : public CliTest {};

// A signal ends a program that goes beyond the limit, unless it takes the failure instead.
TEST_F(RefusedOutputs, BeyondTheLimitOfAFilesSizeAreToldInTheWordsOfTheSystem) {
  TestPdf file;
  for (int page = 0; page < 50; ++page) {
    file.Page(std::string(80, static_cast<char>('a' + page % 26)));
  }
  file.Write(Path("a.pdf"));
  for (const std::vector<std::string>& words : {std::vector<std::string>{"rotate", "--angle", "90"},
                                                {"compress"},
                                                {"repair"},
                                                {"pdf2img"}}) {
    std::vector<std::string> all = words;
    all.insert(all.end(), {"a.pdf", "-o", "out"});
    const RunResult result = Run(all, {.file_size_limit = 1000});
    EXPECT_GE(result.status, 10) << words[0];
    EXPECT_LT(result.status, 64) << words[0];
    EXPECT_THAT(result.err, EndsWith(" (File too large)\n"));
    EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf"));
  }
}

TEST_F(RefusedOutputs, WithTheNameOfADirectoryAreToldInTheWordsOfTheSystem) {
  WritePdf("a.pdf", 1);
  directory_.MakeDir("a-compressed.pdf");
  const RunResult result = Run({"compress", "a.pdf"});
  EXPECT_EQ(result.status, 23);
  EXPECT_THAT(result.err, EndsWith(" (Is a directory)\n"));
}

}  // namespace
}  // namespace TarnixTools::testing
