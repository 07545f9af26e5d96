#include "Img2PdfTask.h"

#include <algorithm>
#include <set>
#include <utility>

#include "PdfCommonUtils.h"
#include "PdfException.h"
#include "conversions/DocumentNames.h"
#include "conversions/Img2PdfHandle.h"
#include "foundation/JobWatch.h"
#include "foundation/Platform.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

constexpr std::uint32_t kAllPermissions = 0xFFFFFFFF;

[[noreturn]] void ThrowConversionFailed(engines::TImg2Pdf* object, const std::string& image_path) {
  const std::int32_t code = engines::Img2PdfGetErrorCode(object);
  throw PdfException(PdfExceptionCode::EngineError, code,
                     "Error 0x%08X while creating PDF document from img [%s]",
                     static_cast<unsigned>(code), image_path.c_str());
}

void NoteCut(void* handle, const platform::WidePath& /*path*/) {
  *static_cast<bool*>(handle) = true;
}

void SetUpPage(engines::TImg2Pdf* object, Img2PdfPageSize size, Img2PdfOrientation orientation) {
  if (size == Img2PdfPageSize::Img2PdfPageFit) {
    engines::Img2PdfSetAdjustPage(object, 1);
    return;
  }
  if (size == Img2PdfPageSize::Img2PdfPageA4) {
    engines::Img2PdfSetPageSize(object, 595.0, 842.0);
  } else if (size == Img2PdfPageSize::Img2PdfPageLetter) {
    engines::Img2PdfSetPageSize(object, 612.0, 792.0);
  }
  if (orientation == Img2PdfOrientation::Img2PdfLandscape) {
    engines::Img2PdfSetPageSize(object, 842.0, 595.0);
  }
  engines::Img2PdfSetCenterImage(object, 1);
  engines::Img2PdfSetFitImage(object, 1);
}

}  // namespace

Img2PdfTask::Img2PdfTask() {
  SetDefaults();
}

Img2PdfTask::Img2PdfTask(const std::string& image_path) {
  SetDefaults();
  SetInputImage(image_path);
}

Img2PdfTask::Img2PdfTask(const std::list<std::string>& image_paths) {
  SetDefaults();
  SetInputImages(image_paths);
}

Img2PdfTask::Img2PdfTask(const Img2PdfTask& other) = default;
Img2PdfTask::Img2PdfTask(Img2PdfTask&& other) noexcept = default;
Img2PdfTask& Img2PdfTask::operator=(const Img2PdfTask& other) = default;
Img2PdfTask& Img2PdfTask::operator=(Img2PdfTask&& other) noexcept = default;
Img2PdfTask::~Img2PdfTask() = default;

void Img2PdfTask::AddInputImage(const std::string& path) {
  if (platform::OpenForReading(path) == nullptr) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "File not found: %s", path.c_str());
  }
  // Compared before slashes are replaced: a path with slashes is no duplicate of itself.
  if (std::find(input_images_.begin(), input_images_.end(), path) != input_images_.end()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Duplicated file in task: %s",
                       path.c_str());
  }
  std::string& stored = input_images_.emplace_back(path);
  std::replace(stored.begin(), stored.end(), '/', '\\');
}

void Img2PdfTask::SetInputImage(const std::string& path) {
  input_images_.clear();
  AddInputImage(path);
}

void Img2PdfTask::SetInputImages(const std::list<std::string>& paths) {
  // They may be the task's own. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
  const std::list<std::string> copies = paths;
  input_images_.clear();
  for (const std::string& path : copies) {
    AddInputImage(path);
  }
}

int Img2PdfTask::GetImagesNum() const {
  return static_cast<int>(input_images_.size());
}

void Img2PdfTask::SetImgRotation(Img2PdfImgRotation rotation) {
  image_rotation_ = rotation;
  switch (rotation) {
    case Img2PdfImgRotation::Img2PdfRot180:
      engine_orientation_ = 3;
      break;
    case Img2PdfImgRotation::Img2PdfRot90:
      engine_orientation_ = 6;
      break;
    case Img2PdfImgRotation::Img2PdfRot270:
      engine_orientation_ = 8;
      break;
    default:
      break;  // the turn set before carries over
  }
}

void Img2PdfTask::SetOutPrefix(const std::string& prefix) {
  if (!prefix.empty()) {
    out_prefix_ = prefix;
  }
}

void Img2PdfTask::SetOutPdfName(const std::string& name) {
  out_pdf_name_ = name;
}

void Img2PdfTask::Execute() {
  RunJob("images to PDF", [this] { Run(); });
}

void Img2PdfTask::Run() {
  if (input_images_.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "None image defined to convert to PDF");
  }
  written_documents_.clear();
  if (merge_after_ && WriteJoined()) {
    return;
  }
  if (!merge_after_) {
    ConvertImages();
    return;
  }
  try {
    ConvertImages();
    JoinDocuments();
  } catch (...) {
    if (JobWatch::IsCancelled()) {
      DropUnjoined();
    }
    throw;
  }
  for (PdfDoc& document : converted_docs_) {
    if (document.GetPath() != written_files_.front()) {
      PdfDoc::Delete(document);
    }
  }
}

void Img2PdfTask::JoinDocuments() {
  if (converted_docs_.empty()) {
    throw PdfException(PdfExceptionCode::InternalError, 0,
                       "None PDF doc obtained from input images");
  }
  const PdfDoc merged(MergedPath(), out_password_, false);
  PdfReport merging;
  PdfDoc::Merge(converted_docs_, merged.GetPath(), out_password_, &merging);
  report_.Add(merging);
  NoteJoined(merged.GetPath());
}

// The pages go straight into the joined document. They are those that documents of the single images
// would have, but every picture is written once, and not twice and read in between. After a failure
// there is nothing, and documents of the single images show how far they come.
bool Img2PdfTask::WriteJoined() {
  const std::set<std::string> different(input_images_.begin(), input_images_.end());
  if (!converted_docs_.empty() || different.size() != input_images_.size() ||
      different.contains("") || !out_password_.empty()) {
    return false;
  }
  DocumentNames names(true);
  int number = 0;
  for (const std::string& image_path : input_images_) {
    converted_docs_.emplace_back(names.Take(DocumentPath(image_path, ++number), image_path), "",
                                 false);
  }
  const PdfDoc merged(MergedPath(), "", false);
  try {
    Convert(input_images_, merged.GetPath());
  } catch (PdfException&) {
    converted_docs_.clear();
    return false;
  }
  NoteJoined(merged.GetPath());
  return true;
}

void Img2PdfTask::NoteJoined(const std::string& path) {
  written_documents_ = {path};
  written_files_ = {path};
}

// The documents of single images that this run has made for one that was not made of them.
void Img2PdfTask::DropUnjoined() {
  for (const std::string& path : written_documents_) {
    platform::RemoveFile(path);
  }
  converted_docs_.remove_if([&](const PdfDoc& document) {
    return std::find(written_documents_.begin(), written_documents_.end(), document.GetPath()) !=
           written_documents_.end();
  });
  written_documents_.clear();
  written_files_.clear();
}

// Documents that are deleted after the merge must not take the place of others meanwhile.
void Img2PdfTask::ConvertImages() {
  DocumentNames names(merge_after_);
  for (const PdfDoc& document : converted_docs_) {
    names.AllowReplacing(document.GetPath());
  }
  JobSteps steps(GetImagesNum());
  int number = 0;
  for (const std::string& image_path : input_images_) {
    const std::string path = names.Take(DocumentPath(image_path, ++number), image_path);
    ConvertImg2Pdf(image_path, path);
    written_documents_.push_back(path);
    written_files_.push_back(path);
    steps.Done();
  }
}

void Img2PdfTask::ConvertImg2Pdf(const std::string& image_path, const std::string& document_path) {
  if (image_path.empty()) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0,
                       "Could not convert image to PDF, empty image path");
  }
  Convert({image_path}, document_path);
  converted_docs_.emplace_back(document_path, out_password_, true);
}

void Img2PdfTask::Convert(const std::list<std::string>& image_paths,
                          const std::string& document_path) {
  PdfReport found;
  const Img2PdfHandle handle;
  engines::TImg2Pdf* object = handle.Get();
  if (object == nullptr) {
    throw PdfException(PdfExceptionCode::EngineError, engines::Img2PdfGetErrorCode(nullptr),
                       "NULL IMG2PDF object");
  }
  const std::wstring password = Utf8ToWide(out_password_);
  if (engines::Img2PdfCreateW(object, platform::WidePath(document_path), password, password,
                              kAllPermissions) == 0) {
    ThrowConversionFailed(object, image_paths.front());
  }
  SetUpPage(object, page_size_, orientation_);
  engines::Img2PdfSetOrientation(object, engine_orientation_);
  engines::Img2PdfSetUpright(object, make_upright_ ? 1 : 0);
  if (margin_ != 0.0F) {
    engines::Img2PdfSetBorderSize(object, margin_);
  }
  JobSteps steps(static_cast<std::int64_t>(image_paths.size()));
  bool is_cut = false;
  engines::Img2PdfSetReport(object, &NoteCut, &is_cut);
  for (const std::string& image_path : image_paths) {
    if (engines::Img2PdfCreatePageFromImageW(object, platform::WidePath(image_path)) == 0) {
      ThrowConversionFailed(object, image_path);
    }
    if (std::exchange(is_cut, false)) {
      found.Add({.kind = PdfReportKind::Damage,
                 .outcome = PdfReportOutcome::Dropped,
                 .count = 1,
                 .page = 0,
                 .reason = "part of a picture cannot be read and is empty",
                 .source = image_path});
    }
    steps.Done();
  }
  if (engines::Img2PdfClose(object) == 0) {
    ThrowConversionFailed(object, image_paths.back());
  }
  report_.Add(found);
}

void Img2PdfTask::SetDefaults() {
  orientation_ = Img2PdfOrientation::Img2PdfPortrait;
  page_size_ = Img2PdfPageSize::Img2PdfPageFit;
  image_rotation_ = Img2PdfImgRotation::Img2PdfRotNone;
  engine_orientation_ = 1;
  input_images_.clear();
  converted_docs_.clear();
  out_prefix_.clear();
  out_pdf_name_.clear();
  name_pattern_.clear();
  margin_ = 0.0F;
  merge_after_ = true;
  make_upright_ = false;
  output_path_.clear();
}

std::string Img2PdfTask::DocumentPath(const std::string& image_path, int number) const {
  const std::size_t separator = image_path.rfind('\\');
  const std::size_t name_start = separator == std::string::npos ? 0 : separator + 1;
  const std::string name = image_path.substr(name_start);
  const std::string stem = name.substr(0, name.rfind('.'));
  if (!name_pattern_.empty()) {
    const std::string directory =
        output_path_.empty() ? image_path.substr(0, name_start) : output_path_;
    return directory + PdfCommonUtils::FormName(name_pattern_, stem, number);
  }
  return output_path_.empty() ? image_path + ".pdf" : output_path_ + stem + ".pdf";
}

std::string Img2PdfTask::MergedPath() const {
  const std::string directory =
      output_path_.empty() ? converted_docs_.front().GetDocDirectory() : output_path_;
  if (!out_pdf_name_.empty()) {
    return directory + out_pdf_name_;
  }
  return directory + (out_prefix_.empty() ? "_merged_images" : out_prefix_) + ".pdf";
}

}  // namespace TarnixTools
