#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "engines/support/contract/Registry.h"

namespace TarnixTools::engines {
namespace {

struct Thing {
  explicit Thing(int& alive_count) : alive(&alive_count) { ++*alive; }

  ~Thing() { --*alive; }

  Thing(const Thing&) = delete;
  Thing& operator=(const Thing&) = delete;

  int* alive;
};

using Things = Registry<Thing>;

class RegistryThreadTest : public ::testing::Test {
 protected:
  Thing* Make() { return Things::Add(std::make_unique<Thing>(alive_)); }

  // Runs on a thread of its own, which is over when this returns.
  template <typename Function>
  static void OnThread(Function&& function) {
    std::thread(function).join();
  }

  int alive_ = 0;
};

TEST_F(RegistryThreadTest, DestroysWhatItHolds) {
  OnThread([this] {
    Things::BeginSession();
    Thing* thing = Make();
    EXPECT_EQ(alive_, 1);
    EXPECT_EQ(Things::Count(), 1U);
    EXPECT_TRUE(Things::Destroy(thing));
    EXPECT_EQ(alive_, 0);
    EXPECT_FALSE(Things::Destroy(thing));
    EXPECT_FALSE(Things::Destroy(nullptr));
    Things::EndSession();
  });
}

TEST_F(RegistryThreadTest, KeepsWhatIsLeftBehindUntilTheNextSession) {
  OnThread([this] {
    Things::BeginSession();
    Thing* thing = Make();
    Make();
    Things::EndSession();
    EXPECT_EQ(alive_, 2);
    EXPECT_TRUE(Things::Destroy(thing));
    Things::BeginSession();
    EXPECT_EQ(alive_, 0);
    Things::EndSession();
  });
}

TEST_F(RegistryThreadTest, ReclaimsWhatIsLeftBehindWhenTheThreadEnds) {
  OnThread([this] {
    Things::BeginSession();
    Make();
    Things::EndSession();
    EXPECT_EQ(alive_, 1);
  });
  EXPECT_EQ(alive_, 0);
}

TEST_F(RegistryThreadTest, CountsNestedSessionsAsOne) {
  OnThread([this] {
    Things::BeginSession();
    Make();
    Things::BeginSession();
    Make();
    Things::EndSession();
    Things::BeginSession();
    EXPECT_EQ(alive_, 2);
    Things::EndSession();
    Things::EndSession();
    Things::BeginSession();
    EXPECT_EQ(alive_, 0);
    Things::EndSession();
  });
}

TEST_F(RegistryThreadTest, LeavesTheSessionsOfOtherThreadsAlone) {
  OnThread([this] {
    Things::BeginSession();
    Thing* thing = Make();
    OnThread([this] {
      Things::BeginSession();
      Make();
      Things::EndSession();
      Things::BeginSession();
      EXPECT_EQ(alive_, 1);
      Things::EndSession();
    });
    EXPECT_EQ(alive_, 1);
    OnThread([thing] { EXPECT_TRUE(Things::Destroy(thing)); });
    EXPECT_EQ(alive_, 0);
    Things::EndSession();
  });
}

TEST_F(RegistryThreadTest, LeavesWhatWasMadeOutsideOfSessions) {
  OnThread([this] {
    Things::EndSession();  // none has begun
    Thing* thing = Make();
    Things::BeginSession();
    Things::EndSession();
    Things::BeginSession();
    EXPECT_EQ(alive_, 1);
    EXPECT_TRUE(Things::Destroy(thing));
    Things::EndSession();
  });
}

TEST_F(RegistryThreadTest, LeavesOpenSessionsAlone) {
  Thing* thing = nullptr;
  OnThread([&] {
    Things::BeginSession();
    thing = Make();
  });
  EXPECT_EQ(alive_, 1);
  EXPECT_TRUE(Things::Destroy(thing));
}

}  // namespace
}  // namespace TarnixTools::engines
