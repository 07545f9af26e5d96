#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/optimizer/WorkPool.h"

namespace TarnixTools::engines::optimizer {
namespace {

using ::testing::Each;

constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20;

// How much work runs at the same time.
class Gauge {
 public:
  void Run() {
    const int now = ++running_;
    int most = most_;
    while (now > most && !most_.compare_exchange_weak(most, now)) {
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    --running_;
  }

  int most() const { return most_; }

 private:
  std::atomic<int> running_ = 0;
  std::atomic<int> most_ = 0;
};

int MostAtOnce(unsigned threads, std::uint64_t held_bytes) {
  Gauge gauge;
  WorkPool pool(threads);
  for (int i = 0; i < 12; ++i) {
    pool.Add(held_bytes, [&] { gauge.Run(); });
  }
  pool.Finish();
  return gauge.most();
}

std::string FailureOf(WorkPool& pool) {
  try {
    pool.Finish();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

TEST(WorkPool, DoesAllWorkOnAnyNumberOfThreads) {
  for (const unsigned threads : {0U, 1U, 4U}) {
    std::vector<int> done(500);
    WorkPool pool(threads);
    for (int& count : done) {
      pool.Add(kMegabyte, [&count] { ++count; });
    }
    pool.Finish();
    EXPECT_THAT(done, Each(1)) << threads;
  }
}

TEST(WorkPool, GivesTheSameOnOneThreadAndOnFour) {
  const auto results = [](unsigned threads) {
    std::vector<std::uint64_t> sums(64);
    WorkPool pool(threads);
    for (std::size_t i = 0; i < sums.size(); ++i) {
      pool.Add(kMegabyte, [&sum = sums[i], i] {
        std::vector<std::uint64_t> values(1000);
        std::iota(values.begin(), values.end(), i);
        sum = std::accumulate(values.begin(), values.end(), sum);
      });
    }
    pool.Finish();
    return sums;
  };
  EXPECT_EQ(results(1), results(4));
}

TEST(WorkPool, RunsNoMoreAtOnceThanThereAreThreads) {
  EXPECT_EQ(MostAtOnce(1, 1), 1);
  EXPECT_LE(MostAtOnce(3, 1), 3);
}

// Two pieces of work wait for each other.
TEST(WorkPool, RunsOnSeveralThreadsAtOnce) {
  std::promise<void> first;
  std::promise<void> second;
  WorkPool pool(2);
  pool.Add(1, [&] {
    first.set_value();
    second.get_future().wait();
  });
  pool.Add(1, [&] {
    first.get_future().wait();
    second.set_value();
  });
  pool.Finish();
}

TEST(WorkPool, KeepsTheMemoryOfItsThreadsInBounds) {
  EXPECT_EQ(MostAtOnce(4, 100 * kMegabyte), 1);
  EXPECT_LE(MostAtOnce(4, 60 * kMegabyte), 2);
}

TEST(WorkPool, RunsWorkBeyondTheBoundOnOneThreadAlone) {
  EXPECT_EQ(MostAtOnce(4, 5000 * kMegabyte), 1);
}

TEST(WorkPool, BeginsNothingBesideWorkBeyondTheBoundOnAnyThread) {
  Gauge gauge;
  std::atomic<bool> is_large_done = false;
  std::atomic<int> early = 0;
  WorkPool pool(4);
  pool.Add(5000 * kMegabyte, [&] {
    gauge.Run();
    is_large_done = true;
  });
  for (int i = 0; i < 4; ++i) {
    pool.Add(1, [&] { early += is_large_done ? 0 : 1; });
  }
  pool.Finish();
  EXPECT_EQ(early, 0);
}

// What is added later fails first, more often than not.
TEST(WorkPool, ThrowsTheFirstFailureOfSeveralThreads) {
  for (int i = 0; i < 50; ++i) {
    std::promise<void> all_are_added;
    std::promise<void> second_fails;
    const std::shared_future<void> start = all_are_added.get_future().share();
    WorkPool pool(2);
    pool.Add(1, [&] {
      second_fails.get_future().wait();
      throw std::runtime_error("first");
    });
    pool.Add(1, [&] {
      start.wait();
      second_fails.set_value();
      throw std::runtime_error("second");
    });
    all_are_added.set_value();
    EXPECT_EQ(FailureOf(pool), "first");
  }
}

TEST(WorkPool, ThrowsAFailureOfAThreadToWhoAddsMore) {
  WorkPool pool(1);
  const auto add_many = [&] {
    for (int i = 0; i < 10'000; ++i) {
      pool.Add(100 * kMegabyte, [] { throw std::runtime_error("failed"); });
    }
  };
  EXPECT_THROW(add_many(), std::runtime_error);
}

TEST(WorkPool, WorksOnAfterAFailureOfAThread) {
  WorkPool pool(2);
  pool.Add(100 * kMegabyte, [] { throw std::runtime_error("failed"); });
  EXPECT_EQ(FailureOf(pool), "failed");
  EXPECT_EQ(FailureOf(pool), "");
  bool is_done = false;
  pool.Add(100 * kMegabyte, [&] { is_done = true; });
  pool.Finish();
  EXPECT_TRUE(is_done);
}

// The only thread is busy until the pool has let go of the work behind.
TEST(WorkPool, GivesUpWorkThatNoThreadHasBegun) {
  std::atomic<int> begun = 0;
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watched = held;
  {
    WorkPool pool(1);
    std::promise<void> is_running;
    pool.Add(1, [&] {
      is_running.set_value();
      while (!watched.expired()) {
        std::this_thread::yield();
      }
    });
    is_running.get_future().wait();
    for (int i = 0; i < 5; ++i) {
      pool.Add(1, [&begun, held] { ++begun; });
    }
    held.reset();
  }
  EXPECT_EQ(begun, 0);
  EXPECT_TRUE(watched.expired());
}

TEST(WorkPool, LetsGoOfWorkBeforeItsThreadTakesMore) {
  const auto held = std::make_shared<int>(0);
  WorkPool pool(1);
  for (int i = 0; i < 20; ++i) {
    pool.Add(100 * kMegabyte, [held] {});
    EXPECT_LE(held.use_count(), 2);
  }
  pool.Finish();
  EXPECT_EQ(held.use_count(), 1);
}

TEST(WorkPool, FinishesWithoutWork) {
  WorkPool pool;
  pool.Finish();
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
