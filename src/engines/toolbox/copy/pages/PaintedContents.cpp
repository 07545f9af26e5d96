#include "engines/toolbox/copy/pages/PaintedContents.h"

#include "engines/toolbox/content/ContentText.h"
#include "engines/toolbox/content/TargetContent.h"
#include "engines/toolbox/copy/CopyContext.h"
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

}  // namespace

PaintedContents::PaintedContents(CopyContext& context)
    : context_(&context), isolation_(context.source(), context.writer()) {}

void PaintedContents::Append(std::string& out, const std::vector<std::uint32_t>& streams,
                             const PageContent& painted, const std::string& prefix) {
  TargetContent& target = *context_->parts().content;
  out += "/Contents[";
  if (!painted.under.empty()) {
    pdf::AppendReference(out, target.StreamOf(WithPrefix(painted.Plain(painted.under), prefix)));
  }
  if (painted.over.empty() || streams.empty()) {
    for (const std::uint32_t stream : streams) {
      AppendStream(out, stream);
    }
    if (!painted.over.empty()) {
      pdf::AppendReference(out, target.StreamOf(WithPrefix(painted.Plain(painted.over), prefix)));
    }
  } else {
    AppendIsolated(out, streams, WithPrefix(painted.Plain(painted.over), prefix));
  }
  out += ']';
}

void PaintedContents::AppendIsolated(std::string& out, const std::vector<std::uint32_t>& streams,
                                     const std::string& over) {
  TargetContent& target = *context_->parts().content;
  const IsolatedContent isolated = isolation_.Isolate(streams);
  pdf::AppendReference(out, target.StreamOf("q\n"));
  for (const ContentStream& stream : isolated.streams) {
    if (stream.target_number != 0) {
      pdf::AppendReference(out, stream.target_number);
    } else {
      AppendStream(out, stream.source_number);
    }
  }
  // White space first: not every reader puts some between streams.
  std::string text = "\n" + isolated.closing;
  text += isolated.closing.empty() ? "Q" : " Q";
  text += over;
  pdf::AppendReference(out, target.StreamOf(text));
}

void PaintedContents::AppendStream(std::string& out, std::uint32_t source_number) {
  if (const std::uint32_t number = context_->objects().Map(source_number); number != 0) {
    pdf::AppendReference(out, number);
  }
}

}  // namespace TarnixTools::engines::toolbox
