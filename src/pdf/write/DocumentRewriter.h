// A document again, with some objects changed. All that its trailer leads to is written in one
// forward pass, numbered anew; what nothing refers to stays behind, and with it the leftovers of
// earlier versions. Streams go through as they are, block by block.
//
//   DocumentRewriter rewriter(*document);
//   rewriter.SetEntry(rewriter.catalog(), "Lang", "(en)");
//   rewriter.RemoveEntry(rewriter.catalog(), "OpenAction");
//   rewriter.Drop(thumbnail, Gap::kClosed);
//   rewriter.Merge(second_font, first_font);
//   const std::uint32_t mask = rewriter.Add(ObjectChange::Stream(mask_dictionary, mask_data));
//   rewriter.ChangeLater(image, [&] { return Recoded(*document, image, mask); });
//   rewriter.Write(sink);
//
// Objects go by their numbers in the document, added ones by the numbers that Add gives. Every text
// is PDF syntax whose references mean objects in this way: "<</SMask 8388608 0 R>>". Nothing is
// written before Write, so changes may be made in any order; those of one object replace each
// other. An object that nothing written refers to is not written, added or not. The same document
// with the same changes gives the same bytes, except that encryption is never the same twice.
#ifndef TARNIX_PDF_WRITE_DOCUMENTREWRITER_H_
#define TARNIX_PDF_WRITE_DOCUMENTREWRITER_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/crypt/Security.h"
#include "pdf/file/ByteSink.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/ObjectChange.h"
#include "pdf/write/RewritePlan.h"

namespace TarnixTools::pdf {

struct RewriteOptions {
  const Security* security = nullptr;  // made by Security::Create; null: not encrypted
  FileLayout layout = FileLayout::kObjectStreams;
  std::string version;  // for the header; empty: 2.0 for a document of that version, else 1.7
  Packing packing = Packing::kFast;
  bool keeps_id = false;  // the first of the two identifiers, which all versions have in common
};

class DocumentRewriter {
 public:
  // The document outlives the rewriter.
  explicit DocumentRewriter(Document& document);

  // Stands for the catalog, which need not be an object of its own in the document.
  std::uint32_t catalog() const { return plan_.catalog; }

  // Adds an object and returns its number.
  std::uint32_t Add(ObjectChange object);
  // The object is asked for when its turn to be written has come.
  std::uint32_t AddLater(RewritePlan::Later object);

  void Change(std::uint32_t number, ObjectChange change);
  // The change is asked for when the object's turn to be written has come, so that what it brings
  // need not be held together with that of others.
  void ChangeLater(std::uint32_t number, RewritePlan::Later change);
  // Asked once for every object of the document for which no other change was made, when its turn
  // has come; not for the catalog.
  void ChangeEach(std::function<ObjectChange(std::uint32_t number)> change);

  // Sets an entry of the object's own dictionary, whatever else becomes of the object; a stream
  // keeps its data. Objects that are no dictionaries are left alone.
  void SetEntry(std::uint32_t number, std::string_view key, std::string text);
  void RemoveEntry(std::uint32_t number, std::string_view key);

  // Leaves the object out; what becomes of references to it, the gap says.
  void Drop(std::uint32_t number, Gap gap = Gap::kNull);

  // References to the one become references to the other, which is an object that is the same or
  // will do as well. A circle of such wishes is not closed.
  void Merge(std::uint32_t number, std::uint32_t into);

  // What has been said so far, for those who go by it. Nothing is asked for that comes later.

  // Whether the object is an added one, or Change or ChangeLater was called for it.
  bool IsChanged(std::uint32_t number) const;
  // What references to the object will lead to: itself, or what it was merged into; 0 for an object
  // that was dropped.
  std::uint32_t Successor(std::uint32_t number);
  // The object as it was changed, with the entries that were set and without those that were
  // removed. One whose change comes later is given as the document has it, or as null. A stream
  // gives its dictionary.
  Object Load(std::uint32_t number, Arena& arena);

  // Writes these pages in place of the document's page tree: with what they inherit as their own,
  // and none that is not among them; references to others become null. A page that stands twice
  // becomes two. The tree is the document's and outlives the rewriter.
  void SetPages(const PageTree& tree, std::vector<RewrittenPage> pages);
  // All pages as the tree has them, those that it adopted or made for lost ones included.
  void SetPages(const PageTree& tree);

  // Entries of the trailer: /Info, and others but those that describe the file itself.
  void SetTrailerEntry(std::string_view key, std::string text);
  void RemoveTrailerEntry(std::string_view key);

  // Writes the document. What cannot be read becomes null, with a finding of the document. Throws
  // Error: kReadFailed, kSourceChanged, kWriteFailed, kLimitExceeded; and what later changes throw.
  void Write(ByteSink& sink, const RewriteOptions& options = {});

 private:
  std::uint32_t NumberOf(std::uint32_t number) const;

  Document* document_;
  RewritePlan plan_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_DOCUMENTREWRITER_H_
