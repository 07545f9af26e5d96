// The part of Document that finds objects without a usable cross-reference.
#include <algorithm>
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
  if (!root_ || !security_) {
    // Newest trailer first; its encryption is needed before any object stream can be read.
    const std::vector<Object> newest_first(scan.trailers.rbegin(), scan.trailers.rend());
    if (!root_ && !is_encrypted_) {
      for (const Object& candidate : newest_first) {
        if (candidate.Has("Encrypt")) {
          trailer_ = candidate;
          SetUpSecurity();
          break;
        }
      }
    }
    AddStreamMembers(scan);
    if (!root_) {
      ChooseTrailer(newest_first);
    }
  } else {
    AddStreamMembers(scan);
  }
  for (const FoundObject& found : scan.objects) {
    if (found.kind == FoundKind::kPage) {
      scanned_pages_.push_back(found.number);
    }
  }
  if (!root_) {
    FindRoot(scan);
  }
  if (scan.objects.empty() && !root_) {
    throw Error(ErrorCode::kNotAPdf, "no PDF object in the file");
  }
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
        scanned_pages_.push_back(member.number);
      }
    }
  }
}

// Without a trailer that helps: the last catalog in the file, or else the page tree's own root.
void Document::FindRoot(const FileScan& scan) {
  findings_.Add(FindingCode::kTrailerRebuilt);
  for (auto found = scan.objects.rbegin(); found != scan.objects.rend(); ++found) {
    if (found->kind == FoundKind::kCatalog && IsCatalog({found->number, found->generation})) {
      root_ = {found->number, found->generation};
      return;
    }
  }
  for (std::uint32_t number = xref_.limit(); number-- > 1;) {
    if (xref_.Find(number).kind == XrefEntry::Kind::kInStream && IsCatalog({number, 0})) {
      Arena arena;
      if (FoundKindOf(Load({number, 0}, arena)) == FoundKind::kCatalog) {
        root_ = {number, 0};
        return;
      }
    }
  }
}

std::vector<std::uint32_t> Document::SalvagedPages() {
  Rebuild();
  std::vector<std::uint32_t> pages;
  std::unordered_set<std::uint32_t> seen;
  for (const std::uint32_t number : scanned_pages_) {
    if (xref_.Exists(number) && seen.insert(number).second) {
      pages.push_back(number);
    }
  }
  return pages;
}

}  // namespace TarnixTools::pdf
