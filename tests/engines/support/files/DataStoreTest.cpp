#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/files/DataStore.h"
#include "support/FileSizeLimit.h"

namespace TarnixTools::engines {
namespace {

// Notes the longest piece that it is given.
class NotingSink : public pdf::StringSink {
 public:
  void Write(std::string_view bytes) override {
    longest_ = std::max(longest_, bytes.size());
    StringSink::Write(bytes);
  }

  std::size_t longest() const { return longest_; }

 private:
  std::size_t longest_ = 0;
};

std::string BytesOf(const StoredData& data) {
  NotingSink sink;
  data.WriteTo(sink);
  EXPECT_EQ(sink.bytes().size(), data.size());
  return sink.Take();
}

TEST(DataStore, KeepsInMemoryUpToItsBound) {
  DataStore store(10);
  EXPECT_FALSE(store.Keep("12345").is_on_disk());
  EXPECT_FALSE(store.Keep("67890").is_on_disk());
  EXPECT_TRUE(store.Keep("1").is_on_disk());
}

TEST(DataStore, GivesBackWhatItWasGiven) {
  DataStore store(10);
  std::vector<StoredData> kept;
  for (int i = 0; i < 20; ++i) {
    kept.push_back(store.Keep("data " + std::to_string(i)));
  }
  for (int i = 20; i-- > 0;) {
    EXPECT_EQ(BytesOf(kept[static_cast<std::size_t>(i)]), "data " + std::to_string(i));
  }
  EXPECT_EQ(BytesOf(kept[3]), "data 3");  // as often as wanted
  EXPECT_EQ(BytesOf(StoredData()), "");
  EXPECT_EQ(BytesOf(store.Keep("")), "");
}

TEST(DataStore, GivesWhatIsOnDiskByBlocks) {
  std::string bytes(1'000'000, '.');
  for (std::size_t i = 0; i < bytes.size(); i += 1000) {
    bytes[i] = static_cast<char>('a' + i / 1000 % 26);
  }
  StoredData data;
  {
    DataStore store(0);
    data = store.Keep(bytes);
  }
  ASSERT_TRUE(data.is_on_disk());  // and outlives the store
  NotingSink sink;
  data.WriteTo(sink);
  EXPECT_TRUE(sink.bytes() == bytes);
  EXPECT_LE(sink.longest(), bytes.size() / 2);
}

TEST(DataStore, KeepsInMemoryWhatTheDiskHasNoRoomFor) {
  DataStore store(0);
  const testing::FileSizeLimit limit(1500);
  const StoredData before = store.Keep(std::string(1000, 'b'));
  const StoredData beyond = store.Keep(std::string(1000, 'x'));
  const StoredData after = store.Keep("after");
  EXPECT_TRUE(before.is_on_disk());
  EXPECT_FALSE(beyond.is_on_disk());
  EXPECT_EQ(BytesOf(before), std::string(1000, 'b'));
  EXPECT_EQ(BytesOf(beyond), std::string(1000, 'x'));
  EXPECT_EQ(BytesOf(after), "after");
}

TEST(DataStore, TakesDataOfSeveralThreads) {
  constexpr std::size_t kThreads = 4;
  constexpr std::size_t kEach = 100;
  DataStore store(5000);
  std::vector<std::vector<StoredData>> kept(kThreads);
  const auto text = [](std::size_t thread, std::size_t i) {
    return std::string(1 + i, static_cast<char>('a' + thread));
  };
  std::vector<std::thread> threads;
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      for (std::size_t i = 0; i < kEach; ++i) {
        kept[thread].push_back(store.Keep(text(thread, i)));
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    for (std::size_t i = 0; i < kEach; ++i) {
      EXPECT_EQ(BytesOf(kept[thread][i]), text(thread, i));
    }
  }
}

}  // namespace
}  // namespace TarnixTools::engines
