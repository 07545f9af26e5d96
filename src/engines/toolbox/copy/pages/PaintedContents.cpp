#include "engines/toolbox/copy/pages/PaintedContents.h"

#include <algorithm>
#include <utility>

#include "engines/toolbox/content/ContentText.h"
#include "engines/toolbox/content/StreamText.h"
#include "engines/toolbox/content/TargetContent.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "engines/toolbox/copy/pages/AddedResources.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

namespace {

std::string WithPrefix(const std::string& content, const std::string& prefix) {
  std::string text;
  text.reserve(content.size() + 64);
  for (const char c : content) {
    if (c == kNamePrefix) {
      text += prefix;
    } else {
      text += c;
    }
  }
  return text;
}

std::string Show(const AddedResource& form) {
  std::string text = "/";
  text += kNamePrefix;
  return text + form.name + " Do\n";
}

// The entries of a form that shows something where the page would have shown it, without resources.
std::string FormEntries(CopyContext& context, const PaintedPage& page) {
  const pdf::Box box = pdf::ReadPageGeometry(context.document(), context.source().pages(),
                                             page.page, page.dictionary)
                           .media_box;
  std::string entries = "/Type/XObject/Subtype/Form/BBox";
  pdf::AppendBox(entries, box);
  return entries;
}

}  // namespace

PaintedContents::PaintedContents(CopyContext& context, PageResourceCopier& resources)
    : context_(&context), resources_(&resources), isolation_(context.source(), context.writer()) {}

std::uint32_t PaintedContents::Append(std::string& out, const PaintedPage& page) {
  PageContent painted{page.painted.Plain(page.painted.under), page.painted.Plain(page.painted.over),
                      page.painted.resources};
  const IsolatedContent own = OwnContent(page);
  std::string prefix(kFirstPrefix);
  AddedResource form;
  if (own.form) {
    form = OwnForm(page, *own.form);
    painted.over.insert(0, Show(form));
    painted.Add(form);
    out += "/Resources" + AddedOnly(painted.resources, prefix);
  } else {
    out += page.structure_key;
    const auto resources = resources_->Open(page.page, page.dictionary);
    if (const auto spaces = resources.DefaultSpaces(); !spaces.empty()) {
      PutIntoForms(painted, page, spaces);
    }
    prefix = resources_->CopyWith(out, resources, painted.resources);
  }
  AppendContents(out, own, painted, prefix);
  return form.number;
}

std::vector<std::uint32_t> PaintedContents::StreamsOf(const PaintedPage& page) {
  pdf::Arena arena;
  pdf::Document& document = context_->document();
  const pdf::Object contents = page.dictionary.Get("Contents");
  const pdf::Object resolved = document.Resolve(contents, arena);
  std::vector<std::uint32_t> streams;
  const auto add = [&](const pdf::Object& item) {
    if (item.IsReference() && document.Exists(item.AsReference().number)) {
      streams.push_back(item.AsReference().number);
    }
  };
  if (resolved.IsArray()) {
    std::for_each(resolved.Items().begin(), resolved.Items().end(), add);
  } else {
    add(contents);
  }
  return streams;
}

// What is painted beneath it needs no look into it.
IsolatedContent PaintedContents::OwnContent(const PaintedPage& page) {
  const std::vector<std::uint32_t> streams = StreamsOf(page);
  if (!page.painted.over.empty()) {
    IsolatedContent own = isolation_.Isolate(streams);
    if (own.is_damaged) {
      context_->report().Add(CopiedKind::kDamage, CopyOutcome::kDropped,
                             "page content damaged, what could be read of it is shown", 1,
                             page.number);
    }
    return own;
  }
  IsolatedContent own;
  for (const std::uint32_t number : streams) {
    if (context_->document().IsStream(number)) {
      own.streams.push_back({number, 0});
    }
  }
  return own;
}

// Pages with the same content and resources share one form.
AddedResource PaintedContents::OwnForm(const PaintedPage& page, const std::string& content) {
  std::string entries = FormEntries(*context_, page) + page.structure_key;
  resources_->CopyToForm(entries, page.page, page.dictionary);
  std::string key = entries;
  for (const std::uint32_t number : StreamsOf(page)) {
    key += ' ' + std::to_string(number);
  }
  std::uint32_t& number = forms_[key];
  if (number == 0) {
    number = WriteStreamText(context_->writer(), entries, content);
  }
  return {pdf::ResourceCategory::kXObject, "P", number};
}

// A form looks up default colour spaces in its own resources first.
void PaintedContents::PutIntoForms(PageContent& painted, const PaintedPage& page,
                                   const std::vector<std::string_view>& default_spaces) {
  TargetContent& target = *context_->parts().content;
  const std::string prefix(kFirstPrefix);
  std::string entries = FormEntries(*context_, page) + "/Resources";
  entries += AddedOnly(painted.resources, prefix);
  entries.erase(entries.size() - 2);
  entries += "/ColorSpace<<";
  for (const std::string_view name : default_spaces) {
    pdf::AppendName(entries, name);
    pdf::AppendToken(entries, target.PlainSpaceOf(name));
  }
  entries += ">>>>";
  painted.resources.clear();
  for (auto [part, name] : {std::pair(&painted.under, "U"), std::pair(&painted.over, "O")}) {
    if (!part->empty()) {
      const AddedResource form = {pdf::ResourceCategory::kXObject, name,
                                  target.StreamOf(WithPrefix(*part, prefix), entries)};
      *part = Show(form);
      painted.Add(form);
    }
  }
}

void PaintedContents::AppendContents(std::string& out, const IsolatedContent& own,
                                     const PageContent& painted, const std::string& prefix) {
  TargetContent& target = *context_->parts().content;
  out += "/Contents[";
  if (!painted.under.empty()) {
    pdf::AppendReference(out, target.StreamOf(WithPrefix(painted.under, prefix)));
  }
  if (!painted.over.empty()) {
    AppendOver(out, own, WithPrefix(painted.over, prefix));
  } else {
    for (const ContentStream& stream : own.streams) {
      AppendStream(out, stream);
    }
  }
  out += ']';
}

void PaintedContents::AppendOver(std::string& out, const IsolatedContent& own,
                                 const std::string& over) {
  TargetContent& target = *context_->parts().content;
  if (own.form || own.streams.empty()) {
    pdf::AppendReference(out, target.StreamOf(over));
    return;
  }
  pdf::AppendReference(out, target.StreamOf("q\n"));
  for (const ContentStream& stream : own.streams) {
    AppendStream(out, stream);
  }
  // White space first: not every reader puts some between streams.
  std::string text = "\n" + own.closing;
  text += own.closing.empty() ? "Q" : " Q";
  text += over;
  pdf::AppendReference(out, target.StreamOf(text));
}

void PaintedContents::AppendStream(std::string& out, const ContentStream& stream) {
  const std::uint32_t number = stream.target_number != 0
                                   ? stream.target_number
                                   : context_->objects().Map(stream.source_number);
  if (number != 0) {
    pdf::AppendReference(out, number);
  }
}

}  // namespace TarnixTools::engines::toolbox
