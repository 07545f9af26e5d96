#include "pdf/write/ObjectCopier.h"

#include <algorithm>

#include "pdf/Limits.h"
#include "pdf/file/StreamFilters.h"
#include "pdf/filters/Filters.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kFirstWindow = 1024;
constexpr std::uint64_t kHeldStream = std::uint64_t{4} << 20;  // decrypted or deflated in one piece
constexpr std::uint64_t kWorthDeflating = 96;
constexpr int kDeflateLevel = 6;

// Filters that are replaced by deflate, or by nothing.
bool IsWasteful(FilterKind kind) {
  return kind == FilterKind::kAscii85 || kind == FilterKind::kAsciiHex || kind == FilterKind::kLzw;
}

// Whether a stream dictionary's text may name such a filter.
bool MayWaste(std::string_view dictionary) {
  return dictionary.find("/ASCII") != std::string_view::npos ||
         dictionary.find("/LZW") != std::string_view::npos;
}

// Whether nothing compresses a stream's data and nothing forbids to.
bool MayDeflate(const Object& dictionary) {
  return !dictionary.Has("Filter") && !dictionary.Has("DecodeParms") &&
         !dictionary.Get("Type").IsName("Metadata");
}

// The data of a stream that is being written.
class StreamSink : public ByteSink {
 public:
  explicit StreamSink(FileWriter& target) : target_(&target) {}

  void Write(std::string_view bytes) override { target_->AppendStream(bytes); }

  std::span<char> Room() override {
    return target_->StoresPlainStreams() ? target_->StreamRoom() : std::span<char>();
  }

  void Commit(std::size_t count) override { target_->CommitStream(count); }

 private:
  FileWriter* target_;
};

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

ObjectCopier::ObjectCopier(Document& source, FileWriter& target, NumberMap& numbers,
                           std::function<bool(std::uint32_t)> is_barred)
    : source_(&source),
      target_(&target),
      numbers_(&numbers),
      is_barred_(std::move(is_barred)),
      tokens_(*this) {}

std::uint32_t ObjectCopier::Map(std::uint32_t number) {
  if (changes_ != nullptr) {
    number = changes_->StandIn(number);
    if (number == 0 || number == kLeftOut) {
      return number;
    }
  }
  if (const std::uint32_t known = numbers_->Get(number); known != 0) {
    return known;
  }
  if (!IsAddedObject(number) && (!source_->Exists(number) || is_barred_(number))) {
    return 0;
  }
  const std::uint32_t target_number = target_->Reserve();
  numbers_->Set(number, target_number);
  pending_.push_back({number, target_number});
  return target_number;
}

SerializeHooks ObjectCopier::MappingHooks() {
  SerializeHooks hooks;
  hooks.reference = [this](std::string& text, Reference reference) {
    AppendMapped(text, reference);
  };
  if (changes_ != nullptr) {
    hooks.leaves_out = [this](Reference reference) {
      return changes_->StandIn(reference.number) == kLeftOut;
    };
  }
  return hooks;
}

void ObjectCopier::Append(std::string& out, const Object& value) {
  AppendObject(out, value, MappingHooks());
}

// An entry of an object's own dictionary.
void ObjectCopier::AppendEntry(std::string& out, const Subject& subject,
                               const DictionaryEntry& entry, const SerializeHooks& hooks) {
  if (hooks.leaves_out && entry.value.IsReference() &&
      hooks.leaves_out(entry.value.AsReference())) {
    return;
  }
  if (tokens_.ChangesKey(entry.Key())) {
    tokens_.AppendStructureKey(out, entry.Key(), entry.value.IntegerOr(-1));
    return;
  }
  AppendName(out, entry.Key());
  if (resource_filter_ == nullptr || entry.Key() != "Resources" ||
      !resource_filter_->AppendResources(out, subject.number, subject.dictionary,
                                         subject.is_stream)) {
    AppendObject(out, entry.value, hooks);
  }
}

void ObjectCopier::AppendStructureKey(std::string& out, std::uint32_t number, std::string_view name,
                                      const Object& key) {
  tokens_.AppendStructureKey(out, name, key.IntegerOr(-1));
  NoteStructureKey(number);
}

void ObjectCopier::NoteStructureKey(std::uint32_t number) {
  if (const auto key = tokens_.TakeStructureKey()) {
    keyed_objects_.push_back({number, *key});
  }
}

// A whole object that is no stream.
void ObjectCopier::WriteParsed(const Object& value, const Promise& promise) {
  text_.clear();
  if (resource_filter_ != nullptr && IsPageType(value.Get("Type").Text())) {
    ForgetPromises();
    text_ = "null";
  } else if (value.IsDictionary()) {
    const SerializeHooks hooks = MappingHooks();
    const Subject subject{promise.number, value, false};
    text_ += "<<";
    for (const DictionaryEntry& entry : value.Entries()) {
      AppendEntry(text_, subject, entry, hooks);
    }
    text_ += ">>";
  } else {
    Append(text_, value);
  }
  target_->WriteObject(promise.target_number, text_);
}

// What the present object's text has promised before it turned out that the object is left out.
void ObjectCopier::ForgetPromises() {
  tokens_.TakeStructureKey();
  for (std::size_t i = older_promises_; i < pending_.size(); ++i) {
    numbers_->Set(pending_[i].number, 0);
  }
  pending_.resize(older_promises_);
}

void ObjectCopier::AppendMapped(std::string& out, Reference reference) {
  const std::uint32_t mapped = Map(reference.number);
  if (mapped == 0 || mapped == kLeftOut) {
    AppendToken(out, "null");
  } else {
    AppendReference(out, mapped);
  }
}

void ObjectCopier::CopyPending() {
  while (!pending_.empty()) {
    const Promise promise = pending_.back();
    pending_.pop_back();
    older_promises_ = pending_.size();
    CopyObject(promise);
    // What an object refers to first comes first.
    std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(older_promises_), pending_.end());
  }
}

void ObjectCopier::CopyObject(const Promise& promise) {
  if (changes_ != nullptr && changes_->Write(promise.number, promise.target_number)) {
    return;
  }
  const std::optional<RawObject> raw = source_->Locate(promise.number);
  if (!raw) {
    target_->WriteObject(promise.target_number, "null");
  } else if (!CopyText(*raw, promise)) {
    CopyParsed(*raw, promise);
  }
  NoteStructureKey(promise.number);
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
  const bool is_worth_decoding = extent->length <= kHeldStream && MayWaste(text_);
  if (tokens_.has_filter() && (is_worth_decoding || (source_->is_encrypted() &&
                                                     text_.find("/Crypt") != std::string::npos))) {
    return false;
  }
  if (target_->StreamStrings() != nullptr) {
    ChainedStrings strings(decrypt.get(), target_->StreamStrings());
    CopyTokens(raw, &strings, end);
  }
  text_.resize(text_.size() - 2);  // the closing ">>"
  Passage passage;
  passage.source = {raw.reference, *extent, source_->MethodOfType(tokens_.type())};
  passage.target_number = promise.target_number;
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

// Irregular syntax, streams whose filters change, and objects with another dictionary.
void ObjectCopier::CopyParsed(const RawObject& raw, const Promise& promise,
                              const Object* dictionary) {
  Arena arena;
  if (raw.holder != nullptr) {
    WriteParsed(dictionary != nullptr ? *dictionary : source_->Load({promise.number, 0}, arena),
                promise);
    return;
  }
  const auto decrypt = source_->StringsOf(raw.reference);
  const ValueAt value = source_->reader().ReadValue(raw.offset, arena, decrypt.get());
  const auto extent = value.value.IsDictionary()
                          ? source_->StreamAt(value.end, value.value.Get("Length"), promise.number)
                          : std::nullopt;
  if (!value.is_regular && value.value.IsNull()) {
    source_->findings().Add(FindingCode::kObjectDamaged, promise.number, raw.offset);
  }
  const Object& written = dictionary != nullptr ? *dictionary : value.value;
  if (!extent) {
    WriteParsed(written, promise);
    return;
  }
  Passage passage;
  passage.source = {raw.reference, *extent, source_->MethodOfStream(value.value, arena)};
  passage.target_number = promise.target_number;
  CopyParsedStream({promise.number, written, true}, std::move(passage));
}

void ObjectCopier::CopyWithDictionary(std::uint32_t number, std::uint32_t target_number,
                                      const Object& dictionary) {
  const Promise promise{number, target_number};
  if (const std::optional<RawObject> raw = source_->Locate(number)) {
    CopyParsed(*raw, promise, &dictionary);
  } else {
    WriteParsed(dictionary, promise);
  }
}

void ObjectCopier::WriteValue(std::uint32_t target_number, const Object& value) {
  WriteParsed(value, {0, target_number});
}

void ObjectCopier::WriteStream(std::uint32_t target_number, const Object& dictionary,
                               std::string data) {
  const std::string open_dictionary = StreamDictionary(dictionary);
  Passage passage;
  passage.target_number = target_number;
  passage.open_dictionary = open_dictionary;
  passage.may_deflate = MayDeflate(dictionary);
  passage.data = std::move(data);
  CopyStream(passage);
}

std::string ObjectCopier::StreamDictionary(const Object& dictionary) {
  return StreamDictionary({0, dictionary, true}, 0);
}

void ObjectCopier::CopyParsedStream(const Subject& subject, Passage passage) {
  Arena arena;
  const std::size_t dropped = TakeFiltersOff(subject.dictionary, passage, arena);
  const std::string open_dictionary = StreamDictionary(subject, dropped);
  passage.open_dictionary = open_dictionary;
  CopyStream(passage);
}

std::string ObjectCopier::StreamDictionary(const Subject& subject, std::size_t dropped_filters) {
  Arena arena;
  SerializeHooks hooks = MappingHooks();
  hooks.strings = target_->StreamStrings();
  std::string text = "<<";
  for (const DictionaryEntry& entry : subject.dictionary.Entries()) {
    DictionaryEntry copied = entry;
    if (entry.Key() == "Length") {
      continue;
    }
    if (dropped_filters > 0 && (entry.Key() == "Filter" || entry.Key() == "DecodeParms")) {
      const auto all = source_->Resolve(entry.value, arena).Items();
      if (all.size() <= dropped_filters) {
        continue;
      }
      copied.value = Object::Array(all.subspan(dropped_filters));
    }
    AppendEntry(text, subject, copied, hooks);
  }
  return text;
}

// How many leading filters the copy does without: the crypt filter that decryption has dealt with,
// and those that make data larger, or less small than deflate does; their data is then in
// passage.data. Damaged data is left as it is.
std::size_t ObjectCopier::TakeFiltersOff(const Object& dictionary, Passage& passage, Arena& arena) {
  const std::vector<FilterStep> steps = FilterStepsOf(
      dictionary, [&](const Object& value) { return source_->Resolve(value, arena); });
  const std::size_t crypt =
      !steps.empty() && steps[0].kind == FilterKind::kCrypt && source_->is_encrypted() ? 1 : 0;
  std::size_t end = crypt;
  while (end < steps.size() && IsWasteful(steps[end].kind)) {
    ++end;
  }
  if (end == crypt || passage.source.extent.length > kHeldStream) {
    passage.may_deflate = MayDeflate(dictionary);
    return crypt;
  }
  const std::vector<FilterStep> wasteful(steps.begin() + static_cast<std::ptrdiff_t>(crypt),
                                         steps.begin() + static_cast<std::ptrdiff_t>(end));
  Decoded decoded =
      TryDecode(wasteful, source_->ReadStreamData(passage.source), limits::kMaxTakenOff);
  if (!decoded.complete) {
    return crypt;
  }
  passage.data = std::move(decoded.data);
  passage.may_deflate = end == steps.size() && !dictionary.Get("Type").IsName("Metadata");
  return end;
}

void ObjectCopier::CopyStream(const Passage& passage) {
  const std::uint64_t length = passage.source.extent.length;
  const bool is_plain = passage.source.method == CryptMethod::kIdentity;
  const bool deflates = passage.may_deflate && length >= kWorthDeflating;
  if (passage.data || (length <= kHeldStream && (deflates || !is_plain))) {
    CopyHeld(passage);
    return;
  }
  target_->BeginStream(passage.target_number, passage.open_dictionary,
                       source_->PlainLength(passage.source));
  StreamSink sink(*target_);
  source_->CopyStreamData(passage.source, sink);
  target_->EndStream();
}

// Data that is short enough, or must be, to be held as a whole: decrypted and, where nothing
// compresses it yet, deflated.
void ObjectCopier::CopyHeld(const Passage& passage) {
  const std::string plain = passage.data ? *passage.data : source_->ReadStreamData(passage.source);
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

}  // namespace TarnixTools::pdf
