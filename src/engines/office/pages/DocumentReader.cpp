#include "engines/office/pages/DocumentReader.h"

#include <cerrno>
#include <optional>
#include <utility>

#include "engines/office/pages/Destinations.h"
#include "engines/office/pages/OutlineReader.h"
#include "engines/office/pages/PageLinks.h"
#include "engines/office/pages/ScanCheck.h"
#include "engines/office/pages/StructureRoles.h"
#include "engines/support/files/DiskFile.h"
#include "engines/support/pages/PageReader.h"
#include "pdf/Error.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::office {

namespace {

using pdf::Arena;
using pdf::Object;

std::shared_ptr<std::FILE> OpenFile(const platform::WidePath& path) {
  std::shared_ptr<std::FILE> file = OpenShared(path);
  if (file == nullptr) {
    throw pdf::Error(pdf::ErrorCode::kReadFailed,
                     "the document cannot be opened: " + platform::ErrorText(errno));
  }
  return file;
}

}  // namespace

// What was opened first lives longest.
struct DocumentReader::Inside {
  Inside(std::shared_ptr<std::FILE> opened_file, std::string opened_with)
      : file(std::move(opened_file)),
        password(std::move(opened_with)),
        document(pdf::Document::Open(std::make_unique<DiskSource>(file), password)),
        pages(*document),
        layers(*document),
        destinations(*document, pages),
        reader(*document, pages, layers) {}

  std::string InfoText(std::string_view key) {
    Arena arena;
    const Object info = document->Resolve(document->trailer().Get("Info"), arena);
    const Object text = document->Resolve(info.Get(key), arena);
    return text.IsString() ? pdf::TextStringToUtf8(text.Text()) : std::string();
  }

  const StructureRoles& Roles() {
    if (roles == nullptr) {
      roles = std::make_shared<const StructureRoles>(*document, destinations);
    }
    return *roles;
  }

  void SetRoom(const pdf::SeenSize& of_page) {
    room = of_page;
    reader.set_room(room);
    destinations.set_room(room);
  }

  std::shared_ptr<std::FILE> file;
  std::string password;
  std::unique_ptr<pdf::Document> document;
  pdf::PageTree pages;
  pdf::VisibleLayers layers;
  Destinations destinations;
  PageReader reader;
  std::shared_ptr<const StructureRoles> roles;  // null before they are asked for
  std::optional<DocumentFacts> facts;
  const std::atomic<bool>* is_cancelled = nullptr;
  pdf::SeenSize room;
};

DocumentReader::DocumentReader(std::unique_ptr<Inside> inside) : inside_(std::move(inside)) {}

DocumentReader::~DocumentReader() = default;

std::unique_ptr<DocumentReader> DocumentReader::Open(const platform::WidePath& path,
                                                     const std::string& password) {
  return std::unique_ptr<DocumentReader>(
      new DocumentReader(std::make_unique<Inside>(OpenFile(path), password)));
}

std::unique_ptr<DocumentReader> DocumentReader::OpenAgain() {
  inside_->Roles();
  auto inside = std::make_unique<Inside>(inside_->file, inside_->password);
  inside->roles = inside_->roles;
  inside->SetRoom(inside_->room);
  if (inside_->is_cancelled != nullptr) {
    inside->reader.set_cancel_flag(*inside_->is_cancelled);
  }
  return std::unique_ptr<DocumentReader>(new DocumentReader(std::move(inside)));
}

void DocumentReader::SetCancelFlag(const std::atomic<bool>& is_cancelled) {
  inside_->is_cancelled = &is_cancelled;
  inside_->reader.set_cancel_flag(is_cancelled);
}

std::size_t DocumentReader::page_count() const {
  return inside_->pages.pages().size();
}

void DocumentReader::SetRoom(const pdf::SeenSize& room) {
  inside_->SetRoom(room);
}

pdf::SeenSize DocumentReader::SizeOf(std::size_t page_index) {
  const pdf::PageGeometry geometry =
      pdf::ReadPageGeometry(*inside_->document, inside_->pages, inside_->pages.pages()[page_index]);
  return {geometry.SeenWidth(), geometry.SeenHeight()};
}

PageModel DocumentReader::Read(std::size_t page_index) {
  PageModel page = inside_->reader.Read(page_index);
  page.number = static_cast<std::uint32_t>(page_index);
  pdf::Document& document = *inside_->document;
  const pdf::PageTree::Page& node = inside_->pages.pages()[page_index];
  const pdf::PageGeometry geometry =
      pdf::ReadPageGeometry(document, inside_->pages, node).Within(inside_->room);
  Arena arena;
  page.links =
      ReadPageLinks(document, inside_->pages.Load(node, arena),
                    geometry.ToSeenPoints() * Downwards(page.height), inside_->destinations);
  page.roles = inside_->Roles().OfPage(page.number);
  page.tree_has_tables = inside_->Roles().has_tables();
  return page;
}

bool DocumentReader::IsScanned(std::size_t page_index) {
  return IsScannedPage(*inside_->document, inside_->pages, inside_->layers, page_index);
}

const DocumentFacts& DocumentReader::facts() {
  if (inside_->facts) {
    return *inside_->facts;
  }
  pdf::Document& document = *inside_->document;
  Arena arena;
  const Object catalog = document.Catalog(arena);
  DocumentFacts facts{.title = inside_->InfoText("Title"),
                      .author = inside_->InfoText("Author"),
                      .subject = inside_->InfoText("Subject"),
                      .keywords = inside_->InfoText("Keywords")};
  const Object language = document.Resolve(catalog.Get("Lang"), arena);
  facts.language = language.IsString() ? pdf::TextStringToUtf8(language.Text()) : std::string();
  facts.is_tagged = catalog.Has("StructTreeRoot");
  facts.outline = ReadOutline(document, inside_->destinations);
  inside_->facts = std::move(facts);
  return *inside_->facts;
}

}  // namespace TarnixTools::engines::office
