#include "Passwords.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

#include "PdfDoc.h"
#include "PdfException.h"
#include "Streams.h"
#include "Terminal.h"

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
  FilePtr file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
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

bool Opens(const std::string& password, const Input& input) {
  try {
    return PdfDoc::IsValidPassword(input.path, password);
  } catch (const PdfException&) {
    return false;
  }
}

bool NeedsPassword(const Input& input) {
  try {
    return PdfDoc::HasPassword(input.path);
  } catch (const PdfException&) {
    return false;
  }
}

}  // namespace

Passwords::Passwords(const Command& command) : values_(command.values) {
  if (!command.job->reads_documents) {
    return;
  }
  given_ = values_.All("password");
  for (const std::string& path : values_.All("password-file")) {
    given_.push_back(ReadPassword(path));
  }
  if (const char* of_environment = std::getenv("TARNIX_PASSWORD");
      given_.empty() && of_environment != nullptr) {
    given_.emplace_back(of_environment);
  }
}

const std::string& Passwords::For(const Input& input) {
  const auto [found, is_new] = of_input_.try_emplace(input.path);
  if (is_new && !given_.empty()) {
    found->second = given_.front();
    for (std::size_t i = 0; given_.size() > 1 && i < given_.size(); ++i) {
      if (Opens(given_[i], input)) {
        found->second = given_[i];
        break;
      }
    }
  }
  return found->second;
}

const std::string& Passwords::OfOption(const std::string& name) {
  const auto [found, is_new] = of_option_.try_emplace(name);
  if (is_new && values_.Has(name)) {
    found->second = values_.Text(name);
  } else if (is_new && values_.Has(name + "-file")) {
    found->second = ReadPassword(values_.Text(name + "-file"));
  }
  return found->second;
}

bool Passwords::AskFor(const std::vector<Input>& inputs) {
  bool has_asked = false;
  if (!given_.empty()) {
    return false;
  }
  for (const Input& input : inputs) {
    if (!of_input_[input.path].empty() || !NeedsPassword(input)) {
      continue;
    }
    const std::optional<std::string> password =
        AskOnTerminal("Password for " + OneLine(input.given) + ": ");
    if (!password) {
      return has_asked;
    }
    of_input_[input.path] = *password;
    has_asked = true;
  }
  return has_asked;
}

}  // namespace TarnixTools::cli
