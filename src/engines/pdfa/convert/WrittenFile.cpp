#include "engines/pdfa/convert/WrittenFile.h"

#include <cstdio>
#include <optional>
#include <utility>

#include "engines/pdfa/convert/ConverterFailure.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::pdfa {

namespace {

platform::OutputFile CreateFile(const platform::WidePath& path) {
  std::optional<platform::OutputFile> file = platform::OutputFile::Create(path);
  if (!file) {
    throw ConverterFailure(kConverterCreateError);
  }
  return std::move(*file);
}

}  // namespace

pdf::RewriteOptions RewriteOptionsFor(Level level) {
  pdf::RewriteOptions options;
  options.version = "1.7";
  options.keeps_id = true;
  if (PartOf(level) == 1) {
    options.layout = pdf::FileLayout::kTable;
    options.version = "1.4";
  }
  return options;
}

WrittenFile::WrittenFile(const platform::WidePath& path)
    : output_(CreateFile(path)), stream_(output_.TakeStream()), sink_(stream_.get()) {}

void WrittenFile::Complete() {
  if (std::fclose(stream_.release()) != 0 || !output_.Commit()) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the file cannot be completed");
  }
}

}  // namespace TarnixTools::engines::pdfa
