#include "JobContext.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "PdfException.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

// Bounds what is read from a password file that is no such thing.
constexpr std::size_t kMaxPasswordLength = 4096;

struct FileCloser {
  void operator()(std::FILE* file) const noexcept {
    if (file != stdin) {
      std::fclose(file);
    }
  }
};

using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

FilePtr OpenPasswordFile(const std::string& path) {
  FilePtr file(path == "-" ? stdin : std::fopen(NativePath(path).c_str(), "rb"));
  if (!file) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to open password file [%s]",
                       path.c_str());
  }
  return file;
}

// The first line of the file, without its line end; the next line of standard input for "-".
std::string ReadPassword(const std::string& path) {
  const FilePtr file = OpenPasswordFile(path);
  std::string password;
  int byte = std::fgetc(file.get());
  if (byte == EOF) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "No password in file [%s]",
                       path.c_str());
  }
  for (; byte != EOF && byte != '\n'; byte = std::fgetc(file.get())) {
    if (password.size() == kMaxPasswordLength) {
      throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Password in file [%s] is too long",
                         path.c_str());
    }
    password += static_cast<char>(byte);
  }
  if (password.ends_with('\r')) {
    password.pop_back();
  }
  return password;
}

// The password given as such or by file; the fallback when neither was.
std::string GivenPassword(const OptionValues& options, const std::string& name,
                          const char* fallback) {
  if (options.Has(name)) {
    return options.Text(name);
  }
  if (options.Has(name + "-file")) {
    return ReadPassword(options.Text(name + "-file"));
  }
  return fallback == nullptr ? "" : fallback;
}

}  // namespace

JobContext::JobContext(const Command& command)
    : command_(command),
      password_(GivenPassword(command.values, "password", std::getenv("TARNIX_PASSWORD"))),
      out_password_(GivenPassword(command.values, "out-password", nullptr)) {}

const std::string& JobContext::ReadOutPassword(const std::string& name) {
  out_password_ = GivenPassword(Options(), name, nullptr);
  return out_password_;
}

std::vector<PdfDoc> JobContext::Documents() const {
  std::vector<PdfDoc> documents;
  documents.reserve(Inputs().size());
  for (const std::string& path : Inputs()) {
    documents.push_back(DocumentOf(path));
  }
  return documents;
}

std::string JobContext::OutputDirectory() const {
  return Options().Has("out-dir") ? MakeOutputDirectory() : "";
}

std::string JobContext::MakeOutputDirectory() const {
  return MakeDirectory(Options().Text("out-dir"));
}

std::string JobContext::MakeDirectory(const std::string& path) {
  const std::string directory = NativePath(path);
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0,
                       "Unable to create output directory [%s] (%s)", directory.c_str(),
                       error.message().c_str());
  }
  return directory;
}

}  // namespace TarnixTools::cli
