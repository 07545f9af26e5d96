// What jobs say when there is no memory for an engine's object. Allocations of this thread are
// counted, and one of them fails.
#include <cstdint>
#include <cstdlib>
#include <new>
#include <vector>

#include "Img2PdfTask.h"
#include "Pdf2ImgTask.h"
#include "PdfCompressTask.h"
#include "PdfRepairTask.h"
#include "support/DocumentTest.h"
#include "support/TestImages.h"

namespace {

// The allocations that are still made; negative: all.
thread_local long allocations_left = -1;

}  // namespace

// In place of those of the standard library, for all that this program loads.
void* operator new(std::size_t size) {
  if (allocations_left >= 0 && allocations_left-- == 0) {
    throw std::bad_alloc();
  }
  if (void* memory = std::malloc(size == 0 ? 1 : size)) {
    return memory;
  }
  throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*no_throw*/) noexcept {
  return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*no_throw*/) noexcept {
  std::free(memory);
}

namespace TarnixTools {
namespace {

using ::testing::Contains;
using testing::Failure;

class NoMemoryTest : public testing::DocumentTest {
 protected:
  NoMemoryTest() {
    MakePdf("a.pdf", 1);
    testing::WriteBytes(Path("a.jpg"), testing::TestJpeg(1));
    directory_.MakeDir("out");
  }

  // The failures of a job that gets its first allocations all but one, each of them in turn.
  template <typename Task>
  std::vector<Failure> FailuresOf(const Task& task) const {
    constexpr long kFirst = 60;
    std::vector<Failure> failures;
    for (long allocation = 0; allocation < kFirst; ++allocation) {
      Task copy = task;
      copy.SetOutputPath(Path("out"));
      try {
        allocations_left = allocation;
        copy.Execute();
        allocations_left = -1;
      } catch (PdfException& error) {
        allocations_left = -1;
        failures.emplace_back(error.GetCode(), error.what(), error.GetErrorCode());
      } catch (const std::bad_alloc&) {
        allocations_left = -1;
      }
    }
    return failures;
  }
};

TEST_F(NoMemoryTest, TellsThatThereIsNoObject) {
  const auto kEngineError = PdfExceptionCode::EngineError;
  EXPECT_THAT(FailuresOf(PdfCompressTask(Doc("a.pdf"))),
              Contains(Failure(kEngineError, "Could not create optimizer object")));
  EXPECT_THAT(FailuresOf(PdfRepairTask(Doc("a.pdf"))),
              Contains(Failure(kEngineError, "Unable to create PDFREPAIR object", 1)));
  EXPECT_THAT(
      FailuresOf(Pdf2ImgTask(Doc("a.pdf"))),
      Contains(Failure(kEngineError, "Unable to initialize image object. Error: [0x80410102]",
                       static_cast<std::int32_t>(0x80410102))));
  EXPECT_THAT(FailuresOf(Pdf2ImgTask({Doc("a.pdf")}, Pdf2ImgExtractImages)),
              Contains(Failure(kEngineError, "Unable to create PDF expa handler", 8)));
  Img2PdfTask images(Path("a.jpg"));
  images.SetMergeAfter(false);
  EXPECT_THAT(FailuresOf(images), Contains(Failure(kEngineError, "NULL IMG2PDF object", 12)));
}

// What was written before is in nobody's way, and no object is left in it.
TEST_F(NoMemoryTest, GoesOnOnceThereIsMemory) {
  PdfRepairTask task(Doc("a.pdf"));
  EXPECT_FALSE(FailuresOf(task).empty());
  task.SetOutputPath(Path("out"));
  task.Execute();
  EXPECT_EQ(Texts("out/output_repaired_doc.pdf"), Labels(1, 1));
}

}  // namespace
}  // namespace TarnixTools
