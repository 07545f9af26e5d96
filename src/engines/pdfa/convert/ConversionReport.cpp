#include "engines/pdfa/convert/ConversionReport.h"

#include <algorithm>

namespace TarnixTools::engines::pdfa {

namespace {

const char* TextOf(ConversionOutcome outcome) {
  switch (outcome) {
    case ConversionOutcome::kChanged:
      return "changed";
    case ConversionOutcome::kDropped:
      return "left out";
    case ConversionOutcome::kBlocking:
      return "not mended";
  }
  return "";
}

}  // namespace

void ConversionReport::Add(ConversionOutcome outcome, std::string_view what, std::uint64_t count) {
  if (count == 0) {
    return;
  }
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) {
    return entry.outcome == outcome && entry.what == what;
  });
  if (found != entries_.end()) {
    found->count += count;
  } else {
    entries_.push_back({outcome, std::string(what), count});
  }
}

std::uint64_t ConversionReport::BlockingCount() const {
  std::uint64_t count = 0;
  for (const ConversionEntry& entry : entries_) {
    count += entry.outcome == ConversionOutcome::kBlocking ? entry.count : 0;
  }
  return count;
}

void ConversionReport::TakeBlocking(const ConversionReport& other) {
  for (const ConversionEntry& entry : other.entries()) {
    if (entry.outcome == ConversionOutcome::kBlocking) {
      Add(entry.outcome, entry.what, entry.count);
    }
  }
}

std::string ConversionReport::Text(bool with_details) const {
  std::string text;
  for (const ConversionEntry& entry : entries_) {
    if (!with_details && entry.outcome != ConversionOutcome::kBlocking) {
      continue;
    }
    text += std::string(TextOf(entry.outcome)) + ": " + entry.what;
    text += entry.count > 1 ? " (" + std::to_string(entry.count) + ")\n" : "\n";
  }
  return text;
}

}  // namespace TarnixTools::engines::pdfa
