#include "engines/repair/checks/ContentCheck.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "engines/repair/Limits.h"
#include "engines/repair/checks/MendedContent.h"
#include "engines/repair/checks/StreamEntries.h"
#include "pdf/Error.h"
#include "pdf/content/ContentBalance.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::ContentTrouble;
using pdf::Object;
using pdf::OperatorCode;
using pdf::ResourceCategory;
using pdf::ResourceKind;

// What each content costs beside its bytes.
constexpr std::uint64_t kBytesPerContent = 256;

// What is wrong with one content.
struct Faults {
  std::uint32_t number = 0;
  bool is_page = false;
  bool is_unreadable = false;
  bool is_damaged = false;
  bool is_too_deep = false;
  bool is_text_open = false;
  std::size_t unknown_operators = 0;
  std::size_t missing_operands = 0;
  std::size_t unbalanced = 0;
  std::size_t unknown_states = 0;
  std::size_t sections = 0;  // of compatibility that are open
  std::set<std::pair<ResourceCategory, std::string>> unknown_resources;
  std::set<std::pair<ResourceCategory, std::string>> dead_resources;

  bool NeedsMending() const {
    return is_damaged || is_text_open || unknown_operators > 0 || missing_operands > 0 ||
           unbalanced > 0;
  }
};

std::string Counted(std::size_t count, std::string_view what) {
  return std::to_string(count) + " " + std::string(what);
}

class Checker : public pdf::ContentVisitor {
 public:
  Checker(CheckContext& context, std::uint64_t allowance)
      : context_(&context),
        walker_(context.document, *this,
                {.names = true,
                 .operators = true,
                 .forms = true,
                 .patterns = true,
                 .soft_masks = true,
                 .glyphs = true,
                 .appearances = true}),
        allowance_(allowance) {}

  void CheckPage(std::size_t index) {
    index_ = index;
    open_.clear();
    if (allowance_ == 0) {
      Add(ProblemCode::kContentTooMuch, Outcome::kWorkedAround,
          {.number = context_->pages.pages()[index].number});
      return;
    }
    walker_.BeginPage(context_->pages, index);
    walker_.Run();
  }

  bool EnterContent(const pdf::ContentEntry& entry) override {
    const bool is_page = entry.kind == ResourceKind::kPage;
    if (!is_page && !seen_.insert(entry.number).second) {
      return false;
    }
    open_.push_back({.number = entry.number, .is_page = is_page});
    return true;
  }

  void LeaveContent(const pdf::ContentEntry& entry) override {
    const Faults faults = std::move(open_.back());
    open_.pop_back();
    allowance_ -= std::min<std::uint64_t>(allowance_, entry.bytes + kBytesPerContent);
    Report(faults, entry);
  }

  void Operator(const pdf::Operation& operation, std::size_t /*offset*/) override {
    Faults& faults = open_.back();
    if (!pdf::IsOperator(operation.code)) {
      faults.unknown_operators += faults.sections == 0 ? 1 : 0;
      return;
    }
    const int operands = pdf::OperandsOf(operation.code);
    if (operation.operand_count < static_cast<std::size_t>(operands)) {
      ++faults.missing_operands;
    }
    NoteNesting(operation.code, faults);
  }

  void LookUp(ResourceCategory category, std::string_view name, const Object& entry) override {
    if (category == ResourceCategory::kProperties) {
      return;  // readers do without
    }
    if (entry.IsNull() && category == ResourceCategory::kExtGState) {
      ++open_.back().unknown_states;
    } else if (entry.IsNull()) {
      open_.back().unknown_resources.emplace(category, name);
    } else if (IsDead(entry)) {
      open_.back().dead_resources.emplace(category, name);
    }
  }

  void Trouble(ContentTrouble trouble, std::size_t /*offset*/) override {
    if (open_.empty()) {
      return;
    }
    Faults& faults = open_.back();
    switch (trouble) {
      case ContentTrouble::kUnreadable:
        faults.is_unreadable = true;
        break;
      case ContentTrouble::kDamaged:
        faults.is_damaged = true;
        break;
      case ContentTrouble::kOperandsLeft:
      case ContentTrouble::kSurplusRestore:
      case ContentTrouble::kUnclosedSave:
      case ContentTrouble::kSurplusMarkEnd:
      case ContentTrouble::kUnclosedMark:
        ++faults.unbalanced;
        break;
      case ContentTrouble::kLoop:
      case ContentTrouble::kTooDeep:
        faults.is_too_deep = true;
        break;
      default:  // operands and names are looked at here
        break;
    }
  }

 private:
  static void NoteNesting(std::uint32_t code, Faults& faults) {
    if (code == OperatorCode("BT") || code == OperatorCode("ET")) {
      const bool opens = code == OperatorCode("BT");
      faults.unbalanced += faults.is_text_open == opens ? 1 : 0;
      faults.is_text_open = opens;
    } else if (code == OperatorCode("BX")) {
      ++faults.sections;
    } else if (code == OperatorCode("EX") && faults.sections > 0) {
      --faults.sections;
    }
  }

  bool IsDead(const Object& entry) {
    if (!entry.IsReference()) {
      return false;
    }
    const auto [place, is_new] = dead_.try_emplace(entry.AsReference().number);
    if (is_new) {
      pdf::Arena arena;
      place->second = context_->document.Resolve(entry, arena).IsNull();
    }
    return place->second;
  }

  void Add(ProblemCode code, Outcome outcome, const Faults& faults, std::string detail = {}) {
    context_->problems.Add({.code = code,
                            .outcome = outcome,
                            .page = static_cast<std::uint32_t>(index_ + 1),
                            .object = faults.number,
                            .detail = std::move(detail)});
  }

  void Report(const Faults& faults, const pdf::ContentEntry& entry) {
    if (faults.is_unreadable && faults.is_page) {
      ReportMissing(faults, entry);
    }
    if (faults.is_damaged) {
      ReportDamage(faults, entry);
    }
    const std::size_t unbalanced = faults.unbalanced + (faults.is_text_open ? 1 : 0);
    if (unbalanced > 0) {
      Add(ProblemCode::kContentUnbalanced, Outcome::kFixed, faults, Counted(unbalanced, "times"));
    }
    if (faults.unknown_operators > 0) {
      Add(ProblemCode::kContentOperatorUnknown, Outcome::kFixed, faults,
          Counted(faults.unknown_operators, "times"));
    }
    if (faults.missing_operands > 0) {
      Add(ProblemCode::kContentOperands, Outcome::kFixed, faults,
          Counted(faults.missing_operands, "times"));
    }
    if (faults.is_too_deep) {
      Add(ProblemCode::kContentTooDeep, Outcome::kWorkedAround, faults);
    }
    ReportResources(faults, entry);
    if (faults.NeedsMending()) {
      Mend(faults, entry);
    }
  }

  // What of a page's contents is no stream. Streams that cannot be decoded are another's business.
  void ReportMissing(const Faults& faults, const pdf::ContentEntry& entry) {
    const Object contents = entry.dictionary.Get("Contents");
    const pdf::ContentStreams streams = pdf::StreamsOfContents(context_->document, contents);
    std::size_t missing = streams.is_regular ? 0 : 1;
    std::string kept = "[";
    for (const std::uint32_t number : streams.numbers) {
      const bool is_there = context_->document.IsStream(number);
      missing += is_there ? 0 : 1;
      if (is_there) {
        pdf::AppendReference(kept, number);
      }
    }
    if (missing == 0) {
      return;
    }
    Add(ProblemCode::kContentMissing, Outcome::kLost, faults);
    if (faults.number != 0) {
      context_->rewriter.SetEntry(faults.number, "Contents", kept + "]");
    }
  }

  void ReportDamage(const Faults& faults, const pdf::ContentEntry& entry) {
    const bool is_cut = pdf::MeasureBalance(BytesOf(context_->document, entry)).is_cut();
    Add(is_cut ? ProblemCode::kContentCutOff : ProblemCode::kContentDamaged, Outcome::kWorkedAround,
        faults);
  }

  void ReportResources(const Faults& faults, const pdf::ContentEntry& entry) {
    if (!faults.unknown_resources.empty() && entry.scope.resources.IsNull()) {
      Add(ProblemCode::kResourcesMissing, Outcome::kLost, faults);
    } else {
      ReportNames(ProblemCode::kResourceUnknown, faults.unknown_resources, faults);
    }
    ReportNames(ProblemCode::kResourceDead, faults.dead_resources, faults);
    if (faults.unknown_states > 0) {
      Add(ProblemCode::kGraphicsStateUnknown, Outcome::kWorkedAround, faults,
          Counted(faults.unknown_states, "times"));
    }
  }

  void ReportNames(ProblemCode code,
                   const std::set<std::pair<ResourceCategory, std::string>>& names,
                   const Faults& faults) {
    std::map<ResourceCategory, std::size_t> counts;
    for (const auto& [category, name] : names) {
      ++counts[category];
    }
    for (const auto& [category, count] : counts) {
      const auto index = static_cast<std::size_t>(category);
      Add(code, Outcome::kLost, faults, Counted(count, pdf::kResourceCategoryKeys[index]));
    }
  }

  static std::string BytesOf(pdf::Document& document, const pdf::ContentEntry& entry) {
    if (entry.kind == ResourceKind::kPage) {
      return pdf::ReadPageContents(document, entry.dictionary.Get("Contents")).bytes;
    }
    const auto decoded = document.TryDecodeStream(entry.number, pdf::limits::kMaxContentBytes);
    return decoded ? decoded->data : std::string();
  }

  // Content is mended when its turn to be written has come: it is not held before.
  void Mend(const Faults& faults, const pdf::ContentEntry& entry) {
    if (faults.is_page) {
      MendPage(faults, entry);
      return;
    }
    context_->rewriter.ChangeLater(entry.number,
                                   [&document = context_->document, number = entry.number] {
                                     return MendedStream(document, number);
                                   });
  }

  // The page gets one stream in place of all that it has, shared with pages that have the same.
  void MendPage(const Faults& faults, const pdf::ContentEntry& entry) {
    if (faults.number == 0) {
      return;
    }
    pdf::Document& document = context_->document;
    const auto [place, is_new] = mended_.try_emplace(
        pdf::StreamsOfContents(document, entry.dictionary.Get("Contents")).numbers);
    if (is_new) {
      place->second = context_->rewriter.AddLater([&document, number = faults.number] {
        return pdf::ObjectChange::Stream("<<>>", MendedPage(document, number));
      });
    }
    std::string text;
    pdf::AppendReference(text, place->second);
    context_->rewriter.SetEntry(faults.number, "Contents", text);
  }

  static std::string MendedPage(pdf::Document& document, std::uint32_t number) {
    pdf::Arena arena;
    const Object page = document.Load({.number = number, .generation = 0}, arena);
    const pdf::PageContents contents = pdf::ReadPageContents(document, page.Get("Contents"));
    std::vector<std::string_view> parts;
    for (std::size_t i = 0; i < contents.parts.size(); ++i) {
      const std::size_t end =
          i + 1 < contents.parts.size() ? contents.parts[i + 1].begin : contents.bytes.size();
      const std::size_t begin = contents.parts[i].begin;
      parts.push_back(std::string_view(contents.bytes).substr(begin, end - begin));
    }
    return MendedContent(parts);
  }

  // A form, pattern or glyph with its own dictionary.
  static pdf::ObjectChange MendedStream(pdf::Document& document, std::uint32_t number) {
    pdf::Arena arena;
    std::string text = "<<";
    AppendEntriesWithoutData(text, document.Load({.number = number, .generation = 0}, arena));
    const auto decoded = document.TryDecodeStream(number, pdf::limits::kMaxContentBytes);
    return pdf::ObjectChange::Stream(text + ">>",
                                     decoded ? MendedContent(decoded->data) : std::string());
  }

  CheckContext* context_;
  pdf::ContentWalker walker_;
  std::uint64_t allowance_;  // bytes of content that may still be looked at
  std::size_t index_ = 0;    // of the page
  std::vector<Faults> open_;
  std::unordered_set<std::uint32_t> seen_;
  std::unordered_map<std::uint32_t, bool> dead_;                // by number of a resource
  std::map<std::vector<std::uint32_t>, std::uint32_t> mended_;  // by streams of a page
};

}  // namespace

void CheckContent(CheckContext& context) {
  CheckContentUpTo(
      limits::kCheckedAllowance + limits::kCheckedRatio * context.document.reader().size(),
      context);
}

// What cannot be read in a page has been listed where it was met first.
void CheckContentUpTo(std::uint64_t allowance, CheckContext& context) {
  Checker checker(context, allowance);
  for (std::size_t i = 0; i < context.pages.pages().size(); ++i) {
    pdf::UnlessDamaged(0, [&] {
      checker.CheckPage(i);
      return 0;
    });
  }
}

}  // namespace TarnixTools::engines::repair
