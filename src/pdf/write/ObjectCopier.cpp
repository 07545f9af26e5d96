#include "pdf/write/ObjectCopier.h"

#include <algorithm>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/filters/Filters.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kFirstWindow = 1024;
constexpr std::size_t kBlockSize = std::size_t{256} << 10;
constexpr std::uint64_t kSmallStream = std::uint64_t{32} << 10;  // read through the block cache
constexpr std::uint64_t kHeldStream = std::uint64_t{4} << 20;  // decrypted or deflated in one piece
constexpr std::uint64_t kWorthDeflating = 96;
constexpr int kDeflateLevel = 6;

// Strings that are decrypted for the source and encrypted for the target.
class ChainedStrings : public StringTransform {
 public:
  ChainedStrings(StringTransform* first, StringTransform* second)
      : first_(first), second_(second) {}

  void Apply(std::string& bytes) override {
    if (first_ != nullptr) {
      first_->Apply(bytes);
    }
    second_->Apply(bytes);
  }

 private:
  StringTransform* first_;
  StringTransform* second_;
};

}  // namespace

void NumberMap::Set(std::uint32_t number, std::uint32_t target) {
  if (number >= numbers_.size()) {
    numbers_.resize(std::max<std::size_t>(number + 1, numbers_.size() * 2));
  }
  if (numbers_[number] == 0) {
    set_.push_back(number);
  }
  numbers_[number] = target;
}

void NumberMap::Clear() {
  for (const std::uint32_t number : set_) {
    numbers_[number] = 0;
  }
  set_.clear();
}

ObjectCopier::ObjectCopier(Document& source, FileWriter& target, NumberMap& numbers,
                           std::function<bool(std::uint32_t)> is_barred)
    : source_(&source),
      target_(&target),
      numbers_(&numbers),
      is_barred_(std::move(is_barred)),
      tokens_(*this) {}

std::uint32_t ObjectCopier::Map(std::uint32_t number) {
  if (const std::uint32_t known = numbers_->Get(number); known != 0) {
    return known;
  }
  if (!source_->Exists(number) || is_barred_(number)) {
    return 0;
  }
  const std::uint32_t target_number = target_->Reserve();
  numbers_->Set(number, target_number);
  pending_.push_back({number, target_number});
  return target_number;
}

void ObjectCopier::Append(std::string& out, const Object& value) {
  SerializeHooks hooks;
  hooks.reference = [this](std::string& text, Reference reference) {
    const std::uint32_t mapped = Map(reference.number);
    if (mapped == 0) {
      AppendToken(text, "null");
    } else {
      AppendReference(text, mapped);
    }
  };
  AppendObject(out, value, hooks);
}

void ObjectCopier::CopyPending() {
  while (!pending_.empty()) {
    const Promise promise = pending_.back();
    pending_.pop_back();
    CopyObject(promise);
  }
}

void ObjectCopier::CopyObject(const Promise& promise) {
  const std::optional<RawObject> raw = source_->Locate(promise.number);
  if (!raw) {
    target_->WriteObject(promise.target_number, "null");
  } else if (!CopyText(*raw, promise)) {
    CopyParsed(*raw, promise);
  }
}

// Fills text_; `end` is the offset in the file after the value.
TokenCopier::Status ObjectCopier::CopyTokens(const RawObject& raw, StringTransform* strings,
                                             std::uint64_t& end) {
  if (raw.holder != nullptr) {
    text_.clear();
    Lexer lexer(raw.text, true);
    return tokens_.Copy(lexer, strings, text_);
  }
  ObjectReader& reader = source_->reader();
  for (std::size_t wanted = kFirstWindow; wanted != 0; wanted = reader.LargerWindow(wanted)) {
    const std::string_view window = reader.blocks().Window(raw.offset, wanted);
    wanted = std::max(wanted, window.size());
    Lexer lexer(window, raw.offset + window.size() >= reader.size());
    text_.clear();
    const TokenCopier::Status status = tokens_.Copy(lexer, strings, text_);
    if (status != TokenCopier::Status::kMore) {
      end = raw.offset + lexer.position();
      return status;
    }
  }
  return TokenCopier::Status::kIrregular;
}

// The common case: regular syntax. False when the object must be read with the parser.
bool ObjectCopier::CopyText(const RawObject& raw, const Promise& promise) {
  const auto decrypt = raw.holder == nullptr ? source_->StringsOf(raw.reference) : nullptr;
  std::uint64_t end = 0;
  if (CopyTokens(raw, decrypt.get(), end) != TokenCopier::Status::kDone) {
    return false;
  }
  std::optional<StreamExtent> extent;
  if (raw.holder == nullptr && tokens_.is_dictionary()) {
    const std::string_view rest = source_->reader().blocks().Window(end, 16);
    const bool ends_here = rest.starts_with("\nendobj") || rest.starts_with("\rendobj") ||
                           rest.starts_with("\r\nendobj");
    extent = ends_here ? std::nullopt : source_->StreamAt(end, tokens_.length(), promise.number);
  }
  if (!extent) {
    RestoreLength();
    target_->WriteObject(promise.target_number, text_);
    return true;
  }
  if (source_->is_encrypted() && text_.find("/Crypt") != std::string::npos) {
    return false;
  }
  if (target_->StreamStrings() != nullptr) {
    ChainedStrings strings(decrypt.get(), target_->StreamStrings());
    CopyTokens(raw, &strings, end);
  }
  text_.resize(text_.size() - 2);  // the closing ">>"
  Passage passage;
  passage.source = raw.reference;
  passage.target_number = promise.target_number;
  passage.extent = *extent;
  passage.method = source_->MethodOfType(tokens_.type());
  passage.open_dictionary = text_;
  passage.may_deflate = !tokens_.has_filter() && tokens_.type() != "Metadata" &&
                        text_.find("/DecodeParms") == std::string::npos;
  CopyStream(passage);
  return true;
}

// Gives an object that turned out to be no stream the /Length that was held back.
void ObjectCopier::RestoreLength() {
  if (tokens_.length().IsNull()) {
    return;
  }
  const Object length = tokens_.length();
  text_.resize(text_.size() - 2);
  text_ += "/Length";
  Append(text_, length);
  text_ += ">>";
}

// Irregular syntax, and streams with a crypt filter of their own.
void ObjectCopier::CopyParsed(const RawObject& raw, const Promise& promise) {
  Arena arena;
  if (raw.holder != nullptr) {
    text_.clear();
    Append(text_, source_->Load({promise.number, 0}, arena));
    target_->WriteObject(promise.target_number, text_);
    return;
  }
  const auto decrypt = source_->StringsOf(raw.reference);
  const ValueAt value = source_->reader().ReadValue(raw.offset, arena, decrypt.get());
  const auto extent = value.value.IsDictionary()
                          ? source_->StreamAt(value.end, value.value.Get("Length"), promise.number)
                          : std::nullopt;
  text_.clear();
  if (!extent) {
    Append(text_, value.value);
    target_->WriteObject(promise.target_number, text_);
    return;
  }
  Passage passage;
  passage.source = raw.reference;
  passage.target_number = promise.target_number;
  passage.extent = *extent;
  passage.method = source_->MethodOfStream(value.value, arena);
  const Object filter = source_->Resolve(value.value.Get("Filter"), arena);
  const Object parameters = source_->Resolve(value.value.Get("DecodeParms"), arena);
  const bool drops_first = source_->is_encrypted() && filter.IsArray() && !filter.Items().empty() &&
                           source_->Resolve(filter.Items()[0], arena).IsName("Crypt");
  const bool drops_all = source_->is_encrypted() && filter.IsName("Crypt");
  SerializeHooks hooks;
  hooks.strings = target_->StreamStrings();
  hooks.reference = [this](std::string& text, Reference reference) {
    const std::uint32_t mapped = Map(reference.number);
    mapped == 0 ? AppendToken(text, "null") : AppendReference(text, mapped);
  };
  text_ = "<<";
  for (const DictionaryEntry& entry : value.value.Entries()) {
    const bool is_filter = entry.Key() == "Filter" || entry.Key() == "DecodeParms";
    if (entry.Key() == "Length" || (is_filter && drops_all)) {
      continue;
    }
    Object copied = entry.value;
    if (is_filter && drops_first) {
      const Object whole = entry.Key() == "Filter" ? filter : parameters;
      copied = whole.IsArray() && !whole.Items().empty() ? Object::Array(whole.Items().subspan(1))
                                                         : Object();
    }
    AppendName(text_, entry.Key());
    AppendObject(text_, copied, hooks);
  }
  passage.open_dictionary = text_;
  CopyStream(passage);
}

void ObjectCopier::CopyStream(const Passage& passage) {
  const bool is_plain = passage.method == CryptMethod::kIdentity;
  const bool deflates = passage.may_deflate && passage.extent.length >= kWorthDeflating;
  if (passage.extent.length <= kHeldStream && (deflates || !is_plain)) {
    CopyHeld(passage);
    return;
  }
  if (is_plain || passage.method == CryptMethod::kRc4) {
    CopyBlocks(passage, passage.extent.length);
    return;
  }
  // The padding in the last block tells how long the plain data is; the block before it serves as
  // its vector.
  if (passage.extent.length % 16 != 0) {
    CopyHeld(passage);
    return;
  }
  std::string tail(32, '\0');
  tail.resize(source_->reader().blocks().Read(passage.extent.offset + passage.extent.length - 32,
                                              tail.data(), 32));
  std::string last;
  const auto cipher = source_->security()->DecryptorFor(passage.method, passage.source.number,
                                                        passage.source.generation);
  cipher->Update(tail, last);
  cipher->Finish(last);
  CopyBlocks(passage, passage.extent.length - 32 + last.size());
}

void ObjectCopier::CopyBlocks(const Passage& passage, std::uint64_t plain_length) {
  BlockReader& blocks = source_->reader().blocks();
  target_->BeginStream(passage.target_number, passage.open_dictionary, plain_length);
  const auto cipher = passage.method == CryptMethod::kIdentity
                          ? nullptr
                          : source_->security()->DecryptorFor(passage.method, passage.source.number,
                                                              passage.source.generation);
  std::string plain;
  std::uint64_t done = 0;
  while (done < passage.extent.length) {
    const std::uint64_t left = passage.extent.length - done;
    std::string_view bytes;
    if (left <= kSmallStream) {
      bytes = blocks.Window(passage.extent.offset + done, static_cast<std::size_t>(left));
      bytes = bytes.substr(0, static_cast<std::size_t>(left));
    } else {
      block_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(kBlockSize, left)));
      bytes = std::string_view(block_).substr(
          0, blocks.Read(passage.extent.offset + done, block_.data(), block_.size()));
    }
    if (bytes.empty()) {
      throw Error(ErrorCode::kSourceChanged, "the file became shorter while it was read");
    }
    done += bytes.size();
    if (cipher != nullptr) {
      plain.clear();
      cipher->Update(bytes, plain);
      bytes = plain;
    }
    target_->AppendStream(bytes);
  }
  if (cipher != nullptr) {
    plain.clear();
    cipher->Finish(plain);
    target_->AppendStream(plain);
  }
  target_->EndStream();
}

// Data that is short enough, or must be, to be held as a whole: decrypted and, where nothing
// compresses it yet, deflated.
void ObjectCopier::CopyHeld(const Passage& passage) {
  const std::string plain = ReadPlain(passage);
  if (passage.may_deflate && plain.size() >= kWorthDeflating) {
    std::string deflated;
    DeflateTo(deflated, plain, kDeflateLevel);
    if (deflated.size() + 20 < plain.size()) {
      target_->BeginStream(passage.target_number,
                           std::string(passage.open_dictionary) + "/Filter/FlateDecode",
                           deflated.size());
      target_->AppendStream(deflated);
      target_->EndStream();
      return;
    }
  }
  target_->BeginStream(passage.target_number, passage.open_dictionary, plain.size());
  target_->AppendStream(plain);
  target_->EndStream();
}

std::string ObjectCopier::ReadPlain(const Passage& passage) {
  std::string bytes = source_->reader().ReadBytes(passage.extent.offset, passage.extent.length);
  if (bytes.size() != passage.extent.length) {
    throw Error(ErrorCode::kSourceChanged, "the file became shorter while it was read");
  }
  if (passage.method == CryptMethod::kIdentity) {
    return bytes;
  }
  std::string plain;
  const auto cipher = source_->security()->DecryptorFor(passage.method, passage.source.number,
                                                        passage.source.generation);
  cipher->Update(bytes, plain);
  cipher->Finish(plain);
  return plain;
}

}  // namespace TarnixTools::pdf
