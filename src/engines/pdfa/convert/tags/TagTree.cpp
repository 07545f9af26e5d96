#include "engines/pdfa/convert/tags/TagTree.h"

#include <algorithm>
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
// Annotations times blocks that are compared on one page.
constexpr std::size_t kMaxComparisons = 4'000'000;

std::string ReferenceText(std::uint32_t number) {
  std::string text;
  pdf::AppendReference(text, number);
  return text;
}

bool HoldsText(const PageBlock& block) {
  return block.kind != PageBlock::Kind::kFigure && block.kind != PageBlock::Kind::kForm;
}

bool IsWithin(const pdf::Box& box, const pdf::Box& around) {
  const double x = (box.left + box.right) / 2;
  const double y = (box.bottom + box.top) / 2;
  return x >= around.left && x <= around.right && y >= around.bottom && y <= around.top;
}

}  // namespace

void TagTree::Add(std::size_t page_index, PageMarks marks) {
  const pdf::PageTree::Page& page = conversion_->pages.pages()[page_index];
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

// No level is left out on the way down.
void TagTree::ChooseHeadings() {
  std::vector<HeadingLook> looks;
  std::vector<PageBlock*> blocks;
  for (TaggedPage& page : pages_) {
    for (PageBlock& block : page.marks.blocks) {
      if (block.look.lines > 0) {
        looks.push_back(block.look);
        blocks.push_back(&block);
      }
    }
  }
  const std::vector<std::uint8_t> levels = HeadingLevels(looks);
  std::uint8_t last = 0;
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    if (levels[i] != 0) {
      last = std::min(levels[i], static_cast<std::uint8_t>(last + 1));
      blocks[i]->heading_level = last;
    }
  }
}

void TagTree::WritePage(TaggedPage& page) {
  PageElements elements = ElementsOf(page);
  MarkContent(page, elements);
  AddNotes(page, elements);
  WriteElements(page, elements);
}

// Those that are used have their objects.
PageElements TagTree::ElementsOf(const TaggedPage& page) {
  PageElements elements(page.marks.blocks);
  for (const MarkedRange& range : page.marks.ranges) {
    if (range.block != MarkedRange::kArtifact) {
      elements.Use(elements.OfBlock(range.block));
    }
  }
  elements.UseWholeTables();
  for (PageElements::Element& element : elements.all()) {
    element.number = element.is_used ? AddObject() : 0;
    figures_ += element.is_used && element.type == "Figure" ? 1 : 0;
  }
  return elements;
}

// Marks the ranges, and tells what each element consists of.
void TagTree::MarkContent(TaggedPage& page, PageElements& elements) {
  ContentEdits edits = std::move(page.marks.edits);
  std::string parents;
  std::size_t next_id = 0;
  for (const MarkedRange& range : page.marks.ranges) {
    if (range.block == MarkedRange::kArtifact) {
      edits.Insert(range.begin, "\n/Artifact BMC\n");
    } else {
      PageElements::Element& element = elements.all()[elements.OfBlock(range.block)];
      const std::string id = std::to_string(next_id++);
      element.kids += " " + id;
      parents += " " + ReferenceText(element.number);
      edits.Insert(range.begin, "\n/" + std::string(element.type) + "<</MCID " + id + ">>BDC\n");
    }
    if (range.is_array_rest) {
      edits.Insert(range.begin, "[");
    }
    edits.Insert(range.end, "\nEMC\n");
  }
  parents_[static_cast<std::size_t>(&page - pages_.data())] = "[" + parents + "]";
  conversion_->page_edits[page.number].Take(std::move(edits));
}

// An annotation over text is part of it; the others follow all that the page shows.
void TagTree::AddNotes(const TaggedPage& page, PageElements& elements) {
  const std::vector<PageBlock>& blocks = page.marks.blocks;
  const std::vector<Note> notes = NotesOf(page);
  const bool may_compare = notes.size() * blocks.size() <= kMaxComparisons;
  for (const Note& note : notes) {
    const auto holds = [&](const PageBlock& block) {
      const auto index = static_cast<std::uint32_t>(&block - blocks.data());
      return may_compare && HoldsText(block) && IsWithin(note.box, block.box) &&
             !elements.all()[elements.OfBlock(index)].kids.empty();
    };
    const auto around = std::find_if(blocks.begin(), blocks.end(), holds);
    if (around == blocks.end()) {
      alone_.push_back(note);
      continue;
    }
    const auto index = static_cast<std::uint32_t>(around - blocks.begin());
    PageElements::Element& element = elements.all()[elements.OfBlock(index)];
    element.kids += " " + ReferenceText(note.element);
    WriteNote(page, note, element.number);
  }
}

void TagTree::WriteElements(const TaggedPage& page, PageElements& elements) {
  for (PageElements::Element& element : elements.all()) {
    if (element.is_used && element.parent != PageElements::kNoParent) {
      elements.all()[element.parent].kids += " " + ReferenceText(element.number);
    }
  }
  for (const PageElements::Element& element : elements.all()) {
    if (!element.is_used) {
      continue;
    }
    const std::uint32_t parent = element.parent == PageElements::kNoParent
                                     ? ParentOf(element.number)
                                     : elements.all()[element.parent].number;
    std::string text = "<</Type/StructElem/S/" + std::string(element.type) + "/P " +
                       ReferenceText(parent) + "/Pg " + ReferenceText(page.number);
    text += element.kids.empty() ? "" : "/K[" + element.kids + "]";
    conversion_->rewriter.Change(element.number,
                                 ObjectChange::Value(text + element.attributes + ">>"));
  }
  for (const Note& note : std::exchange(alone_, {})) {
    WriteNote(page, note, ParentOf(note.element));
  }
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
