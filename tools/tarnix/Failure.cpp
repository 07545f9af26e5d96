#include "Failure.h"

#include "NearestWord.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

// One message of the library shows the password, up to where it was cut.
std::string WithoutPassword(const std::string& message) {
  constexpr std::string_view kHead = "Invalid password ";
  constexpr std::string_view kTail = "] for PDF file [";
  if (!message.starts_with(std::string(kHead) + "[")) {
    return message;
  }
  const std::size_t tail = message.rfind(kTail);
  return std::string(kHead) +
         (tail == std::string::npos ? "for PDF file" : message.substr(tail + 2));
}

}  // namespace

std::string CodeName(PdfExceptionCode code) {
  switch (code) {
    case PdfExceptionCode::PasswordError:
      return "PasswordError";
    case PdfExceptionCode::NoPages:
      return "NoPages";
    case PdfExceptionCode::InvalidParameter:
      return "InvalidParameter";
    case PdfExceptionCode::FileNotFound:
      return "FileNotFound";
    case PdfExceptionCode::InternalError:
      return "InternalError";
    case PdfExceptionCode::NoImagesFound:
      return "NoImagesFound";
    case PdfExceptionCode::AllPagesScanned:
      return "AllPagesScanned";
    case PdfExceptionCode::ConversionTimeout:
      return "ConversionTimeout";
    case PdfExceptionCode::NoTablesFound:
      return "NoTablesFound";
    case PdfExceptionCode::EngineError:
      return "EngineError";
  }
  return "Error" + std::to_string(static_cast<int>(code));
}

int ExitStatus(const Failure& failure) {
  return failure.is_usage ? kExitUsage : 10 + static_cast<int>(failure.code);
}

Failure CurrentFailure() {
  try {
    throw;
  } catch (PdfException& e) {  // not const: only the non-const what() has the message
    return {.code = e.GetCode(),
            .engine_code = e.GetErrorCode(),
            .message = NativePath(WithoutPassword(e.what())),
            .system_error = e.GetSystemError()};
  } catch (const UsageError& e) {
    return {.message = e.what(), .is_usage = true};
  } catch (const std::bad_alloc&) {
    return {.message = "out of memory"};
  } catch (const std::exception& e) {
    return {.message = e.what()};
  } catch (...) {
    return {.message = "unknown failure"};
  }
}

void PrintFailure(const Failure& failure) {
  const std::string cause = failure.cause.empty() ? "" : " (" + failure.cause + ")";
  WriteError("tarnix: " + CodeName(failure.code) + ": " + OneLine(failure.message + cause) + "\n");
}

std::string UnknownOption(std::string_view word, const std::vector<std::string>& known) {
  const std::string_view name =
      word.starts_with("--") ? word.substr(0, word.find('=')) : word.substr(0, 2);
  return "unknown option " + std::string(name) + (name.size() > 2 ? Suggestion(name, known) : "");
}

int PrintUsageError(std::string_view message, std::string_view command) {
  WriteError("tarnix: " + OneLine(message) + "\nTry '" + std::string(command) + " --help'.\n");
  return kExitUsage;
}

}  // namespace TarnixTools::cli
