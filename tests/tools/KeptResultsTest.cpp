// What each job makes of the documents in tests/data, kept as lines in tests/expected/jobs: what it
// says, and a checksum of each part of what it writes. A line that is another one is either a fault,
// or something to look at and to renew.
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <zip.h>
#include <zlib.h>

#include "support/Expected.h"
#include "support/Readers.h"
#include "support/Surroundings.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using Words = std::vector<std::string>;

struct JobGroup {
  std::string name;
  std::string spoil;        // what is done to the document before: see Spoiled
  std::vector<Words> jobs;  // the document's name is put behind
};

const std::vector<JobGroup> kGroups = {
    {"facts",
     "",
     {{"info", "--json"},
      {"check", "--json"},
      {"scan-check"},
      {"metadata"},
      {"xmp", "-o", "-"},
      {"validate", "--level", "1a"},
      {"validate", "--level", "1b"},
      {"validate", "--level", "2u"},
      {"validate", "--level", "3b"}}},
    {"archives",
     "",
     {{"pdfa", "-v", "--level", "1b", "--allow-downgrade"},
      {"pdfa", "-v", "--level", "2b", "--allow-downgrade"},
      {"pdfa", "-v", "--level", "3u", "--allow-downgrade"},
      {"pdfa", "-v", "--level", "1a", "--allow-downgrade"},
      {"pdfa", "-v", "--level", "2a", "--allow-downgrade"}}},
    {"office",
     "",
     {{"office", "-v", "--no-ocr", "--to", "docx"},
      {"office", "-v", "--no-ocr", "--to", "pptx"},
      {"office", "-v", "--no-ocr", "--to", "xlsx"}}},
    {"sizes",
     "",
     {{"compress", "-v", "--level", "low"},
      {"compress", "-v", "--level", "recommended"},
      {"compress", "-v", "--level", "extreme"}}},
    {"pages",
     "",
     {{"merge", "-v", "--bookmarks", "letter.pdf"},
      {"split", "-v"},
      {"rotate", "-v", "--angle", "90"},
      {"remove-pages", "-v", "--pages", "1"},
      {"extract-pages", "-v", "--pages", "z-1"},
      {"number", "-v"},
      {"stamp-text", "-v", "--text", "Draft", "--opacity", "40"},
      {"stamp-image", "-v", "--image", "logo.png"},
      {"transform", "-v", "--recipe", "marks.json"},
      {"metadata", "-v", "--title", "A title", "--keywords", "a, b"},
      {"extract-images", "-v", "--original"}}},
    {"without-table", "without table", {{"check"}, {"repair", "-v"}, {"rotate", "--angle", "180"}}},
    {"halves", "half", {{"check"}, {"repair", "-v"}, {"compress", "-v"}}},
    {"holes",
     "holes",
     {{"check"}, {"repair", "-v"}, {"pdfa", "--level", "2b", "--allow-downgrade"}}},
    {"other-lengths", "other lengths", {{"check"}, {"repair", "-v"}, {"office"}}},
};

bool OnlyTells(const Words& job) {
  const std::string& name = job.front();
  return name == "info" || name == "check" || name == "scan-check" || name == "validate" ||
         (name == "metadata" && job.size() == 2);
}

// The document as it is, or damaged in one of the ways in which files are.
std::string Spoiled(std::string bytes, const std::string& how) {
  if (how == "without table") {
    bytes.resize(bytes.rfind("startxref"));
  } else if (how == "half") {
    bytes.resize(bytes.size() / 2);
  } else if (how == "holes") {
    for (std::size_t at = 700; at + 24 < bytes.size(); at += 1900) {
      std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), 24, '\0');
    }
  } else if (how == "other lengths") {
    for (std::size_t at = 0; (at = bytes.find("/Length ", at)) != std::string::npos; at += 8) {
      bytes[at + 8] = '9';
    }
  }
  return bytes;
}

std::string Checksum(const std::string& bytes) {
  std::ostringstream text;
  text << std::hex
       << crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size()));
  return std::to_string(bytes.size()) + " bytes, checksum " + text.str();
}

std::string PackageText(const std::string& path) {
  zip_t* package = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
  if (package == nullptr) {
    return path + " is no package\n";
  }
  std::string text;
  for (zip_int64_t index = 0; index < zip_get_num_entries(package, 0); ++index) {
    zip_stat_t facts;
    zip_stat_index(package, static_cast<zip_uint64_t>(index), 0, &facts);
    std::string part(facts.size, '\0');
    zip_file_t* file = zip_fopen_index(package, static_cast<zip_uint64_t>(index), 0);
    EXPECT_EQ(zip_fread(file, part.data(), part.size()), static_cast<zip_int64_t>(part.size()));
    zip_fclose(file);
    text += std::string("  ") + facts.name + ": " + Checksum(part) + "\n";
  }
  zip_discard(package);
  return text;
}

// A file that a job has written. What others compress is told without its bytes: other releases of
// their libraries make others.
std::string OutputText(const std::string& path) {
  const std::filesystem::path file(path);
  const std::string extension = file.extension();
  const std::string name = file.filename().string();
  if (extension == ".pdf") {
    return name + ": " + Checksum(PdfText(path)) + "\n";
  }
  if (extension == ".docx" || extension == ".pptx" || extension == ".xlsx") {
    return name + "\n" + PackageText(path);
  }
  return name + (extension == ".png" ? "" : ": " + Checksum(ReadBytes(path))) + "\n";
}

class KeptResults : public CliTest,
                    public ::testing::WithParamInterface<std::tuple<std::string, JobGroup>> {
 protected:
  KeptResults() {
    const auto& [document, group] = GetParam();
    WriteFile(document + ".pdf",
              Spoiled(ReadBytes(SourceDir() + "/tests/data/" + document + ".pdf"), group.spoil));
    for (const char* name : {"letter.pdf", "logo.png", "marks.json"}) {
      WriteFile(name, ReadBytes(ExamplesDir() + "/" + name));
    }
    // Only fonts that every machine with the packages of the tests has.
    WriteFile(
        "fonts.conf",
        "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig>"
        "<dir>/usr/share/fonts/truetype/dejavu</dir><dir>/usr/share/fonts/truetype/liberation</dir>"
        "<include ignore_missing=\"yes\">/etc/fonts/conf.d/30-metric-aliases.conf</include>"
        "<cachedir>" +
            Path("cache") + "</cachedir></fontconfig>");
  }

  // The job in words: what was asked, said and written.
  std::string TextOf(Words job, const std::string& document) {
    const std::string folder = directory_.MakeDir("out" + job.front() + std::to_string(++count_));
    job.push_back(document + ".pdf");
    std::string text = "$";
    for (const std::string& word : job) {
      text += " " + word;
    }
    if (std::find(job.begin(), job.end(), "-o") == job.end() && !OnlyTells(job)) {
      job.insert(job.end(), {"-o", folder + "/"});
    }
    const RunResult result = Run(job, {.environment = {{"FONTCONFIG_FILE", Path("fonts.conf")}}});
    text +=
        "\nstatus " + std::to_string(result.status) + "\n" + WithoutFolder(result.out + result.err);
    for (const std::string& name : directory_.Names(std::filesystem::path(folder).filename())) {
      text += OutputText(folder + "/" + name);
    }
    return text + "\n";
  }

  // What names the test's own folder, without it.
  std::string WithoutFolder(std::string text) const {
    const std::string folder = directory_.Path() + "/";
    for (std::size_t at = 0; (at = text.find(folder, at)) != std::string::npos;) {
      text.erase(at, folder.size());
    }
    return text;
  }

 private:
  int count_ = 0;
};

TEST_P(KeptResults, AreAsTheyWere) {
  TARNIX_NEED_PROGRAM("qpdf");
  const auto& [document, group] = GetParam();
  std::string text;
  for (const Words& job : group.jobs) {
    text += TextOf(job, document);
  }
  EXPECT_TRUE(IsAsExpected("jobs/" + document + "-" + group.name + ".txt", text));
}

std::string NameOf(const ::testing::TestParamInfo<KeptResults::ParamType>& parameter) {
  std::string name = std::get<0>(parameter.param) + "_" + std::get<1>(parameter.param).name;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Documents, KeptResults,
                         ::testing::Combine(::testing::Values("features", "postscript", "report",
                                                              "scans", "scripts", "sheet",
                                                              "slides"),
                                            ::testing::ValuesIn(kGroups)),
                         NameOf);

}  // namespace
}  // namespace TarnixTools::testing
