// Copies objects, and all that they refer to, from a document into a file that is being written.
//
//   NumberMap numbers(source.object_limit());
//   ObjectCopier copier(source, writer, numbers, barrier);
//   const std::uint32_t font = copier.Map(17);   // the number that object 17 has in the target
//   copier.CopyPending();                        // writes it and what it needs
#ifndef TARNIX_PDF_WRITE_OBJECTCOPIER_H_
#define TARNIX_PDF_WRITE_OBJECTCOPIER_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/file/Document.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/NumberMap.h"
#include "pdf/write/Serialize.h"
#include "pdf/write/TokenCopier.h"

namespace TarnixTools::pdf {

// Decides what a copied object keeps of its /Resources.
class ResourceFilter {
 public:
  virtual ~ResourceFilter() = default;
  // Appends what becomes of the resources; false: they are copied as they are.
  //   number     - of the object in the source
  //   dictionary - the whole object's, with /Resources
  virtual bool AppendResources(std::string& out, std::uint32_t number, const Object& dictionary,
                               bool is_stream) = 0;
};

// What a copy has in place of some objects.
class CopyChanges {
 public:
  virtual ~CopyChanges() = default;
  // The object that a reference to this one leads to in the copy: itself, another one, or an added
  // one; 0 when the reference becomes null; ReferenceMap::kLeftOut.
  virtual std::uint32_t StandIn(std::uint32_t number) = 0;
  // Writes what the copy has in place of the object. False: nothing was written, and the object is
  // copied as it is.
  virtual bool Write(std::uint32_t number, std::uint32_t target_number) = 0;
};

class ObjectCopier : public ReferenceMap {
 public:
  // Objects that `is_barred` names are not copied: references to them become null, unless Assign
  // gave them a number. Everything passed by reference outlives the copier; numbers is empty at
  // first.
  ObjectCopier(Document& source, FileWriter& target, NumberMap& numbers,
               std::function<bool(std::uint32_t)> is_barred);

  // The target's number of an object, which is written by CopyPending when it is new; 0 for one
  // that is barred or not there, kLeftOut where the changes say so.
  std::uint32_t Map(std::uint32_t number) override;

  // Declares that the caller writes the object itself, under this number.
  void Assign(std::uint32_t number, std::uint32_t target_number) {
    numbers_->Set(number, target_number);
  }

  // Has CopyPending write an object under a number that was assigned to it, when its caller does
  // not.
  void CopyAs(std::uint32_t number, std::uint32_t target_number) {
    pending_.push_back({number, target_number});
  }

  bool IsMapped(std::uint32_t number) const { return numbers_->Get(number) != 0; }

  // Source objects that have a number in the target.
  const std::vector<std::uint32_t>& mapped() const { return numbers_->mapped(); }

  // What becomes of /StructParent and /StructParents of copied objects: keys from 0 to `count` - 1
  // are raised by the shift, others are left out, as all are at first.
  void set_structure_keys(std::int64_t shift, std::int64_t count) {
    tokens_.set_structure_keys(shift, count);
  }

  // Copied objects keep those keys as they are.
  void KeepStructureKeys() { tokens_.set_keeps_structure_keys(true); }

  // An object that was copied with such a key.
  struct KeyedObject {
    std::uint32_t number;  // in the source
    StructureKey key;      // as the source has it
  };

  // Objects with a structure key, in the order in which they were written.
  const std::vector<KeyedObject>& keyed_objects() const { return keyed_objects_; }

  // Serves a caller that writes such an object itself: appends its key's entry as it becomes.
  void AppendStructureKey(std::string& out, std::uint32_t number, std::string_view name,
                          const Object& key);

  // From now on the filter is asked about every object with /Resources, and pages outside the page
  // tree become null. It outlives the copier.
  void set_resource_filter(ResourceFilter& filter) {
    resource_filter_ = &filter;
    tokens_.set_leaves_resources(true);
  }

  // From now on the changes are asked about every reference and every object. They outlive the
  // copier.
  void set_changes(CopyChanges& changes) { changes_ = &changes; }

  // Appends a value of the source, its references mapped.
  void Append(std::string& out, const Object& value);

  // What follows is for changes that write objects. References in all of it are mapped.

  // Writes an object of the source with this dictionary in place of its own; a stream keeps its
  // data.
  void CopyWithDictionary(std::uint32_t number, std::uint32_t target_number,
                          const Object& dictionary);
  // Writes an object that is not a stream.
  void WriteValue(std::uint32_t target_number, const Object& value);
  // Writes a stream with this data, deflated where no filter is named and nothing forbids it.
  void WriteStream(std::uint32_t target_number, const Object& dictionary, std::string data);
  // The dictionary as FileWriter::BeginStream takes it.
  std::string StreamDictionary(const Object& dictionary);

  // Writes every object that Map has promised.
  void CopyPending();

  Document& source() { return *source_; }

  FileWriter& target() { return *target_; }

 private:
  struct Promise {
    std::uint32_t number;
    std::uint32_t target_number;
  };

  // A stream of the source on its way to the target.
  struct Passage {
    StreamData source;
    std::uint32_t target_number = 0;
    std::string_view open_dictionary;  // without /Length and the closing ">>"
    bool may_deflate = false;          // plain data that nothing forbids to compress
    std::optional<std::string> data;   // plain data to be written in place of the source's
  };

  // The object whose own entries are being appended.
  struct Subject {
    std::uint32_t number;
    Object dictionary;
    bool is_stream;
  };

  void AppendEntry(std::string& out, const Subject& subject, const DictionaryEntry& entry,
                   const SerializeHooks& hooks);
  void NoteStructureKey(std::uint32_t number);
  SerializeHooks MappingHooks();
  void WriteParsed(const Object& value, const Promise& promise);
  void ForgetPromises();
  void AppendMapped(std::string& out, Reference reference);
  void CopyObject(const Promise& promise);
  TokenCopier::Status CopyTokens(const RawObject& raw, StringTransform* strings,
                                 std::uint64_t& end);
  bool CopyText(const RawObject& raw, const Promise& promise);
  void CopyParsed(const RawObject& raw, const Promise& promise, const Object* dictionary = nullptr);
  void CopyParsedStream(const Subject& subject, Passage passage);
  std::string StreamDictionary(const Subject& subject, std::size_t dropped_filters);
  std::size_t TakeFiltersOff(const Object& dictionary, Passage& passage, Arena& arena);
  void RestoreLength();
  void CopyStream(const Passage& passage);
  void CopyHeld(const Passage& passage);

  Document* source_;
  FileWriter* target_;
  NumberMap* numbers_;
  std::function<bool(std::uint32_t)> is_barred_;
  TokenCopier tokens_;
  ResourceFilter* resource_filter_ = nullptr;
  CopyChanges* changes_ = nullptr;
  std::vector<Promise> pending_;
  std::vector<KeyedObject> keyed_objects_;
  std::size_t older_promises_ = 0;  // how many were pending before the present object
  std::string text_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_OBJECTCOPIER_H_
