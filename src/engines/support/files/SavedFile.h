// A file that a document is saved to: it has its name when it is complete, and may be the one that
// the document is read from.
//
//   SavedFile saved(platform::OutputFile::Create(path).value());
//   rewriter.Write(saved.sink());
//   saved.Complete();
#ifndef TARNIX_ENGINES_SUPPORT_FILES_SAVEDFILE_H_
#define TARNIX_ENGINES_SUPPORT_FILES_SAVEDFILE_H_

#include <cstdint>
#include <utility>

#include "engines/support/files/DiskFile.h"
#include "foundation/Platform.h"
#include "pdf/file/ByteSink.h"
#include "pdf/file/ByteSource.h"

namespace TarnixTools::engines {

class SavedFile {
 public:
  explicit SavedFile(platform::OutputFile output)
      : output_(std::move(output)), stream_(output_.TakeStream()), sink_(stream_.get()) {}

  pdf::ByteSink& sink() { return sink_; }

  // Open, for reading, too; its position is behind what was written.
  std::FILE* file() const { return stream_.get(); }

  // -1 for what is no file.
  std::int64_t size() const { return platform::Tell(stream_.get()); }

  // Takes back what was written. False for what is no file, and has it for good.
  bool Empty() { return platform::Empty(stream_.get()); }

  // Gives the file its name. Throws pdf::Error(kWriteFailed).
  void Complete();

 private:
  platform::OutputFile output_;
  platform::FilePtr stream_;
  DiskSink sink_;
};

// Closes a file that is written, and gives it its name. Throws pdf::Error(kWriteFailed).
void CompleteFile(platform::FilePtr stream, platform::OutputFile& output);

// Throws pdf::Error: kSourceChanged for a source that has become shorter, and what the two throw.
void CopyAll(pdf::ByteSource& source, pdf::ByteSink& sink);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_FILES_SAVEDFILE_H_
