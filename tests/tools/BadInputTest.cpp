// What every job says of inputs that are none, what names it takes, and what it does without a library.
#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

#include "support/TestImages.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;

// Every job that reads documents, without its input.
const std::vector<std::vector<std::string>> kJobs = {
    {"merge", "good.pdf"},
    {"split"},
    {"extract-pages", "--pages", "1"},
    {"rotate", "--angle", "90"},
    {"remove-pages", "--pages", "1"},
    {"compress"},
    {"number"},
    {"stamp-text", "--text", "x"},
    {"stamp-image", "--image", "good.jpg"},
    {"transform", "--recipe", "good.json"},
    {"metadata"},
    {"metadata", "--author", "A"},
    {"xmp"},
    {"protect", "--new-password", "x"},
    {"unlock"},
    {"pdfa"},
    {"validate"},
    {"repair"},
    {"check"},
    {"pdf2img"},
    {"pdf2img", "--pages", "1"},
    {"extract-images"},
    {"extract-images", "--pages", "1"},
    {"office"},
    {"scan-check"},
    {"info"},
};

struct BadInput {
  std::string name;
  int status;
  std::vector<std::string> causes;  // one of them; the first of an image
  std::string image_cause;
};

void PrintTo(const BadInput& input, std::ostream* out) {
  *out << input.name;
}

class BadInputs : public CliTest, public ::testing::WithParamInterface<BadInput> {
 protected:
  BadInputs() {
    WritePdf("good.pdf", 2);
    WriteFile("good.jpg", TestJpeg(3));
    WriteFile("good.json", R"([{"type": "number"}])");
    WriteFile("text", "nothing of a document, and no image");
    WriteFile("empty", "");
    WriteFile("unreadable", ReadBytes(Path("good.pdf")));
    chmod(Path("unreadable").c_str(), 0);
    directory_.MakeDir("directory");
    mkfifo(Path("pipe").c_str(), 0600);
  }

  bool CanBeTried() const { return GetParam().name != "unreadable" || geteuid() != 0; }

  static std::string End(const std::string& cause) { return " (" + cause + ")\n"; }
};

TEST_P(BadInputs, AreToldInWords) {
  if (!CanBeTried()) {
    GTEST_SKIP() << "root reads everything";
  }
  const BadInput& input = GetParam();
  const std::vector<std::string> before = directory_.Names();
  for (std::vector<std::string> words : kJobs) {
    words.push_back(input.name);
    const RunResult result = Run(words);
    EXPECT_EQ(result.status, input.status) << words[0] << ": " << result.err;
    EXPECT_EQ(result.out, "") << words[0];
    EXPECT_THAT(result.err,
                AnyOf(EndsWith(End(input.causes.front())), EndsWith(End(input.causes.back()))))
        << words[0];
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
  }
  EXPECT_EQ(directory_.Names(), before);
}

TEST_P(BadInputs, AreToldInWordsWhereAnImageIsTaken) {
  if (!CanBeTried()) {
    GTEST_SKIP() << "root reads everything";
  }
  const BadInput& input = GetParam();
  const RunResult pages = Run({"img2pdf", "good.jpg", input.name});
  EXPECT_EQ(pages.status, input.status) << pages.err;
  EXPECT_THAT(pages.err, EndsWith(End(input.image_cause)));
  const RunResult stamp = Run({"stamp-image", "--image", input.name, "good.pdf"});
  EXPECT_EQ(stamp.status, input.status) << stamp.err;
  EXPECT_THAT(stamp.err, AnyOf(EndsWith(End(input.image_cause)),
                               EndsWith(End("not an image that can be read"))));
}

INSTANTIATE_TEST_SUITE_P(
    All, BadInputs,
    ::testing::Values(
        BadInput{"text",
                 23,
                 {"not a PDF document", "not a PDF document, or damaged beyond reading"},
                 "not an image"},
        BadInput{"empty",
                 23,
                 {"not a PDF document", "not a PDF document, or damaged beyond reading"},
                 "not an image"},
        BadInput{"pipe", 23, {"not a regular file"}, "not a regular file"},
        BadInput{"directory", 16, {"Is a directory"}, "Is a directory"},
        BadInput{"unreadable", 16, {"Permission denied"}, "Permission denied"},
        BadInput{"none", 16, {"No such file or directory"}, "No such file or directory"}),
    [](const auto& input) { return input.param.name; });

class BadSurroundings : public CliTest {
 protected:
  BadSurroundings() {
    WritePdf("a.pdf", 2);
    directory_.MakeDir("lib");
  }

  // The loader finds an empty file first, and takes the library for missing.
  RunResult RunWithout(const std::string& library, const std::vector<std::string>& words) const {
    WriteFile("lib/" + library, "");
    return Run(words, {.environment = {{"LD_LIBRARY_PATH", Path("lib")}}});
  }
};

TEST_F(BadSurroundings, ALibraryThatIsMissingIsNamedWithItsPackage) {
  for (const std::string job : {"number", "stamp-text"}) {
    std::vector<std::string> words = {job, "a.pdf"};
    if (job == "stamp-text") {
      words.insert(words.end(), {"--text", "x"});
    }
    const RunResult result = RunWithout("libfontconfig.so.1", words);
    EXPECT_EQ(result.status, 23);
    EXPECT_THAT(result.err, EndsWith(" (a library is not installed: libfontconfig1 libfreetype6 "
                                     "libharfbuzz0b libharfbuzz-subset0 libfribidi0)\n"));
  }
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf", "lib"));
}

TEST_F(BadSurroundings, NoJobCrashesWithoutALibrary) {
  WriteFile("a.jpg", TestJpeg(3));
  const std::vector<std::vector<std::string>> jobs = {
      {"pdfa", "a.pdf"},   {"validate", "a.pdf"}, {"compress", "a.pdf"}, {"repair", "a.pdf"},
      {"number", "a.pdf"}, {"office", "a.pdf"},   {"img2pdf", "a.jpg"},  {"pdf2img", "a.pdf"}};
  for (const std::string library : {"libfreetype.so.6", "libfontconfig.so.1"}) {
    for (const std::vector<std::string>& words : jobs) {
      EXPECT_LT(RunWithout(library, words).status, 64) << words[0] << " without " << library;
    }
    std::filesystem::remove(Path("lib/" + library));
  }
}

TEST_F(BadSurroundings, StandardInputThatIsNoDocumentIsCalledSo) {
  const RunResult result = Run({"info", "-"}, {.input = "nothing of a document"});
  ExpectFailure(result, 23,
                "EngineError: Unable to open PDF [standard input] (engine error [0x00000004])",
                "not a PDF document");
}

TEST_F(BadSurroundings, ADocumentThatAPartIsTakenOfIsNamedWithItsCause) {
  ExpectFailure(Run({"merge", "none.pdf:1-2", "a.pdf"}), 16,
                "FileNotFound: File not found or invalid content: [none.pdf]",
                "No such file or directory");
}

TEST_F(BadSurroundings, ATenThousandInputsAreNotTooMany) {
  std::vector<std::string> words = {"merge", "-o", "all.pdf"};
  words.insert(words.end(), 10'000, "a.pdf");
  EXPECT_EQ(Run(words).out, "all.pdf\n");
  EXPECT_EQ(PagesOf("all.pdf"), 20'000);
}

TEST_F(BadSurroundings, APasswordThatIsMissingEndsEveryJobAlike) {
  WriteProtectedPdf("locked.pdf", "pw");
  WritePdf("good.pdf", 1);
  WriteFile("good.jpg", TestJpeg(3));
  WriteFile("good.json", R"([{"type": "number"}])");
  const std::vector<std::string> before = directory_.Names();
  for (std::vector<std::string> words : kJobs) {
    words.emplace_back("locked.pdf");
    EXPECT_EQ(Run(words).status, 11) << words[0];
    words.insert(words.end(), {"--password", "wrong"});
    EXPECT_EQ(Run(words).status, 11) << words[0];
  }
  EXPECT_EQ(directory_.Names(), before);
}

TEST_F(BadSurroundings, APageThatIsNotThereEndsEveryJobAlike) {
  const std::vector<std::vector<std::string>> jobs = {
      {"split", "--ranges"},
      {"split", "--merge", "--ranges"},
      {"extract-pages", "--pages"},
      {"rotate", "--angle", "90", "--pages"},
      {"remove-pages", "--pages"},
      {"number", "--pages"},
      {"stamp-text", "--text", "x", "--pages"},
      {"pdf2img", "--pages"},
      {"extract-images", "--pages"},
  };
  for (std::vector<std::string> words : jobs) {
    words.insert(words.end(), {"", "a.pdf"});
    std::string& list = words[words.size() - 2];
    for (const std::string beyond : {"3", "1-3", "r3", "3-", "0", "1,9", "4:even"}) {
      list = beyond;
      EXPECT_EQ(Run(words).status, 14) << words[0] << " " << beyond;
    }
    list = "1-2-3";
    EXPECT_EQ(Run(words).status, 2) << words[0];
  }
  EXPECT_EQ(Run({"merge", "a.pdf:3", "a.pdf"}).status, 14);
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf", "lib"));
}

class OddNames : public CliTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(OddNames, AreTakenAsTheyAre) {
  const std::string stem = GetParam();
  WritePdf(stem + ".pdf", 1);
  WriteFile(stem + ".jpg", TestJpeg(3));
  const std::string pdf = "./" + stem + ".pdf";
  const std::vector<std::vector<std::string>> jobs = {
      {stem + "-rotated.pdf\n", "rotate", "--angle", "90", pdf},
      {stem + "-01.pdf\n", "split", pdf},
      {"merged.pdf\n", "merge", pdf + ":1"},
      {stem + "-page-0001.jpg\n", "pdf2img", "--dpi", "9", pdf},
      {stem + ".pdf\n", "img2pdf", "./" + stem + ".jpg"},
      {stem + "/" + stem + "-metadata.pdf\n", "metadata", "--author", "A", pdf, "-o", stem + "/"},
  };
  for (const std::vector<std::string>& job : jobs) {
    const RunResult result = Run({job.begin() + 1, job.end()});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, job.front());
    EXPECT_TRUE(HasFile(job.front().substr(0, job.front().size() - 1)));
  }
}

INSTANTIATE_TEST_SUITE_P(All, OddNames,
                         ::testing::Values("a:1", ":odd", "{n}{stem}", "two\nlines", "-dash",
                                           " space ", "%s%n", "\xFF", "a.pdf", "[x]"));

}  // namespace
}  // namespace TarnixTools::testing
