#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/repair/Limits.h"
#include "engines/repair/ProblemList.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::repair {
namespace {

using ::testing::HasSubstr;

TEST(Problem, SaysWhereWhatAndWhatBecomesOfIt) {
  const Problem problem = {
      .code = ProblemCode::kStreamLengthWrong, .object = 12, .detail = "120 given, 118 there"};
  EXPECT_EQ(MessageOf(problem, Tense::kDone),
            "Object 12: the length of the stream is wrong (120 given, 118 there); fixed");
  EXPECT_EQ(MessageOf(problem, Tense::kAhead),
            "Object 12: the length of the stream is wrong (120 given, 118 there); can be fixed");
}

TEST(Problem, NamesThePageAndTheByte) {
  EXPECT_EQ(MessageOf({.code = ProblemCode::kPageBlank, .outcome = Outcome::kLost, .page = 3},
                      Tense::kAhead),
            "Page 3: the page cannot be read; an empty one stands for it; lost");
  EXPECT_EQ(
      MessageOf({.code = ProblemCode::kXrefLoop, .outcome = Outcome::kWorkedAround, .offset = 99},
                Tense::kDone),
      "Byte 99: the sections of the cross-reference lead back to each other; worked around");
}

TEST(ProblemKinds, AreAllInTheDocumentation) {
  const std::string text = testing::ReadBytes(testing::SourceDir() + "/docs/repair.md");
  for (const ProblemKind& kind : ProblemKinds()) {
    const std::string row = "| " + std::to_string(static_cast<int>(kind.code)) + " | ";
    EXPECT_THAT(text, HasSubstr(row));
    EXPECT_THAT(text, HasSubstr(kind.sentence));
    EXPECT_EQ(&KindOf(kind.code), &kind);
  }
}

TEST(ProblemList, KeepsLintApart) {
  ProblemList problems;
  problems.Add({.code = ProblemCode::kJunkAtEnd});
  problems.Add({.code = ProblemCode::kHeaderMissing});
  ASSERT_EQ(problems.damage().size(), 1u);
  EXPECT_EQ(problems.damage()[0].code, ProblemCode::kHeaderMissing);
  EXPECT_EQ(problems.lint().size(), 1u);
}

TEST(ProblemList, SelectsByAnalysisAndSortsBySubject) {
  ProblemList problems;
  problems.Add({.code = ProblemCode::kPageCountWrong});
  problems.Add({.code = ProblemCode::kStreamLengthWrong, .object = 2});
  problems.Add({.code = ProblemCode::kObjectDamaged, .object = 1});
  problems.Add({.code = ProblemCode::kHeaderMissing});
  const ProblemList all = problems.Of(kAnalyzeAll);
  ASSERT_EQ(all.damage().size(), 4u);
  EXPECT_EQ(all.damage()[0].code, ProblemCode::kHeaderMissing);
  EXPECT_EQ(all.damage()[1].object, 2u);
  EXPECT_EQ(all.damage()[3].code, ProblemCode::kPageCountWrong);
  EXPECT_EQ(problems.Of(kAnalyzeDocument).damage().size(), 1u);
  EXPECT_TRUE(problems.Of(kAnalyzeContent).damage().empty());
}

TEST(ProblemList, TellsTheWorstOfWhatItDoesNotList) {
  ProblemList problems;
  for (std::size_t i = 0; i < limits::kMaxListedOfAKind; ++i) {
    problems.Add({.code = ProblemCode::kObjectDamaged});
  }
  problems.Add({.code = ProblemCode::kObjectDamaged, .outcome = Outcome::kLost});
  problems.Add({.code = ProblemCode::kObjectDamaged});
  EXPECT_EQ(problems.Of(kAnalyzeAll).damage().back().outcome, Outcome::kLost);
}

TEST(ProblemList, CountsWhatItDoesNotList) {
  ProblemList problems;
  for (std::size_t i = 0; i < limits::kMaxListedOfAKind + 5; ++i) {
    problems.Add({.code = ProblemCode::kStreamLengthWrong, .object = 1});
  }
  problems.Add({.code = ProblemCode::kPageCountWrong});
  const ProblemList all = problems.Of(kAnalyzeAll);
  ASSERT_EQ(all.damage().size(), limits::kMaxListedOfAKind + 2);
  EXPECT_EQ(MessageOf(all.damage()[limits::kMaxListedOfAKind], Tense::kDone),
            "There are more problems of one kind than are listed "
            "(105: the length of the stream is wrong); fixed");
}

}  // namespace
}  // namespace TarnixTools::engines::repair
