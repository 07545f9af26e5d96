// What holds for every sound document, tried on documents that numbers make up: jobs keep what they
// are to keep and nothing else, as independent readers see it, and one takes what another wrote.
//
//   TARNIX_RANDOM_DOCUMENTS=5000 build/release/bin/library_tests --gtest_filter='*RandomDocuments*'
//
// A document for which something does not hold is made simpler for as long as it does not.
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <optional>

#include "PdfCompressTask.h"
#include "PdfRemovePagesTask.h"
#include "PdfRepairTask.h"
#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/PageViews.h"
#include "support/RandomDocument.h"
#include "support/Surroundings.h"

namespace TarnixTools {
namespace {

using testing::Picture;
using testing::RandomDocument;
using testing::TempDir;

using Look = std::vector<Picture>;  // of all pages

constexpr int kDpi = 24;
constexpr int kBlocks = 40;
constexpr int kDocuments = 200;
constexpr int kDocumentsWithSanitizer = 16;  // each takes ten times as long there
constexpr int kMostSimplifications = 200;

// A job that gives a document that looks like the one that is given to it.
struct Job {
  const char* name;
  void (*run)(PdfDoc document, const std::string& output);
};

PdfDoc Written(const std::string& path, const std::string& password = "") {
  return {path, password, true};
}

std::list<PdfDoc> PiecesOf(PdfDoc document, const TempDir& directory) {
  document.Split(1, directory.Path() + "/", "", "");
  std::list<PdfDoc> pieces;
  for (const std::string& name : directory.Names()) {
    pieces.push_back(Written(directory.Path(name)));
  }
  return pieces;
}

void SplitAndMerge(PdfDoc document, const std::string& output) {
  const TempDir directory;
  PdfDoc::Merge(PiecesOf(std::move(document), directory), output, "");
}

void TurnAndTurnBack(PdfDoc document, const std::string& output) {
  document.Rotate(PdfRotationAngle::Rotate90, output + ".turned", "");
  Written(output + ".turned").Rotate(PdfRotationAngle::Rotate270, output, "");
}

void LockAndUnlock(PdfDoc document, const std::string& output) {
  document.Lock("pw", output + ".locked");
  Written(output + ".locked", "pw").UnLock("", output);
}

void DoubleAndHalve(PdfDoc document, const std::string& output) {
  const int count = document.GetPagesNum();
  PdfDoc::Merge({document, document}, output + ".doubled", "");
  Written(output + ".doubled").Split({PdfPageRange(1, count)}, "", "", true, output, "");
}

void Describe(PdfDoc document, const std::string& output) {
  document.SetMetaData({"Ada", "words", "Pen", "Press"}, output, "");
}

void NumberNoPage(PdfDoc document, const std::string& output) {
  PdfTransformation number(PdfTransformType::AddPageNumber);
  number.AddTargetPage(1000);
  document.Transform(number, output, "");
}

void Compress(PdfDoc document, const std::string& output) {
  PdfCompressTask task(document);
  task.SetCompressLevel(PdfCompressLevel::Low);
  const PdfDoc target(output, "", false);
  task.SetOutputPath(target.GetDocDirectory());
  task.SetOutPdfName(target.GetDocName(true));
  task.Execute();
}

void Repair(PdfDoc document, const std::string& output) {
  const PdfDoc target(output, "", false);
  PdfRepairTask task(document, target.GetDocName(true));
  task.SetOutputPath(target.GetDocDirectory());
  task.Execute();
}

constexpr Job kJobs[] = {{"split and merge", &SplitAndMerge},
                         {"turn and turn back", &TurnAndTurnBack},
                         {"lock and unlock", &LockAndUnlock},
                         {"double and halve", &DoubleAndHalve},
                         {"describe", &Describe},
                         {"number no page", &NumberNoPage},
                         {"compress", &Compress},
                         {"repair", &Repair}};
constexpr std::size_t kJobCount = std::size(kJobs);

// A document on disk, and how it looks.
class Subject {
 public:
  explicit Subject(const RandomDocument& random)
      : random_(random), document_(random.Write(Path("in.pdf")), random.Password(), true) {}

  const RandomDocument& Random() const { return random_; }

  const PdfDoc& Document() const { return document_; }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  const Look& LookOfAll() {
    if (!look_) {
      look_ = testing::Pictures(Path("in.pdf"), kDpi, random_.Password());
    }
    return *look_;
  }

 private:
  TempDir directory_;
  RandomDocument random_;
  PdfDoc document_;
  std::optional<Look> look_;
};

// Empty when it holds, else what is wrong.
using Property = std::function<std::string(Subject&)>;

// A JPEG image may take the place of a picture's own samples.
bool IsNearly(const Picture& a, const Picture& b) {
  if (a.width != b.width || a.height != b.height) {
    return false;
  }
  std::size_t far = 0;
  for (std::size_t i = 0; i < a.pixels.size(); ++i) {
    const int difference =
        static_cast<unsigned char>(a.pixels[i]) - static_cast<unsigned char>(b.pixels[i]);
    far += std::abs(difference) > 48 ? 1 : 0;
  }
  return far * 100 <= a.pixels.size();
}

std::string DifferenceOf(const Look& expected, const std::string& path,
                         const std::string& password = "") {
  const Look found = testing::Pictures(path, kDpi, password);
  if (found.size() != expected.size()) {
    return std::to_string(found.size()) + " pages and not " + std::to_string(expected.size());
  }
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (!IsNearly(found[i], expected[i])) {
      return "page " + std::to_string(i + 1) + " looks different";
    }
  }
  return testing::QpdfComplaints(path, password);
}

// Puts the names of the jobs in front of what is wrong.
std::string Named(const std::string& jobs, const std::string& complaint) {
  return complaint.empty() ? "" : jobs + ": " + complaint;
}

std::string LooksTheSameAfter(Subject& subject, const Job& first, const Job& second) {
  first.run(subject.Document(), subject.Path("first.pdf"));
  second.run(Written(subject.Path("first.pdf")), subject.Path("second.pdf"));
  return Named(std::string(first.name) + ", " + second.name,
               DifferenceOf(subject.LookOfAll(), subject.Path("second.pdf")));
}

std::string IsTheSameBytesAgain(Subject& subject, const Job& job) {
  for (const char* name : {"once.pdf", "again.pdf"}) {
    job.run(subject.Document(), subject.Path(name));
  }
  const bool is_same =
      testing::ReadBytes(subject.Path("once.pdf")) == testing::ReadBytes(subject.Path("again.pdf"));
  return is_same ? "" : std::string(job.name) + ": other bytes";
}

// Of the pages, those whose bit is not set are removed; one stays in any case.
std::string OnlyKeepsTheOthers(Subject& subject, std::uint32_t kept) {
  const std::size_t count = subject.Random().PageCount();
  kept = (kept & ((1U << count) - 1)) == 0 ? 1 : kept;
  PdfRemovePagesTask task(subject.Document());
  Look expected;
  for (std::size_t i = 0; i < count; ++i) {
    if ((kept >> i & 1U) != 0) {
      expected.push_back(subject.LookOfAll().at(i));
    } else {
      task.AddRemovedPage(static_cast<int>(i) + 1);
    }
  }
  if (expected.size() == count) {
    return "";
  }
  task.SetOutputPath(subject.Path(""));
  task.Execute();
  const std::string json = testing::QpdfJson(subject.Path("truncated.pdf"));
  for (std::size_t i = 0; i < count; ++i) {
    if ((kept >> i & 1U) == 0 && json.find(subject.Random().SecretOf(i)) != std::string::npos) {
      return "something of removed page " + std::to_string(i + 1) + " is left";
    }
  }
  return Named("remove pages", DifferenceOf(expected, subject.Path("truncated.pdf")));
}

std::string MergesWith(Subject& subject, const RandomDocument& random) {
  Subject other(random);
  PdfDoc::Merge({subject.Document(), other.Document(), subject.Document()},
                subject.Path("merged.pdf"), "");
  Look expected = subject.LookOfAll();
  expected.insert(expected.end(), other.LookOfAll().begin(), other.LookOfAll().end());
  expected.insert(expected.end(), subject.LookOfAll().begin(), subject.LookOfAll().end());
  return Named("merge", DifferenceOf(expected, subject.Path("merged.pdf")));
}

std::string ComesBackAfterFourTurns(Subject& subject) {
  PdfDoc document = subject.Document();
  for (int i = 1; i <= 4; ++i) {
    const std::string path = subject.Path("turned" + std::to_string(i) + ".pdf");
    document.Rotate(PdfRotationAngle::Rotate90, path, "");
    document = Written(path);
    const PdfSize before = PdfDoc(subject.Document()).GetPageSize(1, PdfSizeUnits::Points, 1, 1);
    const PdfSize after = document.GetPageSize(1, PdfSizeUnits::Points, 1, 1);
    const bool is_lying = i % 2 != 0;
    if (after.GetWidth() != (is_lying ? before.GetHeight() : before.GetWidth())) {
      return "not turned by the turn " + std::to_string(i);
    }
  }
  return Named("four turns", DifferenceOf(subject.LookOfAll(), subject.Path("turned4.pdf")));
}

std::string IsProtected(Subject& subject) {
  const std::string path = subject.Path("locked.pdf");
  PdfDoc(subject.Document()).Lock("new password", path);
  if (!PdfDoc::HasPassword(path) || PdfDoc::IsValidPassword(path, subject.Random().Password())) {
    return "opens without its password";
  }
  return Named("protect", DifferenceOf(subject.LookOfAll(), path, "new password"));
}

// All that is to hold for the document of a number; by the numbers every job follows on every one.
std::vector<Property> PropertiesFor(std::uint32_t seed) {
  const Job first = kJobs[seed % kJobCount];
  const Job second = kJobs[seed / kJobCount % kJobCount];
  return {
      [=](Subject& subject) { return LooksTheSameAfter(subject, first, second); },
      [=](Subject& subject) { return IsTheSameBytesAgain(subject, first); },
      [seed](Subject& subject) { return OnlyKeepsTheOthers(subject, seed * 2654435761U >> 7U); },
      [seed](Subject& subject) { return MergesWith(subject, RandomDocument(seed + 1000000)); },
      &ComesBackAfterFourTurns,
      &IsProtected,
  };
}

std::string Judged(const Property& property, Subject& subject) {
  try {
    return property(subject);
  } catch (PdfException& error) {
    return std::string("fails: ") + error.what();
  }
}

// The simplest document we find for which the property does not hold either, and what is wrong.
std::string Simplest(RandomDocument document, const Property& property, std::string complaint) {
  bool is_simpler = true;
  for (int tries = 0; is_simpler && tries < kMostSimplifications;) {
    is_simpler = false;
    for (const RandomDocument& simpler : document.Simpler()) {
      Subject subject(simpler);
      const std::string found = Judged(property, subject);
      ++tries;
      if (!found.empty()) {
        document = simpler;
        complaint = found;
        is_simpler = true;
        break;
      }
    }
  }
  return document.Description() + "\n" + complaint;
}

class RandomDocuments : public ::testing::TestWithParam<int> {};

TEST_P(RandomDocuments, KeepWhatTheyHave) {
  TARNIX_NEED_PROGRAM("qpdf");
  TARNIX_NEED_PROGRAM("pdftoppm");
  const char* wanted = std::getenv("TARNIX_RANDOM_DOCUMENTS");
  const int count = wanted != nullptr             ? std::atoi(wanted)
                    : testing::KeepsFreedMemory() ? kDocumentsWithSanitizer
                                                  : kDocuments;
  for (int number = GetParam(); number < count; number += kBlocks) {
    const auto seed = static_cast<std::uint32_t>(number);
    const RandomDocument random(seed);
    Subject subject(random);
    for (const Property& property : PropertiesFor(seed)) {
      const std::string complaint = Judged(property, subject);
      EXPECT_EQ(complaint, "") << Simplest(random, property, complaint);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Numbers, RandomDocuments, ::testing::Range(0, kBlocks));

}  // namespace
}  // namespace TarnixTools
