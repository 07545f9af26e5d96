// What all jobs have in common: where outputs go and what they are called, what is printed where, and
// which options they take.
#include "support/TestImages.h"
#include "tools/EveryJob.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string Lines(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    text += word + "\n";
  }
  return text;
}

std::string NameOf(const ::testing::TestParamInfo<EveryJob>& job) {
  return job.param.name;
}

class Jobs : public EveryJobTest {
 protected:
  // Whether help of the job names the option.
  bool Takes(const std::string& option) const {
    return Run({GetParam().words.front(), "--help"}).out.find(" " + option + " ") !=
           std::string::npos;
  }

  // The words with every document and image in the directory above.
  std::vector<std::string> WordsFromBelow() const {
    std::vector<std::string> words = GetParam().words;
    for (std::string& word : words) {
      if (HasFile(word.substr(0, word.find(':')))) {
        word = "../" + word;
      }
    }
    return words;
  }
};

TEST_P(Jobs, WriteToTheCurrentDirectoryUnderNamesOfTheirs) {
  directory_.MakeDir("work");
  const RunResult result = RunTarnix(WordsFromBelow(), {.directory = Path("work")});
  EXPECT_LT(result.status, 2) << result.err;
  if (GetParam().writes && GetParam().words.front() != "validate") {  // which tells its findings
    EXPECT_EQ(result.out.substr(0, Lines(GetParam().outputs).size()), Lines(GetParam().outputs));
  }
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(Path("work"))) {
    files += entry.is_regular_file() ? 1 : 0;
  }
  EXPECT_EQ(files, GetParam().outputs.size());
  for (const std::string& name : GetParam().outputs) {
    EXPECT_TRUE(HasFile("work/" + name)) << name;
  }
  EXPECT_EQ(FilesIn("."), inputs_);
}

TEST_P(Jobs, PrintOneJsonObject) {
  const RunResult result = RunJob({"--json"});
  EXPECT_LT(result.status, 2) << result.err;
  const Json json = Json::parse(result.out, nullptr, false);
  ASSERT_TRUE(json.is_object()) << result.out;
  EXPECT_EQ(json["job"], GetParam().words.front());
  EXPECT_EQ(json["outputs"], Json(GetParam().outputs));
  EXPECT_TRUE(json["report"].is_array());
  for (const std::string& field : GetParam().fields) {
    EXPECT_TRUE(json.contains(field)) << field;
  }
  EXPECT_EQ(json.size(), 3 + GetParam().fields.size()) << result.out;
}

TEST_P(Jobs, KeepStandardOutputForResults) {
  const RunResult plain = RunJob({});
  for (const std::vector<std::string>& more :
       {std::vector<std::string>{"-v"}, {"--progress", "always"}, {"-q"}}) {
    const RunResult result = RunJob(more);
    EXPECT_EQ(result.status, plain.status) << more[0];
    EXPECT_EQ(result.out, plain.out) << more[0];
    if (more[0] == "-q") {
      EXPECT_EQ(result.err, "");
    }
  }
}

TEST_P(Jobs, RefuseOptionsThatTheyHaveNoUseFor) {
  const std::vector<std::vector<std::string>> options = {
      {"--output", "x"}, {"--name", "x{n}"},  {"--prefix", "x"},   {"--no-clobber"},
      {"--in-place"},    {"--password", "x"}, {"--password-file"}, {"--out-password", "x"}};
  for (const std::vector<std::string>& option : options) {
    if (!Takes(option.front())) {
      const RunResult result = RunJob(option);
      EXPECT_EQ(result.status, 2) << option.front();
      EXPECT_EQ(result.out, "");
    }
  }
  EXPECT_EQ(FilesIn("."), inputs_);
}

TEST_P(Jobs, TakeStandardInputForADocument) {
  std::vector<std::string> words = GetParam().words;
  const std::string stem = words.back().substr(0, words.back().rfind('.'));
  if (GetParam().outputs.empty() || !GetParam().outputs.front().starts_with(stem)) {
    GTEST_SKIP() << "it takes several";
  }
  std::vector<std::string> outputs = GetParam().outputs;
  for (std::string& name : outputs) {
    name.replace(0, stem.size(), "stdin");
  }
  const std::string bytes = ReadBytes(Path(words.back()));
  words.back() = "-";
  directory_.MakeDir("tmp");
  const RunResult result = Run(words, {.input = bytes, .environment = {{"TMPDIR", Path("tmp")}}});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, Lines(outputs));
  EXPECT_TRUE(directory_.Names("tmp").empty());
  const RunResult failed =
      Run(words, {.input = "nothing", .environment = {{"TMPDIR", Path("tmp")}}});
  EXPECT_GT(failed.status, 3);
  EXPECT_TRUE(directory_.Names("tmp").empty());
}

INSTANTIATE_TEST_SUITE_P(All, Jobs, ::testing::ValuesIn(EveryJobThereIs()), NameOf);

class WritingJobs : public Jobs {};

TEST_P(WritingJobs, ReplaceNoFileWhereThatIsForbidden) {
  if (!Takes("--no-clobber")) {
    GTEST_SKIP() << "it writes nothing but a report";
  }
  for (const std::string& name : GetParam().outputs) {
    WriteFile(name, "an older file");
    const RunResult result = RunJob({"-n"});
    EXPECT_EQ(result.status, 16) << result.out;
    EXPECT_THAT(result.err, HasSubstr("Unable to create new file [" + name + "] (File exists)"));
    EXPECT_EQ(ReadBytes(Path(name)), "an older file");
    std::filesystem::remove(Path(name));
    EXPECT_EQ(FilesIn("."), inputs_) << "refused before any work";
  }
  EXPECT_EQ(RunJob({"-n"}).status, 0);
}

TEST_P(WritingJobs, PutAPasswordOnWhatTheyWrite) {
  if (!Takes("--out-password")) {
    GTEST_SKIP() << "it writes nothing that could have one";
  }
  WriteFile("pw", "new\n");
  for (const std::vector<std::string>& option :
       {std::vector<std::string>{"--out-password", "new"}, {"--out-password-file", "pw"}}) {
    const RunResult result = RunJob(option);
    EXPECT_EQ(result.status, 0) << result.err;
    for (const std::string& name : GetParam().outputs) {
      EXPECT_EQ(Run({"info", name}).status, 11) << name;
      EXPECT_TRUE(RunJson({"info", name, "--password", "new"})["files"][0]["encrypted"]) << name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, WritingJobs, ::testing::ValuesIn(EveryJobThatWrites()), NameOf);

class LostThings : public CliTest {
 protected:
  // Of two pages, one of which is not there.
  void WriteLossy(const std::string& name) const {
    std::string bytes = TestPdf().Pages(2).Bytes();
    bytes.replace(bytes.rfind("<<", bytes.find("/Type /Page ")), 2,
                  "( ");  // no dictionary any more
    WriteFile(name, bytes);
  }
};

// Unasked, and unless the output is protected itself.
TEST_F(LostThings, AreToldOfAProtectedInput) {
  WriteProtectedPdf("locked.pdf", "p");
  WriteFile("good.jpg", TestJpeg(3));
  WriteFile("good.json", R"([{"type": "number"}])");
  const std::vector<std::vector<std::string>> jobs = {
      {"merge", "plain.pdf"},
      {"split"},
      {"extract-pages", "--pages", "1"},
      {"rotate", "--angle", "90"},
      {"compress"},
      {"number"},
      {"stamp-text", "--text", "x"},
      {"stamp-image", "--image", "good.jpg"},
      {"transform", "--recipe", "good.json"},
      {"metadata", "--author", "A"},
      {"pdfa"},
      {"repair"},
  };
  const std::string warning = "the input is protected, the output is not\n";
  for (std::vector<std::string> words : jobs) {
    words.insert(words.end(), {"locked.pdf", "--password", "p", "-o", "out"});
    const RunResult result = Run(words);
    EXPECT_EQ(result.status, 0) << words[0] << ": " << result.err;
    EXPECT_THAT(result.err, HasSubstr(warning)) << words[0];
    words.emplace_back("-q");
    EXPECT_EQ(Run(words).err, "") << words[0];
    words.back() = "--out-password=new";
    EXPECT_THAT(Run(words).err, Not(HasSubstr(warning))) << words[0];
  }
}

TEST_F(LostThings, MakeTheStatusThreeUnlessAnotherInputFails) {
  WriteLossy("lossy.pdf");
  WritePdf("good.pdf", 1);
  WriteFile("text.pdf", "nothing of a document");
  const auto status = [&](std::vector<std::string> inputs) {
    inputs.insert(inputs.begin(), {"rotate", "--angle", "90", "-o", "out"});
    return Run(inputs).status;
  };
  EXPECT_EQ(status({"good.pdf"}), 0);
  EXPECT_EQ(status({"lossy.pdf"}), 3);
  EXPECT_EQ(status({"lossy.pdf", "good.pdf"}), 3);
  EXPECT_EQ(status({"good.pdf", "lossy.pdf"}), 3);
  EXPECT_EQ(status({"lossy.pdf", "text.pdf", "none.pdf"}), 23);
  EXPECT_EQ(status({"none.pdf", "lossy.pdf"}), 16);
}

}  // namespace
}  // namespace TarnixTools::testing
