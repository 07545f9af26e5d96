#include "engines/repair/checks/FileCheck.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engines/repair/file/FileSyntax.h"
#include "pdf/Limits.h"

namespace TarnixTools::engines::repair {

namespace {

// ISO 32000-2, 7.5.5: one more than the highest object number. Objects beyond are none to a reader
// that goes by it.
void CheckSize(CheckContext& context, std::optional<std::int64_t> given) {
  const auto limit = static_cast<std::int64_t>(context.document.object_limit());
  const std::string detail =
      (given ? std::to_string(*given) : "none") + " given, " + std::to_string(limit) + " there";
  const std::int64_t size = given.value_or(-1);
  if (size < limit || size - 1 > pdf::limits::kMaxObjectNumber) {
    context.problems.Add({.code = ProblemCode::kXrefSizeWrong, .detail = detail});
  } else if (size > limit) {
    context.problems.Add({.code = ProblemCode::kXrefSizeLarge, .detail = detail});
  }
}

// The section that is named by a "startxref" at the offset; 0 for none.
std::uint64_t SectionNamedAt(pdf::ObjectReader& reader, std::uint64_t offset) {
  constexpr std::string_view kKeyword = "startxref";
  pdf::TokenStream tokens(reader, offset + kKeyword.size());
  const pdf::Token value = tokens.Next();
  const bool is_usable = value.kind == pdf::Token::Kind::kInteger && value.integer > 0;
  return is_usable ? static_cast<std::uint64_t>(value.integer) : 0;
}

// An update that the newest one passes over, although it was made after what that one goes on from.
void CheckUpdates(CheckContext& context, const FileSyntax& syntax) {
  if (!syntax.newest_section() || !syntax.previous() || *syntax.previous() < 0) {
    return;
  }
  pdf::ObjectReader& reader = context.document.reader();
  const auto base = static_cast<std::uint64_t>(*syntax.previous());
  std::uint64_t from = base;
  while (const std::optional<std::uint64_t> at =
             reader.Find("startxref", from, *syntax.newest_section())) {
    from = *at + 1;
    const std::uint64_t section = SectionNamedAt(reader, *at);
    const bool is_passed_over = section > base && section < *at && !syntax.IsSection(section) &&
                                !syntax.IsSection(section + syntax.header_offset());
    if (is_passed_over && !syntax.IsInStream(*at)) {
      context.problems.Add({.code = ProblemCode::kUpdatesInConflict,
                            .outcome = Outcome::kWorkedAround,
                            .offset = section});
    }
  }
}

void CheckTrailer(CheckContext& context) {
  pdf::Arena arena;
  const pdf::Object info = context.document.trailer().Get("Info");
  const pdf::Object value = context.document.Resolve(info, arena);
  const bool is_missing = !context.document.Exists(info.AsReference().number);
  if (!info.IsNull() && !value.IsDictionary() && !(info.IsReference() && is_missing)) {
    context.problems.Add({.code = ProblemCode::kTrailerEntryInvalid, .detail = "Info"});
  }
  if (!info.IsNull() && !value.IsDictionary()) {
    context.rewriter.RemoveTrailerEntry("Info");
  }
}

// What encryption says twice, and differently.
void CheckEncryption(CheckContext& context) {
  const pdf::Security* security = context.document.security();
  if (security != nullptr && !security->PermissionsAreGenuine()) {
    context.problems.Add({.code = ProblemCode::kEncryptionDamaged,
                          .outcome = Outcome::kWorkedAround,
                          .detail = "Perms"});
  }
}

}  // namespace

void CheckFile(CheckContext& context) {
  FileSyntax syntax(context.problems);
  context.document.Observe(syntax);
  if (!context.document.is_rebuilt()) {
    if (syntax.has_trailer()) {
      CheckSize(context, syntax.size());
    }
    CheckUpdates(context, syntax);
  }
  CheckTrailer(context);
  CheckEncryption(context);
}

}  // namespace TarnixTools::engines::repair
