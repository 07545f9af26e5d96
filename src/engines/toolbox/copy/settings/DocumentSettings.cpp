#include "engines/toolbox/copy/settings/DocumentSettings.h"

#include <algorithm>
#include <array>

#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/syntax/Parser.h"
#include "pdf/tree/DocumentVersion.h"
#include "pdf/tree/NameTree.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

constexpr std::array<std::string_view, 6> kPageModes = {
    "UseNone", "UseOutlines", "UseThumbs", "FullScreen", "UseOC", "UseAttachments"};
constexpr std::array<std::string_view, 6> kPageLayouts = {
    "SinglePage", "OneColumn", "TwoColumnLeft", "TwoColumnRight", "TwoPageLeft", "TwoPageRight"};

// ISO 32000-2, table 147, without /PrintPageRange.
constexpr std::array<std::string_view, 17> kPreferences = {"HideToolbar",
                                                           "HideMenubar",
                                                           "HideWindowUI",
                                                           "FitWindow",
                                                           "CenterWindow",
                                                           "DisplayDocTitle",
                                                           "NonFullScreenPageMode",
                                                           "Direction",
                                                           "ViewArea",
                                                           "ViewClip",
                                                           "PrintArea",
                                                           "PrintClip",
                                                           "PrintScaling",
                                                           "Duplex",
                                                           "PickTrayByPDFSize",
                                                           "NumCopies",
                                                           "Enforce"};

template <typename Names>
bool Contains(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

std::string NameText(const Object& value) {
  std::string text;
  pdf::AppendName(text, value.Text());
  return text;
}

// Empty for what is no string, and for an empty one. One string has one text, in whatever form the
// source writes it.
std::string StringText(const Object& value) {
  std::string text;
  if (value.IsString() && !value.Text().empty()) {
    pdf::AppendString(text, value.Text(), false);
  }
  return text;
}

std::uint64_t CountNames(pdf::Document& document, const Object& tree) {
  std::uint64_t count = 0;
  pdf::ReadNameTree(document, tree, [&](std::string_view, const Object&) { ++count; });
  return count;
}

// Values that a viewer preference may have.
bool IsPlain(const Object& value) {
  const auto is_scalar = [](const Object& v) {
    return v.IsBoolean() || v.IsName() || v.IsInteger();
  };
  return is_scalar(value) ||
         (value.IsArray() && std::all_of(value.Items().begin(), value.Items().end(), is_scalar));
}

void AppendEntry(std::string& out, std::string_view key, const std::string& value) {
  if (!value.empty()) {
    pdf::AppendName(out, key);
    pdf::AppendToken(out, value);
  }
}

void AppendArray(std::string& out, std::string_view key, const std::string& items) {
  AppendEntry(out, key, items.empty() ? items : "[" + items + "]");
}

// Whether a value of /OpenAction is, or leads to, a place in the document.
bool IsPlace(const Object& opening) {
  return opening.IsArray() || opening.IsString() || opening.IsName() ||
         (opening.IsDictionary() && (opening.Get("S").IsName("GoTo") || !opening.Has("S")));
}

// What the header does not say.
void AppendVersion(std::string& catalog, int version, int header_version) {
  if (version > header_version) {
    catalog += "/Version/" + std::to_string(version / 10) + "." + std::to_string(version % 10);
  }
}

}  // namespace

SourceDocumentSettings::SourceDocumentSettings(SourceDocument& source) {
  pdf::Document& document = source.document();
  pdf::Arena arena;
  const auto resolve = [&](const Object& value) { return document.Resolve(value, arena); };
  const Object catalog = document.Catalog(arena);
  language_ = StringText(resolve(catalog.Get("Lang")));
  base_address_ = StringText(resolve(resolve(catalog.Get("URI")).Get("Base")));
  version_ = pdf::DocumentVersion(document);
  const Object names = resolve(catalog.Get("Names"));
  attachment_count_ = CountNames(document, names.Get("EmbeddedFiles"));
  ReadOpening(resolve(catalog.Get("OpenAction")));
  script_count_ +=
      CountNames(document, names.Get("JavaScript")) + resolve(catalog.Get("AA")).Entries().size();
  thread_count_ = resolve(catalog.Get("Threads")).Items().size();
}

void SourceDocumentSettings::ReadOpening(const Object& opening) {
  has_opening_view_ = IsPlace(opening);
  script_count_ += opening.IsDictionary() && (!has_opening_view_ || opening.Has("Next")) ? 1 : 0;
}

void TargetDocumentSettings::NoteSource(const SourceDocumentSettings& source, bool is_whole) {
  ++source_count_;
  whole_count_ += is_whole ? 1 : 0;
  version_ = std::max(version_, source.version());
  if (source_count_ == 1) {
    base_address_ = source.base_address();
  } else if (base_address_ != source.base_address()) {
    base_address_.clear();
  }
}

void TargetDocumentSettings::AddExtension(std::string_view name, Extension extension) {
  const auto [known, is_new] = extensions_.try_emplace(std::string(name), extension);
  if (!is_new && known->second.rank < extension.rank) {
    known->second = std::move(extension);
  }
}

void TargetDocumentSettings::AddAssociatedFiles(std::string_view items) {
  pdf::AppendToken(associated_files_, items);
}

void TargetDocumentSettings::Finish(pdf::FileWriter& writer, std::string& catalog,
                                    std::string& names) {
  AppendViewer(catalog);
  AppendEntry(catalog, "URI", base_address_.empty() ? "" : "<</Base" + base_address_ + ">>");
  AppendVersion(catalog, version_, writer.version());
  if (!extensions_.empty()) {
    catalog += "/Extensions<<";
    for (const auto& [name, extension] : extensions_) {
      AppendEntry(catalog, name, extension.text);
    }
    catalog += ">>";
  }
  AppendEntry(catalog, "OpenAction", opening_);
  AppendArray(catalog, "OutputIntents", output_intents_);
  AppendArray(catalog, "AF", associated_files_);
  attachments_.Finish(writer, names);
}

void TargetDocumentSettings::AppendViewer(std::string& catalog) const {
  if (Shows(viewer_.page_mode, catalog)) {
    AppendEntry(catalog, "PageMode", viewer_.page_mode);
  }
  AppendEntry(catalog, "PageLayout", viewer_.page_layout);
  const std::string preferences =
      viewer_.preferences + (has_several_sources() ? "" : viewer_.print_ranges);
  AppendEntry(catalog, "ViewerPreferences",
              preferences.empty() ? preferences : "<<" + preferences + ">>");
  AppendEntry(catalog, "Collection", has_several_sources() ? "" : viewer_.collection);
}

// Whether there is what the page mode shows.
bool TargetDocumentSettings::Shows(std::string_view page_mode, std::string_view catalog) const {
  if (page_mode == "/UseAttachments") {
    return !attachments_.is_empty();
  }
  if (page_mode != "/UseOutlines" && page_mode != "/UseOC") {
    return true;
  }
  pdf::Arena arena;
  pdf::Parser parser(arena);
  const std::string text = std::string(catalog) + ">>";
  pdf::Lexer lexer(text, true);
  Object entries;
  parser.Parse(lexer, nullptr, entries);
  return entries.Has(page_mode == "/UseOC" ? "OCProperties" : "Outlines");
}

void DocumentSettingsCopier::Copy() {
  const SourceDocumentSettings& source = context_->source().parts().settings();
  context_->parts().settings.NoteSource(source, context_->is_whole());
  ReportLeftOut(source);
  const Object catalog = context_->document().Catalog(arena_);
  CopyExtensions(catalog);
  if (context_->is_whole()) {
    CopyWhole(catalog);
  } else if (context_->parts().settings.is_first() &&
             context_->parts().metadata.claim().level() != 0) {
    CopyOutputIntents(catalog);  // what the colours of the pages are, by ISO 19005-1, 6.2.3.3
  }
  const bool opens_there = context_->is_whole() && CopyOpening(catalog);
  context_->report().Add(
      CopiedKind::kViewerSettings, opens_there ? CopyOutcome::kKept : CopyOutcome::kDropped,
      opens_there ? "" : "where the document opens", source.has_opening_view() ? 1 : 0);
}

void DocumentSettingsCopier::ReportLeftOut(const SourceDocumentSettings& source) {
  CopyReport& report = context_->report();
  report.Add(CopiedKind::kScript, CopyOutcome::kDropped, "runs when the document is used",
             source.script_count());
  report.Add(CopiedKind::kArticleThread, CopyOutcome::kDropped, "leads through the whole document",
             source.thread_count());
  context_->parts().metadata.Report(context_->source().parts().metadata(), report);
  if (!context_->is_whole()) {
    report.Add(CopiedKind::kAttachment, CopyOutcome::kDropped, "belongs to the whole document",
               source.attachment_count());
  }
}

// By base version, then by level; several in an array count as the highest of them.
std::int64_t DocumentSettingsCopier::RankOf(const Object& extension) {
  constexpr std::int64_t kMaxLevel = 99'999;
  std::int64_t rank = 0;
  for (const Object& item :
       extension.IsArray() ? extension.Items() : std::span<const Object>(&extension, 1)) {
    const Object version = Resolve(item);
    const std::int64_t level = Resolve(version.Get("ExtensionLevel")).IntegerOr(0);
    rank = std::max(rank,
                    pdf::VersionOf(Resolve(version.Get("BaseVersion")).Text()) * (kMaxLevel + 1) +
                        std::clamp<std::int64_t>(level, 0, kMaxLevel));
  }
  return rank;
}

Object DocumentSettingsCopier::Resolve(const Object& value) {
  return context_->document().Resolve(value, arena_);
}

void DocumentSettingsCopier::CopyWhole(const Object& catalog) {
  CopyAttachments(catalog);
  CopyAssociatedFiles(catalog);
  if (context_->parts().settings.is_first_whole()) {
    CopyOutputIntents(catalog);
    CopyViewer(catalog);
  }
}

void DocumentSettingsCopier::CopyAttachments(const Object& catalog) {
  const Object tree = Resolve(catalog.Get("Names")).Get("EmbeddedFiles");
  if (!tree.IsNull()) {
    AttachmentCopier(*context_).Copy(tree);
  }
}

void DocumentSettingsCopier::CopyAssociatedFiles(const Object& catalog) {
  std::uint64_t count = 0;
  context_->parts().settings.AddAssociatedFiles(CopyDictionaries(catalog.Get("AF"), count));
}

void DocumentSettingsCopier::CopyOutputIntents(const Object& catalog) {
  std::uint64_t count = 0;
  context_->parts().settings.set_output_intents(
      CopyDictionaries(catalog.Get("OutputIntents"), count));
  context_->report().Add(CopiedKind::kOutputIntent, CopyOutcome::kKept, {}, count);
}

// The dictionaries in an array, or a dictionary in place of one, as items.
std::string DocumentSettingsCopier::CopyDictionaries(const Object& value, std::uint64_t& count) {
  const Object array = Resolve(value);
  const auto items = array.IsDictionary() ? std::span(&value, 1) : array.Items();
  std::string text;
  for (const Object& item : items) {
    const std::uint32_t number = item.AsReference().number;
    const std::uint32_t target_number = number == 0 ? 0 : context_->objects().Map(number);
    if (target_number != 0) {
      pdf::AppendReference(text, target_number);
      ++count;
    } else if (item.IsDictionary()) {
      context_->objects().Append(text, item);
      ++count;
    }
  }
  return text;
}

void DocumentSettingsCopier::CopyViewer(const Object& catalog) {
  TargetDocumentSettings::ViewerSettings viewer;
  const Object mode = Resolve(catalog.Get("PageMode"));
  if (mode.IsName() && Contains(kPageModes, mode.Text())) {
    viewer.page_mode = NameText(mode);
  }
  const Object layout = Resolve(catalog.Get("PageLayout"));
  if (layout.IsName() && Contains(kPageLayouts, layout.Text())) {
    viewer.page_layout = NameText(layout);
  }
  CopyPreferences(viewer, Resolve(catalog.Get("ViewerPreferences")));
  if (!context_->parts().settings.has_several_sources()) {
    viewer.collection = CopyCollection(catalog.Get("Collection"));
  }
  const auto count = static_cast<std::uint64_t>(!viewer.page_mode.empty()) +
                     static_cast<std::uint64_t>(!viewer.page_layout.empty()) +
                     static_cast<std::uint64_t>(!viewer.preferences.empty());
  context_->report().Add(CopiedKind::kViewerSettings, CopyOutcome::kKept, {}, count);
  context_->parts().settings.set_viewer(std::move(viewer));
}

void DocumentSettingsCopier::CopyPreferences(TargetDocumentSettings::ViewerSettings& viewer,
                                             const Object& dictionary) {
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    const bool is_range = entry.Key() == "PrintPageRange";
    if (!is_range && !Contains(kPreferences, entry.Key())) {
      continue;
    }
    const Object value = Resolve(entry.value);
    if (IsPlain(value) && (!is_range || KeepsPageOrder())) {
      std::string& text = is_range ? viewer.print_ranges : viewer.preferences;
      pdf::AppendName(text, entry.Key());
      pdf::AppendObject(text, value);
    }
  }
}

// Whether every page has the place in the target that it has in the source.
bool DocumentSettingsCopier::KeepsPageOrder() const {
  return std::all_of(
      context_->requests().begin(), context_->requests().end(),
      [](const PageRequest& request) { return request.target_position == request.page_index; });
}

std::string DocumentSettingsCopier::CopyCollection(const Object& value) {
  const Object dictionary = Resolve(value);
  std::string text;
  if (!dictionary.IsDictionary()) {
    return text;
  }
  const std::uint32_t number = value.AsReference().number;
  const std::uint32_t target_number = number == 0 ? 0 : context_->objects().Map(number);
  if (target_number != 0) {
    pdf::AppendReference(text, target_number);
  } else if (number == 0) {
    context_->objects().Append(text, dictionary);
  }
  return text;
}

// A place in the first source. It is an array, or a dictionary that leads there.
bool DocumentSettingsCopier::CopyOpening(const Object& catalog) {
  if (context_->parts().settings.has_several_sources()) {
    return false;
  }
  const Object opening = Resolve(catalog.Get("OpenAction"));
  const auto place = IsPlace(opening) ? context_->destinations().Copy(opening) : std::nullopt;
  if (!place) {
    return false;
  }
  const bool is_array = opening.IsArray();
  context_->parts().settings.set_opening(is_array ? *place : "<</S/GoTo/D" + *place + ">>");
  return true;
}

// Of the versions and levels that sources name for an extension, the latest.
void DocumentSettingsCopier::CopyExtensions(const Object& catalog) {
  for (const pdf::DictionaryEntry& entry : Resolve(catalog.Get("Extensions")).Entries()) {
    const Object extension = Resolve(entry.value);
    if (entry.Key() != "Type" && (extension.IsDictionary() || extension.IsArray())) {
      std::string text;
      context_->objects().Append(text, extension);
      context_->parts().settings.AddExtension(entry.Key(), {RankOf(extension), std::move(text)});
    }
  }
}

}  // namespace TarnixTools::engines::toolbox
