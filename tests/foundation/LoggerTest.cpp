#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Logger.h"
#include "PdfDoc.h"
#include "support/Failures.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ReadBytes;
using testing::TempDir;

// The logger lives as long as its process, so every test uses one of a process of its own.
class LoggerTest : public ::testing::Test {
 protected:
  // Runs the work in a child process, and returns what it wrote to standard output.
  std::string OutputOf(const std::function<void()>& work) {
    const std::string path = directory_.Path("stdout");
    std::fflush(stdout);  // what stands there is not the child's
    const pid_t child = fork();
    if (child == 0) {
      const int output = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
      dup2(output, STDOUT_FILENO);
      work();
      _exit(0);  // without flushing anything: the logger has done so
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    return ReadBytes(path);
  }

  std::string LogFile() const { return directory_.Path("a.log"); }

  TempDir directory_;
};

// The messages of a log, whose lines must all begin with a time stamp.
std::vector<std::string> Messages(const std::string& log) {
  static const std::regex line_format(R"(\d\d-\d\d-\d\d\d\d \d\d:\d\d:\d\d\.\d\d\d : (.*))");
  std::vector<std::string> messages;
  std::istringstream lines(log);
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (std::regex_match(line, match, line_format)) {
      messages.push_back(match[1]);
    } else {
      messages.push_back("not a log line: " + line);
    }
  }
  return messages;
}

static_assert(Logger::LOGGER_DATE_SIZE == 80);

TEST_F(LoggerTest, WritesToStandardOutputWithoutAFileName) {
  const std::string output = OutputOf([] { Logger::GetLogger("").Log(std::string("x")); });
  EXPECT_THAT(Messages(output), ElementsAre("x"));
  EXPECT_EQ(output.substr(output.size() - 5), " : x\n");
}

TEST_F(LoggerTest, WritesToTheFileOnly) {
  const std::string output =
      OutputOf([this] { Logger::GetLogger(LogFile()).Log("page %d of %s", 3, "a.pdf"); });
  EXPECT_EQ(output, "");
  EXPECT_THAT(Messages(ReadBytes(LogFile())), ElementsAre("page 3 of a.pdf"));
}

TEST_F(LoggerTest, AppendsToAnExistingFile) {
  OutputOf([this] { Logger::GetLogger(LogFile()) << "first"; });
  OutputOf([this] { Logger::GetLogger(LogFile()) << "second"; });
  EXPECT_THAT(Messages(ReadBytes(LogFile())), ElementsAre("first", "second"));
}

TEST_F(LoggerTest, KeepsTheFirstFile) {
  const std::string other = directory_.Path("other.log");
  OutputOf([&] {
    Logger& first = Logger::GetLogger(LogFile());
    Logger& second = Logger::GetLogger(other);
    second << (&first == &second ? "one logger" : "two loggers");
  });
  EXPECT_THAT(Messages(ReadBytes(LogFile())), ElementsAre("one logger"));
  EXPECT_FALSE(testing::Exists(other));
}

// Neither there nor to standard output, whatever happens.
TEST_F(LoggerTest, IsNotWrittenToByTheLibrary) {
  testing::TestPdf().Pages(2).Write(directory_.Path("a.pdf"));
  testing::WriteBytes(directory_.Path("not.pdf"), "hello");
  const std::string output = OutputOf([this] {
    setenv("KORVANE_DEBUG", "1", 1);
    Logger::GetLogger(LogFile());
    PdfDoc document(directory_.Path("a.pdf"), "", true);
    document.Rotate(PdfRotationAngle::Rotate90, directory_.Path("b.pdf"), "");
    document.SetMetaData({"Ada"}, directory_.Path("b.pdf"), "pw");
    PdfDoc none(directory_.Path("not.pdf"), "", true);
    testing::FailureOf([&] { none.GetPagesNum(); });
    testing::FailureOf([&] { document.Split(3, directory_.Path(""), "", ""); });
    Logger::GetLogger("") << "of the host";
  });
  EXPECT_EQ(output, "");
  EXPECT_THAT(Messages(ReadBytes(LogFile())), ElementsAre("of the host"));
}

TEST_F(LoggerTest, StaysOnStandardOutputWhenAFileIsNamedLater) {
  const std::string output = OutputOf([this] {
    Logger::GetLogger("");
    Logger::GetLogger(LogFile()) << "x";
  });
  EXPECT_THAT(Messages(output), ElementsAre("x"));
  EXPECT_FALSE(testing::Exists(LogFile()));
}

TEST_F(LoggerTest, DropsLinesWhenTheFileCannotBeOpened) {
  const std::string output =
      OutputOf([this] { Logger::GetLogger(directory_.Path("missing/a.log")) << "lost"; });
  EXPECT_EQ(output, "");
}

TEST_F(LoggerTest, TakesPathsWithBackslashes) {
  OutputOf([this] { Logger::GetLogger(testing::Backslashes(LogFile())) << "x"; });
  EXPECT_THAT(Messages(ReadBytes(LogFile())), ElementsAre("x"));
}

TEST_F(LoggerTest, WritesOneLineForEachChainedMessage) {
  const std::string output = OutputOf([] {
    Logger::GetLogger("") << "a"
                          << ""
                          << "c";
  });
  EXPECT_THAT(Messages(output), ElementsAre("a", "", "c"));
}

TEST_F(LoggerTest, CutsFormattedMessagesAfter1023Bytes) {
  const std::string text = std::string(1023, 'a') + std::string(977, 'b');
  const std::string output = OutputOf([&] { Logger::GetLogger("").Log("%s", text.c_str()); });
  EXPECT_THAT(Messages(output), ElementsAre(std::string(1023, 'a')));
}

TEST_F(LoggerTest, KeepsLongMessagesThatAreNotFormatted) {
  const std::string text(2000, 'a');
  const std::string output = OutputOf([&] { Logger::GetLogger("").Log(text); });
  EXPECT_THAT(Messages(output), ElementsAre(text));
}

TEST_F(LoggerTest, DoesNotReadMessagesAsFormats) {
  const std::string text = "%s %n 100%";
  const std::string output = OutputOf([&] {
    Logger::GetLogger("") << text;
    Logger::GetLogger("").Log(text);
    Logger::GetLogger("").Log("%s", text.c_str());
  });
  EXPECT_THAT(Messages(output), ElementsAre(text, text, text));
}

TEST_F(LoggerTest, DebugWritesNothingToTheFileEither) {
  const std::string output = OutputOf([this] {
    setenv("KORVANE_DEBUG", "1", 1);
    Logger& logger = Logger::GetLogger(LogFile());
    logger.Debug(std::string("hidden"));
    logger.Debug("hidden %d", 1);
    logger << "shown";
  });
  EXPECT_EQ(output, "");
  EXPECT_THAT(Messages(ReadBytes(LogFile())), ElementsAre("shown"));
}

TEST_F(LoggerTest, AppendsToAFileWhoseLastLineHasNoEnd) {
  testing::WriteBytes(LogFile(), "cut");
  OutputOf([this] { Logger::GetLogger(LogFile()) << "x"; });
  const std::string log = ReadBytes(LogFile());
  EXPECT_EQ(log.substr(0, 3), "cut");
  EXPECT_THAT(Messages(log.substr(3)), ElementsAre("x"));
}

TEST_F(LoggerTest, HasEachLineInTheFileAtOnce) {
  std::size_t sizes[2] = {};
  OutputOf([&] {
    Logger& logger = Logger::GetLogger(LogFile());
    for (std::size_t& size : sizes) {
      logger << "line";
      size = ReadBytes(LogFile()).size();
    }
    _exit(sizes[0] == 0 || sizes[1] != 2 * sizes[0] ? 1 : 0);
  });
}

TEST_F(LoggerTest, DebugWritesNothing) {
  for (const char* setting : {"", "1"}) {
    const std::string output = OutputOf([&] {
      setenv("KORVANE_DEBUG", setting, 1);
      Logger& logger = Logger::GetLogger("");
      logger.Debug(std::string("hidden"));
      logger.Debug("hidden %d", 1);
    });
    EXPECT_THAT(Messages(output), IsEmpty()) << setting;
  }
}

// Of the second in which the line was written, unless that second ended meanwhile.
TEST_F(LoggerTest, StampsLinesWithTheMilliseconds) {
  for (int attempt = 0; attempt < 3; ++attempt) {
    std::timespec before{};
    std::timespec_get(&before, TIME_UTC);
    const std::string output = OutputOf([] { Logger::GetLogger("") << "x"; });
    std::timespec after{};
    std::timespec_get(&after, TIME_UTC);
    if (before.tv_sec == after.tv_sec) {
      const long milliseconds = std::stol(output.substr(20, 3));
      EXPECT_GE(milliseconds, before.tv_nsec / 1000000);
      EXPECT_LE(milliseconds, after.tv_nsec / 1000000);
      return;
    }
  }
  FAIL() << "no line was written within a second";
}

TEST_F(LoggerTest, StampsLinesWithTheLocalTime) {
  const std::time_t before = std::time(nullptr);
  const std::string output = OutputOf([] {
    setenv("TZ", "XYZ-05:30", 1);  // five and a half hours east of Greenwich
    tzset();
    Logger::GetLogger("") << "x";
  });
  std::set<std::string> possible;
  for (std::time_t time = before; time <= std::time(nullptr); ++time) {
    const std::time_t east = time + (5 * 60 + 30) * 60;
    std::tm fields{};
    gmtime_r(&east, &fields);
    char stamp[80];
    std::strftime(stamp, sizeof(stamp), "%d-%m-%Y %H:%M:%S", &fields);
    possible.insert(stamp);
  }
  EXPECT_EQ(possible.count(output.substr(0, 19)), 1U) << output;
}

}  // namespace
}  // namespace TarnixTools
