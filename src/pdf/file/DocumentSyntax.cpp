// The part of Document that tells an observer how the file is written.
#include <algorithm>
#include <tuple>
#include <vector>

#include "pdf/file/Document.h"
#include "pdf/file/SyntaxTeller.h"
#include "pdf/syntax/SyntaxObserver.h"

namespace TarnixTools::pdf {

void Document::Observe(SyntaxObserver& observer) {
  SyntaxTeller teller(reader_, observer);
  teller.TellHeader(header_offset_);
  if (const auto start = FindStartXref()) {
    observer.OnStartXref(*start);
  }
  teller.TellFileEnd();
  ObserveXref(teller);
  ObserveLinearization(observer);
  ObserveObjects(observer);
}

// The sections are read once more: nobody listened when the document was opened.
void Document::ObserveXref(SyntaxTeller& teller) {
  if (!xref_start_) {
    return;
  }
  XrefTable table;
  Findings findings;
  Arena arena;
  XrefReader sections(reader_, table, findings, arena);
  sections.set_teller(teller);
  sections.ReadChain(*xref_start_, xref_base_);
}

void Document::ObserveLinearization(SyntaxObserver& observer) {
  const std::vector<std::uint32_t> numbers = NumbersInFileOrder();
  if (numbers.empty()) {
    return;
  }
  const Reference first{numbers.front(), GenerationOf(numbers.front())};
  Arena arena;
  const Object dictionary = Load(first, arena);
  const XrefEntry entry = xref_.Find(first.number);
  if (dictionary.Has("Linearized") && entry.kind == XrefEntry::Kind::kInFile) {
    observer.OnLinearization({first, entry.position, dictionary});
  }
}

// Where an object turns out not to be where the cross-reference says, the objects not yet told of
// follow in the order that reading the whole file shows.
void Document::ObserveObjects(SyntaxObserver& observer) {
  std::vector<bool> is_told;
  Arena arena;
  bool was_rebuilt = false;
  do {
    was_rebuilt = is_rebuilt_;
    is_told.resize(std::max<std::size_t>(is_told.size(), xref_.limit()));
    for (const std::uint32_t number : NumbersInFileOrder()) {
      if (!is_told[number]) {
        is_told[number] = true;
        arena.Reset();
        Load({number, 0}, arena, observer);
      }
      if (is_rebuilt_ != was_rebuilt) {
        break;
      }
    }
  } while (is_rebuilt_ != was_rebuilt);
}

// Members of an object stream come right after it; without one in the file they are no objects.
std::vector<std::uint32_t> Document::NumbersInFileOrder() const {
  struct Place {
    std::uint64_t offset;
    std::uint64_t index;  // in the object stream, from 1; 0 for an object in the file
    std::uint32_t number;
  };

  std::vector<Place> places;
  for (std::uint32_t number = 1; number < xref_.limit(); ++number) {
    const XrefEntry entry = xref_.Find(number);
    if (entry.kind == XrefEntry::Kind::kInFile) {
      places.push_back({entry.position, 0, number});
    } else if (entry.kind == XrefEntry::Kind::kInStream) {
      const XrefEntry holder = xref_.Find(static_cast<std::uint32_t>(entry.position));
      if (holder.kind == XrefEntry::Kind::kInFile) {
        places.push_back({holder.position, std::uint64_t{entry.index} + 1, number});
      }
    }
  }
  std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) {
    return std::tie(a.offset, a.index, a.number) < std::tie(b.offset, b.index, b.number);
  });
  std::vector<std::uint32_t> numbers;
  numbers.reserve(places.size());
  for (const Place& place : places) {
    numbers.push_back(place.number);
  }
  return numbers;
}

Object Document::Load(Reference reference, Arena& arena, SyntaxObserver& observer) {
  const std::optional<RawObject> raw = Locate(reference.number);
  if (!raw) {
    return {};
  }
  const Parsed parsed = Parse(*raw, arena);
  if (raw->holder != nullptr) {
    TellMember(*raw, parsed, observer);
  } else {
    TellInFile(*raw, parsed, observer);
  }
  return parsed.value;
}

void Document::TellMember(const RawObject& raw, const Parsed& parsed, SyntaxObserver& observer) {
  ObjectSyntax object;
  object.reference = raw.reference;
  object.offset = raw.holder->size() - raw.text.size();
  object.holder = static_cast<std::uint32_t>(xref_.Find(raw.reference.number).position);
  observer.OnObject(object);
  ObserveTokens(raw.text.substr(0, static_cast<std::size_t>(parsed.size)), object.offset, observer);
  ObjectEndSyntax end;
  end.reference = raw.reference;
  end.offset = object.offset + parsed.size;
  end.is_regular = parsed.is_regular;
  end.value = parsed.value;
  observer.OnObjectEnd(end);
}

void Document::TellInFile(const RawObject& raw, const Parsed& parsed, SyntaxObserver& observer) {
  SyntaxTeller teller(reader_, observer);
  teller.TellObject(raw.reference, xref_.Find(raw.reference.number).position);
  std::uint64_t end = raw.offset + parsed.size;
  teller.TellTokens(raw.offset, end);
  const Object length = parsed.value.Get("Length");
  if (const auto extent = parsed.value.IsDictionary() ? StreamAt(end, length, raw.reference.number)
                                                      : std::nullopt) {
    Arena scratch;
    const Object claimed = Resolve(length, scratch);
    end =
        teller.TellStream(raw.reference, end, *extent,
                          claimed.IsInteger() ? std::optional(claimed.IntegerOr(0)) : std::nullopt);
  }
  teller.TellObjectEnd(raw.reference, end, parsed.value, parsed.is_regular);
}

}  // namespace TarnixTools::pdf
