#include "engines/repair/ProblemCodes.h"

#include <algorithm>
#include <array>

namespace TarnixTools::engines::repair {

namespace {

using Code = ProblemCode;

constexpr ProblemKind File(Code code, const char* sentence) {
  return {code, kAnalyzeFile, Weight::kDamage, sentence};
}

constexpr ProblemKind Tree(Code code, const char* sentence) {
  return {code, kAnalyzeDocument, Weight::kDamage, sentence};
}

constexpr ProblemKind Content(Code code, const char* sentence) {
  return {code, kAnalyzeContent, Weight::kDamage, sentence};
}

constexpr ProblemKind Lint(const ProblemKind& kind) {
  return {kind.code, kind.analysis, Weight::kLint, kind.sentence};
}

constexpr auto kKinds = std::to_array<ProblemKind>({
    File(Code::kHeaderMissing, "the file header is missing"),
    File(Code::kHeaderNotFirst, "other bytes stand before the file header"),
    File(Code::kHeaderVersion, "the file header names no version"),
    File(Code::kEndMissing, "the end-of-file marker is missing"),
    Lint(File(Code::kJunkAtEnd, "other bytes follow the end-of-file marker")),
    File(Code::kStartXrefMissing, "nothing tells where the cross-reference starts"),
    File(Code::kXrefDamaged, "a part of the cross-reference cannot be read"),
    File(Code::kXrefLoop, "the sections of the cross-reference lead back to each other"),
    File(Code::kXrefEntryWrong,
         "the cross-reference names an object that is not there and that nothing needs"),
    File(Code::kXrefRebuilt, "objects had to be looked for in the whole file"),
    File(Code::kXrefSizeWrong, "the trailer gives the wrong number of objects"),
    Lint(File(Code::kXrefEntryForm,
              "an entry of the cross-reference has another form than it should")),
    File(Code::kTrailerRebuilt, "no trailer leads to the document catalog"),
    File(Code::kCatalogInTrailer, "the document catalog is no object of its own"),
    File(Code::kUpdatesInConflict, "updates of the document contradict each other"),
    Lint(File(Code::kLinearizationWrong,
              "what the file says for fast display on the web does not hold")),
    File(Code::kEncryptionDamaged, "the encryption dictionary is damaged"),
    File(Code::kDataUndecryptable, "encrypted data is not whole"),
    Lint(File(Code::kXrefSizeLarge, "the trailer gives more objects than there are")),
    File(Code::kTrailerEntryInvalid, "an entry of the trailer cannot be used"),
    File(Code::kEndFar, "the end-of-file marker is far from the end"),
    File(Code::kAnalysisBroken, "the document could not be looked at to its end"),
    File(Code::kMoreOfAKind, "there are more problems of one kind than are listed"),
    File(Code::kObjectMissing, "the object is missing"),
    File(Code::kObjectDamaged, "the object is damaged"),
    File(Code::kObjectEndMissing, "nothing ends the object"),
    File(Code::kObjectStreamDamaged, "the object stream cannot be read to its end"),
    Lint(File(Code::kRepeatedKey, "a dictionary of the object has a key twice")),
    File(Code::kStreamLengthWrong, "the length of the stream is wrong"),
    File(Code::kStreamEndMissing, "nothing ends the stream"),
    Lint(File(Code::kStreamKeyword,
              "the line that starts the stream's data does not end as it should")),
    File(Code::kStreamDataDamaged, "the data of the stream is damaged"),
    Lint(File(Code::kStreamFilterUnknown, "the data of the stream is coded in an unknown way")),
    Lint(File(Code::kStreamTooLarge, "the data of the stream is larger than is looked at")),
    File(Code::kStreamWrapping, "what wraps the data of the stream is missing or wrong"),
    Tree(Code::kPageTreeDamaged, "a part of the page tree cannot be used"),
    Tree(Code::kPageTreeLoop, "a part of the page tree leads back to itself or stands twice"),
    Tree(Code::kPageCountWrong, "the page tree gives the wrong number of pages"),
    Tree(Code::kPageTypeMissing, "a page or a part of the page tree does not say what it is"),
    Tree(Code::kPageParentWrong,
         "the page does not refer to the part of the page tree that has it"),
    Tree(Code::kPageBoxMissing, "the page has no size"),
    Lint(Tree(Code::kPageBoxInvalid, "the size of the page cannot be used")),
    Tree(Code::kPageRotationInvalid, "the rotation of the page is no multiple of 90 degrees"),
    Tree(Code::kPagesSalvaged, "the page tree cannot be used"),
    Tree(Code::kPageAdopted, "the page tree has lost the page"),
    Tree(Code::kPageBlank, "the page cannot be read; an empty one stands for it"),
    Tree(Code::kPagesMissing, "the document has fewer pages than it says"),
    Tree(Code::kNoPages, "no page can be found"),
    Tree(Code::kNameTreeDamaged, "a part of a name tree cannot be used"),
    Tree(Code::kNumberTreeDamaged, "a part of a number tree cannot be used"),
    Tree(Code::kOutlineDamaged, "an item of the outline cannot be used"),
    Tree(Code::kOutlineLoop, "items of the outline lead back to each other"),
    Tree(Code::kFieldTreeDamaged, "the list of form fields cannot be used"),
    Tree(Code::kFieldLoop, "form fields lead back to each other"),
    Tree(Code::kFieldDamaged, "the form field is damaged"),
    Tree(Code::kStructureTreeDamaged, "a part of the structure tree cannot be used"),
    Lint(Tree(Code::kStructureTreeLoop,
              "a part of the structure tree leads back to itself or stands twice")),
    Tree(Code::kAnnotationDamaged, "an annotation of the page cannot be used"),
    Tree(Code::kCatalogEntryInvalid, "an entry of the document catalog cannot be used"),
    Content(Code::kContentMissing, "a part of the content is missing"),
    Content(Code::kContentDamaged, "the content is damaged"),
    Content(Code::kContentCutOff, "the content ends early"),
    Lint(Content(Code::kContentUnbalanced,
                 "what the content opens and what it closes do not match")),
    Content(Code::kContentOperatorUnknown, "the content has an operator that does not exist"),
    Content(Code::kContentOperands, "an operator of the content lacks what it works on"),
    Content(Code::kContentTooDeep, "the content is nested too deep"),
    Lint(Content(Code::kContentTooMuch, "the document has more content than is looked at")),
    Content(Code::kResourcesMissing, "the page has no resources"),
    Content(Code::kResourcesInvalid, "the resources cannot be used"),
    Content(Code::kResourceDead, "a resource that the content uses is not there"),
    Content(Code::kResourceUnknown, "the content uses a resource that is not named"),
    Lint(Content(Code::kGraphicsStateUnknown,
                 "the content sets a graphics state that is not named")),
    Content(Code::kFontInvalid, "the font cannot be used"),
    Content(Code::kFontProgramUnreadable, "the program of the font cannot be read"),
    Lint(Content(Code::kFontProgramMissing, "the font is not embedded")),
    Lint(Content(Code::kFontWidthsMissing, "the font lacks widths")),
    Content(Code::kFontMapUnreadable, "a character map of the font cannot be read"),
    Content(Code::kImageInvalid, "the image cannot be used"),
    Content(Code::kImageDataShort, "the image has less data than its size asks for"),
    Content(Code::kImageDataDamaged, "the data of the image is damaged"),
    Content(Code::kImageSizeWrong, "the image's data has another size than the image says"),
    Content(Code::kImageColorSpaceInvalid, "the colour space of the image cannot be used"),
    Content(Code::kImageMaskInvalid, "the mask of the image cannot be used"),
});

constexpr bool AreInOrder() {
  return std::ranges::is_sorted(kKinds, std::ranges::less_equal{}, &ProblemKind::code);
}

static_assert(AreInOrder());

}  // namespace

std::span<const ProblemKind> ProblemKinds() {
  return kKinds;
}

const ProblemKind& KindOf(ProblemCode code) {
  return *std::ranges::lower_bound(kKinds, code, {}, &ProblemKind::code);
}

}  // namespace TarnixTools::engines::repair
