#include "pdf/file/Document.h"

#include <algorithm>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

namespace {

// Decrypts the strings of one object.
class StringDecryptor : public StringTransform {
 public:
  StringDecryptor(const Security& security, Reference reference, Findings& findings)
      : security_(&security), reference_(reference), findings_(&findings) {}

  void Apply(std::string& bytes) override {
    const auto cipher =
        security_->DecryptorFor(CryptTarget::kString, reference_.number, reference_.generation);
    if (cipher == nullptr) {
      return;
    }
    std::string plain;
    cipher->Update(bytes, plain);
    if (!cipher->Finish(plain)) {
      findings_->Add(FindingCode::kStringUndecryptable, reference_.number);
    }
    bytes = std::move(plain);
  }

 private:
  const Security* security_;
  Reference reference_;
  Findings* findings_;
};

}  // namespace

Document::Document(std::unique_ptr<ByteSource> source, std::string_view password)
    : blocks_(std::move(source)), reader_(blocks_), password_(password) {}

std::unique_ptr<Document> Document::Open(std::unique_ptr<ByteSource> source,
                                         std::string_view password) {
  std::unique_ptr<Document> document(new Document(std::move(source), password));
  if (document->reader_.size() == 0) {
    throw Error(ErrorCode::kNotAPdf, "the file is empty");
  }
  document->FindHeader();
  if (!document->ReadXref()) {
    document->Rebuild();
  }
  return document;
}

void Document::FindHeader() {
  const std::string_view start = blocks_.Window(0, limits::kHeaderSearch);
  const std::size_t at = start.substr(0, limits::kHeaderSearch).find("%PDF-");
  if (at == std::string_view::npos) {
    findings_.Add(FindingCode::kHeaderMissing);
    return;
  }
  header_offset_ = at;
  if (at > 0) {
    findings_.Add(FindingCode::kHeaderNotFirst, 0, at);
  }
}

std::optional<StartXrefSyntax> Document::FindStartXref() {
  constexpr std::string_view kKeyword = "startxref";
  const std::uint64_t start =
      reader_.size() - std::min<std::uint64_t>(reader_.size(), limits::kTrailerSearch);
  const std::string_view tail = blocks_.Window(start, limits::kTrailerSearch);
  const std::size_t at = tail.rfind(kKeyword);
  if (at == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view rest = tail.substr(at + kKeyword.size());
  Lexer lexer(rest, true);
  lexer.SkipSpace();
  StartXrefSyntax found;
  found.offset = start + at;
  found.after_keyword = rest.substr(0, std::min(limits::kMaxSpacing, lexer.position()));
  const Token value = lexer.Next();
  if (value.kind == Token::Kind::kInteger && value.integer >= 0) {
    found.value = value.integer;
    const std::string_view after = lexer.rest().substr(0, limits::kMaxSpacing);
    const auto end = std::find_if_not(after.begin(), after.end(), IsSpace);
    found.after_value = after.substr(0, static_cast<std::size_t>(end - after.begin()));
  }
  return found;
}

// The regular way in. False when it does not lead to a catalog.
bool Document::ReadXref() {
  const std::optional<StartXrefSyntax> found = FindStartXref();
  if (!found || found->value < 0) {
    findings_.Add(FindingCode::kStartXrefMissing);
    return false;
  }
  const auto start = static_cast<std::uint64_t>(found->value);
  for (const std::uint64_t base : {std::uint64_t{0}, header_offset_}) {
    if (start + base >= reader_.size()) {
      continue;
    }
    xref_.Clear();
    XrefReader sections(reader_, xref_, findings_, trailer_arena_);
    if (sections.ReadChain(start + base, base)) {
      xref_start_ = start + base;
      xref_base_ = base;
      return ChooseTrailer(sections.trailers()) && sections.is_complete();
    }
    if (header_offset_ == 0) {
      break;
    }
  }
  findings_.Add(FindingCode::kXrefDamaged, 0, start);
  xref_.Clear();
  return false;
}

// Takes the first trailer whose root is a catalog, or refers to one.
bool Document::ChooseTrailer(const std::vector<Object>& candidates) {
  for (const Object& candidate : candidates) {
    const Object root = candidate.Get("Root");
    if (!root.IsReference() && !root.IsDictionary()) {
      continue;
    }
    trailer_ = candidate;
    if (!is_encrypted_) {
      SetUpSecurity();
    }
    if (IsCatalog(root)) {
      SetCatalog(root);
      return true;
    }
  }
  return false;
}

bool Document::IsCatalog(const Object& root) {
  Arena arena;
  const Object catalog = root.IsReference() ? Load(root.AsReference(), arena) : root;
  return catalog.IsDictionary() && Resolve(catalog.Get("Pages"), arena).IsDictionary();
}

// The catalog shall be an object of its own (7.5.5), but readers take one that stands in the
// trailer.
void Document::SetCatalog(const Object& root) {
  root_ = root.AsReference();
  catalog_ = root_ ? Object() : root;
  if (!root_) {
    findings_.Add(FindingCode::kCatalogInTrailer);
  }
}

void Document::SetUpSecurity() {
  Object encrypt = trailer_.Get("Encrypt");
  if (encrypt.IsNull()) {
    return;
  }
  Arena arena;
  encryption_object_ = encrypt.AsReference().number;
  const Object dictionary = Resolve(encrypt, arena);
  if (!dictionary.IsDictionary()) {
    if (!is_rebuilt_) {
      return;  // it may yet be found by reading the whole file
    }
    throw Error(ErrorCode::kDamagedSecurity, "the encryption dictionary is missing");
  }
  is_encrypted_ = true;
  const auto resolve = [&](const Object& value) { return Resolve(value, arena); };
  const auto id = Resolve(trailer_.Get("ID"), arena).Items();
  const Object first_id = id.empty() ? Object() : Resolve(id[0], arena);
  encryption_ = ReadEncryptionDictionary(dictionary, first_id.Text(), resolve);
  security_ = Security::Open(encryption_.facts, password_);
}

Object Document::Load(Reference reference, Arena& arena) {
  if (const Object* kept = large_objects_.Find(reference.number)) {
    return *kept;
  }
  const std::optional<RawObject> raw = Locate(reference.number);
  if (!raw) {
    return {};
  }
  const Parsed parsed = Parse(*raw, arena);
  if (large_objects_.IsDue(reference.number, parsed.size)) {
    large_objects_.Keep(reference.number, Parse(*raw, large_objects_.arena()).value);
  }
  return parsed.value;
}

Document::Parsed Document::Parse(const RawObject& raw, Arena& arena) {
  if (raw.holder != nullptr) {
    const ValueAt held = reader_.ReadHeldValue(raw.text, arena);
    return {held.value, held.end, held.has_value && held.is_regular};
  }
  const auto strings = StringsOf(raw.reference);
  const ValueAt read = reader_.ReadValue(raw.offset, arena, strings.get());
  if (!read.is_regular) {
    findings_.Add(FindingCode::kObjectDamaged, raw.reference.number, raw.offset);
  }
  return {read.value, read.end - raw.offset, read.has_value && read.is_regular};
}

std::unique_ptr<StringTransform> Document::StringsOf(Reference reference) {
  if (!security_ || reference.number == encryption_object_ ||
      security_->MethodFor(CryptTarget::kString) == CryptMethod::kIdentity) {
    return nullptr;
  }
  return std::make_unique<StringDecryptor>(*security_, reference, findings_);
}

Object Document::Resolve(const Object& value, Arena& arena) {
  return Follow(value, arena).value;
}

Followed Document::Follow(const Object& value, Arena& arena) {
  Followed followed{value, 0};
  for (int hops = 0; followed.value.IsReference(); ++hops) {
    if (hops == limits::kMaxReferenceSteps) {
      return {};
    }
    followed.number = followed.value.AsReference().number;
    followed.value = Load(followed.value.AsReference(), arena);
  }
  return followed;
}

std::optional<RawObject> Document::Locate(std::uint32_t number) {
  if (!xref_.Exists(number)) {
    return std::nullopt;
  }
  std::optional<RawObject> raw = LocateOnce(number);
  if (!raw && !is_rebuilt_) {
    Rebuild();
    raw = LocateOnce(number);
  }
  if (!raw) {
    findings_.Add(FindingCode::kObjectMissing, number);
    NoteLost(number);
    if (opening_.empty() && xref_.Exists(number)) {
      xref_.Set(number, {0, 0, 0, XrefEntry::Kind::kFree});  // not looked for again
    }
  }
  return raw;
}

std::optional<RawObject> Document::LocateOnce(std::uint32_t number) {
  const XrefEntry entry = xref_.Find(number);
  if (entry.kind == XrefEntry::Kind::kInFile) {
    const std::optional<ObjectHeader> header = reader_.ReadHeader(entry.position);
    if (!header || header->number != number) {
      return std::nullopt;
    }
    return RawObject{{number, header->generation}, header->body, nullptr, {}};
  }
  if (entry.kind != XrefEntry::Kind::kInStream) {
    return std::nullopt;
  }
  const auto holder = OpenObjectStream(static_cast<std::uint32_t>(entry.position));
  const auto text = holder ? holder->Find(number, entry.index) : std::nullopt;
  if (!text) {
    return std::nullopt;
  }
  return RawObject{{number, 0}, 0, holder, *text};
}

namespace {

// Notes an object stream that is being opened, as long as that takes.
class Opening {
 public:
  Opening(std::vector<std::uint32_t>& all, std::uint32_t number) : all_(&all) {
    all_->push_back(number);
  }

  Opening(const Opening&) = delete;
  Opening& operator=(const Opening&) = delete;

  ~Opening() { all_->pop_back(); }

 private:
  std::vector<std::uint32_t>* all_;
};

}  // namespace

std::shared_ptr<const ObjectStream> Document::ReadObjectStream(std::uint32_t number) {
  const Opening opening(opening_, number);
  std::optional<Decoded> decoded = TryDecodeStream(number);
  if (decoded && !decoded->complete) {
    findings_.Add(FindingCode::kObjectStreamDamaged, number);
  }
  if (!decoded || (decoded->data.empty() && !decoded->complete)) {
    return nullptr;
  }
  Arena arena;
  const Object dictionary = Load({number, 0}, arena);
  return std::make_shared<ObjectStream>(std::move(decoded->data),
                                        Resolve(dictionary.Get("First"), arena).IntegerOr(-1),
                                        Resolve(dictionary.Get("N"), arena).IntegerOr(0));
}

std::shared_ptr<const ObjectStream> Document::OpenObjectStream(std::uint32_t number) {
  if (auto cached = object_streams_.Find(number)) {
    return cached;
  }
  // An object stream lies in the file itself, never in another one. What its dictionary refers to
  // may lie in another one, which should not be (ISO 32000-2, 7.5.7).
  if (xref_.Find(number).kind != XrefEntry::Kind::kInFile ||
      opening_.size() >= limits::kMaxOpeningStreams ||
      std::find(opening_.begin(), opening_.end(), number) != opening_.end()) {
    return nullptr;
  }
  std::shared_ptr<const ObjectStream> stream = ReadObjectStream(number);
  if (stream) {
    object_streams_.Put(number, stream);
  }
  return stream;
}

}  // namespace TarnixTools::pdf
