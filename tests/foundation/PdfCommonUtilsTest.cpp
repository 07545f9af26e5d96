#include <gtest/gtest.h>
#include <unistd.h>

#include "PdfCommonUtils.h"
#include "support/Failures.h"
#include "support/TempDir.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using testing::Exists;
using testing::Failure;
using testing::FailureOf;
using testing::TempDir;
using testing::WriteBytes;

TEST(PdfCommonUtils, HasTheLibraryVersion) {
  EXPECT_EQ(PdfCommonUtils::GetLibVersion(), "5.4.0");
  EXPECT_EQ(PdfCommonUtils::PDF_COMMON_MAJOR_VERSION, "5");
  EXPECT_EQ(PdfCommonUtils::PDF_COMMON_MINOR_VERSION, "4");
  EXPECT_EQ(PdfCommonUtils::PDF_COMMON_REVISION_VERSION, "0");
  EXPECT_EQ(&PdfCommonUtils::GetLibVersion(), &PdfCommonUtils::PDF_LIB_VERSION);
}

TEST(PdfCommonUtils, IsDirectoryTellsDirectoriesFromFiles) {
  const TempDir directory;
  const std::string file = WriteBytes(directory.Path("a.pdf"), "x");
  EXPECT_TRUE(PdfCommonUtils::IsDirectory(directory.Path()));
  EXPECT_FALSE(PdfCommonUtils::IsDirectory(file));
  EXPECT_FALSE(PdfCommonUtils::IsDirectory(directory.Path("missing")));
  EXPECT_FALSE(PdfCommonUtils::IsDirectory(""));
}

TEST(PdfCommonUtils, IsDirectoryTakesEitherSeparatorAndOneAtTheEnd) {
  const TempDir directory;
  directory.MakeDir("s\xC3\xBC\xC3\x9F \xFF");
  const std::string path = directory.Path("s\xC3\xBC\xC3\x9F \xFF");
  EXPECT_TRUE(PdfCommonUtils::IsDirectory(path + "/"));
  EXPECT_TRUE(PdfCommonUtils::IsDirectory(Backslashes(path)));
  EXPECT_TRUE(PdfCommonUtils::IsDirectory(Backslashes(path) + "\\"));
}

TEST(PdfCommonUtils, RemoveFileDeletesAFile) {
  const TempDir directory;
  const std::string file = WriteBytes(directory.Path("caf\xC3\xA9 \xFF.pdf"), "x");
  PdfCommonUtils::RemoveFile(Backslashes(file));
  EXPECT_FALSE(Exists(file));
}

TEST(PdfCommonUtils, RemoveFileIgnoresAMissingFile) {
  const TempDir directory;
  EXPECT_EQ(FailureOf([&] { PdfCommonUtils::RemoveFile(directory.Path("missing.pdf")); }),
            Failure());
  EXPECT_EQ(FailureOf([&] { PdfCommonUtils::RemoveFile(directory.Path("missing/a.pdf")); }),
            Failure());
  EXPECT_EQ(FailureOf([] { PdfCommonUtils::RemoveFile(""); }), Failure());
}

TEST(PdfCommonUtils, PathsEndAtTheFirstNul) {
  const TempDir directory;
  const std::string file = WriteBytes(directory.Path("a.pdf"), "x");
  EXPECT_TRUE(PdfCommonUtils::IsDirectory(directory.Path() + std::string("\0/x", 3)));
  PdfCommonUtils::RemoveFile(file + std::string("\0x", 2));
  EXPECT_FALSE(Exists(file));
}

TEST(PdfCommonUtils, IsDirectoryFollowsLinks) {
  const TempDir directory;
  const std::string link = directory.Path("link");
  ASSERT_EQ(symlink(directory.Path().c_str(), link.c_str()), 0);
  EXPECT_TRUE(PdfCommonUtils::IsDirectory(link));
}

TEST(PdfCommonUtils, RemoveFileReportsOtherFailuresWithThePathsFirstCharacter) {
  const TempDir directory;
  EXPECT_EQ(FailureOf([&] { PdfCommonUtils::RemoveFile(directory.Path()); }),
            Failure(PdfExceptionCode::FileNotFound, "Error deleting file [/] (Is a directory)"));
  EXPECT_TRUE(Exists(directory.Path()));
  const std::string file = WriteBytes(directory.Path("a.pdf"), "x");
  EXPECT_EQ(FailureOf([&] { PdfCommonUtils::RemoveFile(file + "/b.pdf"); }),
            Failure(PdfExceptionCode::FileNotFound, "Error deleting file [/] (Not a directory)"));
}

TEST(PdfCommonUtils, RemoveFileRemovesALinkAndNotItsTarget) {
  const TempDir directory;
  const std::string file = WriteBytes(directory.Path("a.pdf"), "x");
  const std::string link = directory.Path("link.pdf");
  ASSERT_EQ(symlink(file.c_str(), link.c_str()), 0);
  PdfCommonUtils::RemoveFile(link);
  EXPECT_FALSE(Exists(link));
  EXPECT_TRUE(Exists(file));
}

TEST(PdfCommonUtils, GetNativePathHasTheSlashesOfTheSystem) {
  EXPECT_EQ(PdfCommonUtils::GetNativePath("\\tmp\\out/a b.pdf"), "/tmp/out/a b.pdf");
  EXPECT_EQ(PdfCommonUtils::GetNativePath(""), "");
}

TEST(PdfCommonUtils, FormNameReplacesStemAndNumberOnce) {
  EXPECT_EQ(PdfCommonUtils::FormName("{stem}-{n}.pdf", "report", "007"), "report-007.pdf");
  EXPECT_EQ(PdfCommonUtils::FormName("{n}{n} {x}{stem", "report", "1"), "11 {x}{stem");
  EXPECT_EQ(PdfCommonUtils::FormName("{stem}-{n}", "{n}{stem}", "2"), "{n}{stem}-2");
  EXPECT_EQ(PdfCommonUtils::FormName("", "report", "1"), "");
}

TEST(PdfCommonUtils, FormNameGivesNumbersFourDigitsOrMore) {
  EXPECT_EQ(PdfCommonUtils::FormName("{stem}-{n}.pdf", "report", 7), "report-0007.pdf");
  EXPECT_EQ(PdfCommonUtils::FormName("{n}", "", 9999), "9999");
  EXPECT_EQ(PdfCommonUtils::FormName("{n}", "", 12345), "12345");
}

}  // namespace
}  // namespace TarnixTools
