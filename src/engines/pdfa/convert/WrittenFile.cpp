#include "engines/pdfa/convert/WrittenFile.h"

#include <cerrno>
#include <optional>
#include <utility>

#include "engines/pdfa/convert/ConverterFailure.h"

namespace TarnixTools::engines::pdfa {

namespace {

platform::OutputFile CreateFile(const platform::WidePath& path) {
  std::optional<platform::OutputFile> file = platform::OutputFile::Create(path);
  if (!file) {
    throw ConverterFailure(kConverterCreateError, errno);
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

WrittenFile::WrittenFile(const platform::WidePath& path) : SavedFile(CreateFile(path)) {}

}  // namespace TarnixTools::engines::pdfa
