#include "pdf/write/FileWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>
#include <utility>

#include <libdeflate.h>
#include <nettle/md5.h>

#include "pdf/Error.h"
#include "pdf/filters/Filters.h"
#include "pdf/tree/DocumentVersion.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kBufferSize = std::size_t{256} << 10;

struct PackingFacts {
  std::size_t max_members;
  std::size_t max_text;  // bytes of an object stream before it is deflated
  int level;             // of libdeflate, for object streams
  int cross_reference_level;
};

// Object streams are written once and read often, but most of a fast job's time would go into higher
// levels. Longer ones gain a tenth of a per cent of a file, and longer still hardly anything, while
// readers have to inflate one for a single object.
constexpr PackingFacts kFastPacking = {200, std::size_t{64} << 10, 1, 6};
constexpr PackingFacts kDensePacking = {500, std::size_t{256} << 10, 12, 12};

constexpr const PackingFacts& FactsOf(Packing packing) {
  return packing == Packing::kDense ? kDensePacking : kFastPacking;
}

constexpr std::uint64_t kMaxTableOffset = 9'999'999'999;  // ten digits
constexpr std::uint64_t kUnknownLength = std::numeric_limits<std::uint64_t>::max();

// 17 for 1.7.
int VersionFor(const FileFormat& format, const Security* security) {
  constexpr int kPdf2 = 20;
  return security != nullptr ? kPdf2 : VersionOf(format.version);
}

// An entry of a cross-reference table.
std::string TableLine(std::uint64_t place, bool is_free, bool is_first) {
  std::string line = std::to_string(place);
  line.insert(0, line.size() < 10 ? 10 - line.size() : 0, '0');
  return line + (is_first ? " 65535 " : " 00000 ") + (is_free ? "f \n" : "n \n");
}

}  // namespace

// Digest of what is written: two checksums of each block, at the speed of memory, joined by one
// real digest; of long streams, samples are enough. It tells documents apart; it is no proof
// against forgery, and file identifiers need not be.
class FileWriter::Digest {
 public:
  Digest() { md5_init(&state_); }

  void Add(std::string_view block) {
    const std::array<std::uint64_t, 2> sums = {
        libdeflate_crc32(0, block.data(), block.size()),
        (std::uint64_t{block.size()} << 32) | libdeflate_adler32(1, block.data(), block.size())};
    md5_update(&state_, sizeof sums, reinterpret_cast<const std::uint8_t*>(sums.data()));
  }

  // Counts in a block of a stream's data.
  void AddSamples(std::string_view block) {
    constexpr std::size_t kStep = 16384;
    constexpr std::size_t kSample = 1024;
    std::size_t at = 0;
    for (; block.size() - at >= kStep; at += kStep) {
      Add(block.substr(at, kSample));
    }
    Add(block.substr(at));
  }

  std::string Take() {
    std::string digest(MD5_DIGEST_SIZE, '\0');
    md5_digest(&state_, digest.size(), reinterpret_cast<std::uint8_t*>(digest.data()));
    return digest;
  }

 private:
  md5_ctx state_;
};

class FileWriter::StringEncryptor : public StringTransform {
 public:
  explicit StringEncryptor(const Security& security) : security_(&security) {}

  void Apply(std::string& bytes) override {
    std::string encrypted;
    const auto cipher = security_->Encryptor();
    cipher->Update(bytes, encrypted);
    cipher->Finish(encrypted);
    bytes = std::move(encrypted);
  }

 private:
  const Security* security_;
};

FileWriter::FileWriter(ByteSink& sink, const Security* security, const FileFormat& format)
    : sink_(&sink),
      security_(security),
      layout_(format.layout),
      packing_(format.packing),
      version_(VersionFor(format, security)),
      digest_(std::make_unique<Digest>()),
      places_(1, 0) {
  if (security != nullptr) {
    string_encryptor_ = std::make_unique<StringEncryptor>(*security);
  }
  buffer_ = std::make_unique_for_overwrite<char[]>(kBufferSize);
  PutHeader();
}

FileWriter::~FileWriter() = default;

bool FileWriter::SetFormat(const FileFormat& format) {
  if (offset_ != header_size_ || !members_.empty()) {
    return false;
  }
  layout_ = format.layout;
  packing_ = format.packing;
  version_ = VersionFor(format, security_);
  buffered_ = 0;
  offset_ = 0;
  PutHeader();
  return true;
}

void FileWriter::PutHeader() {
  Put("%PDF-");
  Put(std::to_string(version_ / 10) + "." + std::to_string(version_ % 10));
  Put("\n%\xE2\xE3\xCF\xD3\n");
  header_size_ = offset_;
}

std::uint32_t FileWriter::Reserve() {
  places_.push_back(0);
  return static_cast<std::uint32_t>(places_.size() - 1);
}

StringTransform* FileWriter::StreamStrings() {
  return string_encryptor_.get();
}

void FileWriter::WriteObject(std::uint32_t number, std::string_view body) {
  if (layout_ == FileLayout::kTable) {
    if (security_ == nullptr) {
      PutObject(number, body);
    } else {
      PutObject(number, WithEncryptedStrings(body));
    }
    return;
  }
  AppendInteger(member_table_, number);
  AppendInteger(member_table_, static_cast<std::int64_t>(member_text_.size()));
  member_text_ += body;
  member_text_ += '\n';
  members_.push_back(number);
  const PackingFacts& packing = FactsOf(packing_);
  if (members_.size() >= packing.max_members || member_text_.size() >= packing.max_text) {
    FlushObjectStream();
  }
}

// Strings in object streams are encrypted with the whole; others each by itself.
std::string FileWriter::WithEncryptedStrings(std::string_view body) {
  Arena arena;
  Parser parser(arena);
  Lexer lexer(body, true);
  Object value;
  parser.Parse(lexer, string_encryptor_.get(), value);
  std::string text;
  AppendObject(text, value);
  return text;
}

void FileWriter::FlushObjectStream() {
  if (members_.empty()) {
    return;
  }
  const std::uint32_t number = Reserve();
  for (std::size_t i = 0; i < members_.size(); ++i) {
    places_[members_[i]] = (((std::uint64_t{number} << 20) | i) << 1) | 1;
  }
  member_table_ += '\n';
  const std::size_t first = member_table_.size();
  member_table_ += member_text_;
  std::string data;
  DeflateTo(data, member_table_, FactsOf(packing_).level);
  std::string dictionary = "<</Type/ObjStm/N";
  AppendInteger(dictionary, static_cast<std::int64_t>(members_.size()));
  dictionary += "/First";
  AppendInteger(dictionary, static_cast<std::int64_t>(first));
  dictionary += "/Filter/FlateDecode";
  member_table_.clear();
  member_text_.clear();
  members_.clear();
  BeginStream(number, dictionary, data.size());
  AppendStream(data);
  EndStream();
}

void FileWriter::PutObjectStart(std::uint32_t number) {
  places_[number] = offset_ << 1;
  PutNumber(number);
  Put(" 0 obj\n");
}

void FileWriter::PutObject(std::uint32_t number, std::string_view body) {
  PutObjectStart(number);
  Put(body);
  Put("\nendobj\n");
}

void FileWriter::BeginStream(std::uint32_t number, std::string_view open_dictionary,
                             std::uint64_t length) {
  PutObjectStart(number);
  Put(open_dictionary);
  Put("/Length ");
  stream_cipher_ = security_ != nullptr ? security_->Encryptor() : nullptr;
  PutNumber(stream_cipher_ != nullptr ? Security::EncryptedSize(length) : length);
  Put(">>\nstream\n");
  stream_left_ = length;
}

void FileWriter::BeginStream(std::uint32_t number, std::string_view open_dictionary) {
  length_number_ = Reserve();
  PutObjectStart(number);
  Put(open_dictionary);
  Put("/Length ");
  PutNumber(length_number_);
  Put(" 0 R>>\nstream\n");
  stream_cipher_ = security_ != nullptr ? security_->Encryptor() : nullptr;
  stream_start_ = offset_;
  stream_left_ = kUnknownLength;
}

void FileWriter::AppendStream(std::string_view bytes) {
  if (bytes.size() > stream_left_) {
    throw Error(ErrorCode::kInternal, "a stream is longer than announced");
  }
  stream_left_ -= bytes.size();
  if (stream_cipher_ == nullptr) {
    Put(bytes);
    return;
  }
  encrypted_.clear();
  stream_cipher_->Update(bytes, encrypted_);
  Put(encrypted_);
}

void FileWriter::EndStream() {
  if (stream_left_ != 0 && length_number_ == 0) {
    throw Error(ErrorCode::kInternal, "a stream is shorter than announced");
  }
  if (stream_cipher_ != nullptr) {
    encrypted_.clear();
    stream_cipher_->Finish(encrypted_);
    Put(encrypted_);
    stream_cipher_.reset();
  }
  const std::uint64_t length = offset_ - stream_start_;
  Put("\nendstream\nendobj\n");
  if (length_number_ != 0) {  // in the file itself, where the most simple of readers find it
    PutObject(std::exchange(length_number_, 0), std::to_string(length));
    stream_left_ = 0;
  }
}

// The sink gets whole buffers: at offsets that are multiples of their size, file systems have the
// least work with them.
void FileWriter::Put(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t count = std::min(kBufferSize - buffered_, bytes.size());
    std::memcpy(buffer_.get() + buffered_, bytes.data(), count);
    bytes.remove_prefix(count);
    Advance(count);
  }
}

// Counts bytes that have been put into the buffer.
void FileWriter::Advance(std::size_t count) {
  offset_ += count;
  buffered_ += count;
  if (buffered_ == kBufferSize) {
    Flush();
  }
}

std::span<char> FileWriter::StreamRoom() {
  return {buffer_.get() + buffered_, kBufferSize - buffered_};
}

void FileWriter::CommitStream(std::size_t count) {
  if (count > stream_left_ || stream_cipher_ != nullptr) {
    throw Error(ErrorCode::kInternal, "a stream is longer than announced");
  }
  stream_left_ -= count;
  DigestPending();
  digest_->AddSamples({buffer_.get() + buffered_, count});
  digested_ += count;
  Advance(count);
}

void FileWriter::PutNumber(std::uint64_t number) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  Put({digits, static_cast<std::size_t>(end - digits)});
}

void FileWriter::Flush() {
  if (buffered_ != 0) {
    DigestPending();
    sink_->Write({buffer_.get(), buffered_});
    buffered_ = 0;
    digested_ = 0;
  }
}

void FileWriter::DigestPending() {
  if (digested_ < buffered_) {
    digest_->Add({buffer_.get() + digested_, buffered_ - digested_});
    digested_ = buffered_;
  }
}

std::string FileWriter::EncryptionDictionaryText() const {
  const EncryptionFacts& facts = security_->facts();
  std::string text = "<</Filter/Standard/V 5/R 6/Length 256/P";
  AppendInteger(text, facts.permissions);
  text += "/CF<</StdCF<</AuthEvent/DocOpen/CFM/AESV3/Length 32>>>>/StmF/StdCF/StrF/StdCF";
  const std::pair<const char*, const std::string*> strings[] = {{"/O", &facts.owner},
                                                                {"/U", &facts.user},
                                                                {"/OE", &facts.owner_key},
                                                                {"/UE", &facts.user_key},
                                                                {"/Perms", &facts.perms}};
  for (const auto& [key, value] : strings) {
    text += key;
    AppendString(text, *value, true);
  }
  return text + ">>";
}

// Type, place and index of every object, in rows that are 1 + offset_width + 2 bytes long, each
// given as the difference to the row above (PNG predictor 12), which is what makes them deflate
// well.
std::string FileWriter::CrossReferenceData(std::uint32_t self, unsigned offset_width) const {
  const std::size_t width = 1 + offset_width + 2;
  std::string data;
  data.reserve((places_.size() + 1) * (width + 1));
  std::array<unsigned char, 16> above{};
  for (std::size_t number = 0; number < places_.size(); ++number) {
    const std::uint64_t place = number == self ? offset_ << 1 : places_[number];
    const bool is_member = (place & 1) != 0;
    const unsigned type = place == 0 ? 0 : is_member ? 2 : 1;
    const std::uint64_t second = is_member ? place >> 21 : place >> 1;
    const std::uint64_t third = is_member ? (place >> 1) & 0xFFFFF : (number == 0 ? 65535 : 0);
    std::array<unsigned char, 16> row{};
    row[0] = static_cast<unsigned char>(type);
    for (unsigned i = 0; i < offset_width; ++i) {
      row[1 + i] = static_cast<unsigned char>(second >> (8 * (offset_width - 1 - i)));
    }
    row[width - 2] = static_cast<unsigned char>(third >> 8);
    row[width - 1] = static_cast<unsigned char>(third);
    data += '\x02';
    for (std::size_t i = 0; i < width; ++i) {
      data += static_cast<char>(row[i] - above[i]);
    }
    above = row;
  }
  return data;
}

void FileWriter::Finish(const FileTrailer& trailer) {
  FlushObjectStream();
  const std::uint32_t encrypt = WriteEncryptionDictionary();
  Flush();
  const std::uint64_t start = offset_;
  if (layout_ == FileLayout::kTable) {
    WriteTable(trailer, encrypt);
  } else {
    WriteCrossReferenceStream(trailer, encrypt);
  }
  Put("startxref\n");
  PutNumber(start);
  Put("\n%%EOF\n");
  Flush();
}

std::uint32_t FileWriter::WriteEncryptionDictionary() {
  if (security_ == nullptr) {
    return 0;
  }
  const std::uint32_t number = Reserve();
  PutObject(number, EncryptionDictionaryText());
  return number;
}

// What a trailer and the dictionary of a cross-reference stream both have.
std::string FileWriter::TrailerEntries(const FileTrailer& trailer, std::uint32_t encrypt) {
  std::string text = "/Size";
  AppendInteger(text, static_cast<std::int64_t>(places_.size()));
  const std::pair<const char*, std::uint32_t> references[] = {
      {"/Root", trailer.catalog}, {"/Info", trailer.info}, {"/Encrypt", encrypt}};
  for (const auto& [key, number] : references) {
    if (number != 0) {
      text += key;
      AppendReference(text, number);
    }
  }
  const std::string id = digest_->Take();
  text += "/ID[";
  AppendString(text, trailer.first_id.empty() ? id : trailer.first_id, true);
  AppendString(text, id, true);
  return text + "]" + trailer.entries;
}

// The free objects are a chain (7.5.4), each naming the next one.
void FileWriter::WriteTable(const FileTrailer& trailer, std::uint32_t encrypt) {
  std::vector<std::uint32_t> next_free(places_.size(), 0);
  std::uint32_t next = 0;
  for (std::size_t number = places_.size(); number-- > 0;) {
    if (places_[number] == 0) {
      next_free[number] = next;
      next = static_cast<std::uint32_t>(number);
    }
  }
  Put("xref\n0 ");
  PutNumber(places_.size());
  Put("\n");
  for (std::size_t number = 0; number < places_.size(); ++number) {
    const bool is_free = places_[number] == 0;
    const std::uint64_t place = is_free ? next_free[number] : places_[number] >> 1;
    if (place > kMaxTableOffset) {
      throw Error(ErrorCode::kLimitExceeded, "the file is too long for a cross-reference table");
    }
    Put(TableLine(place, is_free, number == 0));
  }
  Put("trailer\n<<");
  Put(TrailerEntries(trailer, encrypt));
  Put(">>\n");
}

void FileWriter::WriteCrossReferenceStream(const FileTrailer& trailer, std::uint32_t encrypt) {
  const std::uint32_t self = Reserve();
  unsigned offset_width = 1;
  while (offset_width < 8 &&
         (std::max<std::uint64_t>(offset_, places_.size()) >> (8 * offset_width)) != 0) {
    ++offset_width;
  }
  std::string data;
  DeflateTo(data, CrossReferenceData(self, offset_width), FactsOf(packing_).cross_reference_level);
  // The cross-reference itself is never encrypted.
  PutObjectStart(self);
  Put("<</Type/XRef");
  Put(TrailerEntries(trailer, encrypt));
  Put("/W[1 ");
  PutNumber(offset_width);
  Put(" 2]/Filter/FlateDecode/DecodeParms<</Predictor 12/Columns ");
  PutNumber(3 + offset_width);
  Put(">>/Length ");
  PutNumber(data.size());
  Put(">>\nstream\n");
  Put(data);
  Put("\nendstream\nendobj\n");
}

}  // namespace TarnixTools::pdf
