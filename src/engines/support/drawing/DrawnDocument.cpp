#include "engines/support/drawing/DrawnDocument.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <utility>

#include "engines/support/drawing/DrawingError.h"
#include "engines/support/drawing/DrawingLimits.h"
#include "engines/support/drawing/RepairedCopy.h"
#include "engines/support/drawing/Unfolding.h"
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

// Whether a side that PDFium finds, in 32 bits, is what it should be.
bool IsAlike(double found, double side) {
  constexpr double kTolerance = 0.001;
  return std::abs(found - side) <= kTolerance * side;
}

// No more than kMaxKeptImagePixels to a side; 0 for what has no sides.
std::int64_t CountPixels(pdf::Document& document, const Object& image, pdf::Arena& arena) {
  const auto side = [&](std::string_view key) {
    return std::clamp<std::int64_t>(document.Resolve(image.Get(key), arena).IntegerOr(0), 0,
                                    limits::kMaxKeptImagePixels);
  };
  return side("Width") * side("Height");
}

// Whether the resources name images of many pixels, or what may draw some.
bool NamesLargeImages(pdf::Document& document, const Object& resources) {
  pdf::Arena arena;
  const auto entries = document.Resolve(resources.Get("XObject"), arena).Entries();
  if (entries.size() > limits::kMaxImagesLookedAt) {
    return true;
  }
  std::int64_t pixels = 0;
  for (const pdf::DictionaryEntry& entry : entries) {
    const Object object = document.Resolve(entry.value, arena);
    pixels += CountPixels(document, object, arena);
    if (pixels > limits::kMaxKeptImagePixels || object.Has("Resources")) {
      return true;
    }
  }
  return false;
}

// Makes text within forms, and within forms of theirs, text that is not seen.
void HideTextOfForms(const pdfium::Api& api, pdfium::Page* page) {
  std::vector<pdfium::PageObject*> forms;
  int left = limits::kMaxObjectsOfForms;
  const auto look = [&](pdfium::PageObject* object) {
    const int type = api.FPDFPageObj_GetType(object);
    if (type == pdfium::kFormObject) {
      forms.push_back(object);
    }
    return type == pdfium::kTextObject;
  };
  for (int i = 0; i < api.FPDFPage_CountObjects(page) && left > 0; ++i, --left) {
    look(api.FPDFPage_GetObject(page, i));
  }
  while (!forms.empty()) {
    pdfium::PageObject* form = forms.back();
    forms.pop_back();
    const int count = api.FPDFFormObj_CountObjects(form);
    for (int i = 0; i < count && left > 0; ++i, --left) {
      pdfium::PageObject* object = api.FPDFFormObj_GetObject(form, static_cast<unsigned long>(i));
      if (look(object)) {
        api.FPDFTextObj_SetTextRenderMode(object, pdfium::kInvisibleText);
      }
    }
  }
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
  // PDFium looks for pages wherever a tree leads that leads back to itself.
  const bool is_loop = core_ != nullptr && core_->findings().Has(pdf::FindingCode::kPageTreeLoop);
  const bool is_usable = pdfium_file_ != nullptr && !is_loop &&
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
  std::shared_ptr<std::FILE> copy =
      WriteScratchFile([this](pdf::ByteSink& sink) { WriteRepairedCopy(*core_, *pages_, sink); });
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
  if (!OpenPdfiumPage() && pages_ != nullptr && !is_repaired_) {
    TryRepairedCopy();
    if (page_ == nullptr) {
      OpenPdfiumPage();
    }
  }
  if (page_ == nullptr) {
    throw DrawingError(DrawingErrorCode::kPage);
  }
}

// Returns false for a page that PDFium cannot open, or does not see as it is.
bool DrawnDocument::OpenPdfiumPage() {
  const std::optional<pdf::PageGeometry> geometry = GeometryOf(page_index_);
  PdfiumLock pdfium;
  ForgetOldPages(pdfium);
  page_ = pdfium_file_ != nullptr ? pdfium_file_->LoadPage(page_index_) : nullptr;
  if (page_ == nullptr) {
    return false;
  }
  width_points_ = pdfium->FPDF_GetPageWidth(page_);
  height_points_ = pdfium->FPDF_GetPageHeight(page_);
  if (!geometry || !(width_points_ > 0) || !(height_points_ > 0)) {
    return width_points_ > 0 && height_points_ > 0;
  }
  const bool is_seen = IsAlike(width_points_ * geometry->user_unit, geometry->SeenWidth()) &&
                       IsAlike(height_points_ * geometry->user_unit, geometry->SeenHeight());
  width_points_ = geometry->SeenWidth();
  height_points_ = geometry->SeenHeight();
  return is_seen;
}

// PDFium keeps what it has read: a document that has become large is opened anew.
void DrawnDocument::ForgetOldPages(PdfiumLock& pdfium) {
  if (pdfium_file_ == nullptr ||
      pdfium_file_->bytes_read() <=
          std::max(limits::kMaxPdfiumBytes, 4 * pdfium_file_->bytes_of_opening())) {
    return;
  }
  bool needs_password = false;
  ClosePages();
  pdfium_file_.reset();
  pdfium_file_ = OpenFile(pdfium, needs_password);
}

// Text within forms cannot be taken out, but made text that is not seen.
void DrawnDocument::LeaveTextOut() {
  std::vector<pdfium::PageObject*> text;
  {
    const PdfiumLock pdfium;
    if (!pdfium->has_object_functions) {
      return;
    }
    const int count = pdfium->FPDFPage_CountObjects(page_);
    for (int i = 0; i < count; ++i) {
      pdfium::PageObject* object = pdfium->FPDFPage_GetObject(page_, i);
      if (pdfium->FPDFPageObj_GetType(object) == pdfium::kTextObject) {
        text.push_back(object);
      }
    }
    HideTextOfForms(*pdfium.operator->(), page_);
  }
  RemoveObjects(text);
}

void DrawnDocument::Place(const Placement& placement) {
  placement_ = placement;
  pictures_.reset();
  if (pages_ != nullptr && page_count_ == CountOf(*pages_) && !is_page_partial_) {
    ChoosePictures();
  }
}

// Chooses the images that are fitted before PDFium draws; without them, it draws all there is.
void DrawnDocument::ChoosePictures() {
  PageObjects objects;
  {
    const PdfiumLock pdfium;
    objects = ObjectsOf(pdfium, page_, placement_);
  }
  if (objects.images.empty()) {
    return;
  }
  pictures_ = pdf::UnlessDamaged(std::unique_ptr<PagePictures>(), [&] {
    pdf::Arena arena;
    auto pictures = std::make_unique<PagePictures>();
    pictures->Choose(*core_, *pages_, static_cast<std::size_t>(page_index_),
                     ResourcesOf(page_index_, arena), objects);
    RemoveObjects(pictures->objects());
    return pictures;
  });
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

// PDFium may find pages that the core does not.
bool DrawnDocument::IsKnown(int page_index) const {
  return pages_ != nullptr && page_index < CountOf(*pages_);
}

const pdf::PageTree::Page& DrawnDocument::PageOf(int page_index) const {
  return pages_->pages()[static_cast<std::size_t>(page_index)];
}

// None for a page that the core cannot read.
std::optional<pdf::PageGeometry> DrawnDocument::GeometryOf(int page_index) {
  if (!IsKnown(page_index)) {
    return std::nullopt;
  }
  return pdf::UnlessDamaged(std::optional<pdf::PageGeometry>(), [&] {
    return pdf::ReadPageGeometry(*core_, *pages_, PageOf(page_index));
  });
}

pdf::Object DrawnDocument::ResourcesOf(int page_index, pdf::Arena& arena) {
  return pages_->Attribute(PageOf(page_index), pdf::InheritableKey::kResources, arena);
}

// PDFium would go on until there is no memory left.
bool DrawnDocument::DrawsTooMuch(int page_index) {
  if (!IsKnown(page_index)) {
    return false;
  }
  if (cost_ == nullptr) {
    cost_ = std::make_unique<DrawingCost>(*core_);
  }
  return !cost_->ExcessOf(*pages_, static_cast<std::size_t>(page_index)).empty();
}

// A page that cannot be looked at has no objects that PDFium is not to draw.
bool DrawnDocument::HasUndrawnObjects(int page_index) {
  if (!IsKnown(page_index)) {
    return false;
  }
  if (undrawn_ == nullptr) {
    undrawn_ = std::make_unique<UndrawnObjects>(*core_);
  }
  return pdf::UnlessDamaged(false, [&] {
    undrawn_->FindOnPage(*pages_, static_cast<std::size_t>(page_index));
    return !undrawn_->empty();
  });
}

// A page that cannot be looked at is taken to hold large images.
bool DrawnDocument::HoldsLargeImages(int page_index) {
  if (!IsKnown(page_index)) {
    return true;
  }
  return pdf::UnlessDamaged(true, [&] {
    pdf::Arena arena;
    return NamesLargeImages(*core_, ResourcesOf(page_index, arena));
  });
}

// A document that only PDFium can read is taken to have no form: PDFium would go through fields
// that lead to each other for hours.
bool DrawnDocument::HasForm() {
  if (core_ == nullptr) {
    return false;
  }
  if (!has_form_) {
    has_form_ = pdf::UnlessDamaged(false, [&] {
      pdf::Arena arena;
      const Object form = core_->Resolve(core_->Catalog(arena).Get("AcroForm"), arena);
      Unfolding fields(*core_, "Kids");
      const std::uint64_t size = fields.SizeOf(form.Get("Fields"));
      return form.IsDictionary() && size < 2 * fields.object_count() + limits::kMaxRepeatedFields;
    });
  }
  return *has_form_;
}

}  // namespace TarnixTools::engines
