#include "engines/office/writers/word/HeaderWriter.h"

#include <algorithm>
#include <set>

#include "engines/office/writers/text/Units.h"
#include "engines/office/writers/word/AnchoredWriter.h"
#include "engines/office/writers/word/FlowWriter.h"
#include "engines/office/writers/word/MarginKeys.h"
#include "engines/office/writers/word/WordNames.h"
#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kLevelShare = 0.4;  // of the lower one's height, from which blocks are level
constexpr std::string_view kTypes =
    "application/vnd.openxmlformats-officedocument.wordprocessingml.";

// Text that stands beside text before it: below each other they would need more room than the page
// leaves to its header, and push the page down.
std::set<const Block*> BlocksBeside(const std::vector<Block>& blocks) {
  std::set<const Block*> beside;
  std::vector<pdf::Box> before;
  for (const Block& block : blocks) {
    if (!std::holds_alternative<Paragraph>(block.content)) {
      continue;
    }
    const pdf::Box box = BoxOf(block);
    const bool is_beside = std::any_of(before.begin(), before.end(), [&box](const pdf::Box& it) {
      return SharedHeight(it, box) > kLevelShare * std::min(it.height(), box.height());
    });
    if (is_beside) {
      beside.insert(&block);
    } else {
      before.push_back(box);
    }
  }
  return beside;
}

}  // namespace

HeaderWriter::HeaderWriter(WordContext& context, Relationships& relationships, bool has_even_pages)
    : context_(context), relationships_(relationships), has_even_pages_(has_even_pages) {
  const auto& pages = context.document.pages;
  has_any_ = std::any_of(pages.begin(), pages.end(), [](const OfficePage& page) {
    return !page.layout.header.empty() || !page.layout.footer.empty();
  });
}

SectionHeaders HeaderWriter::Write(const SectionPlan& section) {
  SectionHeaders headers;
  if (!has_any_ || section.is_continuous) {
    return headers;
  }
  const SectionMargins& margins = section.margins;
  const std::size_t page = section.parts.front().page;
  const std::size_t usual = margins.odd.value_or(margins.even.value_or(page));
  AddReferences(headers, section, usual, "default");
  if (has_even_pages_) {
    AddReferences(headers, section, margins.even.value_or(usual), "even");
  }
  if (margins.first) {
    AddReferences(headers, section, *margins.first, "first");
  }
  return headers;
}

void HeaderWriter::AddReferences(SectionHeaders& headers, const SectionPlan& section,
                                 std::size_t page, std::string_view pages) {
  const Written& header = PartOf(section, page, true);
  const Written& footer = PartOf(section, page, false);
  headers.references.push_back({true, pages, header.id});
  headers.references.push_back({false, pages, footer.id});
  if (pages == "default") {
    headers.header_distance = header.distance;
    headers.footer_distance = footer.distance;
  }
}

const HeaderWriter::Written& HeaderWriter::PartOf(const SectionPlan& section, std::size_t page,
                                                  bool is_header) {
  const OfficePage& source = context_.document.pages[page];
  const std::string key = (is_header ? "h" : "f") + std::to_string(Twips(section.left)) + "|" +
                          std::to_string(Twips(section.right)) + MarginKey(source.layout);
  const auto [place, is_new] = written_.try_emplace(key);
  if (is_new) {
    place->second = WritePart(section, source, is_header);
  }
  return place->second;
}

HeaderWriter::Written HeaderWriter::WritePart(const SectionPlan& section, const OfficePage& page,
                                              bool is_header) {
  const std::string kind = is_header ? "header" : "footer";
  const std::string name = kind + std::to_string(written_.size()) + ".xml";
  const std::vector<Block>& blocks = is_header ? page.layout.header : page.layout.footer;
  PackagePart part;
  Relationships relationships;
  Story story{context_, part.xml(), relationships, true, false};
  OpenStory(part.xml(), is_header ? "w:hdr" : "w:ftr");
  const double top = blocks.empty() ? 0 : TopOf(blocks.front(), page.layout);
  FlowWriter flow(story, page, {section.left, section.right, std::max(top, 0.0)});
  flow.SetApart(BlocksBeside(blocks));
  flow.Begin({.write_anchored = [&] { WriteAnchored(story, page, blocks); }});
  flow.Write(blocks);
  if (flow.has_start() || !flow.ends_with_paragraph()) {
    flow.SkipTo(flow.cursor());
  }
  context_.package.AddPart("word/" + name, std::string(kTypes) + kind + "+xml", part);
  context_.package.AddRelationships("word/" + name, relationships);
  const double bottom = blocks.empty() ? top : page.layout.height - flow.cursor();
  return {relationships_.Add(kind, name), std::max(is_header ? top : bottom, 0.0)};
}

}  // namespace TarnixTools::engines::office
