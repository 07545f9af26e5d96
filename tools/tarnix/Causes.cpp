#include "Causes.h"

#include <array>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TarnixTools::cli {
namespace {

// From `code` of this engine on.
struct Row {
  std::uint32_t code;
  const char* cause;
  const char* cure;
};

constexpr const char* kOwnFault = "a fault of the program's own";
constexpr const char* kOwnFaultCure = "report it, with the document";
constexpr const char* kCannotRead = "the file cannot be read";
constexpr const char* kCannotReadCure = "look at the file's permissions and at the disk it is on";
constexpr const char* kCannotWrite = "the output cannot be written to its end";
constexpr const char* kCannotWriteCure = "make room on the disk";
constexpr const char* kNotAPdf = "not a PDF document";
constexpr const char* kNotAPdfCure = "give a PDF document";
constexpr const char* kNoPages = "no page can be found in it";
constexpr const char* kNoPagesCure = "try `tarnix repair`";
constexpr const char* kSecurity = "its encryption is of a kind that is not known";
constexpr const char* kSecurityCure = "take the encryption off with the program that put it on";
constexpr const char* kDamagedSecurity = "what it says of its encryption is damaged";
constexpr const char* kDamagedSecurityCure = "get another copy of the document";
constexpr const char* kLimit = "it passes a limit";
constexpr const char* kLimitCure = "limits.md lists them all; none is met by ordinary documents";
constexpr const char* kFilter = "data in it cannot be decoded";
constexpr const char* kChanged = "the file became shorter while it was read";
constexpr const char* kChangedCure = "try again when nobody writes to it";
constexpr const char* kArgument = "a value makes no sense here";
constexpr const char* kArgumentCure = "look at `--help` of the job";
constexpr const char* kMemory = "out of memory";
constexpr const char* kMemoryCure = "close other programs, or cut the document";
constexpr const char* kCannotOpen = "the file cannot be opened";
constexpr const char* kCannotCreate = "the output cannot be created";
constexpr const char* kCannotCreateCure = "look at the permissions of its directory";
constexpr const char* kPassword = "the password is missing or wrong";
constexpr const char* kPasswordCure = "give it with `--password` or `--password-file`";
constexpr const char* kNoRenderer = "PDFium is not installed: libreoffice-core-nogui";
constexpr const char* kNoRendererCure = "install that package";
constexpr const char* kNoFontLibrary =
    "a library is not installed: libfontconfig1 libfreetype6 libharfbuzz0b libharfbuzz-subset0 "
    "libfribidi0";
constexpr const char* kNoFontLibraryCure = "install these packages";

constexpr Row kToolbox[] = {
    {1, kOwnFault, kOwnFaultCure},
    {2, kCannotRead, kCannotReadCure},
    {3, kCannotWrite, kCannotWriteCure},
    {4, kNotAPdf, kNotAPdfCure},
    {5, kNoPages, kNoPagesCure},
    {6, kSecurity, kSecurityCure},
    {7, kDamagedSecurity, kDamagedSecurityCure},
    {8, kLimit, kLimitCure},
    {9, kFilter, kNoPagesCure},
    {10, kChanged, kChangedCure},
    {11, kArgument, kArgumentCure},
    {12, kMemory, kMemoryCure},
    {13, "neither the font nor Arial is installed: fonts-liberation", "install that package"},
    {14, "the font may not be embedded", "take another font"},
    {15, "no installed font has a character of the text", "install a font that has it"},
    {16, "not an image that can be read", "give JPEG, JPEG 2000, PNG, TIFF, GIF, BMP, PNM or WebP"},
    {17, kPassword, kPasswordCure},
    {18, kNoFontLibrary, kNoFontLibraryCure},
};

constexpr Row kRewriting[] = {
    {1, kOwnFault, kOwnFaultCure},
    {2, kCannotRead, kCannotReadCure},
    {3, kCannotWrite, kCannotWriteCure},
    {4, kNotAPdf, kNotAPdfCure},
    {5, kNoPages, kNoPagesCure},
    {6, kSecurity, kSecurityCure},
    {7, kDamagedSecurity, kDamagedSecurityCure},
    {8, kLimit, kLimitCure},
    {9, kFilter, kNoPagesCure},
    {10, kChanged, kChangedCure},
    {11, kArgument, kArgumentCure},
    {12, kMemory, kMemoryCure},
    {13, kCannotOpen, kCannotReadCure},
    {14, kCannotCreate, kCannotCreateCure},
    {17, kPassword, kPasswordCure},
};

constexpr Row kImages[] = {
    {1, kOwnFault, kOwnFaultCure},
    {2, kCannotRead, kCannotReadCure},
    {3, kCannotWrite, kCannotWriteCure},
    {4, "not an image", "give JPEG, JPEG 2000, PNG, TIFF, GIF, BMP, PNM or WebP"},
    {5, "an image of a kind that cannot be read, or whose library is not installed",
     "store it in another format, or install libjpeg62-turbo libtiff6 libopenjp2-7 libwebp7"},
    {6, "the image is damaged", "get another copy of it"},
    {8, kLimit, kLimitCure},
    {10, kChanged, kChangedCure},
    {11, "a value makes no sense here, such as a margin that leaves no space", kArgumentCure},
    {12, kMemory, kMemoryCure},
    {13, kCannotOpen, kCannotReadCure},
    {14, kCannotCreate, kCannotCreateCure},
};

constexpr Row kParser[] = {
    {1, kOwnFault, kOwnFaultCure},
    {2, kCannotRead, kCannotReadCure},
    {3, kNotAPdf, kNotAPdfCure},
    {4, kNoPages, kNoPagesCure},
    {5, kSecurity, kSecurityCure},
    {6, kLimit, kLimitCure},
    {7, kArgument, kArgumentCure},
    {8, kMemory, kMemoryCure},
    {9, "nothing of the image can be read", kNoPagesCure},
    {10, kCannotCreate, kCannotCreateCure},
    {11, kCannotWrite, kCannotWriteCure},
    {12, "the document has no XMP packet",
     "none is needed: `tarnix xmp` writes one that says nothing"},
    {13, "its XMP packet cannot be decoded, or is too large", kNoPagesCure},
    {17, kPassword, kPasswordCure},
};

constexpr Row kValidator[] = {
    {1, kOwnFault, kOwnFaultCure},  {2, kCannotRead, kCannotReadCure},
    {3, kNotAPdf, kNotAPdfCure},    {4, kNoPages, kNoPagesCure},
    {5, kSecurity, kSecurityCure},  {6, kDamagedSecurity, kDamagedSecurityCure},
    {7, kLimit, kLimitCure},        {8, kFilter, kNoPagesCure},
    {9, kChanged, kChangedCure},    {10, kArgument, kArgumentCure},
    {11, kMemory, kMemoryCure},     {12, kCannotOpen, kCannotReadCure},
    {17, kPassword, kPasswordCure},
};

constexpr Row kRasteriser[] = {
    {0x80410101, kOwnFault, kOwnFaultCure},
    {0x80410102, kMemory, kMemoryCure},
    {0x80410103, kArgument, kArgumentCure},
    {0x80410104, kNoRenderer, kNoRendererCure},
    {0x80410110, kCannotRead, kCannotReadCure},
    {0x80410111, "not a PDF document, or damaged beyond reading",
     "give a PDF document, or try `tarnix repair`"},
    {0x80410112, kPassword, kPasswordCure},
    {0x80410120, "the page cannot be loaded", kNoPagesCure},
    {0x80410121, "the image would have more than 65,500 pixels on a side", "lower `--dpi`"},
    {0x80410122, "part of the page is left out", kNoPagesCure},
    {0x80410130, kCannotCreate, kCannotCreateCure},
    {0x80410131, kCannotWrite, kCannotWriteCure},
};

constexpr Row kConverter[] = {
    {1, kOwnFault, kOwnFaultCure},
    {2, kCannotRead, kCannotReadCure},
    {3, kCannotWrite, kCannotWriteCure},
    {4, kNotAPdf, kNotAPdfCure},
    {5, kNoPages, kNoPagesCure},
    {6, kSecurity, kSecurityCure},
    {7, kDamagedSecurity, kDamagedSecurityCure},
    {8, kLimit, kLimitCure},
    {9, kFilter, kNoPagesCure},
    {10, kChanged, kChangedCure},
    {11, kArgument, kArgumentCure},
    {12, kMemory, kMemoryCure},
    {13, kCannotOpen, kCannotReadCure},
    {14, kCannotCreate, kCannotCreateCure},
    {15, "no level of PDF/A can be reached", "mend what the lines behind the message name"},
    {16, "its XMP packet cannot be read", kNoPagesCure},
    {17, kPassword, kPasswordCure},
    {18, kNoRenderer, kNoRendererCure},
    {19, kNoFontLibrary, kNoFontLibraryCure},
    {0x83410540, "the level cannot be reached", "allow a lower one with `--allow-downgrade`"},
};

constexpr Row kOffice[] = {
    {1, "the conversion was cancelled", "run it again"},
    {2, "a library that it needs is missing, or a fault of the program's own",
     "install what README.md names for `office`, or report it with the document"},
    {3, kCannotOpen, kCannotReadCure},
    {4, kNotAPdf, kNotAPdfCure},
    {5, kCannotWrite, kCannotWriteCure},
    {6, "the output is there already", "take another name"},
    {7, kMemory, kMemoryCure},
    {8, kArgument, kArgumentCure},
    {9, "libtarnixoffice.so is missing or of another version",
     "install it beside the library of the program"},
    {10, kPassword, kPasswordCure},
    {11, kNoFontLibrary, kNoFontLibraryCure},
    {15, "the document has no tables", "convert it to `docx`"},
};

struct EngineRows {
  EngineName engine;
  const char* title;
  std::span<const Row> rows;
};

constexpr std::array<EngineRows, 8> kEngines = {{
    {EngineName::Toolbox, "Documents and page copies", kToolbox},
    {EngineName::Rewriting, "`compress`, `repair` and `check`", kRewriting},
    {EngineName::Images, "`img2pdf`", kImages},
    {EngineName::Parser, "`extract-images` and `xmp`", kParser},
    {EngineName::Validator, "`validate`", kValidator},
    {EngineName::Rasteriser, "`pdf2img`", kRasteriser},
    {EngineName::Converter, "`pdfa`", kConverter},
    {EngineName::Office, "`office` and `scan-check`", kOffice},
}};

const Row* FindRow(EngineName engine, std::uint32_t code) {
  for (const EngineRows& rows : kEngines) {
    for (const Row& row : rows.rows) {
      if (rows.engine == engine && row.code == code) {
        return &row;
      }
    }
  }
  return nullptr;
}

// What the system says of a file that cannot be opened; never waits for one.
std::string SystemCause(const std::string& path) {
  struct stat file {};

  const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0 || fstat(descriptor, &file) != 0) {
    return std::strerror(errno);
  }
  close(descriptor);
  return S_ISDIR(file.st_mode)    ? std::strerror(EISDIR)
         : !S_ISREG(file.st_mode) ? "not a regular file"
                                  : "";
}

// The files that the command line names to be read.
std::vector<std::string> FilesToRead(const Command& command, const std::vector<Input>& inputs) {
  std::vector<std::string> files;
  for (const Input& input : inputs) {
    if (input.given != "-") {
      files.push_back(input.path);
    }
  }
  for (const OptionRow* row : ShownOptions(*command.job)) {
    if (row->kind == ValueKind::File && command.values.Has(row->name)) {
      files.push_back(command.values.Text(row->name));
    }
  }
  return files;
}

bool Names(const std::string& message, const std::string& path) {
  return message.find("[" + path + "]") != std::string::npos || message.ends_with(" " + path);
}

// Whether the message has something in brackets that is no code.
bool NamesSomething(const std::string& message) {
  for (std::size_t at = message.find('['); at != std::string::npos;
       at = message.find('[', at + 1)) {
    if (at + 1 < message.size() && std::isdigit(static_cast<unsigned char>(message[at + 1])) == 0) {
      return true;
    }
  }
  return false;
}

// What the system says of the file that the message is about; of the only input where it names none.
std::string CauseInSystem(const Command& command, const std::string& message,
                          const std::vector<Input>& inputs) {
  if (message.starts_with("Unable to create new file") ||
      message.starts_with("Unable to create output directory")) {
    return "";
  }
  for (const std::string& path : FilesToRead(command, inputs)) {
    if (Names(message, path)) {
      return SystemCause(path);
    }
  }
  const bool is_told = inputs.size() != 1 || inputs.front().given == "-" || NamesSomething(message);
  return is_told ? "" : SystemCause(inputs.front().path);
}

// Whose code it is: a job opens its document by the first engine, whichever comes after.
EngineName EngineOf(const Job& job, const std::string& message) {
  return message.find("(engine error [") != std::string::npos ? EngineName::Toolbox : job.engine;
}

std::string CodeText(std::uint32_t code) {
  char text[16];
  std::snprintf(text, sizeof text, code > 0xFFFF ? "0x%08X" : "%u", static_cast<unsigned>(code));
  return text;
}

std::string CauseOf(const Command& command, const Failure& failure,
                    const std::vector<Input>& inputs) {
  const bool can_have_cause =
      failure.code == PdfExceptionCode::FileNotFound || failure.engine_code != 0;
  if (failure.is_usage || failure.code == PdfExceptionCode::PasswordError || !can_have_cause) {
    return "";
  }
  if (failure.system_error != 0) {
    return std::strerror(failure.system_error);
  }
  if (std::string cause = CauseInSystem(command, failure.message, inputs); !cause.empty()) {
    return cause;
  }
  const auto code = static_cast<std::uint32_t>(failure.engine_code);
  const Row* row = FindRow(EngineOf(*command.job, failure.message), code);
  if (row == nullptr) {
    row = FindRow(EngineName::Toolbox, code);
  }
  return row != nullptr ? row->cause : "";
}

}  // namespace

Failure CurrentFailureOn(const Command& command, const std::vector<Input>& inputs) {
  Failure failure = CurrentFailure();
  failure.cause = CauseOf(command, failure, inputs);
  for (const Input& input : inputs) {
    const std::size_t at = failure.message.find(input.path);
    if (input.path != input.given && input.given == "-" && at != std::string::npos) {
      failure.message.replace(at, input.path.size(), "standard input");
    }
  }
  return failure;
}

std::string ErrorTable() {
  std::string text =
      "# Errors\n\n"
      "A failed job prints `tarnix: CodeName: message (cause)`. Where the system has refused "
      "something, the cause is in its words, as in `No space left on device`, and a program gets "
      "its "
      "number from `PdfException::GetSystemError()`. Else it comes from the code of the engine "
      "that "
      "failed, which `--json` shows as `engineCode` and a program gets from "
      "`PdfException::GetErrorCode()`. `tarnix errors` writes this page.\n";
  for (const EngineRows& engine : kEngines) {
    text += "\n## " + std::string(engine.title) + "\n\n| code | cause | cure |\n|---|---|---|\n";
    for (const Row& row : engine.rows) {
      text += "| " + CodeText(row.code) + " | " + row.cause + " | " + row.cure + " |\n";
    }
  }
  return text;
}

}  // namespace TarnixTools::cli
