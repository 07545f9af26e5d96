#include <gtest/gtest.h>

#include "engines/office/sdk/ConversionLog.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::office {
namespace {

TEST(ConversionLog, AppendsLines) {
  const testing::TempDir directory;
  ConversionLog log;
  log.Write("before there is a file");
  log.SetFile(directory.Path("out.log"));
  log.Write("one");
  log.Write("two");
  log.SetFile("");
  log.Write("three");
  EXPECT_EQ(testing::ReadBytes(directory.Path("out.log")), "one\ntwo\n");
}

}  // namespace
}  // namespace TarnixTools::engines::office
