#include <cerrno>
#include <new>
#include <stdexcept>
#include <thread>
#include <typeinfo>

#include <gtest/gtest.h>

#include "engines/support/contract/Guard.h"
#include "foundation/Platform.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

enum TestError : int {
  kNone = 0,
  kInternal = 1,
  kMemory = 2,
  kArgument = 3,
  kRead = 4,
  kOwn = 5,
  kPart = 6,
};

// What a room of support/ throws.
struct PartError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct TestErrors {
  using Code = TestError;
  using Known = KnownErrors<pdf::Error, PartError>;
  static constexpr Code kInternal = TestError::kInternal;
  static constexpr Code kMemory = TestError::kMemory;
  static constexpr Code kArgument = TestError::kArgument;

  static Code Of(const pdf::Error& error) {
    return error.code() == pdf::ErrorCode::kReadFailed ? kRead : kInternal;
  }

  static Code Of(const PartError&) { return kPart; }
};

struct Thing {
  TestError last_error = kNone;
};

template <typename Exception>
TestError CodeOf(const Exception& exception) {
  Thing thing;
  EXPECT_EQ(Guarded<TestErrors>(&thing, [&]() -> int { throw exception; }), 0);
  return LastErrorOf<TestErrors>(&thing);
}

TEST(Guard, MakesCodesOfExceptions) {
  EXPECT_EQ(CodeOf(EngineFailure(kOwn)), kOwn);
  EXPECT_EQ(CodeOf(pdf::Error(pdf::ErrorCode::kReadFailed, "")), kRead);
  EXPECT_EQ(CodeOf(pdf::Error(pdf::ErrorCode::kInternal, "")), kInternal);
  EXPECT_EQ(CodeOf(PartError("part")), kPart);
  EXPECT_EQ(CodeOf(std::bad_alloc()), kMemory);
  EXPECT_EQ(CodeOf(std::runtime_error("")), kInternal);
  EXPECT_EQ(CodeOf(7), kInternal);
  EXPECT_EQ(CodeOf(EngineFailure('x')), kInternal);  // another engine's
}

TEST(Guard, GivesBackWhatTheOperationReturns) {
  Thing thing;
  EXPECT_EQ(Guarded<TestErrors>(&thing, [] { return &typeid(int); }), &typeid(int));
  EXPECT_EQ(Guarded<TestErrors>(&thing, [] { return 2.5; }), 2.5);
  EXPECT_EQ(Guarded<TestErrors>(&thing, [] {}), 1);
  EXPECT_EQ(thing.last_error, kNone);
}

TEST(Guard, GivesNothingWhenTheOperationThrows) {
  Thing thing;
  EXPECT_EQ(Guarded<TestErrors>(&thing, []() -> Thing* { throw EngineFailure(kOwn); }), nullptr);
  EXPECT_EQ(Guarded<TestErrors>(&thing, []() -> double { throw EngineFailure(kOwn); }), 0);
  EXPECT_EQ(Guarded<TestErrors>(&thing, []() -> void { throw EngineFailure(kOwn); }), 0);
}

TEST(Guard, KeepsTheLastFailure) {
  Thing thing;
  Guarded<TestErrors>(&thing, []() -> void { throw EngineFailure(kOwn); });
  Guarded<TestErrors>(&thing, [] {});
  EXPECT_EQ(LastErrorOf<TestErrors>(&thing), kOwn);
}

TEST(Guard, RefusesNull) {
  bool has_run = false;
  EXPECT_EQ(Guarded<TestErrors>(static_cast<Thing*>(nullptr), [&] { has_run = true; }), 0);
  EXPECT_FALSE(has_run);
  EXPECT_EQ(LastErrorOf<TestErrors>(static_cast<Thing*>(nullptr)), kArgument);
}

TEST(Guard, KeepsErrorsWithoutAnObjectPerThread) {
  Thing* const null = nullptr;
  EXPECT_EQ(GuardedWithoutObject<TestErrors>([]() -> Thing* { throw std::bad_alloc(); }), null);
  EXPECT_EQ(LastErrorOf<TestErrors>(null), kMemory);
  std::thread([&] { EXPECT_EQ(LastErrorOf<TestErrors>(null), kNone); }).join();
}

TEST(Guard, TellsAnyoneWhoAsks) {
  TestError told = kNone;
  const auto note = [&](TestError code) { told = code; };
  EXPECT_EQ(GuardedBy<TestErrors>(note, [] { return 3; }), 3);
  EXPECT_EQ(told, kNone);
  EXPECT_EQ(GuardedBy<TestErrors>(note, []() -> int { throw EngineFailure(kOwn); }), 0);
  EXPECT_EQ(told, kOwn);
}

TEST(Guard, NotesWhyTheSystemRefusedWhatFailed) {
  EXPECT_EQ(CodeOf(EngineFailure(kOwn, ENOSPC)), kOwn);
  EXPECT_EQ(platform::LastSystemError(), ENOSPC);
  EXPECT_EQ(CodeOf(pdf::Error(pdf::ErrorCode::kReadFailed, "", EIO)), kRead);
  EXPECT_EQ(platform::LastSystemError(), EIO);
  EXPECT_EQ(GuardedWithoutObject<TestErrors>([] { return 3; }), 3);
  EXPECT_EQ(platform::LastSystemError(), EIO) << "of the last call that failed";
  EXPECT_EQ(CodeOf(PartError("")), kPart);
  EXPECT_EQ(platform::LastSystemError(), 0);
  platform::NoteSystemError(EIO);
  std::thread([] { EXPECT_EQ(platform::LastSystemError(), 0); }).join();
}

TEST(Require, ThrowsTheArgumentError) {
  Require<TestErrors>(true);
  try {
    Require<TestErrors>(false);
    FAIL();
  } catch (const EngineFailure<TestError>& failure) {
    EXPECT_EQ(failure.code(), kArgument);
    EXPECT_STRNE(failure.what(), "");
  }
}

}  // namespace
}  // namespace TarnixTools::engines
