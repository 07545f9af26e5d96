#include "engines/pdfa/convert/tags/TagTree.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "pdf/tree/PageGeometry.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;
using pdf::ObjectChange;

namespace {

constexpr std::size_t kKidsOfElement = 1'000;
constexpr std::size_t kPairsOfNode = 1'000;
constexpr double kSizesOfPoint = 2;
// A heading is larger than other text by this, and shorter than these.
constexpr double kHeadingRatio = 1.15;
constexpr std::size_t kHeadingLines = 3;
constexpr std::uint64_t kHeadingCodes = 200;
constexpr std::uint64_t kLeastHeadingCodes = 2;
constexpr int kHeadingLevels = 6;
// Text of a form that is more than a paragraph.
constexpr std::uint64_t kParagraphCodes = 300;
// Annotations times blocks that are compared on one page.
constexpr std::size_t kMaxComparisons = 4'000'000;

long KeyOf(double size) {
  constexpr double kLargest = 1e6;
  return std::lround(std::min(size, kLargest) * kSizesOfPoint);
}

std::string ReferenceText(std::uint32_t number) {
  std::string text;
  pdf::AppendReference(text, number);
  return text;
}

bool IsShort(const PageBlock& block) {
  return block.kind == PageBlock::Kind::kText && block.lines <= kHeadingLines &&
         block.codes <= kHeadingCodes && block.codes >= kLeastHeadingCodes;
}

bool IsWithin(const pdf::Box& box, const pdf::Box& around) {
  const double x = (box.left + box.right) / 2;
  const double y = (box.bottom + box.top) / 2;
  return x >= around.left && x <= around.right && y >= around.bottom && y <= around.top;
}

}  // namespace

void TagTree::Add(std::size_t page_index, PageMarks marks) {
  const pdf::PageTree::Page& page = conversion_->pages.pages()[page_index];
  for (const PageBlock& block : marks.blocks) {
    codes_of_size_[KeyOf(block.size)] += block.codes;
  }
  Arena arena;
  const Object annotations = conversion_->rewriter.Load(page.number, arena).Get("Annots");
  most_elements_ +=
      marks.blocks.size() + conversion_->document.Resolve(annotations, arena).Items().size();
  pages_.push_back({page.number, std::move(marks)});
}

void TagTree::Write() {
  root_ = AddObject();
  document_ = AddObject();
  next_key_ = pages_.size();
  ChooseHeadings();
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    conversion_->rewriter.SetEntry(pages_[i].number, "StructParents", std::to_string(i));
    WritePage(pages_[i]);
    pages_[i].marks = {};
  }
  CloseGroup();
  WriteRoot();
  conversion_->report.Changed("pictures that have no description, into figures that say so",
                              figures_);
}

// Sizes of text that is larger than most, the largest as the first level.
void TagTree::ChooseHeadings() {
  codes_of_size_.erase(0);
  const auto body = std::max_element(
      codes_of_size_.begin(), codes_of_size_.end(),
      [](const auto& left, const auto& right) { return left.second < right.second; });
  if (body == codes_of_size_.end()) {
    return;
  }
  const auto least = static_cast<double>(body->first) * kHeadingRatio;
  for (const TaggedPage& page : pages_) {
    for (const PageBlock& block : page.marks.blocks) {
      if (IsShort(block) && static_cast<double>(KeyOf(block.size)) >= least) {
        headings_[KeyOf(block.size)] = 0;
      }
    }
  }
  int level = 0;
  for (auto heading = headings_.rbegin(); heading != headings_.rend(); ++heading) {
    level = std::min(level + 1, kHeadingLevels);
    heading->second = level;
  }
}

// No level is left out on the way down.
std::string TagTree::TypeOf(const PageBlock& block) {
  if (block.kind == PageBlock::Kind::kFigure) {
    return "Figure";
  }
  if (block.kind == PageBlock::Kind::kTextOfForm && block.codes > kParagraphCodes) {
    return "Div";
  }
  const auto heading = headings_.find(KeyOf(block.size));
  if (!IsShort(block) || heading == headings_.end()) {
    return "P";
  }
  level_ = std::min(heading->second, level_ + 1);
  return "H" + std::to_string(level_);
}

void TagTree::WritePage(TaggedPage& page) {
  std::vector<std::uint32_t> elements;
  std::vector<std::string> types;
  for (const PageBlock& block : page.marks.blocks) {
    elements.push_back(AddObject());
    types.push_back(TypeOf(block));
  }
  std::vector<Kids> kids = MarkContent(page, elements, types);
  const std::vector<Note> notes = NotesOf(page);
  std::vector<Note> alone;
  const bool may_compare = notes.size() * elements.size() <= kMaxComparisons;
  for (const Note& note : notes) {
    const auto around = std::find_if(page.marks.blocks.begin(), page.marks.blocks.end(),
                                     [&](const PageBlock& block) {
                                       return may_compare && block.kind == PageBlock::Kind::kText &&
                                              IsWithin(note.box, block.box);
                                     });
    if (around == page.marks.blocks.end()) {
      alone.push_back(note);
      continue;
    }
    const auto index = static_cast<std::size_t>(around - page.marks.blocks.begin());
    kids[index].text += " " + ReferenceText(note.element);
    WriteNote(page, note, elements[index]);
  }
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (kids[i].count == 0) {
      continue;
    }
    std::string text = "<</Type/StructElem/S/" + types[i] + "/P " +
                       ReferenceText(ParentOf(elements[i])) + "/Pg " + ReferenceText(page.number) +
                       "/K[" + kids[i].text + "]";
    if (page.marks.blocks[i].kind == PageBlock::Kind::kFigure) {
      ++figures_;
      text += "/Alt(A picture without a description)/A<</O/Layout/BBox";
      pdf::AppendBox(text, page.marks.blocks[i].box);
      text += ">>";
    }
    conversion_->rewriter.Change(elements[i], ObjectChange::Value(text + ">>"));
  }
  for (const Note& note : alone) {
    WriteNote(page, note, ParentOf(note.element));
  }
}

// Marks the ranges, and tells what each element consists of.
std::vector<TagTree::Kids> TagTree::MarkContent(TaggedPage& page,
                                                const std::vector<std::uint32_t>& elements,
                                                const std::vector<std::string>& types) {
  std::vector<Kids> kids(elements.size());
  ContentEdits edits = std::move(page.marks.edits);
  std::string parents;
  std::size_t next_id = 0;
  for (const MarkedRange& range : page.marks.ranges) {
    if (range.block == MarkedRange::kArtifact) {
      edits.Insert(range.begin, "\n/Artifact BMC\n");
    } else {
      const std::string id = std::to_string(next_id++);
      kids[range.block].text += " " + id;
      ++kids[range.block].count;
      parents += " " + ReferenceText(elements[range.block]);
      edits.Insert(range.begin, "\n/" + types[range.block] + "<</MCID " + id + ">>BDC\n");
    }
    edits.Insert(range.end, "\nEMC\n");
  }
  parents_[static_cast<std::size_t>(&page - pages_.data())] = "[" + parents + "]";
  conversion_->page_edits[page.number].Take(std::move(edits));
  return kids;
}

std::vector<TagTree::Note> TagTree::NotesOf(const TaggedPage& page) {
  std::vector<Note> notes;
  Arena arena;
  const Object list = conversion_->document.Resolve(
      conversion_->rewriter.Load(page.number, arena).Get("Annots"), arena);
  for (const Object& item : list.Items()) {
    const std::uint32_t number = item.AsReference().number;
    const Object annotation = number != 0 ? conversion_->rewriter.Load(number, arena) : Object();
    const char* type = TypeOfNote(conversion_->document.Resolve(annotation.Get("Subtype"), arena));
    if (type != nullptr && noted_.insert(number).second) {
      const auto box = pdf::ReadPageBox(conversion_->document, annotation.Get("Rect"));
      notes.push_back({number, AddObject(), type, box.value_or(pdf::Box{})});
    }
  }
  return notes;
}

// Null for one that is no content: a window of another one, or marks for the press.
const char* TagTree::TypeOfNote(const Object& subtype) const {
  if (!subtype.IsName() || subtype.IsName("Popup") || subtype.IsName("PrinterMark") ||
      subtype.IsName("TrapNet")) {
    return nullptr;
  }
  return subtype.IsName("Link") ? "Link" : subtype.IsName("Widget") ? "Form" : "Annot";
}

void TagTree::WriteNote(const TaggedPage& page, const Note& note, std::uint32_t parent) {
  const std::size_t key = next_key_++;
  conversion_->rewriter.SetEntry(note.number, "StructParent", std::to_string(key));
  parents_[key] = ReferenceText(note.element);
  const std::string on_page = "/Pg " + ReferenceText(page.number);
  conversion_->rewriter.Change(
      note.element, ObjectChange::Value(std::string("<</Type/StructElem/S/") + note.type + "/P " +
                                        ReferenceText(parent) + on_page + "/K<</Type/OBJR/Obj " +
                                        ReferenceText(note.number) + on_page + ">>>>"));
}

// An object that is said later.
std::uint32_t TagTree::AddObject() {
  return conversion_->rewriter.Add(ObjectChange::Value("null"));
}

// The element becomes the next one of the document, or of a group in it.
std::uint32_t TagTree::ParentOf(std::uint32_t element) {
  if (most_elements_ <= kKidsOfElement) {
    kids_ += " " + ReferenceText(element);
    return document_;
  }
  if (group_size_ == kKidsOfElement) {
    CloseGroup();
  }
  if (group_ == 0) {
    group_ = AddObject();
    kids_ += " " + ReferenceText(group_);
  }
  ++group_size_;
  group_kids_ += " " + ReferenceText(element);
  return group_;
}

void TagTree::CloseGroup() {
  if (group_ != 0) {
    conversion_->rewriter.Change(
        group_, ObjectChange::Value("<</Type/StructElem/S/Div/P " + ReferenceText(document_) +
                                    "/K[" + std::exchange(group_kids_, {}) + "]>>"));
  }
  group_ = 0;
  group_size_ = 0;
}

// A number tree whose root leads to leaves.
std::string TagTree::ParentTree() {
  std::string leaves;
  auto first = parents_.begin();
  while (first != parents_.end()) {
    std::string pairs;
    auto last = first;
    for (std::size_t i = 0; i < kPairsOfNode && first != parents_.end(); ++i, ++first) {
      pairs += " " + std::to_string(first->first) + " " + first->second;
      last = first;
    }
    const auto begin = pairs.find_first_not_of(' ');
    const std::string least = pairs.substr(begin, pairs.find(' ', begin) - begin);
    leaves +=
        " " +
        ReferenceText(conversion_->rewriter.Add(ObjectChange::Value(
            "<</Limits[" + least + " " + std::to_string(last->first) + "]/Nums[" + pairs + "]>>")));
  }
  return ReferenceText(conversion_->rewriter.Add(ObjectChange::Value("<</Kids[" + leaves + "]>>")));
}

// Part 1 goes by a version that knows no elements for annotations in general.
void TagTree::WriteRoot() {
  pdf::DocumentRewriter& rewriter = conversion_->rewriter;
  rewriter.Change(document_, ObjectChange::Value("<</Type/StructElem/S/Document/P " +
                                                 ReferenceText(root_) + "/K[" + kids_ + "]>>"));
  std::string text = "<</Type/StructTreeRoot/K " + ReferenceText(document_);
  if (!parents_.empty()) {
    text += "/ParentTree " + ParentTree() + "/ParentTreeNextKey " + std::to_string(next_key_);
  }
  text += conversion_->is_part1() ? "/RoleMap<</Annot/Note>>>>" : ">>";
  rewriter.Change(root_, ObjectChange::Value(text));
  rewriter.SetEntry(rewriter.catalog(), "StructTreeRoot", ReferenceText(root_));
}

}  // namespace TarnixTools::engines::pdfa
