#include "engines/pdfa/checks/SignatureCheck.h"

#include <array>
#include <optional>
#include <string>

#include "pdf/syntax/SyntaxObserver.h"

namespace TarnixTools::engines::pdfa {

namespace {

// Where the message stands in the file.
class MessagePlace : public pdf::SyntaxObserver {
 public:
  void OnToken(const pdf::TokenSyntax& token) override {
    if (token.is_key) {
      is_next_ = token.token.text == "/Contents";
    } else if (is_next_) {
      begin = token.offset;
      end = token.offset + token.token.text.size();
      is_next_ = false;
    }
  }

  std::uint64_t begin = 0;
  std::uint64_t end = 0;

 private:
  bool is_next_ = false;
};

// Basic encoding (ITU-T X.690, 8.1), value by value.
class BerReader {
 public:
  struct Value {
    unsigned char tag = 0;
    std::string_view content;
    std::string_view whole;
  };

  explicit BerReader(std::string_view data) : data_(data) {}

  // Nothing at the end, and for what cannot be read.
  std::optional<Value> Next() {
    const std::optional<Header> header = HeaderOf(data_);
    const std::optional<std::size_t> length = header ? LengthOf(data_, *header) : std::nullopt;
    if (!length) {
      return std::nullopt;
    }
    const std::size_t end = header->length ? 0 : kEndSize;
    const Value value = {static_cast<unsigned char>(data_[0]),
                         data_.substr(header->size, *length - header->size - end),
                         data_.substr(0, *length)};
    data_.remove_prefix(*length);
    return value;
  }

 private:
  static constexpr std::size_t kEndSize = 2;

  struct Header {
    std::size_t size = 0;               // of tag and length
    std::optional<std::size_t> length;  // nothing: an end mark tells
  };

  static std::optional<Header> HeaderOf(std::string_view data) {
    if (data.size() < 2) {
      return std::nullopt;
    }
    constexpr std::size_t kLong = 0x80;
    const std::size_t first = static_cast<unsigned char>(data[1]);
    if (first <= kLong) {
      return Header{2, first < kLong ? std::optional(first) : std::nullopt};
    }
    const std::size_t bytes = first - kLong;
    if (bytes > 4 || data.size() < 2 + bytes) {
      return std::nullopt;
    }
    std::size_t length = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
      length = length << 8 | static_cast<unsigned char>(data[2 + i]);
    }
    return Header{2 + bytes, length};
  }

  // Of the whole value. What is in one without a length is passed over, value by value.
  static std::optional<std::size_t> LengthOf(std::string_view data, const Header& header) {
    std::size_t at = header.size + header.length.value_or(0);
    for (std::size_t open = header.length ? 0 : 1; open > 0 && at <= data.size();) {
      const std::optional<Header> inner = HeaderOf(data.substr(at));
      if (!inner) {
        return std::nullopt;
      }
      const bool is_end = data.substr(at).starts_with(std::string_view("\0\0", kEndSize));
      open = is_end ? open - 1 : inner->length ? open : open + 1;
      at += inner->size + inner->length.value_or(0);
    }
    return at <= data.size() ? std::optional(at) : std::nullopt;
  }

  std::string_view data_;
};

constexpr unsigned char kSequence = 0x30;
constexpr unsigned char kSet = 0x31;
constexpr unsigned char kCertificates = 0xA0;

// Issuer and serial number, as they stand.
struct Signer {
  std::string_view issuer;
  std::string_view serial;

  bool operator==(const Signer&) const = default;
};

// RFC 5280, 4.1.
std::optional<Signer> SignerOfCertificate(std::string_view certificate) {
  const auto fields = BerReader(certificate).Next();
  if (!fields) {
    return std::nullopt;
  }
  BerReader reader(fields->content);
  auto value = reader.Next();
  if (value && value->tag == kCertificates) {  // the version
    value = reader.Next();
  }
  const auto algorithm = reader.Next();
  const auto issuer = reader.Next();
  if (!value || !algorithm || !issuer) {
    return std::nullopt;
  }
  return Signer{issuer->whole, value->whole};
}

// RFC 5652, 5.3.
std::optional<Signer> SignerOfInfo(std::string_view info) {
  BerReader reader(info);
  const auto version = reader.Next();
  const auto identifier = reader.Next();
  if (!version || !identifier || identifier->tag != kSequence) {
    return std::nullopt;
  }
  BerReader parts(identifier->content);
  const auto issuer = parts.Next();
  const auto serial = parts.Next();
  if (!issuer || !serial) {
    return std::nullopt;
  }
  return Signer{issuer->whole, serial->whole};
}

bool HasCertificateOf(std::string_view certificates, const Signer& signer) {
  BerReader reader(certificates);
  while (const auto certificate = reader.Next()) {
    if (SignerOfCertificate(certificate->content) == signer) {
      return true;
    }
  }
  return false;
}

SignatureMessageFacts FactsOfSigners(std::string_view infos, std::string_view certificates) {
  SignatureMessageFacts facts{.has_certificate = true, .signers = 0};
  BerReader reader(infos);
  while (const auto info = reader.Next()) {
    ++facts.signers;
    const std::optional<Signer> signer = SignerOfInfo(info->content);
    facts.has_certificate &= !signer || HasCertificateOf(certificates, *signer);
  }
  facts.has_certificate &= facts.signers > 0;
  return facts;
}

// The signature covers the file up to the end of some version of it, but for the message.
bool CoversDocument(CheckedDocument& checked, const pdf::Followed& signature) {
  pdf::Arena arena;
  const pdf::Object range = checked.Get(signature.value, "ByteRange", arena);
  constexpr std::size_t kNumbers = 4;
  if (range.Items().size() != kNumbers) {
    return false;
  }
  std::array<std::int64_t, kNumbers> numbers{};
  for (std::size_t i = 0; i < kNumbers; ++i) {
    numbers[i] = checked.document().Resolve(range.Items()[i], arena).IntegerOr(-1);
  }
  MessagePlace place;
  checked.document().Load({signature.number, 0}, arena, place);
  constexpr std::int64_t kMost = std::int64_t{1} << 60;
  if (numbers[2] < 0 || numbers[2] > kMost || numbers[3] < 0 || numbers[3] > kMost) {
    return false;
  }
  const auto end = static_cast<std::uint64_t>(numbers[2] + numbers[3]);
  constexpr std::string_view kMarker = "%%EOF";
  constexpr std::uint64_t kTail = 7;
  if (end < kTail || end > checked.document().reader().size()) {
    return false;
  }
  const std::string_view tail =
      checked.document().reader().blocks().Window(end - kTail, kTail).substr(0, kTail);
  return numbers[0] == 0 && numbers[1] == static_cast<std::int64_t>(place.begin) &&
         numbers[2] == static_cast<std::int64_t>(place.end) &&
         tail.find(kMarker) != std::string_view::npos;
}

void CheckReferences(CheckedDocument& checked, const pdf::Object& signature) {
  pdf::Arena arena;
  const pdf::Object permissions = checked.Get(checked.document().Catalog(arena), "Perms", arena);
  const pdf::Object references = checked.Get(signature, "Reference", arena);
  for (const pdf::Object& item : references.Items()) {
    const pdf::Followed reference = checked.document().Follow(item, arena);
    const pdf::Object& value = reference.value;
    checked.findings().Check(
        SignatureReferenceFacts{.has_digest = value.Has("DigestLocation") ||
                                              value.Has("DigestMethod") || value.Has("DigestValue"),
                                .document_has_mdp = permissions.Has("DocMDP")},
        {.object = reference.number});
  }
}

}  // namespace

// RFC 5652, 3 and 5.1: content information, in it the signed data, and at its end the signers.
SignatureMessageFacts FactsOfMessage(std::string_view message) {
  const auto information = BerReader(message).Next();
  BerReader outer(information ? information->content : std::string_view());
  const auto type = outer.Next();
  const auto wrapper = outer.Next();
  const auto data = BerReader(wrapper ? wrapper->content : std::string_view()).Next();
  if (!type || !data || data->tag != kSequence) {
    return {.has_certificate = false, .signers = 0};
  }
  BerReader fields(data->content);
  std::string_view certificates;
  std::optional<std::string_view> infos;
  bool is_past_content = false;
  while (const auto field = fields.Next()) {
    if (field->tag == kCertificates) {
      certificates = field->content;
    } else if (field->tag == kSequence) {
      is_past_content = true;
    } else if (field->tag == kSet && is_past_content) {
      infos = field->content;
    }
  }
  return FactsOfSigners(infos.value_or(""), certificates);
}

void CheckSignatureField(CheckedDocument& checked, const pdf::Followed& field) {
  pdf::Arena arena;
  if (!checked.Get(field.value, "FT", arena).IsName("Sig")) {
    return;
  }
  const pdf::Followed signature = checked.document().Follow(field.value.Get("V"), arena);
  if (!signature.value.IsDictionary()) {
    return;
  }
  const Place place = {.object = signature.number};
  checked.findings().Check(SignatureFacts{CoversDocument(checked, signature)}, place);
  const pdf::Object message = checked.Get(signature.value, "Contents", arena);
  if (message.IsString()) {
    checked.findings().Check(FactsOfMessage(message.Text()), place);
  }
  CheckReferences(checked, signature.value);
}

}  // namespace TarnixTools::engines::pdfa
