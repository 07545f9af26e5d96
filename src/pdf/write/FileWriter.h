// Writes a whole PDF file in one forward pass: objects in compressed object streams, stream data in
// blocks, a cross-reference stream at the end (ISO 32000-2, 7.5.7 and 7.5.8); or, for readers of
// every version, each object by itself and a cross-reference table (7.5.4).
//
//   FileWriter writer(sink, nullptr);
//   const std::uint32_t catalog = writer.Reserve();
//   writer.WriteObject(catalog, "<</Type/Catalog/Pages 2 0 R>>");
//   ...
//   writer.Finish(catalog, 0);
#ifndef TARNIX_PDF_WRITE_FILEWRITER_H_
#define TARNIX_PDF_WRITE_FILEWRITER_H_

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/crypt/Security.h"
#include "pdf/file/ByteSink.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::pdf {

enum class FileLayout : std::uint8_t { kObjectStreams, kTable };

// How much work goes into small object streams.
enum class Packing : std::uint8_t {
  kFast,
  kDense,  // half a per cent smaller files, for jobs that are about their size
};

struct FileFormat {
  FileLayout layout = FileLayout::kObjectStreams;  // part of PDF since version 1.5
  // What the header says, a version that there is; 2.0 in any case for what is encrypted.
  std::string version = "1.7";
  Packing packing = Packing::kFast;
};

// What the file says about itself at its end.
struct FileTrailer {
  std::uint32_t catalog = 0;
  std::uint32_t info = 0;  // number of the document information; 0 for none
  std::string first_id;  // the identifier that all versions of the document have; empty: a new one
  std::string entries;   // others, as text
};

class FileWriter {
 public:
  // Sink and security outlive the writer. security, when not null, was made by Security::Create,
  // and everything is encrypted with it.
  FileWriter(ByteSink& sink, const Security* security, const FileFormat& format = {});
  ~FileWriter();
  FileWriter(const FileWriter&) = delete;
  FileWriter& operator=(const FileWriter&) = delete;

  // Says otherwise how the file is written. False, and nothing is changed, when objects have been
  // written.
  bool SetFormat(const FileFormat& format);

  // A number for an object that will be written before Finish; one that never is becomes a free
  // entry.
  std::uint32_t Reserve();

  // Writes an object that is not a stream. body: the object as text, its strings as they are.
  void WriteObject(std::uint32_t number, std::string_view body);

  // Writes a stream: its dictionary as text without /Length and without the closing ">>", then
  // `length` bytes of data by any number of AppendStream calls, then EndStream. Strings in the
  // dictionary have gone through StreamStrings().
  void BeginStream(std::uint32_t number, std::string_view open_dictionary, std::uint64_t length);
  // For data whose length shows when it ends: it becomes an object of its own.
  void BeginStream(std::uint32_t number, std::string_view open_dictionary);
  void AppendStream(std::string_view bytes);
  // What AppendStream does without a copy on the way: StreamRoom gives memory, not empty, which the
  // caller fills from its start, and CommitStream is told how many bytes are there. Only where
  // StoresPlainStreams().
  std::span<char> StreamRoom();
  void CommitStream(std::size_t count);
  void EndStream();

  bool StoresPlainStreams() const { return security_ == nullptr; }

  // What the strings of a stream's dictionary must go through; null when nothing is encrypted.
  StringTransform* StreamStrings();

  // Writes what is left, the cross-reference and the trailer.
  void Finish(const FileTrailer& trailer);

  // info: number of the document information, or 0.
  void Finish(std::uint32_t catalog, std::uint32_t info) {
    Finish({.catalog = catalog, .info = info, .first_id = {}, .entries = {}});
  }

  // What the header says: 17 for 1.7; 20 for what is encrypted with AES-256 of revision 6.
  int version() const { return version_; }

  std::uint64_t bytes_written() const { return offset_; }

 private:
  class Digest;
  class StringEncryptor;

  void PutHeader();
  void Put(std::string_view bytes);
  void Advance(std::size_t count);
  void PutNumber(std::uint64_t number);
  void PutObjectStart(std::uint32_t number);
  void PutObject(std::uint32_t number, std::string_view body);
  void Flush();
  void DigestPending();
  void FlushObjectStream();
  std::string WithEncryptedStrings(std::string_view body);
  std::string EncryptionDictionaryText() const;
  std::uint32_t WriteEncryptionDictionary();
  std::string TrailerEntries(const FileTrailer& trailer, std::uint32_t encrypt);
  void WriteTable(const FileTrailer& trailer, std::uint32_t encrypt);
  void WriteCrossReferenceStream(const FileTrailer& trailer, std::uint32_t encrypt);
  std::string CrossReferenceData(std::uint32_t self, unsigned offset_width) const;

  ByteSink* sink_;
  const Security* security_;
  FileLayout layout_;
  Packing packing_;
  int version_;
  std::unique_ptr<Digest> digest_;
  std::unique_ptr<StringEncryptor> string_encryptor_;
  std::unique_ptr<char[]> buffer_;
  std::size_t buffered_ = 0;  // bytes of the buffer that are waiting
  std::size_t digested_ = 0;  // of those
  std::uint64_t offset_ = 0;  // of the buffer's end in the file
  std::uint64_t header_size_ = 0;
  // By object number: 0 free; offset << 1; or (object stream << 20 | index) << 1 | 1.
  std::vector<std::uint64_t> places_;
  std::string member_table_;  // "number offset" pairs of the object stream being filled
  std::string member_text_;
  std::vector<std::uint32_t> members_;
  std::unique_ptr<Cipher> stream_cipher_;
  std::string encrypted_;
  std::uint64_t stream_left_ = 0;
  std::uint64_t stream_start_ = 0;   // offset of the data
  std::uint32_t length_number_ = 0;  // of the object with its length; 0: the dictionary has it
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_FILEWRITER_H_
