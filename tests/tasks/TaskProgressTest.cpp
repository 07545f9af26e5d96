// What hosts hear of a job while it runs, how they stop it, and which files it tells of.
#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "Img2PdfTask.h"
#include "Pdf2ImgTask.h"
#include "Pdf2PdfATask.h"
#include "PdfCompressTask.h"
#include "PdfMergeTask.h"
#include "PdfPageNumberTask.h"
#include "PdfProtectTask.h"
#include "PdfRemovePagesTask.h"
#include "PdfRepairTask.h"
#include "PdfRotateTask.h"
#include "PdfSetMetaDataTask.h"
#include "PdfSplitTask.h"
#include "PdfStampImageTask.h"
#include "PdfStampTextTask.h"
#include "PdfTransformTask.h"
#include "PdfUnlockTask.h"
#include "support/DocumentTest.h"
#include "support/TestImage.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;

constexpr int kPages = 4;

const Failure kCancelled(PdfExceptionCode::InternalError, "Cancelled by the host");

struct Heard {
  std::set<std::string> jobs;
  std::vector<std::pair<std::int64_t, std::int64_t>> steps;
  int other_threads = 0;
};

class TaskProgressTest : public testing::DocumentTest {
 protected:
  TaskProgressTest() {
    MakePdf("doc.pdf", kPages);
    directory_.MakeDir("out");
  }

  // Listens, and stops the job when it is called for the nth time; 0: never.
  PdfProgress Listener(int stop_at = 0) {
    heard_ = {};
    return [this, stop_at, thread = std::this_thread::get_id()](
               const std::string& job, std::int64_t done, std::int64_t of) {
      heard_.jobs.insert(job);
      heard_.steps.emplace_back(done, of);
      heard_.other_threads += std::this_thread::get_id() == thread ? 0 : 1;
      return stop_at == 0 || heard_.steps.size() < static_cast<std::size_t>(stop_at);
    };
  }

  std::string Out(const std::string& name) const { return Backslashes(Path("out/" + name)); }

  // Expects that the task tells of one output, that it says how far it is, and that it leaves nothing
  // when it is stopped at the first call.
  template <typename Task>
  void ExpectWatched(Task task, const std::string& job, const std::string& name) {
    task.SetOutputPath(Path("out"));
    task.SetProgress(Listener(1));
    EXPECT_EQ(FailureOf([&] { task.Execute(); }), kCancelled) << job;
    EXPECT_THAT(directory_.Names("out"), ElementsAre()) << job;
    EXPECT_THAT(task.GetWrittenFiles(), ElementsAre()) << job;
    task.SetProgress(Listener());
    task.Execute();
    EXPECT_THAT(heard_.jobs, ElementsAre(job));
    EXPECT_EQ(heard_.other_threads, 0) << job;
    ASSERT_EQ(task.GetWrittenFiles().size(), 1U) << job;
    EXPECT_THAT(task.GetWrittenFiles().front(), ::testing::EndsWith(name));
    EXPECT_THAT(directory_.Names("out"), ElementsAre(name)) << job;
    PdfDoc written(task.GetWrittenFiles().front(), "", true);
    PdfDoc::Delete(written);
  }

  // Expects that the task counts its pages, one by one.
  template <typename Task>
  void ExpectSteps(Task task) {
    task.SetOutputPath(Path("out"));
    task.SetProgress(Listener());
    task.Execute();
    std::vector<std::pair<std::int64_t, std::int64_t>> counted;
    for (const auto& step : heard_.steps) {
      if (step.second != 0) {
        counted.push_back(step);
      }
    }
    ASSERT_GE(counted.size(), static_cast<std::size_t>(kPages) + 1);
    for (int done = 0; done <= kPages; ++done) {
      EXPECT_EQ(counted[static_cast<std::size_t>(done)],
                std::pair(std::int64_t{done}, std::int64_t{kPages}));
    }
  }

  template <typename Task>
  void ExpectHundredths(Task task) {
    task.SetOutputPath(Path("out"));
    task.SetProgress(Listener());
    task.Execute();
    std::set<std::int64_t> different;
    std::int64_t last = 0;
    for (const auto& [done, of] : heard_.steps) {
      EXPECT_TRUE(of == 100 || (done == 0 && of == 0)) << done << "/" << of;
      EXPECT_GE(done, last);
      last = done;
      different.insert(done);
    }
    EXPECT_EQ(last, 100);
    EXPECT_GE(different.size(), 5U);
    PdfDoc written(task.GetWrittenFiles().front(), "", true);
    PdfDoc::Delete(written);
    for (const std::int64_t stop : different) {
      task.SetProgress(
          [stop](const std::string&, std::int64_t done, std::int64_t) { return done < stop; });
      if (stop < 100) {  // else nothing is left to be stopped
        EXPECT_EQ(FailureOf([&] { task.Execute(); }), kCancelled) << stop;
        EXPECT_THAT(directory_.Names("out"), ElementsAre()) << stop;
      }
    }
  }

  Heard heard_;
};

TEST_F(TaskProgressTest, WatchesEveryJobOnADocument) {
  ExpectWatched(PdfRotateTask(Doc("doc.pdf")), "rotate", "rotated_file.pdf");
  ExpectWatched(PdfMergeTask({Doc("doc.pdf"), Doc("doc.pdf")}), "merge", "merged_doc.pdf");
  ExpectWatched(PdfProtectTask(Doc("doc.pdf"), "pw"), "protect", "locked_doc.pdf");
  ExpectWatched(PdfUnlockTask(Doc("doc.pdf"), "pw"), "unlock", "unlocked_doc.pdf");
  ExpectWatched(PdfPageNumberTask(Doc("doc.pdf")), "number", "document_with_page_numbers.pdf");
  ExpectWatched(PdfCompressTask(Doc("doc.pdf")), "compress", "compressed_doc.pdf");
  ExpectWatched(PdfRepairTask(Doc("doc.pdf")), "repair", "output_repaired_doc.pdf");
  ExpectWatched(Pdf2PdfATask(Doc("doc.pdf")), "PDF/A", "output_pdfa_doc.pdf");
  PdfRemovePagesTask remove(Doc("doc.pdf"));
  remove.AddRemovedPage(1);
  ExpectWatched(remove, "remove pages", "truncated.pdf");
  PdfSetMetaDataTask metadata(Doc("doc.pdf"));
  metadata.SetAllowEmptyMetaValues(true);
  ExpectWatched(metadata, "metadata", "document_with_meta_params_set.pdf");
}

TEST_F(TaskProgressTest, WatchesEveryStamp) {
  PdfStampTextTask text(Doc("doc.pdf"));
  text.SetInputText("Draft");
  ExpectWatched(text, "stamp text", "document_after_text_stamp.pdf");
  PdfStampImageTask image(Doc("doc.pdf"));
  testing::WriteBytes(Path("image.png"), testing::PngOf(20, 10, {0, 0, 255}));
  image.SetInputImage(Path("image.png"));
  ExpectWatched(image, "stamp image", "document_after_image_stamp.pdf");
  ExpectWatched(
      PdfTransformTask(Doc("doc.pdf"), {PdfTransformation(PdfTransformType::AddPageNumber)}),
      "transform", "document_after_transformations.pdf");
}

TEST_F(TaskProgressTest, TellsStepsOfPages) {
  ExpectSteps(PdfRotateTask(Doc("doc.pdf")));
  ExpectSteps(PdfProtectTask(Doc("doc.pdf"), "pw"));
  ExpectSteps(PdfUnlockTask(Doc("doc.pdf")));
  PdfSetMetaDataTask metadata(Doc("doc.pdf"));
  metadata.SetAllowEmptyMetaValues(true);
  ExpectSteps(metadata);
  ExpectSteps(PdfPageNumberTask(Doc("doc.pdf")));
  ExpectSteps(
      PdfTransformTask(Doc("doc.pdf"), {PdfTransformation(PdfTransformType::AddPageNumber)}));
}

// A job on one document whose steps are of many kinds tells hundredths of the whole, which never
// become fewer, and can be stopped at any of them.
TEST_F(TaskProgressTest, TellsHundredthsOfAJobOnOneDocument) {
  ExpectHundredths(PdfCompressTask(Doc("doc.pdf")));
  ExpectHundredths(PdfRepairTask(Doc("doc.pdf")));
  ExpectHundredths(Pdf2PdfATask(Doc("doc.pdf")));
}

// Each stage is worth so many hundredths, and within one each page as much as another.
TEST_F(TaskProgressTest, TellsAsManyHundredthsAsEachStageIsWorth) {
  const auto told_of = [this](auto task) {
    task.SetOutputPath(Path("out"));
    task.SetProgress(Listener());
    task.Execute();
    std::set<std::int64_t> different;
    for (const auto& step : heard_.steps) {
      different.insert(step.first);
    }
    return different;
  };
  // 15 for the four pages, 10 for fonts, 40 for images, 25 for the pages again, 10 for the file.
  EXPECT_THAT(told_of(PdfCompressTask(Doc("doc.pdf"))),
              ElementsAre(0, 3, 7, 11, 15, 25, 65, 71, 77, 83, 90, 100));
  // 60 for all that is looked at, 40 for the file.
  const std::set<std::int64_t> repair = told_of(PdfRepairTask(Doc("doc.pdf")));
  EXPECT_GE(repair.size(), 5U);
  EXPECT_EQ(*std::next(repair.rbegin()), 60);
  EXPECT_EQ(*repair.rbegin(), 100);
}

TEST_F(TaskProgressTest, TellsDocumentsOfAJobOnSeveral) {
  PdfCompressTask task({Doc("doc.pdf"), Doc("doc.pdf"), Doc("doc.pdf")});
  task.SetOutputPath(Path("out"));
  task.SetProgress(Listener());
  task.Execute();
  for (const auto& [done, of] : heard_.steps) {
    EXPECT_TRUE(of == 3 || (done == 0 && of == 0)) << done << "/" << of;
  }
}

TEST_F(TaskProgressTest, LeavesPiecesThatWereComplete) {
  PdfSplitTask task(Doc("doc.pdf"));
  task.SetOutputPath(Path("out"));
  task.SetProgress([](const std::string&, std::int64_t done, std::int64_t) { return done < 2; });
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), kCancelled);
  EXPECT_THAT(directory_.Names("out"), ElementsAre("doc-01.pdf", "doc-02.pdf"));
  EXPECT_THAT(task.GetWrittenFiles(), ElementsAre(Out("doc-01.pdf"), Out("doc-02.pdf")));
  task.SetProgress(nullptr);
  task.Execute();
  EXPECT_EQ(task.GetWrittenFiles().size(), static_cast<std::size_t>(kPages));
}

TEST_F(TaskProgressTest, LeavesImagesThatWereComplete) {
  Pdf2ImgTask task(Doc("doc.pdf"));
  task.SetOutputPath(Path("out"));
  task.SetProgress([](const std::string&, std::int64_t done, std::int64_t) { return done < 2; });
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), kCancelled);
  EXPECT_THAT(directory_.Names("out"), ElementsAre("doc-page-0001.jpg", "doc-page-0002.jpg"));
  EXPECT_EQ(task.GetWrittenFiles().size(), 2U);
}

TEST_F(TaskProgressTest, LeavesNoDocumentsOfImagesThatWereToBeJoined) {
  std::list<std::string> images;
  for (int i = 0; i < kPages; ++i) {
    images.push_back(Path("i" + std::to_string(i) + ".pgm"));
    testing::WriteBytes(images.back(), "P5 2 2 255\nabcd");
  }
  for (const std::string& password : std::vector<std::string>{"", "pw"}) {
    Img2PdfTask task(images);
    task.SetOutputPath(Path("out"));
    task.SetOutPassword(password);
    task.SetProgress([](const std::string&, std::int64_t done, std::int64_t) { return done < 2; });
    EXPECT_EQ(FailureOf([&] { task.Execute(); }), kCancelled);
    EXPECT_THAT(directory_.Names("out"), ElementsAre());
    EXPECT_THAT(task.GetWrittenFiles(), ElementsAre());
    task.SetProgress(nullptr);
    task.SetOutPdfName("joined" + password + ".pdf");
    task.Execute();
    EXPECT_THAT(task.GetWrittenFiles(), ElementsAre(Out("joined" + password + ".pdf")));
    PdfDoc joined(Path("out/joined" + password + ".pdf"), password, true);
    EXPECT_EQ(joined.GetPagesNum(), kPages);
    PdfDoc::Delete(joined);
  }
}

TEST_F(TaskProgressTest, KeepsAnOlderOutputWhenItIsCancelled) {
  PdfRotateTask task(Doc("doc.pdf"));
  task.SetOutputPath(directory_.Path());
  task.SetOutName("doc.pdf");
  task.SetProgress(Listener(kPages));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), kCancelled);
  EXPECT_EQ(Doc("doc.pdf").GetPagesNum(), kPages);
}

TEST_F(TaskProgressTest, EndsWithWhatTheHostThrows) {
  PdfRotateTask task(Doc("doc.pdf"));
  task.SetOutputPath(Path("out"));
  task.SetProgress([](const std::string&, std::int64_t, std::int64_t) -> bool {
    throw std::length_error("enough");
  });
  EXPECT_THROW(task.Execute(), std::length_error);
  EXPECT_THAT(directory_.Names("out"), ElementsAre());
}

TEST_F(TaskProgressTest, LetsTheHostRunOtherTasksMeanwhile) {
  PdfRotateTask task(Doc("doc.pdf"));
  task.SetOutputPath(Path("out"));
  int calls = 0;
  task.SetProgress([&](const std::string& job, std::int64_t, std::int64_t) {
    PdfRotateTask other(Doc("doc.pdf"));
    other.SetOutputPath(Path("out"));
    other.SetOutName("other.pdf");
    other.Execute();
    ++calls;
    return job == "rotate";
  });
  task.Execute();
  EXPECT_GT(calls, kPages);
  EXPECT_THAT(directory_.Names("out"), ElementsAre("other.pdf", "rotated_file.pdf"));
}

TEST_F(TaskProgressTest, RefusesTheTaskThatIsBeingExecuted) {
  PdfRotateTask task(Doc("doc.pdf"));
  task.SetOutputPath(Path("out"));
  Failure failure;
  task.SetProgress([&](const std::string&, std::int64_t, std::int64_t) {
    failure = FailureOf([&] { task.Execute(); });
    return true;
  });
  task.Execute();
  EXPECT_EQ(failure, Failure(PdfExceptionCode::InternalError,
                             "Unable to execute a task that is being executed"));
  EXPECT_THAT(task.GetWrittenFiles(), ElementsAre(Out("rotated_file.pdf")));
  task.SetProgress(nullptr);
  task.Execute();
}

TEST_F(TaskProgressTest, DoesNotCountWhatTheHostDoesWithDocuments) {
  PdfRotateTask task(Doc("doc.pdf"));
  task.SetOutputPath(Path("out"));
  std::set<std::int64_t> ends;
  std::int64_t most = 0;
  task.SetProgress([&](const std::string&, std::int64_t done, std::int64_t of) {
    PdfDoc other = Doc("doc.pdf");
    other.Split(1, Path("pieces") + "/", "", "");
    ends.insert(of);
    most = std::max(most, done);
    return true;
  });
  directory_.MakeDir("pieces");
  task.Execute();
  EXPECT_THAT(ends, ::testing::IsSubsetOf({0, kPages}));
  EXPECT_EQ(most, kPages);
}

class NestedTaskTest : public TaskProgressTest {
 protected:
  struct Job {
    const char* name;
    std::function<void(const std::string& directory, const PdfProgress& progress)> run;
  };

  template <typename Task>
  Job JobOf(const char* name, const Task& task) const {
    return {name, [task](const std::string& directory, const PdfProgress& progress) {
              Task copy(task);
              copy.SetOutputPath(directory);
              copy.SetProgress(progress);
              copy.Execute();
            }};
  }

  std::vector<Job> Jobs() const {
    return {JobOf("rotate", PdfRotateTask(Doc("doc.pdf"))),
            JobOf("merge", PdfMergeTask({Doc("doc.pdf"), Doc("doc.pdf")})),
            JobOf("compress", PdfCompressTask(Doc("doc.pdf"))),
            JobOf("repair", PdfRepairTask(Doc("doc.pdf"))),
            JobOf("PDF/A", Pdf2PdfATask(Doc("doc.pdf"))),
            JobOf("pages to images", Pdf2ImgTask(Doc("doc.pdf")))};
  }

  // Names and bytes of what a job writes.
  std::map<std::string, std::string> Written(const Job& job, const std::string& directory,
                                             const PdfProgress& progress = nullptr) const {
    directory_.MakeDir(directory);
    job.run(Path(directory), progress);
    std::map<std::string, std::string> written;
    for (const std::string& name : directory_.Names(directory)) {
      written[name] = testing::ReadBytes(Path(directory + "/" + name));
    }
    return written;
  }
};

TEST_F(NestedTaskTest, WritesTheSameWithAnyOtherInBetween) {
  const std::vector<Job> jobs = Jobs();
  std::vector<std::map<std::string, std::string>> alone;
  for (const Job& job : jobs) {
    alone.push_back(Written(job, "alone" + std::to_string(alone.size())));
    EXPECT_FALSE(alone.back().empty()) << job.name;
  }
  for (std::size_t outer = 0; outer < jobs.size(); ++outer) {
    for (std::size_t inner = 0; inner < jobs.size(); ++inner) {
      int calls = 0;
      const std::string name = std::to_string(outer) + "-" + std::to_string(inner);
      const auto written =
          Written(jobs[outer], name, [&](const std::string&, std::int64_t, std::int64_t) {
            if (++calls <= 2) {
              EXPECT_EQ(Written(jobs[inner], "in" + name), alone[inner]) << jobs[inner].name;
            }
            return true;
          });
      EXPECT_GT(calls, 0) << jobs[outer].name;
      EXPECT_EQ(written, alone[outer]) << jobs[outer].name << " around " << jobs[inner].name;
    }
  }
}

}  // namespace
}  // namespace TarnixTools
