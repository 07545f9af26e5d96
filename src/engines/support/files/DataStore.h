// Data that is ready long before it is written: in memory up to a bound, beyond it in a file without a
// name, which is gone when nobody needs it any more.
//
//   DataStore store(std::uint64_t{32} << 20);
//   const StoredData data = store.Keep(std::move(bytes));  // on any thread
//   data.WriteTo(sink);
#ifndef TARNIX_ENGINES_SUPPORT_FILES_DATASTORE_H_
#define TARNIX_ENGINES_SUPPORT_FILES_DATASTORE_H_

#include <cstdint>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines {

// Copies share the data. It may outlive the store.
class StoredData {
 public:
  // No bytes.
  StoredData() = default;

  std::uint64_t size() const { return size_; }

  // Whether it is in the file.
  bool is_on_disk() const { return file_ != nullptr; }

  // Block by block where it is in the file. Throws what the sink throws, and pdf::Error(kReadFailed).
  void WriteTo(pdf::ByteSink& sink) const;

 private:
  friend class DataStore;

  std::uint64_t size_ = 0;
  std::shared_ptr<const std::string> held_;
  std::shared_ptr<std::FILE> file_;
  std::uint64_t offset_ = 0;
};

class DataStore {
 public:
  // most_held: bytes that are kept in memory.
  explicit DataStore(std::uint64_t most_held) : most_held_(most_held) {}

  DataStore(const DataStore&) = delete;
  DataStore& operator=(const DataStore&) = delete;

  // May be called on several threads at once. Data for which there is no room in the file, or no
  // file, is kept in memory, however much it is.
  StoredData Keep(std::string data);

 private:
  bool Append(std::string_view data);

  const std::uint64_t most_held_;
  std::mutex mutex_;
  std::uint64_t held_bytes_ = 0;
  std::shared_ptr<std::FILE> file_;  // made when it is first needed
  std::uint64_t file_bytes_ = 0;
  bool is_file_full_ = false;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_FILES_DATASTORE_H_
