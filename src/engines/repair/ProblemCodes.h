// The kinds of problems, in one table: number, analysis that finds it, weight, sentence.
// docs/repair.md lists them all.
#ifndef TARNIX_ENGINES_REPAIR_PROBLEMCODES_H_
#define TARNIX_ENGINES_REPAIR_PROBLEMCODES_H_

#include <cstdint>
#include <span>

namespace TarnixTools::engines::repair {

// What an analysis looks at, as a set of bits.
enum AnalysisBits : std::uint32_t {
  kAnalyzeFile = 0x1,      // header, cross-reference, objects, the data of streams
  kAnalyzeDocument = 0x2,  // what is a tree of objects: pages, names, outline, fields, structure
  kAnalyzeContent = 0x4,   // what pages show: content, resources, fonts, images
  kAnalyzeAll = 0x7,
};

enum class Weight : std::uint8_t {
  kDamage,  // a strict reader complains, or something is lost
  kLint,    // not as it should be, and no reader minds; never makes a document a damaged one
};

// A number never means anything else than it did; new kinds get new ones. The hundreds tell what the
// problem is about.
enum class ProblemCode : std::int32_t {
  // The file.
  kHeaderMissing = 101,
  kHeaderNotFirst = 102,
  kHeaderVersion = 103,
  kEndMissing = 104,
  kJunkAtEnd = 105,
  kStartXrefMissing = 106,
  kXrefDamaged = 108,
  kXrefLoop = 109,
  kXrefEntryWrong = 110,
  kXrefRebuilt = 111,
  kXrefSizeWrong = 112,
  kXrefEntryForm = 113,
  kTrailerRebuilt = 114,
  kCatalogInTrailer = 115,
  kUpdatesInConflict = 117,
  kLinearizationWrong = 118,
  kEncryptionDamaged = 119,
  kDataUndecryptable = 120,
  kXrefSizeLarge = 121,
  kTrailerEntryInvalid = 122,
  kEndFar = 123,
  kAnalysisBroken = 198,
  kMoreOfAKind = 199,
  // Objects.
  kObjectMissing = 201,
  kObjectDamaged = 202,
  kObjectEndMissing = 204,
  kObjectStreamDamaged = 206,
  kRepeatedKey = 207,
  kStreamLengthWrong = 221,
  kStreamEndMissing = 222,
  kStreamKeyword = 223,
  kStreamDataDamaged = 224,
  kStreamFilterUnknown = 225,
  kStreamTooLarge = 226,
  kStreamWrapping = 227,
  // The page tree.
  kPageTreeDamaged = 301,
  kPageTreeLoop = 302,
  kPageCountWrong = 303,
  kPageTypeMissing = 305,
  kPageParentWrong = 306,
  kPageBoxMissing = 307,
  kPageBoxInvalid = 308,
  kPageRotationInvalid = 309,
  kPagesSalvaged = 310,
  kPageAdopted = 311,
  kPageBlank = 312,
  kPagesMissing = 313,
  kNoPages = 314,
  // Other trees of the document.
  kNameTreeDamaged = 401,
  kNumberTreeDamaged = 402,
  kOutlineDamaged = 403,
  kOutlineLoop = 404,
  kFieldTreeDamaged = 406,
  kFieldLoop = 407,
  kFieldDamaged = 408,
  kStructureTreeDamaged = 409,
  kStructureTreeLoop = 410,
  kAnnotationDamaged = 411,
  kCatalogEntryInvalid = 412,
  // Content and resources.
  kContentMissing = 501,
  kContentDamaged = 502,
  kContentCutOff = 503,
  kContentUnbalanced = 504,
  kContentOperatorUnknown = 505,
  kContentOperands = 506,
  kContentTooDeep = 507,
  kContentTooMuch = 508,
  kResourcesMissing = 521,
  kResourcesInvalid = 522,
  kResourceDead = 523,
  kResourceUnknown = 524,
  kGraphicsStateUnknown = 525,
  // Fonts.
  kFontInvalid = 601,
  kFontProgramUnreadable = 602,
  kFontProgramMissing = 603,
  kFontWidthsMissing = 604,
  kFontMapUnreadable = 605,
  // Images.
  kImageInvalid = 701,
  kImageDataShort = 702,
  kImageDataDamaged = 703,
  kImageSizeWrong = 704,
  kImageColorSpaceInvalid = 705,
  kImageMaskInvalid = 706,
};

struct ProblemKind {
  ProblemCode code;
  std::uint32_t analysis;  // one of AnalysisBits
  Weight weight;
  const char* sentence;  // in English, without its first capital and its full stop
};

// In the order of their numbers.
std::span<const ProblemKind> ProblemKinds();

const ProblemKind& KindOf(ProblemCode code);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_PROBLEMCODES_H_
