#include "engines/toolbox/copy/fields/FormFields.h"

#include <algorithm>
#include <array>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::DictionaryEntry;
using pdf::Object;

namespace {

// Entries that are written by other means or lead out of the object.
constexpr std::array<std::string_view, 4> kStructuralKeys = {"P", "StructParent", "Parent", "Kids"};

// Entries of fields (tables 226, 228, 229, 232, 234, 235) that widgets do not have.
constexpr std::array<std::string_view, 17> kFieldKeys = {"FT", "T",  "TU",   "TM", "Ff",    "V",
                                                         "DV", "DA", "Q",    "DS", "RV",    "Opt",
                                                         "TI", "I",  "Lock", "SV", "MaxLen"};

// Entries of widgets (tables 166 and 191) that fields do not have.
constexpr std::array<std::string_view, 20> kWidgetKeys = {
    "Type", "Subtype", "Rect", "Contents", "NM", "M",  "F",    "AP", "AS", "Border",
    "C",    "OC",      "AF",   "ca",       "CA", "BM", "Lang", "H",  "MK", "BS"};

// Events of fields in /AA (table 199); the others are those of annotations.
constexpr std::array<std::string_view, 4> kFieldEvents = {"K", "F", "V", "C"};

// What a signature field loses: its signature does not hold in another file.
constexpr std::array<std::string_view, 3> kSignatureKeys = {"V", "Lock", "SV"};

template <std::size_t Size>
bool IsOneOf(const std::array<std::string_view, Size>& keys, std::string_view key) {
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

Object LoadForm(SourceDocument& source, pdf::Arena& arena) {
  pdf::Document& document = source.document();
  return document.Resolve(document.Catalog(arena).Get("AcroForm"), arena);
}

}  // namespace

SourceFormFields::SourceFormFields(SourceDocument& source)
    : form_(LoadForm(source, arena_)),
      needs_appearances_(
          source.document().Resolve(form_.Get("NeedAppearances"), arena_).BooleanOr(false)),
      has_xfa_(!source.document().Resolve(form_.Get("XFA"), arena_).IsNull()),
      tree_(source, form_),
      defaults_(source.document(), form_, arena_) {}

void TargetFormFields::Finish(pdf::FileWriter& writer, std::string& catalog) {
  if (roots_.empty()) {
    return;
  }
  std::string form = "<</Fields[";
  for (const std::uint32_t root : roots_) {
    pdf::AppendReference(form, root);
  }
  form += ']';
  defaults_.AppendTo(form);
  if (needs_appearances_) {
    form += "/NeedAppearances true";
  }
  if (!calculations_.empty()) {
    form += "/CO[";
    for (const std::uint32_t field : calculations_) {
      pdf::AppendReference(form, field);
    }
    form += ']';
  }
  const std::uint32_t number = writer.Reserve();
  writer.WriteObject(number, form + ">>");
  catalog += "/AcroForm";
  pdf::AppendReference(catalog, number);
}

SourceFormFields& FormFieldCopier::Source() {
  return context_->source().parts().form_fields();
}

// Annotations of a page, when its widgets are asked for.
std::span<const std::uint32_t> FormFieldCopier::WidgetsOf(const PageRequest& request) {
  if ((request.options & kCopyFormFields) == 0) {
    return {};
  }
  return context_->source().parts().annotations().OfPage(request.page_index);
}

void FormFieldCopier::Prepare() {
  SourceFormFields& source = Source();
  if (source.has_xfa()) {
    context_->report().Add(CopiedKind::kXfaForm, CopyOutcome::kDropped, "not carried over");
  }
  const FieldTree& tree = source.tree();
  if (tree.nodes().empty()) {
    return;
  }
  for (const PageRequest& request : context_->requests()) {
    for (const std::uint32_t number : WidgetsOf(request)) {
      const std::uint32_t node = tree.Find(number);
      if (node != FieldTree::kNone && tree.nodes()[node].has_type) {
        Keep(node);
      }
    }
  }
  if (context_->is_whole()) {
    KeepFieldsWithoutWidgets();
  }
  SettleNames();
}

// They were never on a page, so none of their pages is missing.
void FormFieldCopier::KeepFieldsWithoutWidgets() {
  const auto& nodes = Source().tree().nodes();
  for (std::uint32_t node = 0; node < nodes.size(); ++node) {
    if (FieldTree::IsTerminal(nodes[node])) {
      Keep(node);
    }
  }
}

// How often an annotation is on the copied pages.
std::uint32_t FormFieldCopier::CopiesOf(std::uint32_t number) {
  if (!has_counted_) {
    has_counted_ = true;
    std::uint32_t page = 0;
    for (const PageRequest& request : context_->requests()) {
      ++page;
      for (const std::uint32_t annotation : WidgetsOf(request)) {
        Copies& copies = copies_[annotation];
        copies.count += copies.last_page == page ? 0 : 1;  // one for a page that lists it twice
        copies.last_page = page;
      }
    }
  }
  const auto found = copies_.find(number);
  return found == copies_.end() ? 0 : found->second.count;
}

// What has to be done before the first field is kept.
void FormFieldCopier::Begin() {
  if (has_begun_) {
    return;
  }
  has_begun_ = true;
  SourceFormFields& source = Source();
  TargetFormFields& target = context_->parts().form_fields;
  differences_ =
      target.defaults().Add(source.defaults(), context_->objects(), context_->is_whole());
  if (source.needs_appearances()) {
    target.RequireAppearances();
  }
}

// Keeps a node and all above it. Null when that can no longer be.
FormFieldCopier::Kept* FormFieldCopier::Keep(std::uint32_t node) {
  const auto& nodes = Source().tree().nodes();
  std::vector<std::uint32_t> path;
  for (std::uint32_t at = node; at != FieldTree::kNone && !kept_.contains(at);
       at = nodes[at].parent) {
    path.push_back(at);
  }
  for (auto at = path.rbegin(); at != path.rend(); ++at) {
    if (!KeepOne(*at)) {
      return nullptr;
    }
  }
  return &kept_[node];
}

bool FormFieldCopier::KeepOne(std::uint32_t index) {
  const FieldTree::Node& node = Source().tree().nodes()[index];
  // A parent that was written before its kid was found cannot take it.
  if (node.parent != FieldTree::kNone && kept_[node.parent].shape != Shape::kField) {
    return false;
  }
  Begin();
  pdf::ObjectCopier& objects = context_->objects();
  const std::uint32_t copies = node.is_widget ? CopiesOf(node.number) : 0;
  Kept kept;
  if (!node.is_field) {
    kept.shape = Shape::kWidget;
  } else if (copies == 1 && !node.has_kids) {
    kept.shape = Shape::kMerged;
    kept.number = objects.Map(node.number);
  } else {
    kept.number = context_->writer().Reserve();
    if (!objects.IsMapped(node.number)) {
      objects.Assign(node.number, kept.number);
    }
  }
  kept_.emplace(index, std::move(kept));
  return true;
}

// Where an earlier source's names are in the way, all names of this one count before the first of
// them is changed; and all are changed before the first action that may name them is copied.
void FormFieldCopier::SettleNames() {
  if (context_->parts().form_fields.names().empty()) {
    return;
  }
  const auto& nodes = Source().tree().nodes();
  std::vector<std::string> names;
  for (const std::uint32_t node : KeptNodes()) {
    if (nodes[node].parent == FieldTree::kNone) {
      arena_.Reset();
      pdf::Document& document = context_->document();
      const Object dictionary = document.Load({nodes[node].number, 0}, arena_);
      const Object name = document.Resolve(dictionary.Get("T"), arena_);
      if (name.Text().size() <= limits::kMaxFieldText) {
        names.push_back(pdf::TextStringToUtf8(name.Text()));
      }
    }
  }
  own_names_.insert(names.begin(), names.end());
  for (const std::string& name : names) {
    SettleName(name);
  }
}

// Several roots of one name in one source keep having one name. Returns what follows it in the
// target, or null.
const std::string* FormFieldCopier::SettleName(const std::string& name) {
  TakenNames& taken = context_->parts().form_fields.names();
  FieldRenames& renames = context_->field_renames();
  own_names_.insert(name);
  if (const std::string* suffix = renames.SuffixOf(name)) {
    return suffix;
  }
  if (!taken.Contains(name) || name.empty()) {
    new_names_.insert(name);
    return nullptr;
  }
  const std::string suffix = taken.SuffixFor(name, [this](const std::string& numbered) {
    return own_names_.contains(numbered) || new_names_.contains(numbered);
  });
  new_names_.insert(name + suffix);
  renames.Add(name, suffix);
  return renames.SuffixOf(name);
}

// A root field's name in the target.
std::string FormFieldCopier::NameFor(std::string_view name) {
  const std::string* suffix = SettleName(pdf::TextStringToUtf8(name));
  if (suffix == nullptr) {
    return std::string(name);
  }
  ++renamed_count_;
  return pdf::TextStringWith(name, *suffix);
}

std::vector<std::uint32_t> FormFieldCopier::KeptNodes() const {
  std::vector<std::uint32_t> nodes;
  for (const auto& [node, kept] : kept_) {
    nodes.push_back(node);
  }
  std::sort(nodes.begin(), nodes.end());
  return nodes;
}

void FormFieldCopier::CopyWidget(std::string& out, const Object& dictionary,
                                 std::uint32_t source_number, std::uint32_t target_number) {
  arena_.Reset();
  if (source_number == 0) {
    CopyUnnumbered(out, dictionary, target_number);
    return;
  }
  FieldTree& tree = Source().tree();
  const std::uint32_t index = tree.Adopt(source_number, dictionary);
  Kept* kept = nullptr;
  if (index != FieldTree::kNone && tree.nodes()[index].has_type) {
    kept = Keep(index);
  }
  if (kept == nullptr || (kept->shape == Shape::kMerged && !kept->widgets.empty())) {
    CopyPlain(out, dictionary);
    return;
  }
  kept->widgets.push_back(target_number);
  const FieldTree::Node& node = tree.nodes()[index];
  Written written;
  written.part = kept->shape == Shape::kField ? Part::kWidget : Part::kBoth;
  written.is_root = kept->shape == Shape::kMerged && node.parent == FieldTree::kNone;
  written.is_signature = node.is_signature;
  AppendEntries(out, dictionary, written);
  const std::uint32_t parent = kept->shape == Shape::kField      ? kept->number
                               : node.parent != FieldTree::kNone ? kept_[node.parent].number
                                                                 : 0;
  if (parent != 0) {
    out += "/Parent";
    pdf::AppendReference(out, parent);
  }
}

// A widget that belongs to no field.
void FormFieldCopier::CopyPlain(std::string& out, const Object& dictionary) {
  for (const DictionaryEntry& entry : dictionary.Entries()) {
    AppendEntry(out, entry, {});
  }
}

void FormFieldCopier::CopyUnnumbered(std::string& out, const Object& dictionary,
                                     std::uint32_t target_number) {
  FieldTree& tree = Source().tree();
  pdf::Document& document = context_->document();
  const std::uint32_t parent = tree.Adopt(0, dictionary);
  const bool has_type = document.Resolve(dictionary.Get("FT"), arena_).IsName();
  Written written;
  if (parent == FieldTree::kNone) {
    if (!has_type || !document.Resolve(dictionary.Get("T"), arena_).IsString()) {
      CopyPlain(out, dictionary);
      return;
    }
    Begin();
    unnumbered_roots_.push_back(target_number);
    written.is_root = true;
    written.is_signature = document.Resolve(dictionary.Get("FT"), arena_).IsName("Sig");
    AppendEntries(out, dictionary, written);
    return;
  }
  const FieldTree::Node& node = tree.nodes()[parent];
  Kept* kept = node.has_type || has_type ? Keep(parent) : nullptr;
  if (kept == nullptr || kept->shape != Shape::kField) {
    CopyPlain(out, dictionary);
    return;
  }
  unnumbered_.emplace_back(parent, target_number);
  written.is_signature = node.is_signature;
  AppendEntries(out, dictionary, written);
  out += "/Parent";
  pdf::AppendReference(out, kept->number);
}

void FormFieldCopier::AppendEntries(std::string& out, const Object& dictionary,
                                    const Written& written) {
  for (const DictionaryEntry& entry : dictionary.Entries()) {
    const bool is_left_out =
        (written.part == Part::kWidget && IsOneOf(kFieldKeys, entry.Key())) ||
        (written.part == Part::kField && written.is_widget && IsOneOf(kWidgetKeys, entry.Key()));
    if (!is_left_out) {
      AppendEntry(out, entry, written);
    }
  }
  if (written.is_root) {
    AppendMissingDefaults(out, dictionary);
  }
}

void FormFieldCopier::AppendEntry(std::string& out, const DictionaryEntry& entry,
                                  const Written& written) {
  const std::string_view key = entry.Key();
  if (IsOneOf(kStructuralKeys, key)) {
    return;
  }
  if (written.is_signature && IsOneOf(kSignatureKeys, key)) {
    if (key == "V") {
      context_->report().Add(CopiedKind::kSignature, CopyOutcome::kDropped,
                             "does not hold in another file");
    }
    return;
  }
  if (key == "A" || key == "AA" || key == "PA") {
    AppendActions(out, entry, written.part);
    return;
  }
  const bool is_name = key == "T" && written.is_root;
  if (is_name || (key == "DA" && !differences_.names.empty())) {
    const Object value = context_->document().Resolve(entry.value, arena_);
    if (value.IsString() && value.Text().size() <= limits::kMaxFieldText) {
      pdf::AppendName(out, key);
      pdf::AppendString(out,
                        is_name ? NameFor(value.Text()) : differences_.names.Apply(value.Text()),
                        value.is_hex());
      return;
    }
  }
  pdf::AppendName(out, key);
  context_->objects().Append(out, entry.value);
}

// Actions of field and widget, which stand in one place as long as the two are one object.
void FormFieldCopier::AppendActions(std::string& out, const DictionaryEntry& entry, Part part) {
  const std::string_view key = entry.Key();
  const Object actions = context_->document().Resolve(entry.value, arena_);
  if (part == Part::kBoth || !actions.IsDictionary()) {
    context_->destinations().AppendActionEntry(out, key, entry.value);
    return;
  }
  if (key != "AA") {
    if (part == Part::kWidget) {
      context_->destinations().AppendActionEntry(out, key, entry.value);
    }
    return;
  }
  std::vector<DictionaryEntry> events;
  for (const DictionaryEntry& event : actions.Entries()) {
    if (IsOneOf(kFieldEvents, event.Key()) == (part == Part::kField)) {
      events.push_back(event);
    }
  }
  if (!events.empty()) {
    context_->destinations().AppendActionEntry(out, key, Object::Dictionary(events));
  }
}

void FormFieldCopier::AppendMissingDefaults(std::string& out, const Object& dictionary) {
  if (differences_.appearance && !dictionary.Has("DA")) {
    out += "/DA";
    pdf::AppendString(out, *differences_.appearance, false);
  }
  if (differences_.alignment && !dictionary.Has("Q")) {
    out += "/Q";
    pdf::AppendInteger(out, *differences_.alignment);
  }
}

void FormFieldCopier::Copy() {
  const auto& tree = Source().tree().nodes();
  TargetFormFields& target = context_->parts().form_fields;
  const std::vector<std::uint32_t> nodes = KeptNodes();
  std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> kids;  // by node
  for (const std::uint32_t node : nodes) {
    const Kept& kept = kept_[node];
    const std::uint32_t parent = tree[node].parent;
    if (kept.shape == Shape::kWidget) {
      kids[parent].insert(kids[parent].end(), kept.widgets.begin(), kept.widgets.end());
      continue;
    }
    if (kept.shape == Shape::kField) {
      kids[node] = kept.widgets;
    }
    if (parent == FieldTree::kNone) {
      target.AddRoot(kept.number);
    } else {
      kids[parent].push_back(kept.number);
    }
  }
  for (const auto& [parent, number] : unnumbered_) {
    kids[parent].push_back(number);
  }
  for (const std::uint32_t number : unnumbered_roots_) {
    target.AddRoot(number);
  }
  for (const std::uint32_t node : nodes) {
    if (kept_[node].shape == Shape::kField) {
      WriteField(node, kept_[node], kids[node]);
    }
  }
  AddCalculations(nodes);
  target.defaults().AddUsed(differences_, context_->objects());
  target.names().Add(new_names_);
  Report(nodes);
}

void FormFieldCopier::WriteField(std::uint32_t index, const Kept& kept,
                                 const std::vector<std::uint32_t>& kids) {
  const FieldTree::Node& node = Source().tree().nodes()[index];
  arena_.Reset();
  const Object dictionary = context_->document().Load({node.number, 0}, arena_);
  Written written;
  written.part = Part::kField;
  written.is_root = node.parent == FieldTree::kNone;
  written.is_signature = node.is_signature;
  written.is_widget = node.is_widget;
  std::string text = "<<";
  AppendEntries(text, dictionary, written);
  if (node.parent != FieldTree::kNone) {
    text += "/Parent";
    pdf::AppendReference(text, kept_[node.parent].number);
  }
  if (!kids.empty()) {
    text += "/Kids[";
    for (const std::uint32_t kid : kids) {
      pdf::AppendReference(text, kid);
    }
    text += ']';
  }
  context_->writer().WriteObject(kept.number, text + ">>");
}

void FormFieldCopier::AddCalculations(const std::vector<std::uint32_t>& nodes) {
  const auto& tree = Source().tree().nodes();
  std::vector<std::pair<std::uint32_t, std::uint32_t>> calculations;  // rank, number
  for (const std::uint32_t node : nodes) {
    if (tree[node].calculation_rank != FieldTree::kNone && kept_[node].number != 0) {
      calculations.emplace_back(tree[node].calculation_rank, kept_[node].number);
    }
  }
  std::sort(calculations.begin(), calculations.end());
  for (const auto& [rank, number] : calculations) {
    context_->parts().form_fields.AddCalculation(number);
  }
}

void FormFieldCopier::Report(const std::vector<std::uint32_t>& nodes) {
  const FieldTree& tree = Source().tree();
  CopyReport& report = context_->report();
  const auto kept =
      static_cast<std::uint64_t>(std::count_if(nodes.begin(), nodes.end(), [&](std::uint32_t node) {
        return FieldTree::IsTerminal(tree.nodes()[node]);
      }));
  report.Add(CopiedKind::kFormField, CopyOutcome::kKept, {}, kept + unnumbered_roots_.size());
  report.Add(CopiedKind::kFormField, CopyOutcome::kRenamed, "another document has that name",
             renamed_count_);
  report.Add(CopiedKind::kFormField, CopyOutcome::kDropped, "on none of the copied pages",
             tree.terminal_count() - kept);
}

}  // namespace TarnixTools::engines::toolbox
