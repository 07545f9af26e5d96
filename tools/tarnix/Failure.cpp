#include "Failure.h"

#include "Streams.h"

namespace TarnixTools::cli {

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

int ExitStatus(PdfExceptionCode code) {
  return 10 + static_cast<int>(code);
}

Failure CurrentFailure() {
  try {
    throw;
  } catch (PdfException& e) {  // not const: only the non-const what() has the message
    return {.code = e.GetCode(), .engine_code = e.GetErrorCode(), .message = e.what()};
  } catch (const std::bad_alloc&) {
    return {.message = "out of memory"};
  } catch (const std::exception& e) {
    return {.message = e.what()};
  } catch (...) {
    return {.message = "unknown failure"};
  }
}

void PrintFailure(const Failure& failure) {
  WriteError("tarnix: " + CodeName(failure.code) + ": " + OneLine(failure.message) + "\n");
}

std::string UnknownOption(std::string_view word) {
  const std::string_view name =
      word.starts_with("--") ? word.substr(0, word.find('=')) : word.substr(0, 2);
  return "unknown option " + std::string(name);
}

int PrintUsageError(std::string_view message, std::string_view command) {
  WriteError("tarnix: " + OneLine(message) + "\nTry '" + std::string(command) + " --help'.\n");
  return kExitUsage;
}

}  // namespace TarnixTools::cli
