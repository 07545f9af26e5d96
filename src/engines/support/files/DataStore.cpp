#include "engines/support/files/DataStore.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "engines/support/files/DiskFile.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {

void StoredData::WriteTo(pdf::ByteSink& sink) const {
  if (file_ == nullptr) {
    sink.Write(held_ != nullptr ? std::string_view(*held_) : std::string_view());
    return;
  }
  constexpr std::uint64_t kBlock = std::uint64_t{256} << 10;
  DiskSource source(file_);
  std::vector<char> block(static_cast<std::size_t>(std::min(kBlock, size_)));
  for (std::uint64_t done = 0; done < size_;) {
    const auto wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), size_ - done));
    const std::size_t count = source.ReadAt(offset_ + done, block.data(), wanted);
    if (count == 0) {
      throw pdf::Error(pdf::ErrorCode::kReadFailed, "the temporary file has become shorter");
    }
    sink.Write({block.data(), count});
    done += count;
  }
}

StoredData DataStore::Keep(std::string data) {
  const std::lock_guard lock(mutex_);
  StoredData stored;
  stored.size_ = data.size();
  if (data.size() > most_held_ - std::min(most_held_, held_bytes_) && Append(data)) {
    stored.file_ = file_;
    stored.offset_ = file_bytes_ - data.size();
    return stored;
  }
  held_bytes_ += data.size();
  stored.held_ = std::make_shared<const std::string>(std::move(data));
  return stored;
}

// False when it cannot be written; nothing is appended from then on.
bool DataStore::Append(std::string_view data) {
  if (is_file_full_) {
    return false;
  }
  try {
    if (file_ == nullptr) {
      file_ = OpenScratchFile();
      std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    }
    DiskSink(file_.get()).Write(data);
  } catch (const pdf::Error&) {
    is_file_full_ = true;
    return false;
  }
  file_bytes_ += data.size();
  return true;
}

}  // namespace TarnixTools::engines
