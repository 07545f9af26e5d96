// What jobs leave behind when the system fails them, or they are killed: inputs as they were, and
// under each output's name the whole new file, the old one, or nothing. FaultInjector.cpp makes one
// thing fail in a run of the program. Ordinary runs try a few places of each kind, scripts/faults
// tries them all.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestImages.h"
#include "support/TestPdf.h"
#include "tools/TarnixProcess.h"

namespace TarnixTools::testing {
namespace {

constexpr int kKilled = 128 + 9;
constexpr int kLastStatus = 63;  // the program's own are below

struct Job {
  std::string name;
  std::vector<std::string> arguments;
  // It may write other bytes: encrypted, in another way after a fault, or without what it reports.
  bool varies = false;
  bool makes_json = false;  // whose destructor needs memory, and ends the process without
};

void PrintTo(const Job& job, std::ostream* out) {
  *out << job.name;
}

const std::vector<Job> kJobs = {
    {"Merge", {"merge", "a.pdf", "b.pdf"}},
    {"Split", {"split", "a.pdf"}},
    {"Rotate", {"rotate", "--angle", "90", "a.pdf"}},
    {"RemovePages", {"remove-pages", "--pages", "1", "a.pdf"}},
    {"Metadata", {"metadata", "--author", "A", "a.pdf"}},
    {"Number", {"number", "a.pdf"}, true},
    {"StampText", {"stamp-text", "--text", "Draft", "a.pdf"}},
    {"StampImage", {"stamp-image", "--image", "photo.jpg", "a.pdf"}},
    {"Compress", {"compress", "a.pdf"}, false, true},
    {"Protect", {"protect", "--new-password", "p", "a.pdf"}, true},
    {"Img2Pdf", {"img2pdf", "photo.jpg", "gray.jpg"}, true},
    {"Pdf2Img", {"pdf2img", "a.pdf"}},
    {"ExtractImages", {"extract-images", "a.pdf"}},
    {"Repair", {"repair", "torn.pdf"}, false, true},
};

using Files = std::map<std::string, std::string>;  // bytes by name

// Where faults of a kind are tried.
struct Kind {
  std::string name;
  std::string counted;  // the name under which the injector counts
  int sample;           // places in an ordinary run
  int step = 1;         // from place to place where all are tried
};

const std::vector<Kind> kKinds = {
    {"new", "new", 4},    {"allocate", "allocate", 1, 7}, {"open", "open", 1},
    {"read", "read", 1},  {"write", "write", 2},          {"name", "name", 1},
    {"kill", "write", 1}, {"kill-name", "name", 1},       {"kill-named", "name", 1}};

bool TriesAll() {
  return std::getenv("TARNIX_FAULTS") != nullptr;
}

class Faults : public ::testing::TestWithParam<Job> {
 protected:
  static void SetUpTestSuite() {
    directory_ = new TempDir;
    TestPdf file;
    file.Page()
        .Content("BT /F 12 Tf (one) Tj ET 50 0 0 50 0 0 cm /I Do")
        .PageEntry(
            "/Resources<</XObject<</I "
            "{{image}}>>/Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica"
            ">>>>>>");
    file.Page().Content("0 0 9 9 re f");
    const std::string jpeg = TestJpeg(3);
    file.Object("image",
                "<</Subtype/Image/Width 16/Height 16/ColorSpace/DeviceRGB"
                "/BitsPerComponent 8/Filter/DCTDecode/Length " +
                    std::to_string(jpeg.size()) + ">>\nstream\n" + jpeg + "\nendstream");
    file.Write(directory_->Path("a.pdf"));
    TestPdf().Pages(1).Write(directory_->Path("b.pdf"));
    const std::string whole = ReadBytes(directory_->Path("a.pdf"));
    WriteBytes(directory_->Path("torn.pdf"), whole.substr(0, whole.rfind("startxref")));
    WriteBytes(directory_->Path("photo.jpg"), jpeg);
    WriteBytes(directory_->Path("gray.jpg"), TestJpeg(1));
  }

  static void TearDownTestSuite() {
    delete directory_;
    directory_ = nullptr;
  }

  void SetUp() override {
    if (FaultInjector().empty()) {
      GTEST_SKIP() << "this build has no fault injector";
    }
    inputs_ = FilesIn(".");
  }

  static Files FilesIn(const std::string& folder) {
    Files files;
    const std::filesystem::path path = directory_->Path(folder);
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      if (entry.is_regular_file()) {
        files[entry.path().filename().string()] = ReadBytes(entry.path().string());
      }
    }
    return files;
  }

  // Starts with these files where the job writes.
  static RunResult Run(const Files& before, const std::string& fault) {
    std::filesystem::remove_all(directory_->Path("out"));
    directory_->MakeDir("out");
    for (const auto& [name, bytes] : before) {
      WriteBytes(directory_->Path("out/" + name), bytes);
    }
    // The injector is for the program alone. A library that memory fails may wait for ever.
    std::vector<std::string> words = {"timeout",
                                      "-s",
                                      "KILL",
                                      "20",
                                      "env",
                                      "LD_PRELOAD=" + FaultInjector(),
                                      "TARNIX_FAULT=" + fault,
                                      "TARNIX_FAULT_COUNTS=" + CountsPath(),
                                      TarnixPath()};
    const std::vector<std::string>& arguments = GetParam().arguments;
    words.insert(words.end(), arguments.begin(), arguments.end());
    words.insert(words.end(), {"-o", "out"});
    return RunCommand(words, {.directory = directory_->Path()});
  }

  static std::string CountsPath() { return directory_->Path() + ".counts"; }

  // How many there are of each kind in a run without a fault.
  static std::map<std::string, int> Counts() {
    std::map<std::string, int> counts;
    std::istringstream lines(ReadBytes(CountsPath()));
    std::string name;
    for (int count = 0; lines >> name >> count;) {
      counts[name] = count;
    }
    std::filesystem::remove(CountsPath());
    return counts;
  }

  static std::vector<int> PlacesOf(int count, const Kind& kind) {
    std::vector<int> places;
    const int wanted =
        TriesAll() ? (count + kind.step - 1) / kind.step : std::min(count, kind.sample);
    for (int i = 1; i <= wanted; ++i) {
      places.push_back(i * count / wanted);
    }
    return places;
  }

  // A file that is not the same begins and ends as the other does, at least.
  static bool IsWhole(const std::string& bytes, const std::string& reference, bool may_vary) {
    constexpr std::size_t kStart = 4;
    constexpr std::size_t kEnd = 2;
    return bytes == reference || (may_vary && bytes.size() > kStart + kEnd &&
                                  bytes.starts_with(reference.substr(0, kStart)) &&
                                  bytes.ends_with(reference.substr(reference.size() - kEnd)));
  }

  void Check(const RunResult& result, const Files& before, const Kind& kind) {
    const bool is_killed = kind.name.starts_with("kill");
    const bool may_vary = GetParam().varies || kind.name == "allocate";
    EXPECT_EQ(FilesIn("."), inputs_);
    if (is_killed) {
      EXPECT_EQ(result.status, kKilled) << result.err;
    } else if (kind.name != "allocate" && !(kind.name == "new" && GetParam().makes_json)) {
      EXPECT_LE(result.status, kLastStatus) << result.err;
    }
    const Files after = FilesIn("out");
    for (const auto& [name, bytes] : after) {
      const auto reference = reference_.find(name);
      const auto old = before.find(name);
      const bool is_known = reference != reference_.end();
      EXPECT_TRUE(is_known || is_killed) << name << " is left behind";
      EXPECT_TRUE(!is_known || IsWhole(bytes, reference->second, may_vary) ||
                  (old != before.end() && bytes == old->second))
          << name << ": " << bytes.size() << " bytes, neither new nor old";
    }
    for (const auto& [name, bytes] : before) {
      EXPECT_TRUE(after.contains(name)) << name << " is gone";
    }
    for (const auto& [name, bytes] : reference_) {
      EXPECT_TRUE(result.status != 0 ||
                  (after.contains(name) && IsWhole(after.at(name), bytes, may_vary)))
          << name << " is not there, and nobody says so";
    }
  }

  static TempDir* directory_;
  Files inputs_;
  Files reference_;
};

TempDir* Faults::directory_ = nullptr;

TEST_P(Faults, LeaveFilesWhole) {
  const RunResult sound = Run({}, "");
  ASSERT_EQ(sound.status, 0) << sound.err;
  reference_ = FilesIn("out");
  ASSERT_FALSE(reference_.empty());
  std::map<std::string, int> counts = Counts();
  Files old;
  for (const auto& [name, bytes] : reference_) {
    old[name] = "an older file";
  }
  bool is_old_there = false;
  for (const Kind& kind : kKinds) {
    ASSERT_GT(counts[kind.counted], 0) << kind.name;
    for (const int place : PlacesOf(counts[kind.counted], kind)) {
      const std::string fault = kind.name + ":" + std::to_string(place);
      SCOPED_TRACE(fault);
      is_old_there = !is_old_there;
      const Files before = is_old_there ? old : Files();
      Check(Run(before, fault), before, kind);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Jobs, Faults, ::testing::ValuesIn(kJobs),
                         [](const auto& job) { return job.param.name; });

}  // namespace
}  // namespace TarnixTools::testing
