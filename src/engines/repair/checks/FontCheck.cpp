#include "engines/repair/checks/FontCheck.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "engines/repair/Limits.h"
#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "engines/support/fonts/StandardFontNames.h"

namespace TarnixTools::engines::repair {

namespace {

using fonts::FontKind;
using pdf::Object;

constexpr std::array<std::string_view, 3> kProgramKeys = {"FontFile", "FontFile2", "FontFile3"};

// What every character map has one of, if only to refer to another map.
constexpr std::array<std::string_view, 8> kMapWords = {
    "begincodespacerange", "beginbfchar",      "beginbfrange", "begincidchar",
    "begincidrange",       "beginnotdefrange", "usecmap",      "begincmap"};

class Checker {
 public:
  Checker(CheckContext& context, const pdf::ResourceNode& node, std::uint32_t page,
          FontStreams& streams)
      : context_(&context),
        document_(&context.document),
        node_(&node),
        page_(page),
        streams_(&streams) {}

  void Run() {
    const fonts::DocumentFont font(
        *document_, node_->number != 0 ? Object::Ref({node_->number, 0}) : node_->value);
    if (font.kind() == FontKind::kUnknown) {
      Add(ProblemCode::kFontInvalid, Outcome::kLost, Resolved("Subtype").Text());
      return;
    }
    CheckMap("ToUnicode");
    if (font.is_composite()) {
      CheckMap("Encoding");
    } else {
      CheckWidths(font);
    }
    if (font.kind() != FontKind::kType3) {
      CheckProgram(font);
    }
  }

 private:
  void Add(ProblemCode code, Outcome outcome, std::string_view detail = {}) {
    context_->problems.Add({.code = code,
                            .outcome = outcome,
                            .page = page_,
                            .object = node_->number != 0 ? node_->number : node_->user,
                            .detail = std::string(detail)});
  }

  Object Resolved(std::string_view key) {
    return document_->Resolve(node_->value.Get(key), arena_);
  }

  // A map that is a stream; others have names. An empty one says nothing, which is not wrong.
  void CheckMap(std::string_view key) {
    const pdf::Followed found = document_->Follow(node_->value.Get(key), arena_);
    if (!found.value.IsDictionary() || IsSound(streams_->maps, found.number, IsMap)) {
      return;
    }
    Add(ProblemCode::kFontMapUnreadable, Outcome::kLost, key);
    if (node_->number != 0 && key == "ToUnicode") {
      context_->rewriter.RemoveEntry(node_->number, key);
    } else if (node_->number != 0) {
      context_->rewriter.SetEntry(node_->number, key, "/Identity-H");
    }
  }

  // The standard fonts may do without (9.6.2.2); readers know those of all others by themselves, too.
  void CheckWidths(const fonts::DocumentFont& font) {
    const bool has_program = font.descriptor().entry != fonts::ProgramEntry::kNone;
    if ((has_program || font.kind() == FontKind::kType3) && !Resolved("Widths").IsArray()) {
      Add(ProblemCode::kFontWidthsMissing, Outcome::kWorkedAround);
    }
  }

  void CheckProgram(const fonts::DocumentFont& font) {
    const fonts::FontDescriptor& descriptor = font.descriptor();
    if (descriptor.entry == fonts::ProgramEntry::kNone) {
      if (!fonts::IsStandardFontName(font.name())) {
        Add(ProblemCode::kFontProgramMissing, Outcome::kWorkedAround);
      }
      return;
    }
    if (IsSound(streams_->programs, descriptor.program, CanBeRead)) {
      return;
    }
    Add(ProblemCode::kFontProgramUnreadable, Outcome::kLost);
    if (descriptor.number != 0) {
      for (const std::string_view key : kProgramKeys) {
        context_->rewriter.RemoveEntry(descriptor.number, key);
      }
    }
  }

  template <typename Judge>
  bool IsSound(std::unordered_map<std::uint32_t, bool>& known, std::uint32_t number, Judge judge) {
    const auto [place, is_new] = known.try_emplace(number, false);
    if (is_new) {
      const auto stream = document_->TryDecodeStream(number, limits::kMaxCheckedStream);
      place->second = judge(stream);
    }
    return place->second;
  }

  // What cannot be decoded at all is a problem of the stream.
  static bool IsMap(const std::optional<pdf::Decoded>& map) {
    return !map || map->is_too_long || (map->complete && map->data.empty()) ||
           std::ranges::any_of(kMapWords, [&](std::string_view word) {
             return map->data.find(word) != std::string::npos;
           });
  }

  static bool CanBeRead(const std::optional<pdf::Decoded>& program) {
    try {
      return program &&
             (program->is_too_long || fonts::FontProgram::Open(program->data) != nullptr);
    } catch (const fonts::LibraryMissing&) {
      return true;  // nobody can tell
    }
  }

  CheckContext* context_;
  pdf::Document* document_;
  const pdf::ResourceNode* node_;
  std::uint32_t page_;
  FontStreams* streams_;
  pdf::Arena arena_;
};

}  // namespace

void CheckFont(CheckContext& context, const pdf::ResourceNode& font, std::uint32_t page,
               FontStreams& streams) {
  Checker(context, font, page, streams).Run();
}

}  // namespace TarnixTools::engines::repair
