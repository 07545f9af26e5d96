#include "engines/office/layout/document/Headings.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/paragraphs/HeadingLooks.h"

namespace TarnixTools::engines::office {

namespace {

struct Flow {
  Paragraph* paragraph = nullptr;
  std::size_t page = 0;
  std::string text;
};

std::vector<Flow> FlowOf(OfficeDocument& document) {
  std::vector<Flow> flow;
  for (std::size_t i = 0; i < document.pages.size(); ++i) {
    for (Paragraph* paragraph : FlowParagraphs(document.pages[i].layout)) {
      flow.push_back({paragraph, i, TextOf(*paragraph)});
    }
  }
  return flow;
}

// Letters and digits only: outlines leave out what headings have between words.
std::string Plain(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c & 0x80) != 0) {
      plain += c;
    } else if (c >= 'a' && c <= 'z') {
      plain += static_cast<char>(c - 'a' + 'A');
    }
  }
  return plain;
}

void TakeOutline(const OfficeDocument& document, std::vector<Flow>& flow) {
  std::map<std::pair<std::uint32_t, std::string>, std::uint32_t> titles;
  for (const OutlineEntry& entry : document.facts.outline) {
    titles.try_emplace({entry.page, Plain(entry.title)}, entry.level);
  }
  for (Flow& part : flow) {
    if (titles.empty() || part.text.size() > kLongestHeading) {
      continue;
    }
    const std::uint32_t page = document.pages[part.page].layout.number;
    const auto title = titles.find({page, Plain(part.text)});
    if (title != titles.end()) {
      part.paragraph->role = ParagraphRole::kHeading;
      part.paragraph->level =
          static_cast<std::uint8_t>(std::min<std::size_t>(title->second + 1, kHeadingLevels));
    }
  }
}

void TakeLooks(const OfficeDocument& document, std::vector<Flow>& flow) {
  std::vector<HeadingLook> looks;
  for (const Flow& part : flow) {
    looks.push_back(LookOf(document.pages[part.page].layout, *part.paragraph, part.text));
    looks.back().may_be_heading =
        looks.back().may_be_heading && part.paragraph->role == ParagraphRole::kBody;
  }
  const std::vector<std::uint8_t> levels = HeadingLevels(looks);
  for (std::size_t i = 0; i < flow.size(); ++i) {
    if (levels[i] != 0) {
      flow[i].paragraph->role = ParagraphRole::kHeading;
      flow[i].paragraph->level = levels[i];
    }
  }
}

}  // namespace

void FindHeadings(OfficeDocument& document) {
  std::vector<Flow> flow = FlowOf(document);
  const bool has_tags = std::any_of(flow.begin(), flow.end(), [](const Flow& part) {
    return part.paragraph->is_tagged && part.paragraph->role == ParagraphRole::kHeading;
  });
  if (has_tags) {
    return;
  }
  TakeOutline(document, flow);
  TakeLooks(document, flow);
}

}  // namespace TarnixTools::engines::office
