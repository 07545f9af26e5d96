// The part of Document that finds objects without a usable cross-reference.
#include <algorithm>
#include <tuple>
#include <unordered_set>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

void Document::Rebuild() {
  if (is_rebuilt_) {
    return;
  }
  is_rebuilt_ = true;
  findings_.Add(FindingCode::kXrefRebuilt);
  const FileScan scan = ScanFile(reader_, trailer_arena_);
  ForgetUnconfirmed(scan);
  AddScanned(scan);
  object_streams_.Clear();
  large_objects_.Clear();
  if (!has_catalog() || !security_) {
    // Newest trailer first; its encryption is needed before any object stream can be read.
    const std::vector<Object> newest_first(scan.trailers.rbegin(), scan.trailers.rend());
    if (!has_catalog() && !is_encrypted_) {
      for (const Object& candidate : newest_first) {
        if (candidate.Has("Encrypt")) {
          trailer_ = candidate;
          SetUpSecurity();
          break;
        }
      }
    }
    AddStreamMembers(scan);
    if (!has_catalog()) {
      ChooseTrailer(newest_first);
    }
  } else {
    AddStreamMembers(scan);
  }
  for (const FoundObject& found : scan.objects) {
    if (found.kind == FoundKind::kPage) {
      scanned_pages_.push_back({found.offset, 0, found.number});
    }
  }
  if (!has_catalog()) {
    FindRoot(scan);
  }
  if (scan.objects.empty() && !has_catalog()) {
    throw Error(ErrorCode::kNotAPdf, "no PDF object in the file");
  }
}

void Document::NoteLost(std::uint32_t number) {
  if (number >= lost_.size()) {
    lost_.resize(std::max<std::size_t>(number + 1, xref_.limit()));
  }
  lost_[number] = true;
}

// Drops entries that the file does not bear out.
void Document::ForgetUnconfirmed(const FileScan& scan) {
  std::unordered_set<std::uint32_t> holders;
  for (const FoundObject& found : scan.objects) {
    if (found.kind == FoundKind::kObjectStream) {
      holders.insert(found.number);
    }
  }
  for (std::uint32_t number = 1; number < xref_.limit(); ++number) {
    const XrefEntry entry = xref_.Find(number);
    bool is_confirmed = false;
    if (entry.kind == XrefEntry::Kind::kInFile) {
      const auto header = reader_.ReadHeader(entry.position);
      is_confirmed = header && header->number == number;
    } else if (entry.kind == XrefEntry::Kind::kInStream) {
      is_confirmed = holders.contains(static_cast<std::uint32_t>(entry.position));
    }
    if (!is_confirmed) {
      if (xref_.Exists(number)) {
        NoteLost(number);
      }
      xref_.Set(number, XrefEntry());
    }
  }
}

// Where an object stands several times in the file, the last one counts.
void Document::AddScanned(const FileScan& scan) {
  for (auto found = scan.objects.rbegin(); found != scan.objects.rend(); ++found) {
    if (found->kind != FoundKind::kXrefStream) {
      xref_.SetIfUnknown(found->number,
                         {found->offset, 0, found->generation, XrefEntry::Kind::kInFile});
    }
  }
}

void Document::AddStreamMembers(const FileScan& scan) {
  for (auto found = scan.objects.rbegin(); found != scan.objects.rend(); ++found) {
    if (found->kind != FoundKind::kObjectStream ||
        xref_.Find(found->number).position != found->offset) {
      continue;
    }
    const auto holder = OpenObjectStream(found->number);
    if (!holder) {
      continue;
    }
    std::uint32_t index = 0;
    for (const ObjectStream::Member& member : holder->members()) {
      xref_.SetIfUnknown(member.number, {found->number, index++, 0, XrefEntry::Kind::kInStream});
      Arena arena;
      Parser parser(arena);
      Lexer lexer(holder->Find(member.number, index - 1).value_or(std::string_view()), true);
      Object value;
      parser.Parse(lexer, nullptr, value);
      if (FoundKindOf(value) == FoundKind::kPage) {
        scanned_pages_.push_back({found->offset, index, member.number});
      }
    }
  }
}

// Where no trailer helps, the root is the last catalog in the file, or else one made for the page
// tree.
void Document::FindRoot(const FileScan& scan) {
  findings_.Add(FindingCode::kTrailerRebuilt);
  for (auto found = scan.objects.rbegin(); found != scan.objects.rend(); ++found) {
    if (found->kind == FoundKind::kCatalog &&
        IsCatalog(Object::Ref({found->number, found->generation}))) {
      root_ = {found->number, found->generation};
      return;
    }
  }
  for (std::uint32_t number = xref_.limit(); number-- > 1;) {
    if (xref_.Find(number).kind == XrefEntry::Kind::kInStream &&
        IsCatalog(Object::Ref({number, 0}))) {
      Arena arena;
      if (FoundKindOf(Load({number, 0}, arena)) == FoundKind::kCatalog) {
        root_ = {number, 0};
        return;
      }
    }
  }
  MakeCatalogOfPageTree(scan);
}

// Where several page trees have no parent, the one that claims the most pages is taken.
void Document::MakeCatalogOfPageTree(const FileScan& scan) {
  std::int64_t most = -1;
  const auto consider = [&](std::uint32_t number) {
    Arena arena;
    const Object node = Load({number, 0}, arena);
    const std::int64_t count = Resolve(node.Get("Count"), arena).IntegerOr(0);
    if (FoundKindOf(node) == FoundKind::kPages && !node.Has("Parent") && count > most) {
      most = count;
      const DictionaryEntry entry{Object::Name("Pages"), Object::Ref({number, 0})};
      catalog_ =
          Object::Dictionary(trailer_arena_.CopyItems(std::span<const DictionaryEntry>(&entry, 1)));
    }
  };
  for (const FoundObject& found : scan.objects) {
    if (found.kind == FoundKind::kPages) {
      consider(found.number);
    }
  }
  for (std::uint32_t number = 1; number < xref_.limit(); ++number) {
    if (xref_.Find(number).kind == XrefEntry::Kind::kInStream) {
      consider(number);
    }
  }
}

std::vector<std::uint32_t> Document::SalvagedPages() {
  Rebuild();
  std::sort(scanned_pages_.begin(), scanned_pages_.end(),
            [](const ScannedPage& a, const ScannedPage& b) {
              return std::tie(a.offset, a.index) < std::tie(b.offset, b.index);
            });
  std::vector<std::uint32_t> pages;
  std::unordered_set<std::uint32_t> seen;
  for (const ScannedPage& page : scanned_pages_) {
    if (xref_.Exists(page.number) && seen.insert(page.number).second) {
      pages.push_back(page.number);
    }
  }
  return pages;
}

}  // namespace TarnixTools::pdf
