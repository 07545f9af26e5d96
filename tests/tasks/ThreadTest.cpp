// Different tasks on different threads at once; CI runs these under the thread sanitizer.
#include <array>
#include <functional>
#include <list>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfDoc.h"
#include "PdfException.h"
#include "PdfMergeTask.h"
#include "PdfSplitTask.h"
#include "PdfTransformTask.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestImage.h"

namespace TarnixTools::testing {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 5;

const std::string kLetter = testing::ExamplesDir() + "/letter.pdf";
const std::string kReport = testing::ExamplesDir() + "/report.pdf";

std::string MergeTo(const TempDir& directory, const std::string& name, const std::string& first,
                    const std::string& second) {
  PdfMergeTask task(std::list<PdfDoc>{{first, "", true}, {second, "", true}});
  task.SetOutputPath(directory.Path());
  task.SetOutDocName(name);
  task.Execute();
  return ReadBytes(directory.Path(name));
}

std::vector<std::string> SplitTo(const TempDir& directory, const std::string& name) {
  const std::string output = directory.MakeDir(name);
  PdfSplitTask task(PdfDoc(kReport, "", true));
  task.SetOutputPath(output);
  task.Execute();
  std::vector<std::string> pieces;
  for (const std::string& piece : directory.Names(name)) {
    pieces.push_back(ReadBytes(output + "/" + piece));
  }
  return pieces;
}

// A document with a page number, a text in several scripts and an image on every page.
std::string DecorateTo(const TempDir& directory, const std::string& name) {
  PdfTransformation text(PdfTransformType::StampText);
  text.SetInputText("Entwurf \u2014 \u0447\u0435\u0440\u043d\u043e\u0432\u0438\u043a");
  text.SetFontName("Times New Roman");
  text.SetRotation(30);
  PdfTransformation image(PdfTransformType::StampImage);
  image.SetInputImage(directory.Path("image.png"));
  PdfTransformTask task(PdfDoc(kReport, "", true),
                        {PdfTransformation(PdfTransformType::AddPageNumber), text, image});
  task.SetOutputPath(directory.Path());
  task.SetOutName(name);
  task.Execute();
  return ReadBytes(directory.Path(name));
}

// What each thread got, in their order. An exception would end the program: the work catches those
// it expects.
template <typename Result>
std::array<Result, kThreads> OnEveryThread(const std::function<Result(int)>& work) {
  std::array<Result, kThreads> results;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&results, &work, i] { results[i] = work(i); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  return results;
}

TEST(Threads, MergesAtOnceGiveTheBytesOfOneAlone) {
  const TempDir directory;
  const std::string alone = MergeTo(directory, "alone.pdf", kLetter, kReport);
  ASSERT_FALSE(alone.empty());
  const auto merged = OnEveryThread<std::vector<std::string>>([&](int thread) {
    std::vector<std::string> results;
    for (int round = 0; round < kRounds; ++round) {
      const std::string name = std::to_string(thread) + "-" + std::to_string(round) + ".pdf";
      results.push_back(MergeTo(directory, name, kLetter, kReport));
    }
    return results;
  });
  for (const auto& results : merged) {
    EXPECT_THAT(results, ::testing::Each(::testing::Eq(alone)));
  }
}

TEST(Threads, SplitsOfOneDocumentAtOnceGiveTheSamePieces) {
  const TempDir directory;
  const std::vector<std::string> alone = SplitTo(directory, "alone");
  ASSERT_EQ(alone.size(), 6u);
  const auto split = OnEveryThread<std::vector<std::string>>(
      [&](int thread) { return SplitTo(directory, std::to_string(thread)); });
  EXPECT_THAT(split, ::testing::Each(::testing::Eq(alone)));
}

// Fonts are looked up through one configuration of the system.
TEST(Threads, DecorationsAtOnceGiveTheBytesOfOneAlone) {
  const TempDir directory;
  WriteBytes(directory.Path("image.png"), PngOf(30, 20, {200, 10, 10}));
  const auto decorated = OnEveryThread<std::vector<std::string>>([&](int thread) {
    std::vector<std::string> results;
    for (int round = 0; round < kRounds; ++round) {
      const std::string name = std::to_string(thread) + "-" + std::to_string(round) + ".pdf";
      results.push_back(DecorateTo(directory, name));
    }
    return results;
  });
  const std::string alone = DecorateTo(directory, "alone.pdf");
  ASSERT_FALSE(alone.empty());
  for (const auto& results : decorated) {
    EXPECT_THAT(results, ::testing::Each(::testing::Eq(alone)));
  }
}

// The engine's error code belongs to the thread: a failure beside a success must not change it.
TEST(Threads, FailuresAndSuccessesAtOnceKeepToTheirThread) {
  const TempDir directory;
  const std::string broken = WriteBytes(directory.Path("broken.pdf"), "this is no document");
  const auto codes = OnEveryThread<std::vector<int>>([&](int thread) {
    std::vector<int> results;
    for (int round = 0; round < kRounds; ++round) {
      const std::string name = std::to_string(thread) + ".pdf";
      try {
        MergeTo(directory, name, kLetter, thread % 2 == 0 ? kReport : broken);
        results.push_back(0);
      } catch (PdfException& error) {
        results.push_back(static_cast<int>(error.GetCode()));
      }
    }
    return results;
  });
  for (int thread = 0; thread < kThreads; ++thread) {
    const int expected = thread % 2 == 0 ? 0 : static_cast<int>(PdfExceptionCode::EngineError);
    EXPECT_THAT(codes[thread], ::testing::Each(expected)) << "thread " << thread;
  }
}

}  // namespace
}  // namespace TarnixTools::testing
