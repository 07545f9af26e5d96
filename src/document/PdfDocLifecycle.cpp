// PdfDoc: paths, opening, creating, closing.
#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

#include "PdfCommonUtils.h"
#include "PdfDoc.h"
#include "PdfException.h"
#include "document/OpenDocument.h"
#include "engines/toolbox/ErrorCodes.h"
#include "engines/toolbox/Toolbox.h"
#include "foundation/Platform.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

[[noreturn]] void ThrowCannotCreate(const std::string& path, int system_error) {
  throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to create new file [%s] (%s)",
                     path.c_str(), platform::ErrorText(system_error).c_str());
}

}  // namespace

PdfDoc::PdfDoc() {
  SetPath("");
}

PdfDoc::PdfDoc(const std::string& path, const std::string& password, bool must_exist) {
  if (path.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Empty path received at PDF doc");
  }
  if (must_exist && !platform::OpenForReading(path)) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "File not found or invalid content: [%s]",
                       path.c_str());
  }
  SetPath(path);
  SetPassword(password);
}

PdfDoc::PdfDoc(const PdfDoc& other) = default;
PdfDoc::PdfDoc(PdfDoc&& other) noexcept = default;
PdfDoc& PdfDoc::operator=(const PdfDoc& other) = default;
PdfDoc& PdfDoc::operator=(PdfDoc&& other) noexcept = default;

PdfDoc::~PdfDoc() {
  Discard();
}

const std::string& PdfDoc::GetDocName(bool with_extension) const {
  return with_extension ? name_with_extension_ : name_;
}

void PdfDoc::SetPath(const std::string& path) {
  if (IsOpen()) {
    return;
  }
  path_ = path;
  std::replace(path_.begin(), path_.end(), '/', '\\');
  const std::size_t separator = path_.rfind('\\');
  const std::size_t name_start = separator == std::string::npos ? 0 : separator + 1;
  directory_ = path_.substr(0, name_start);
  name_with_extension_ = path_.substr(name_start);
  name_ = name_with_extension_.substr(0, name_with_extension_.rfind('.'));
}

void PdfDoc::SetPassword(const std::string& password) {
  if (!IsOpen()) {
    password_ = password;
  }
}

void PdfDoc::Create(bool encrypt) {
  if (IsOpen()) {
    throw PdfException(PdfExceptionCode::InternalError, 0,
                       "Unable to create new file [%s] (already open)", path_.c_str());
  }
  engines::PdfInitialize();
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(path_);
  if (!output) {
    ThrowCannotCreate(path_, errno);
  }
  if (!encrypt) {
    password_.clear();
  }
  engines::TPdfEncryption encryption;
  encryption.user_password = Utf8ToWs(password_);
  encryption.owner_password =
      owner_password_.empty() ? encryption.user_password : Utf8ToWs(owner_password_);
  encryption.permissions = permissions_;
  std::int32_t error = 0;
  open_ = OpenDocument::Create(*std::move(output), encrypt ? &encryption : nullptr, error);
  if (open_ == nullptr) {
    last_error_ = error;
  }
}

void PdfDoc::Delete(PdfDoc& doc) {
  doc.Discard();
  PdfCommonUtils::RemoveFile(doc.path_);
}

bool PdfDoc::HasPassword(const std::string& path) {
  PdfDoc doc(path, "", true);
  doc.Open();
  return doc.last_error_ == engines::kToolboxPasswordError;
}

bool PdfDoc::IsValidPassword(const std::string& path, const std::string& password) {
  PdfDoc doc(path, password, true);
  doc.Open();
  return doc.last_error_ == 0;
}

bool PdfDoc::IsEncrypted() {
  Open();
  if (IsOpen()) {
    const bool is_encrypted = engines::PdfDocumentIsEncrypted(Document()) != 0;
    Close();
    return is_encrypted;
  }
  if (last_error_ != engines::kToolboxPasswordError) {
    RequireOpened();
  }
  return true;
}

std::wstring PdfDoc::Utf8ToWs(const std::string& text) {
  return Utf8ToWide(text);
}

void PdfDoc::Open() {
  if (IsOpen()) {
    return;
  }
  engines::PdfInitialize();
  platform::FilePtr file = platform::OpenForReading(path_);
  if (file == nullptr) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to open file %s", path_.c_str());
  }
  std::int32_t error = 0;
  open_ = OpenDocument::Read(std::move(file), password_, error);
  if (open_ == nullptr) {
    last_error_ = error;
  }
}

void PdfDoc::OpenCheckPassword() {
  Open();
  // The recorded error is judged, not this opening: after a wrong password a document stays
  // refused, also when it has been given the right one.
  RequirePasswordAccepted();
}

void PdfDoc::RequirePasswordAccepted() {
  if (last_error_ == engines::kToolboxPasswordError) {
    Discard();
    throw PdfException(PdfExceptionCode::PasswordError, last_error_,
                       "Invalid password for PDF [%s]", path_.c_str());
  }
}

void PdfDoc::RequireOpened() const {
  if (!IsOpen()) {
    throw PdfException(PdfExceptionCode::EngineError, last_error_,
                       "Unable to open PDF [%s] (engine error [0x%08X])", path_.c_str(),
                       static_cast<unsigned>(last_error_));
  }
}

void PdfDoc::Close() {
  if (open_ == nullptr) {
    return;
  }
  const std::shared_ptr<OpenDocument> closing = std::move(open_);
  const std::optional<OpenDocument::Failure> failure = closing->Close();
  if (!failure) {
    report_.Add(closing->Report());
    return;
  }
  if (failure->system_error != 0) {
    ThrowCannotCreate(path_, failure->system_error);
  }
  throw PdfException(PdfExceptionCode::EngineError, failure->engine_error,
                     "Unable to write PDF [%s] (engine error [0x%08X])", path_.c_str(),
                     static_cast<unsigned>(failure->engine_error));
}

void PdfDoc::Discard() noexcept {
  if (open_ != nullptr) {
    open_->Discard();
    open_.reset();
  }
}

bool PdfDoc::IsOpen() const {
  return Document() != nullptr;
}

engines::TPdfDocument* PdfDoc::Document() const {
  return open_ != nullptr ? open_->Document() : nullptr;
}

engines::TPdfDocument* PdfDoc::GetInternalDoc() {
  OpenCheckPassword();
  return Document();
}

}  // namespace TarnixTools
