#include "tools/EveryJob.h"

#include <filesystem>
#include <sstream>

#include "support/Readers.h"
#include "support/TestImages.h"

namespace TarnixTools::testing {
namespace {

// The words, the name, whether it writes and varies, the outputs and the fields.
const std::vector<EveryJob> kJobs = {
    {"Merge", {"merge", "letter.pdf", "report.pdf"}, true, false, {"merged.pdf"}},
    {"MergeOfParts",
     {"merge", "--bookmarks", "report.pdf:z-1", "letter.pdf"},
     true,
     false,
     {"merged.pdf"}},
    {"Split", {"split", "plan.pdf"}, true, false, {"plan-01.pdf", "plan-02.pdf"}},
    {"SplitToRanges",
     {"split", "--ranges", "1-2,4", "report.pdf"},
     true,
     false,
     {"report-1-2.pdf", "report-4.pdf"}},
    {"SplitToOne",
     {"split", "--ranges", "4,1", "--merge", "report.pdf"},
     true,
     false,
     {"report-split.pdf"}},
    {"ExtractPages",
     {"extract-pages", "--pages", "z-1", "report.pdf"},
     true,
     false,
     {"report-pages.pdf"}},
    {"Rotate",
     {"rotate", "--angle", "90", "letter.pdf", "report.pdf"},
     true,
     false,
     {"letter-rotated.pdf", "report-rotated.pdf"},
     {"files"}},
    {"RemovePages",
     {"remove-pages", "--pages", "1", "report.pdf"},
     true,
     false,
     {"report-truncated.pdf"}},
    {"Compress",
     {"compress", "report.pdf"},
     true,
     false,
     {"report-compressed.pdf"},
     {"ratio", "images", "fonts"}},
    {"Number", {"number", "report.pdf"}, true, false, {"report-numbered.pdf"}},
    {"StampText",
     {"stamp-text", "--text", "Draft", "report.pdf"},
     true,
     false,
     {"report-stamped.pdf"}},
    {"StampImage",
     {"stamp-image", "--image", "logo.png", "letter.pdf"},
     true,
     false,
     {"letter-stamped.pdf"}},
    {"Transform",
     {"transform", "--recipe", "marks.json", "letter.pdf"},
     true,
     false,
     {"letter-decorated.pdf"}},
    {"Metadata", {"metadata", "--author", "A", "letter.pdf"}, true, false, {"letter-metadata.pdf"}},
    {"Xmp", {"xmp", "letter.pdf"}, true, false, {"letter.xmp"}},
    {"Protect",
     {"protect", "--new-password", "p", "letter.pdf"},
     true,
     true,
     {"letter-locked.pdf"}},
    {"Unlock", {"unlock", "--password", "p", "locked.pdf"}, true, false, {"locked-unlocked.pdf"}},
    {"PdfA", {"pdfa", "letter.pdf"}, true, false, {"letter-pdfa.pdf"}, {"compliance"}},
    {"PdfAOfALevel",
     {"pdfa", "--level", "2b", "--allow-downgrade", "letter.pdf"},
     true,
     false,
     {"letter-pdfa.pdf"},
     {"compliance"}},
    {"Repair", {"repair", "torn.pdf"}, true, false, {"torn-repaired.pdf"}, {"problems"}},
    {"Img2Pdf", {"img2pdf", "logo.png", "photo.jpg"}, true, false, {"logo.pdf"}},
    {"Img2PdfOfEach",
     {"img2pdf", "--no-merge", "logo.png", "photo.jpg"},
     true,
     false,
     {"logo.pdf", "photo.pdf"},
     {"files"}},
    {"Pdf2Img",
     {"pdf2img", "--dpi", "20", "letter.pdf"},
     true,
     false,
     {"letter-page-0001.jpg", "letter-page-0002.jpg"}},
    {"ExtractImages",
     {"extract-images", "pictures.pdf"},
     true,
     false,
     {"pictures-image-0001.jpg", "pictures-image-0002.jpg"}},
    {"ExtractOriginalImages",
     {"extract-images", "--original", "pictures.pdf"},
     true,
     false,
     {"pictures-image-0001.jpg", "pictures-image-0002.png"}},
    {"OfficeText", {"office", "report.pdf"}, true, false, {"report.docx"}, {"scannedPages"}},
    {"OfficeTables",
     {"office", "--to", "xlsx", "report.pdf"},
     true,
     false,
     {"report.xlsx"},
     {"scannedPages"}},
    {"OfficeSlides",
     {"office", "--to", "pptx", "report.pdf"},
     true,
     false,
     {"report.pptx"},
     {"scannedPages"}},
    {"ValidateWithReport",
     {"validate", "--level", "2b", "--report", "out/report.html", "plan.pdf"},
     true,
     false,
     {"out/report.html"},
     {"files"}},
    {"Validate",
     {"validate", "--level", "2b", "plan.pdf", "letter.pdf"},
     false,
     false,
     {},
     {"files"}},
    {"MetadataAsItIs", {"metadata", "letter.pdf"}, false, false, {}, {"metadata"}},
    {"Check", {"check", "letter.pdf", "torn.pdf"}, false, false, {}, {"files"}},
    {"ScanCheck", {"scan-check", "letter.pdf"}, false, false, {}, {"scannedPages"}},
    {"Info", {"info", "letter.pdf", "report.pdf"}, false, false, {}, {"files"}},
};

void WriteTorn(const std::string& from, const std::string& to) {
  const std::string whole = ReadBytes(from);
  WriteBytes(to, whole.substr(0, whole.rfind("startxref")));
}

}  // namespace

void PrintTo(const EveryJob& job, std::ostream* out) {
  *out << job.name;
}

const std::vector<EveryJob>& EveryJobThereIs() {
  return kJobs;
}

std::vector<EveryJob> EveryJobThatWrites() {
  std::vector<EveryJob> jobs;
  for (const EveryJob& job : kJobs) {
    if (job.writes) {
      jobs.push_back(job);
    }
  }
  return jobs;
}

EveryJobTest::EveryJobTest() {
  for (const std::string name : {"letter.pdf", "report.pdf", "plan.pdf", "logo.png"}) {
    std::filesystem::copy(ExamplesDir() + "/" + name, directory_.Path());
  }
  WriteTorn(Path("letter.pdf"), Path("torn.pdf"));
  WriteFile("photo.jpg", TestJpeg(3));
  WriteFile("marks.json", R"([{"type": "number"}, {"type": "stamp-text", "text": "Draft"}])");
}

void EveryJobTest::SetUp() {
  ASSERT_EQ(Run({"protect", "--new-password", "p", "letter.pdf", "-o", "locked.pdf"}).status, 0);
  ASSERT_EQ(Run({"img2pdf", "photo.jpg", "logo.png", "-o", "pictures.pdf"}).status, 0);
  inputs_ = FilesIn(".");
}

RunResult EveryJobTest::RunJob(const std::vector<std::string>& more, const RunSetup& setup) const {
  std::vector<std::string> words = GetParam().words;
  words.insert(words.begin() + 1, more.begin(), more.end());
  return Run(words, setup);
}

RunResult EveryJobTest::RunWith(const std::string& fault) const {
  for (const std::string folder : {"out", "tmp"}) {
    std::filesystem::remove_all(Path(folder));
    directory_.MakeDir(folder);
  }
  // The injector is for the program alone. One that hangs is a failure like any other.
  std::vector<std::string> words = {"timeout",
                                    "-s",
                                    "KILL",
                                    "60",
                                    "env",
                                    "TMPDIR=" + Path("tmp"),
                                    "LD_PRELOAD=" + FaultInjector(),
                                    "TARNIX_FAULT=" + fault,
                                    "TARNIX_FAULT_COUNTS=" + Path("out/counts"),
                                    TarnixPath()};
  const EveryJob& job = GetParam();
  words.insert(words.end(), job.words.begin(), job.words.end());
  if (job.writes && job.words.front() != "validate") {
    words.insert(words.end(), {"-o", "out"});
  }
  return RunCommand(words, {.directory = directory_.Path()});
}

std::map<std::string, int> EveryJobTest::Counts() const {
  std::map<std::string, int> counts;
  std::istringstream lines(ReadBytes(Path("out/counts")));
  std::string name;
  for (int count = 0; lines >> name >> count;) {
    counts[name] = count;
  }
  return counts;
}

EveryJobTest::Files EveryJobTest::FilesIn(const std::string& folder) const {
  Files files;
  for (const auto& entry : std::filesystem::directory_iterator(Path(folder))) {
    const std::string name = entry.path().filename().string();
    if (entry.is_regular_file() && name != "counts") {
      files[name] = GetParam().varies && folder == "out" ? "" : ReadBytes(entry.path().string());
    }
  }
  return files;
}

}  // namespace TarnixTools::testing
