#include "engines/support/drawing/DrawnDocument.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engines/support/drawing/DrawingError.h"
#include "engines/support/drawing/DrawingLimits.h"
#include "engines/support/drawing/FieldNesting.h"
#include "engines/support/drawing/RepairedCopy.h"
#include "engines/support/files/DiskFile.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;

constexpr int kDrawingFlags =
    pdfium::kDrawAnnotations | pdfium::kForPrinting | pdfium::kLimitImageCache;

int CountOf(const pdf::PageTree& pages) {
  return static_cast<int>(pages.pages().size());
}

}  // namespace

DrawnDocument::DrawnDocument(const platform::WidePath& path, std::string password)
    : file_(OpenShared(path)), password_(std::move(password)) {
  if (file_ == nullptr) {
    throw DrawingError(DrawingErrorCode::kFile);
  }
  OpenCore();
  OpenPdfium();
}

DrawnDocument::~DrawnDocument() {
  const PdfiumLock pdfium;
  ClosePages();
  pdfium_file_.reset();
}

// What the core cannot read, PDFium may; except that neither can do without the password.
void DrawnDocument::OpenCore() {
  try {
    core_ = pdf::Document::Open(std::make_unique<DiskSource>(file_), password_);
    pages_ = std::make_unique<pdf::PageTree>(*core_);
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    pages_.reset();
    core_.reset();
  }
}

void DrawnDocument::OpenPdfium() {
  bool needs_password = false;
  {
    PdfiumLock pdfium;
    if (!pdfium.is_available()) {
      throw DrawingError(DrawingErrorCode::kNoRenderer);
    }
    pdfium_file_ = OpenFile(pdfium, needs_password);
  }
  const bool is_usable = pdfium_file_ != nullptr &&
                         (pages_ == nullptr || pdfium_file_->page_count() == CountOf(*pages_));
  if (!is_usable && pages_ != nullptr && CountOf(*pages_) > 0) {
    TryRepairedCopy();
  }
  if (pdfium_file_ != nullptr) {
    page_count_ = pdfium_file_->page_count();
  } else if (pages_ == nullptr) {
    throw DrawingError(needs_password ? DrawingErrorCode::kPassword : DrawingErrorCode::kNotAPdf);
  }
}

std::unique_ptr<PdfiumFile> DrawnDocument::OpenFile(PdfiumLock& pdfium, bool& needs_password) {
  std::unique_ptr<PdfiumFile> file = PdfiumFile::Open(
      pdfium, std::make_unique<DiskSource>(file_), is_repaired_ ? "" : password_, needs_password);
  if (file != nullptr && HasForm()) {
    file->OpenForm();
  }
  return file;
}

// Lets PDFium draw a repaired copy; where none can be made, the original stays.
void DrawnDocument::TryRepairedCopy() {
  try {
    UseRepairedCopy();
  } catch (...) {
    if (pdfium_file_ == nullptr) {
      throw;
    }
  }
}

// The copy is written without the lock: PDFium may be needed for an image in it.
void DrawnDocument::UseRepairedCopy() {
  std::shared_ptr<std::FILE> copy = OpenScratchFile();
  DiskSink sink(copy.get());
  WriteRepairedCopy(*core_, *pages_, sink);
  if (std::fflush(copy.get()) != 0) {
    throw DrawingError(DrawingErrorCode::kScratch);
  }
  PdfiumLock pdfium;
  ClosePages();
  pdfium_file_.reset();
  file_ = std::move(copy);
  is_repaired_ = true;
  bool needs_password = false;
  pdfium_file_ = OpenFile(pdfium, needs_password);
}

void DrawnDocument::ClosePages() {
  for (pdfium::Page** page : {&page_, &kept_page_}) {
    if (*page != nullptr) {
      pdfium_file_->ClosePage(std::exchange(*page, nullptr));
    }
  }
}

void DrawnDocument::LoadPage(int page_index) {
  ReleasePage();  // one that could not be drawn
  if (page_index < 0 || page_index >= page_count_) {
    throw DrawingError(DrawingErrorCode::kPage);
  }
  time_.Restart();
  is_page_partial_ = DrawsTooMuch(page_index);
  if (!is_repaired_ && is_page_partial_) {
    UseRepairedCopy();
    if (pdfium_file_ == nullptr) {
      throw DrawingError(DrawingErrorCode::kPage);
    }
  } else if (!is_repaired_ && HasUndrawnObjects(page_index)) {
    TryRepairedCopy();
  }
  OpenPage(page_index);
  if (!(width_points_ > 0) || !(height_points_ > 0)) {
    ReleasePage();
    throw DrawingError(DrawingErrorCode::kPage);
  }
}

void DrawnDocument::OpenPage(int page_index) {
  page_index_ = page_index;
  OpenPdfiumPage();
  const bool is_usable = page_ != nullptr && width_points_ > 0 && height_points_ > 0;
  if (!is_usable && pages_ != nullptr && !is_repaired_) {
    TryRepairedCopy();
    if (page_ == nullptr) {
      OpenPdfiumPage();
    }
  }
  if (page_ == nullptr) {
    throw DrawingError(DrawingErrorCode::kPage);
  }
}

void DrawnDocument::OpenPdfiumPage() {
  PdfiumLock pdfium;
  if (pdfium_file_ != nullptr &&
      pdfium_file_->bytes_read() >
          std::max(limits::kMaxPdfiumBytes, 4 * pdfium_file_->bytes_of_opening())) {
    bool needs_password = false;
    ClosePages();
    pdfium_file_.reset();
    pdfium_file_ = OpenFile(pdfium, needs_password);
  }
  page_ = pdfium_file_ != nullptr ? pdfium_file_->LoadPage(page_index_) : nullptr;
  if (page_ != nullptr) {
    const double unit = UserUnitOf(page_index_);
    width_points_ = pdfium->FPDF_GetPageWidth(page_) * unit;
    height_points_ = pdfium->FPDF_GetPageHeight(page_) * unit;
  }
}

void DrawnDocument::Place(const Placement& placement) {
  placement_ = placement;
  pictures_.reset();
  if (pages_ != nullptr && page_count_ == CountOf(*pages_) && !is_page_partial_) {
    ChoosePictures();
  }
}

// Chooses the images that are reduced before PDFium draws; without them, it draws all there is.
void DrawnDocument::ChoosePictures() {
  PageObjects objects;
  {
    const PdfiumLock pdfium;
    objects = ObjectsOf(pdfium, page_, placement_);
  }
  if (objects.images.empty()) {
    return;
  }
  try {
    pdf::Arena arena;
    auto pictures = std::make_unique<PagePictures>();
    pictures->Choose(*core_, *pages_, static_cast<std::size_t>(page_index_),
                     ResourcesOf(page_index_, arena), objects);
    RemoveObjects(pictures->objects());
    pictures_ = std::move(pictures);
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    pictures_.reset();
  }
}

void DrawnDocument::RemoveObjects(const std::vector<pdfium::PageObject*>& objects) {
  const PdfiumLock pdfium;
  for (pdfium::PageObject* object : objects) {
    if (pdfium->FPDFPage_RemoveObject(page_, object) != 0) {
      pdfium->FPDFPageObj_Destroy(object);
    }
  }
}

void DrawnDocument::Draw(std::uint8_t* pixels, int width, int top, int height) {
  const DrawingTime::Counting counting(time_);
  if (time_.IsOver()) {
    is_page_partial_ = true;
    return;
  }
  if (pictures_ != nullptr) {
    pictures_->Draw(pixels, width, top, height);
  }
  PdfiumLock pdfium;
  const PdfiumBitmapPtr bitmap(
      pdfium->FPDFBitmap_CreateEx(width, height, pdfium::kBgrx, pixels, width * 4),
      {pdfium.operator->()});
  if (bitmap == nullptr) {
    throw DrawingError(DrawingErrorCode::kMemory);
  }
  const bool is_done = pdfium_file_->Draw(bitmap.get(), page_, placement_.left,
                                          placement_.top - top, placement_.width, placement_.height,
                                          kDrawingFlags, [this] { return time_.IsOver(); });
  is_page_partial_ = is_page_partial_ || !is_done;
}

// Fonts live as long as a page that uses them: with the last page kept open, those that the next
// one shares with it are not read and their glyphs not drawn again.
void DrawnDocument::ReleasePage() {
  pictures_.reset();
  if (page_ == nullptr) {
    return;
  }
  const bool keeps = !HoldsLargeImages(page_index_);
  const PdfiumLock pdfium;
  if (kept_page_ != nullptr) {
    pdfium_file_->ClosePage(std::exchange(kept_page_, nullptr));
  }
  if (keeps) {
    std::swap(kept_page_, page_);
  } else {
    pdfium_file_->ClosePage(std::exchange(page_, nullptr));
  }
}

pdf::Object DrawnDocument::ResourcesOf(int page_index, pdf::Arena& arena) {
  const pdf::PageTree::Page& page = pages_->pages()[static_cast<std::size_t>(page_index)];
  return pages_->Attribute(page, pdf::InheritableKey::kResources, arena);
}

// PDFium would go on until there is no memory left.
bool DrawnDocument::DrawsTooMuch(int page_index) {
  if (pages_ == nullptr) {
    return false;
  }
  if (cost_ == nullptr) {
    cost_ = std::make_unique<DrawingCost>(*core_);
  }
  return !cost_->ExcessOf(*pages_, static_cast<std::size_t>(page_index)).empty();
}

// A page that cannot be looked at has no objects that PDFium is not to draw.
bool DrawnDocument::HasUndrawnObjects(int page_index) {
  if (pages_ == nullptr) {
    return false;
  }
  if (undrawn_ == nullptr) {
    undrawn_ = std::make_unique<UndrawnObjects>(*core_);
  }
  try {
    undrawn_->FindOnPage(*pages_, static_cast<std::size_t>(page_index));
    return !undrawn_->empty();
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    return false;
  }
}

// A page that cannot be looked at is taken to hold large images.
bool DrawnDocument::HoldsLargeImages(int page_index) {
  if (pages_ == nullptr) {
    return true;
  }
  try {
    pdf::Arena arena;
    const auto resolve = [&](const Object& value) { return core_->Resolve(value, arena); };
    const Object resources = ResourcesOf(page_index, arena);
    const auto entries = resolve(resources.Get("XObject")).Entries();
    if (entries.size() > limits::kMaxImagesLookedAt) {
      return true;
    }
    std::int64_t pixels = 0;
    for (const pdf::DictionaryEntry& entry : entries) {
      const Object object = resolve(entry.value);
      const std::int64_t width = resolve(object.Get("Width")).IntegerOr(0);
      const std::int64_t height = resolve(object.Get("Height")).IntegerOr(0);
      constexpr std::int64_t kMost = limits::kMaxKeptImagePixels;
      pixels +=
          std::clamp<std::int64_t>(width, 0, kMost) * std::clamp<std::int64_t>(height, 0, kMost);
      if (pixels > kMost || object.Has("Resources")) {
        return true;
      }
    }
    return false;
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    return true;
  }
}

// A document that only PDFium can read is taken to have no form: PDFium would go through fields
// that lead to each other for hours.
bool DrawnDocument::HasForm() {
  if (core_ == nullptr) {
    return false;
  }
  if (!has_form_) {
    has_form_ = false;
    try {
      pdf::Arena arena;
      const Object form = core_->Resolve(core_->Catalog(arena).Get("AcroForm"), arena);
      has_form_ = form.IsDictionary() && FieldNesting(*core_).IsBounded(form);
    } catch (const pdf::Error& error) {
      if (!error.is_damage()) {
        throw;
      }
      return false;
    }
  }
  return *has_form_;
}

double DrawnDocument::UserUnitOf(int page_index) {
  if (pages_ == nullptr) {
    return 1;
  }
  try {
    pdf::Arena arena;
    const Object page = pages_->Load(pages_->pages()[static_cast<std::size_t>(page_index)], arena);
    const double unit = core_->Resolve(page.Get("UserUnit"), arena).NumberOr(1);
    return unit > 0 && std::isfinite(unit) ? unit : 1;
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    return 1;
  }
}

}  // namespace TarnixTools::engines
