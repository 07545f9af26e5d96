// A PDF document opened for reading: objects by number, decrypted, found on demand.
//
//   auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
//   Arena arena;
//   Object catalog = document->Catalog(arena);
//
// A document that disagrees with its cross-reference is read all the same: objects are then found
// by reading the whole file once, and findings() says so. Not for use by several threads at once.
#ifndef TARNIX_PDF_FILE_DOCUMENT_H_
#define TARNIX_PDF_FILE_DOCUMENT_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/Findings.h"
#include "pdf/Limits.h"
#include "pdf/crypt/Security.h"
#include "pdf/file/BlockReader.h"
#include "pdf/file/ByteSink.h"
#include "pdf/file/EncryptionDictionary.h"
#include "pdf/file/FileScan.h"
#include "pdf/file/LargeObjects.h"
#include "pdf/file/ObjectReader.h"
#include "pdf/file/ObjectStream.h"
#include "pdf/file/Xref.h"
#include "pdf/filters/Filters.h"
#include "pdf/syntax/Object.h"
#include "pdf/syntax/SyntaxObserver.h"

namespace TarnixTools::pdf {

class SyntaxTeller;

// Where an object's text is: in the file, or in a decoded object stream that is kept alive.
struct RawObject {
  Reference reference;
  std::uint64_t offset = 0;                    // of the body in the file
  std::shared_ptr<const ObjectStream> holder;  // null for an object in the file
  std::string_view text;                       // in the holder; more may follow the object
};

// What references lead to.
struct Followed {
  Object value;
  std::uint32_t number = 0;  // of the object that the value is; 0 for one written in place
};

// A stream's data in the file.
struct StreamData {
  Reference reference;
  StreamExtent extent;
  CryptMethod method = CryptMethod::kIdentity;  // how it is encrypted
};

class Document {
 public:
  // password is UTF-8, "" for none. Throws Error: kPasswordRequired, kUnsupportedSecurity,
  // kDamagedSecurity, kNotAPdf, kReadFailed, kSourceChanged.
  static std::unique_ptr<Document> Open(std::unique_ptr<ByteSource> source,
                                        std::string_view password);

  const Object& trailer() const { return trailer_; }

  // The catalog, wherever it is: an object of its own, or, in a damaged document, one that stands
  // in the trailer or was made for a page tree that was found without one.
  Object Catalog(Arena& arena) { return root_ ? Load(root_, arena) : catalog_; }

  // Whether the object with this number is the catalog; of no object where the catalog has none.
  bool IsCatalogObject(std::uint32_t number) const { return root_ && root_.number == number; }

  bool is_encrypted() const { return is_encrypted_; }

  // Null for a document that is not encrypted.
  const Security* security() const { return security_ ? &*security_ : nullptr; }

  // One more than the highest object number.
  std::uint32_t object_limit() const { return xref_.limit(); }

  bool Exists(std::uint32_t number) const { return xref_.Exists(number); }

  // Whether the file's cross-reference names an object that is not where it says.
  bool IsLost(std::uint32_t number) const { return number < lost_.size() && lost_[number]; }

  std::uint16_t GenerationOf(std::uint32_t number) const { return xref_.Find(number).generation; }

  Findings& findings() { return findings_; }

  ObjectReader& reader() { return reader_; }

  // The object; null for one that is not there. A stream gives its dictionary. References name
  // objects by number: their generation does not matter.
  Object Load(Reference reference, Arena& arena);
  // Tells the observer how the object is written, too; of one that is not there nothing.
  Object Load(Reference reference, Arena& arena, SyntaxObserver& observer);
  // Tells the observer how the whole file is written: header, end and cross-reference, then each
  // object that the cross-reference names, in file order, members of an object stream after it.
  // Of a damaged file it is objects that reading the whole file finds.
  void Observe(SyntaxObserver& observer);
  // The value itself, or what its references lead to; null when they lead in a circle.
  Object Resolve(const Object& value, Arena& arena);
  // Resolves, and tells the last of the references.
  Followed Follow(const Object& value, Arena& arena);

  // Finds an object's text, checked against the file. nullopt for one that is not there.
  std::optional<RawObject> Locate(std::uint32_t number);

  // Extent of an object's stream data, raw, when there is any. `end` is the offset after its
  // dictionary.
  std::optional<StreamExtent> StreamAt(std::uint64_t end, const Object& length,
                                       std::uint32_t number);
  // An object's stream data; nullopt when it has none.
  std::optional<StreamData> StreamOf(std::uint32_t number);

  bool IsStream(std::uint32_t number) { return StreamOf(number).has_value(); }

  // What the strings of an object in the file must go through to be read; null when they are plain.
  std::unique_ptr<StringTransform> StringsOf(Reference reference);
  // How a stream's data is encrypted, from its /Type, for a stream without a crypt filter of its
  // own.
  CryptMethod MethodOfType(std::string_view type) const;
  // How a stream's data is encrypted, from its dictionary, crypt filters included.
  CryptMethod MethodOfStream(const Object& dictionary, Arena& arena);

  // Everyone gets the bytes of a stream here, by one rule. What is wrong with the data never throws;
  // a source that fails does: Error kReadFailed, kSourceChanged.

  // Decrypted and decoded. nullopt for an object that has no stream data. Of damaged data what can be
  // decoded, and nothing of data with a filter that is not decoded here or of more than max_bytes:
  // in all three cases it is not complete.
  std::optional<Decoded> TryDecodeStream(std::uint32_t number,
                                         std::size_t max_bytes = limits::kMaxHeldStream);
  // Hands the data to the sink, decrypted and otherwise as it stands, in pieces: long data is never
  // held as a whole. Of the bytes in the file at most the first `most`. False for an object that has
  // no stream data. Throws what the sink throws, too.
  bool CopyStreamData(std::uint32_t number, ByteSink& sink, std::uint64_t most = ~std::uint64_t{0});
  void CopyStreamData(const StreamData& stream, ByteSink& sink,
                      std::uint64_t most = ~std::uint64_t{0});
  // The data in memory, decrypted and otherwise as it stands. Throws Error(kLimitExceeded) for more
  // than max_bytes in the file.
  std::string ReadStreamData(const StreamData& stream,
                             std::size_t max_bytes = limits::kMaxHeldStream);
  // How many bytes CopyStreamData gives of all the data.
  std::uint64_t PlainLength(const StreamData& stream);

  // Reads the whole file for objects, once; what the cross-reference says and the file confirms is
  // kept.
  void Rebuild();

  bool is_rebuilt() const { return is_rebuilt_; }

  // Page objects in file order, from reading the whole file.
  std::vector<std::uint32_t> SalvagedPages();

 private:
  struct ScannedPage {
    std::uint64_t offset = 0;  // of the page or of the object stream that holds it
    std::uint32_t index = 0;   // in the object stream
    std::uint32_t number = 0;
  };

  struct Parsed {
    Object value;
    std::uint64_t size = 0;  // bytes of the object's text, up to the end of its value
    bool is_regular = true;  // there is a value, in regular syntax
  };

  Document(std::unique_ptr<ByteSource> source, std::string_view password);

  void FindHeader();
  // Valid until more of the file is read.
  std::optional<StartXrefSyntax> FindStartXref();
  bool ReadXref();
  bool ChooseTrailer(const std::vector<Object>& candidates);
  bool IsCatalog(const Object& root);
  void SetCatalog(const Object& root);

  bool has_catalog() const { return root_ || catalog_.IsDictionary(); }

  void SetUpSecurity();
  void NoteLost(std::uint32_t number);
  void ForgetUnconfirmed(const FileScan& scan);
  void AddScanned(const FileScan& scan);
  void AddStreamMembers(const FileScan& scan);
  void FindRoot(const FileScan& scan);
  void MakeCatalogOfPageTree(const FileScan& scan);
  std::shared_ptr<const ObjectStream> OpenObjectStream(std::uint32_t number);
  std::shared_ptr<const ObjectStream> ReadObjectStream(std::uint32_t number);
  std::optional<RawObject> LocateOnce(std::uint32_t number);
  Parsed Parse(const RawObject& raw, Arena& arena);
  void ObserveXref(SyntaxTeller& teller);
  void ObserveLinearization(SyntaxObserver& observer);
  void ObserveObjects(SyntaxObserver& observer);
  std::vector<std::uint32_t> NumbersInFileOrder() const;
  void TellMember(const RawObject& raw, const Parsed& parsed, SyntaxObserver& observer);
  void TellInFile(const RawObject& raw, const Parsed& parsed, SyntaxObserver& observer);
  std::optional<StreamData> FindStream(std::uint32_t number, Arena& arena, Object& dictionary);
  std::optional<Decoded> DecodeStream(std::uint32_t number, std::size_t max_bytes);
  std::unique_ptr<Cipher> DecryptorOf(const StreamData& stream) const;
  void CopyPlain(const StreamExtent& extent, ByteSink& sink);
  std::string_view PieceOf(const StreamExtent& extent, std::uint64_t done);

  BlockReader blocks_;
  ObjectReader reader_;
  Findings findings_;
  std::string password_;
  Arena trailer_arena_;
  XrefTable xref_;
  std::optional<std::uint64_t> xref_start_;  // of the newest section, where it could be read
  std::uint64_t xref_base_ = 0;              // from which its offsets count
  Object trailer_;
  Reference root_;  // none where the catalog is no object of its own
  Object catalog_;  // where there is no root_; in trailer_arena_
  std::uint64_t header_offset_ = 0;
  bool is_encrypted_ = false;
  std::uint32_t encryption_object_ = 0;
  EncryptionDictionary encryption_;
  std::optional<Security> security_;
  ObjectStreamCache object_streams_;
  LargeObjects large_objects_;
  std::vector<std::uint32_t> opening_;  // object streams being opened, against loops
  std::vector<ScannedPage> scanned_pages_;
  std::vector<bool> lost_;  // by object number
  bool is_rebuilt_ = false;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_DOCUMENT_H_
