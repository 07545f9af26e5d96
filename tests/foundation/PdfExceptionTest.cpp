#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "PdfException.h"

namespace TarnixTools {
namespace {

std::string StandardWhat(const std::exception& error) {
  return error.what();
}

PdfException RotationFailure() {
  return {PdfExceptionCode::EngineError, 5, "Unable to rotate page [%d] at doc [%s]", 3, "a.pdf"};
}

TEST(PdfException, HoldsCodeEngineCodeAndFormattedMessage) {
  PdfException error = RotationFailure();
  EXPECT_EQ(static_cast<int>(error.GetCode()), 13);
  EXPECT_EQ(error.GetErrorCode(), 5);
  EXPECT_STREQ(error.what(), "Unable to rotate page [3] at doc [a.pdf]");
}

TEST(PdfException, CopyHoldsTheSame) {
  const PdfException error = RotationFailure();
  PdfException copy(error);
  PdfException assigned(PdfExceptionCode::NoPages, 0, "other");
  assigned = error;
  for (PdfException* same : {&copy, &assigned}) {
    EXPECT_EQ(same->GetCode(), PdfExceptionCode::EngineError);
    EXPECT_EQ(same->GetErrorCode(), 5);
    EXPECT_STREQ(same->what(), "Unable to rotate page [3] at doc [a.pdf]");
  }
}

TEST(PdfException, CopyHoldsTheWholeMessage) {
  const std::string text = std::string(1022, 'a') + "z";
  PdfException error(PdfExceptionCode::InternalError, -1, "%s", text.c_str());
  PdfException copy(error);
  PdfException assigned("a shorter one");
  assigned = error;
  EXPECT_EQ(copy.what(), text);
  EXPECT_EQ(assigned.what(), text);
  EXPECT_EQ(assigned.GetErrorCode(), -1);
  EXPECT_NE(copy.what(), error.what()) << "each has a buffer of its own";
}

TEST(PdfException, AssignmentToItselfChangesNothing) {
  PdfException error = RotationFailure();
  PdfException& same = error;
  error = same;
  EXPECT_EQ(error.GetCode(), PdfExceptionCode::EngineError);
  EXPECT_EQ(error.GetErrorCode(), 5);
  EXPECT_STREQ(error.what(), "Unable to rotate page [3] at doc [a.pdf]");
}

TEST(PdfException, EngineCodeKeepsItsSign) {
  const PdfException error(PdfExceptionCode::EngineError, static_cast<std::int32_t>(0x80410112),
                           "no");
  static_assert(std::is_same_v<decltype(error.GetErrorCode()), long>);
  EXPECT_EQ(error.GetErrorCode(), -2143223534L);
}

TEST(PdfException, CutsTheMessageAfter1023Bytes) {
  const std::string text = std::string(1023, 'a') + "bc";
  PdfException error(PdfExceptionCode::InternalError, 0, "%s", text.c_str());
  EXPECT_EQ(error.what(), std::string(1023, 'a'));
  PdfException message_only("%s", text.c_str());
  EXPECT_EQ(message_only.what(), std::string(1023, 'a'));
}

TEST(PdfException, KeepsAMessageOf1023Bytes) {
  const std::string text = std::string(1022, 'a') + "z";
  EXPECT_EQ(PdfException(PdfExceptionCode::InternalError, 0, "%s", text.c_str()).what(), text);
  EXPECT_STREQ(PdfException(PdfExceptionCode::InternalError, 0, "%s", "").what(), "");
}

TEST(PdfException, ReadsItsArgumentsAsNoFormats) {
  EXPECT_STREQ(
      PdfException(PdfExceptionCode::InternalError, 0, "[%s] [0x%08X]", "%s%n", 0xABU).what(),
      "[%s%n] [0x000000AB]");
}

TEST(PdfException, MessageOfTheMessageOnlyForm) {
  PdfException error("page %d of %s", 7, "a.pdf");
  EXPECT_STREQ(error.what(), "page 7 of a.pdf");
  EXPECT_EQ(static_cast<int>(error.GetCode()), 0) << "none of the codes";
  EXPECT_EQ(error.GetErrorCode(), 0);
  EXPECT_EQ(error.GetSystemError(), 0);
}

TEST(PdfException, StandardHandlersSeeTheFallbackText) {
  const PdfException error = RotationFailure();
  EXPECT_EQ(StandardWhat(error), "Unknown exception");
  EXPECT_STREQ(error.what(), "Unknown exception");
}

TEST(PdfException, IsCaughtByTypeByBaseAndThroughTheLibraryBoundary) {
  static_assert(std::is_base_of_v<std::exception, PdfException>);
  try {
    throw RotationFailure();
  } catch (std::exception& error) {
    EXPECT_STREQ(error.what(), "Unknown exception");
    EXPECT_NE(dynamic_cast<PdfException*>(&error), nullptr);
  }
}

TEST(PdfExceptionCode, HasTheFixedValues) {
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::PasswordError), 1);
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::NoPages), 3);
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::InvalidParameter), 4);
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::FileNotFound), 6);
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::InternalError), 7);
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::NoImagesFound), 8);
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::AllPagesScanned), 10);
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::ConversionTimeout), 11);
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::NoTablesFound), 12);
  EXPECT_EQ(static_cast<int>(PdfExceptionCode::EngineError), 13);
  EXPECT_EQ(sizeof(PdfExceptionCode), 4U);
}

}  // namespace
}  // namespace TarnixTools
