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
  Checker(CheckContext& context, const pdf::ResourceNode& node, std::uint32_t page)
      : context_(&context), document_(&context.document), node_(&node), page_(page) {}

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
    const auto stream = found.value.IsDictionary()
                            ? document_->TryDecodeStream(found.number, limits::kMaxCheckedStream)
                            : std::nullopt;
    if (!stream || stream->is_too_long || (stream->complete && stream->data.empty())) {
      return;
    }
    const bool is_map = std::ranges::any_of(kMapWords, [&](std::string_view word) {
      return stream->data.find(word) != std::string::npos;
    });
    if (is_map) {
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
    const auto program = document_->TryDecodeStream(descriptor.program, limits::kMaxCheckedStream);
    if (program && (program->is_too_long || CanBeRead(program->data))) {
      return;
    }
    Add(ProblemCode::kFontProgramUnreadable, Outcome::kLost);
    if (descriptor.number != 0) {
      for (const std::string_view key : kProgramKeys) {
        context_->rewriter.RemoveEntry(descriptor.number, key);
      }
    }
  }

  static bool CanBeRead(std::string_view program) {
    try {
      return fonts::FontProgram::Open(program) != nullptr;
    } catch (const fonts::LibraryMissing&) {
      return true;  // nobody can tell
    }
  }

  CheckContext* context_;
  pdf::Document* document_;
  const pdf::ResourceNode* node_;
  std::uint32_t page_;
  pdf::Arena arena_;
};

}  // namespace

void CheckFont(CheckContext& context, const pdf::ResourceNode& font, std::uint32_t page) {
  Checker(context, font, page).Run();
}

}  // namespace TarnixTools::engines::repair
