#include "engines/office/pages/PageLinks.h"

#include <optional>

#include "engines/office/Limits.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::office {

namespace {

using pdf::Arena;
using pdf::Document;
using pdf::Object;

std::string AddressOf(Document& document, const Object& annotation) {
  Arena arena;
  const Object action = document.Resolve(annotation.Get("A"), arena);
  if (!document.Resolve(action.Get("S"), arena).IsName("URI")) {
    return {};
  }
  const Object uri = document.Resolve(action.Get("URI"), arena);
  const bool is_usable = uri.IsString() && uri.Text().size() <= limits::kMaxEntryText;
  return is_usable ? pdf::TextStringToUtf8(uri.Text()) : std::string();
}

std::optional<PageLink> LinkOf(Document& document, const Object& annotation,
                               const pdf::Matrix& matrix, Destinations& destinations) {
  const auto box = pdf::ReadPageBox(document, annotation.Get("Rect"));
  if (!box) {
    return std::nullopt;
  }
  PageLink link{.box = box->Through(matrix), .uri = AddressOf(document, annotation)};
  if (!link.uri.empty()) {
    return link;
  }
  const auto place = destinations.PlaceOfEntry(annotation);
  if (!place) {
    return std::nullopt;
  }
  link.target_page = static_cast<std::int32_t>(place->page);
  link.target_y = place->y;
  return link;
}

}  // namespace

std::vector<PageLink> ReadPageLinks(Document& document, const Object& page,
                                    const pdf::Matrix& matrix, Destinations& destinations) {
  std::vector<PageLink> links;
  Arena arena;
  Arena scratch;
  for (const Object& item : document.Resolve(page.Get("Annots"), arena).Items()) {
    if (links.size() >= limits::kMaxLinksOfPage) {
      break;
    }
    scratch.Reset();
    const Object annotation = document.Resolve(item, scratch);
    if (!document.Resolve(annotation.Get("Subtype"), scratch).IsName("Link")) {
      continue;
    }
    if (auto link = LinkOf(document, annotation, matrix, destinations)) {
      links.push_back(std::move(*link));
    }
  }
  return links;
}

}  // namespace TarnixTools::engines::office
