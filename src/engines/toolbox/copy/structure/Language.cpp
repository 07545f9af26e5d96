#include "engines/toolbox/copy/structure/Language.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/copy/report/CopyReport.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines::toolbox {

namespace {

// Says that the language is not known.
constexpr const char* kUnknown = "()";

char ToLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Language tags are the same whatever their case (RFC 5646, 2.1.1).
bool IsSame(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return ToLower(x) == ToLower(y); });
}

}  // namespace

void TargetLanguage::WriteTopElement(pdf::FileWriter& writer, std::uint32_t number,
                                     std::string text, bool has_language) {
  sources_.back().has_elements = true;
  if (has_language) {
    writer.WriteObject(number, text + ">>");
    return;
  }
  held_size_ += text.size();
  held_.push_back({number, sources_.size() - 1, std::move(text)});
  if (held_size_ > limits::kMaxWaitingElementBytes) {
    WriteHeld(writer, {});
  }
}

void TargetLanguage::Finish(pdf::FileWriter& writer, std::string& catalog, CopyReport& report) {
  const std::string in_catalog = ForCatalog();
  WriteHeld(writer, in_catalog);
  Report(report, in_catalog);
  if (!in_catalog.empty()) {
    catalog += "/Lang" + in_catalog;
  }
}

// What all sources agree on, or else all that have no elements to put their language on.
std::string TargetLanguage::ForCatalog() const {
  const auto agree = [](const std::vector<const Source*>& sources) {
    return std::all_of(sources.begin(), sources.end(), [&](const Source* source) {
      return IsSame(source->language, sources.front()->language);
    });
  };
  std::vector<const Source*> all;
  std::vector<const Source*> untagged;
  for (const Source& source : sources_) {
    all.push_back(&source);
    if (!source.has_elements && !source.language.empty()) {
      untagged.push_back(&source);
    }
  }
  const std::vector<const Source*>& deciding = agree(all) ? all : untagged;
  return !deciding.empty() && agree(deciding) ? deciding.front()->language : std::string();
}

void TargetLanguage::WriteHeld(pdf::FileWriter& writer, const std::string& in_catalog) {
  for (const Held& held : held_) {
    std::string text = held.text;
    if (const std::string& language = sources_[held.source].language;
        !IsSame(language, in_catalog)) {
      text += "/Lang" + (language.empty() ? kUnknown : language);
    }
    writer.WriteObject(held.number, text + ">>");
  }
  held_.clear();
  held_size_ = 0;
}

void TargetLanguage::Report(CopyReport& report, const std::string& in_catalog) const {
  for (const Source& source : sources_) {
    if (source.language.empty()) {
      continue;
    }
    if (source.has_elements || IsSame(source.language, in_catalog)) {
      report.Kept(CopiedKind::kLanguage);
    } else {
      report.Add(CopiedKind::kLanguage, CopyOutcome::kDropped,
                 "of untagged text, next to text in others");
    }
  }
}

}  // namespace TarnixTools::engines::toolbox
