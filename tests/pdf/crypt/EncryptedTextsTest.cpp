// Documents that qpdf has encrypted in each way it knows, as they are read.
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/file/FileText.h"
#include "support/Expected.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::IsAsExpected;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::ReadBytes;
using ::TarnixTools::testing::RunProgram;
using ::TarnixTools::testing::TempDir;
using ::TarnixTools::testing::WriteBytes;
using testing::ContentText;
using testing::Difference;

// Strings and streams of each kind.
std::string Plain() {
  return RawPdf("%PDF-1.5\n")
      .Lines(
          R"(1 <</Type/Catalog/Pages 2 0 R/Metadata 7 0 R/Lang(en)/Own[5 0 R 8 0 R 9 0 R 10 0 R]>>
2 <</Type/Pages/Kids[3 0 R]/Count 1/MediaBox[0 0 9 9]>>
3 <</Type/Page/Parent 2 0 R/Contents 4 0 R/Resources<<>>>>
4 <<>> stream BT (content) Tj ET
5 [(string)<00ff>()<</Nested(a\(b\))/Contents(text)>>]
7 <</Type/Metadata/Subtype/XML>> stream <metadata/>
8 <</Type/EmbeddedFile/Title(file)>> stream embedded
9 <</Type/Sig/Contents<0102030405060708>/ByteRange[0 1 2 3]/Name(signer)>>
10 <<>> stream 0123456789abcdef
11 <</Title(Info)>>
)")
      .Table("/Root 1 0 R/Info 11 0 R");
}

// Without the encryption dictionary, which is another one each time.
std::string WithoutKeys(const std::string& text) {
  std::istringstream lines(text);
  std::string kept;
  for (std::string line; std::getline(lines, line);) {
    if (line.find("/Filter/Standard") == std::string::npos) {
      kept += line + "\n";
    }
  }
  return kept;
}

TEST(EncryptedTexts, OfEachRevision) {
  TARNIX_NEED_PROGRAM("qpdf");
  const TempDir directory;
  const std::string plain = WriteBytes(directory.Path("plain.pdf"), Plain());
  const std::vector<std::vector<std::string>> ways = {
      {"40"},
      {"40", "--print=n", "--annotate=n"},
      {"128", "--use-aes=n"},
      {"128", "--use-aes=n", "--force-V4"},
      {"128", "--use-aes=y", "--modify=none"},
      {"128", "--use-aes=y", "--cleartext-metadata"},
      {"256"},
      {"256", "--cleartext-metadata", "--extract=n"},
      {"256", "--force-R5"}};
  std::string text;
  std::string first;
  for (const auto& way : ways) {
    std::vector<std::string> command = {"qpdf",
                                        "--allow-weak-crypto",
                                        "--static-id",
                                        "--static-aes-iv",
                                        "--object-streams=disable",
                                        "--compress-streams=n",
                                        "--encrypt",
                                        "user",
                                        "owner"};
    command.insert(command.end(), way.begin(), way.end());
    const std::string path = directory.Path("encrypted.pdf");
    command.insert(command.end(), {"--", plain, path});
    ASSERT_EQ(RunProgram(command).exit_status, 0);
    const std::string bytes = ReadBytes(path);
    const std::string as_user = WithoutKeys(ContentText(bytes, "user"));
    for (const std::string& word : way) {
      text += word + " ";
    }
    text += "\n" + (first.empty() ? as_user : Difference(first, as_user));
    text += "as owner\n" + Difference(as_user, WithoutKeys(ContentText(bytes, "owner")));
    text += ContentText(bytes, "other") + ContentText(bytes, "") + "\n";
    first = first.empty() ? as_user : first;
  }
  EXPECT_TRUE(IsAsExpected("file/encrypted.txt", text));
}

TEST(EncryptedTexts, OfObjectStreamsAndOpenPasswords) {
  TARNIX_NEED_PROGRAM("qpdf");
  const TempDir directory;
  const std::string plain = WriteBytes(directory.Path("plain.pdf"), Plain());
  std::string text;
  for (const char* bits : {"128", "256"}) {
    const std::string path = directory.Path("encrypted.pdf");
    std::vector<std::string> command = {"qpdf",
                                        "--allow-weak-crypto",
                                        "--static-id",
                                        "--object-streams=generate",
                                        "--compress-streams=n",
                                        "--encrypt",
                                        "",
                                        "owner",
                                        bits};
    if (std::string(bits) == "128") {
      command.emplace_back("--use-aes=y");
    }
    command.insert(command.end(), {"--", plain, path});
    ASSERT_EQ(RunProgram(command).exit_status, 0);
    const std::string bytes = ReadBytes(path);
    std::istringstream lines(WithoutKeys(ContentText(bytes)));
    for (std::string line; std::getline(lines, line);) {
      // The table is compressed, and counts bytes before it.
      text += line.find("/XRef") == std::string::npos ? line + "\n" : "";
    }
    // The file is searched, with the key that is there, as soon as a stream is not found.
    std::string damaged = bytes;
    const std::size_t stream = damaged.find(" 0 obj\n<< /Length");
    ASSERT_NE(stream, std::string::npos);
    damaged.replace(stream, 6, " 0 xbj");
    std::istringstream lines_left(WithoutKeys(ContentText(damaged)));
    text += "damaged\n";
    for (std::string line; std::getline(lines_left, line);) {
      const bool is_object = line.starts_with("object ") || line.starts_with("page ");
      text += is_object && line.find("/XRef") == std::string::npos ? line + "\n" : "";
    }
  }
  EXPECT_TRUE(IsAsExpected("file/encrypted_object_streams.txt", text));
}

}  // namespace
}  // namespace TarnixTools::pdf
