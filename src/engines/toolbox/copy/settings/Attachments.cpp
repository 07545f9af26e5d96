#include "engines/toolbox/copy/settings/Attachments.h"

#include <algorithm>
#include <array>

#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/tree/NameTree.h"
#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

// Where a file specification keeps its file, and its name: the preferred place first.
constexpr std::array<std::string_view, 5> kFileKeys = {"UF", "F", "Unix", "Mac", "DOS"};

bool IsFileNameKey(std::string_view key) {
  return std::find(kFileKeys.begin(), kFileKeys.end(), key) != kFileKeys.end();
}

// Where the last of these ASCII characters is in a text; npos for none.
std::size_t LastOf(std::string_view text, std::string_view wanted, pdf::TextEncoding encoding) {
  const std::size_t width = pdf::AsciiIn(encoding, " ").size();
  for (std::size_t i = text.size() / width; i-- > 0;) {
    const std::string_view unit = text.substr(i * width, width);
    if (std::any_of(wanted.begin(), wanted.end(), [&](char c) {
          return unit == pdf::AsciiIn(encoding, {&c, 1});
        })) {
      return i * width;
    }
  }
  return std::string_view::npos;
}

}  // namespace

std::string NumberedName(std::string_view name, std::uint32_t count) {
  const pdf::TextEncoding encoding = pdf::EncodingOf(name);
  const std::size_t mark = pdf::MarkOf(encoding).size();
  const std::string_view text = name.substr(mark);
  const std::size_t width = pdf::AsciiIn(encoding, " ").size();
  const std::size_t folder = LastOf(text, "/\\", encoding);
  const std::size_t start = folder == std::string_view::npos ? 0 : folder + width;
  const std::size_t dot = LastOf(text.substr(start), ".", encoding);
  // A dot in front belongs to the name.
  const bool has_extension = dot != std::string_view::npos && dot != 0;
  const std::size_t end = mark + (has_extension ? start + dot : text.size() / width * width);
  std::string numbered(name.substr(0, end));
  numbered += pdf::AsciiIn(encoding, " (" + std::to_string(count) + ")");
  return numbered += name.substr(end);
}

bool TargetAttachments::HasFileName(const std::string& file_name) const {
  const auto found = file_names_.find(file_name);
  return found != file_names_.end() && found->second != source_;
}

std::uint32_t TargetAttachments::NumberFor(const std::string& name, const std::string& file_name) {
  std::uint32_t& next = next_numbers_.emplace(name.empty() ? file_name : name, 2).first->second;
  while ((!name.empty() && names_.contains(NumberedName(name, next))) ||
         (!file_name.empty() && file_names_.contains(NumberedName(file_name, next)))) {
    ++next;
  }
  return next;
}

void TargetAttachments::Add(std::string name, std::uint32_t number) {
  names_.insert(name);
  objects_.push_back({std::move(name), number});
}

void TargetAttachments::Finish(pdf::FileWriter& writer, std::string& names) {
  if (objects_.empty()) {
    return;
  }
  names += "/EmbeddedFiles";
  pdf::AppendReference(names, pdf::WriteNameTree(writer, std::move(objects_)));
}

AttachmentCopier::AttachmentCopier(CopyContext& context)
    : context_(&context), reader_(context.document()) {}

void AttachmentCopier::Copy(const Object& tree) {
  context_->parts().settings.attachments().BeginSource();
  pdf::ReadNameTree(context_->document(), tree, [this](std::string_view name, const Object& value) {
    CopyOne(std::string(name), value);
  });
}

void AttachmentCopier::CopyOne(const std::string& name, const Object& value) {
  const std::uint32_t source_number = value.AsReference().number;
  if (source_number != 0 && !seen_.insert(name + '/' + std::to_string(source_number)).second) {
    return;  // one that has been copied under this name already
  }
  TargetAttachments& target = context_->parts().settings.attachments();
  std::uint32_t count = 0;  // that makes names new; 0: none needed yet
  const Copied copied = CopySpecification(value, name, count);
  if (copied.target_number == 0) {
    context_->report().Add(CopiedKind::kAttachment, CopyOutcome::kDropped, "holds no file");
    return;
  }
  const bool has_new_name = target.HasName(name);
  if (has_new_name && (count == 0 || target.HasName(NumberedName(name, count)))) {
    count = target.NumberFor(name, {});
  }
  target.Add(has_new_name ? NumberedName(name, count) : name, copied.target_number);
  context_->report().Kept(CopiedKind::kAttachment);
  if (has_new_name || copied.is_renamed) {
    context_->report().Add(CopiedKind::kAttachment, CopyOutcome::kRenamed,
                           "another attachment has the name");
  }
}

// count becomes the number that the file's name was given, if any.
AttachmentCopier::Copied AttachmentCopier::CopySpecification(const Object& value,
                                                             const std::string& name,
                                                             std::uint32_t& count) {
  const std::uint32_t source_number = value.AsReference().number;
  if (const auto known = copied_.find(source_number); known != copied_.end()) {
    return known->second;
  }
  arena_.Reset();
  const Object specification = reader_.Look(value, arena_);
  Copied copied;
  if (HoldsFile(specification)) {
    TargetAttachments& target = context_->parts().settings.attachments();
    std::string file_name = FileNameOf(specification);
    copied.is_renamed = !file_name.empty() && target.HasFileName(file_name);
    if (copied.is_renamed) {
      count = target.NumberFor(target.HasName(name) ? name : std::string(), file_name);
      file_name = NumberedName(file_name, count);
      copied.target_number = WriteRenamed(specification, source_number, count);
    } else if (source_number != 0) {
      copied.target_number = context_->objects().Map(source_number);
    } else {
      copied.target_number = context_->writer().Reserve();
      std::string text;
      context_->objects().Append(text, specification);
      context_->writer().WriteObject(copied.target_number, text);
    }
    target.NoteFileName(std::move(file_name));
  }
  if (source_number != 0) {
    copied_.emplace(source_number, copied);
  }
  return copied;
}

std::uint32_t AttachmentCopier::WriteRenamed(const Object& specification,
                                             std::uint32_t source_number, std::uint32_t count) {
  pdf::ObjectCopier& objects = context_->objects();
  const std::uint32_t number = context_->writer().Reserve();
  // One that a page brought along before keeps its name there.
  if (source_number != 0 && !objects.IsMapped(source_number)) {
    objects.Assign(source_number, number);
  }
  std::string text = "<<";
  for (const pdf::DictionaryEntry& entry : specification.Entries()) {
    pdf::AppendName(text, entry.Key());
    const Object name = IsFileNameKey(entry.Key()) ? reader_.Look(entry.value, arena_) : Object();
    if (name.IsString()) {
      pdf::AppendString(text, NumberedName(name.Text(), count), name.is_hex());
    } else {
      objects.Append(text, entry.value);
    }
  }
  context_->writer().WriteObject(number, text + ">>");
  return number;
}

bool AttachmentCopier::HoldsFile(const Object& specification) {
  const Object files = reader_.Look(specification.Get("EF"), arena_);
  return std::any_of(kFileKeys.begin(), kFileKeys.end(), [&](std::string_view key) {
    const std::uint32_t number = files.Get(key).AsReference().number;
    return context_->document().Exists(number) && !context_->source().IsBarred(number);
  });
}

std::string AttachmentCopier::FileNameOf(const Object& specification) {
  for (const std::string_view key : kFileKeys) {
    const Object name = reader_.Look(specification.Get(key), arena_);
    if (name.IsString() && !name.Text().empty()) {
      return pdf::TextStringToUtf8(name.Text());
    }
  }
  return {};
}

}  // namespace TarnixTools::engines::toolbox
