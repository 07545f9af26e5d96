#include "engines/support/files/SavedFile.h"

#include <cerrno>
#include <cstdio>
#include <utility>
#include <vector>

#include "pdf/Error.h"

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kCopiedBlock = std::size_t{256} << 10;

}  // namespace

void SavedFile::Complete() {
  CompleteFile(std::move(stream_), output_);
}

void CompleteFile(platform::FilePtr stream, platform::OutputFile& output) {
  if (std::fclose(stream.release()) != 0 || !output.Commit()) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the file cannot be completed", errno);
  }
}

void CopyAll(pdf::ByteSource& source, pdf::ByteSink& sink) {
  std::vector<char> block(kCopiedBlock);
  std::uint64_t done = 0;
  while (done < source.Size()) {
    const std::size_t count = source.ReadAt(done, block.data(), block.size());
    if (count == 0) {
      throw pdf::Error(pdf::ErrorCode::kSourceChanged, "the file has become shorter");
    }
    sink.Write({block.data(), count});
    done += count;
  }
}

}  // namespace TarnixTools::engines
