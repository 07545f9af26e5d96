#include "Input.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "Failure.h"
#include "PdfException.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

constexpr const char* kStandardInput = "-";

bool IsThere(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(path, ignored);
}

Input FromPath(const std::string& path) {
  return {.given = path, .path = path, .stem = StemOf(path), .pages = {}};
}

// A file that is really named with a colon is taken as such.
Input WithPages(const std::string& word) {
  const std::size_t slash = word.rfind('/');
  const std::size_t colon = word.find(".pdf:", slash == std::string::npos ? 0 : slash);
  const std::size_t cut = colon != std::string::npos ? colon + 4 : word.rfind(':');
  const bool has_pages = cut != std::string::npos && cut > 0 && cut + 1 < word.size() &&
                         (slash == std::string::npos || cut > slash) && !IsThere(word);
  if (!has_pages) {
    return FromPath(word);
  }
  Input input = FromPath(word.substr(0, cut));
  input.given = word;
  input.pages = word.substr(cut + 1);
  return input;
}

bool ReadsPasswordFromStandardInput(const OptionValues& values, const Job& job) {
  const auto is_standard_input = [&](std::string_view name) {
    const std::vector<std::string>& files = values.All(name);
    return std::find(files.begin(), files.end(), kStandardInput) != files.end();
  };
  if (job.reads_documents && is_standard_input("password-file")) {
    return true;
  }
  return job.output != OutputKind::None && job.can_protect &&
         is_standard_input("out-password-file");
}

}  // namespace

Inputs::Inputs(const Command& command) {
  for (const std::string& word : command.inputs) {
    RequireNoBackslash("", word);
    if (word != kStandardInput) {
      list_.push_back(command.job->has_page_inputs ? WithPages(word) : FromPath(word));
      continue;
    }
    if (directory_ != nullptr) {
      throw UsageError("standard input can be given once");
    }
    if (ReadsPasswordFromStandardInput(command.values, *command.job)) {
      throw UsageError("standard input cannot be both a document and a password");
    }
    list_.push_back(FromStandardInput());
  }
}

Input Inputs::FromStandardInput() {
  directory_ = std::make_unique<TemporaryDirectory>();
  const std::string path = directory_->Path() + "/stdin.pdf";
  std::ofstream file(path, std::ios::binary);
  CopyStandardInput(file);
  file.close();
  if (!file) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to keep standard input (%s)",
                       std::strerror(errno));
  }
  return {.given = kStandardInput, .path = path, .stem = "stdin", .pages = {}};
}

std::string StemOf(const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  const std::size_t dot = name.rfind('.');
  return dot == 0 ? name : name.substr(0, dot);
}

void RequireNoBackslash(const std::string& what, const std::string& name) {
  if (name.find('\\') != std::string::npos) {
    throw UsageError((what.empty() ? "" : what + ": ") + "'" + name +
                     "': names with a backslash are not taken");
  }
}

}  // namespace TarnixTools::cli
