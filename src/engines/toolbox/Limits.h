// Bounds on what a document may make the document engine do, beside those of the core. What is
// beyond one is left out or stays as it is, unless it is said here that the job fails.
#ifndef TARNIX_ENGINES_TOOLBOX_LIMITS_H_
#define TARNIX_ENGINES_TOOLBOX_LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::toolbox::limits {

// What one copy decodes of contents to paint on them: this much, and this many times the size of
// the file; sound pages need their own contents once. Beyond it the job fails. Naming a stream
// counts for some bytes.
inline constexpr std::uint64_t kPaintedAllowance = std::uint64_t{512} << 20;
inline constexpr std::uint64_t kPaintedRatio = 200;
inline constexpr std::uint64_t kBytesPerPaintedStream = 8;
// Contents whose balance is remembered, and places in them.
inline constexpr std::size_t kMaxKeptBalances = 4096;
inline constexpr std::size_t kMaxKeptPositions = 200'000;

// Annotations that pages list, all together.
inline constexpr std::size_t kMaxListedAnnotations = std::size_t{8} << 20;
// Bytes of copies of annotations beyond the first of each: this much, and this many times the size
// of the file. An object counts for some bytes beside its text.
inline constexpr std::uint64_t kRepeatAllowance = std::uint64_t{32} << 20;
inline constexpr std::uint64_t kRepeatRatio = 16;
inline constexpr std::uint64_t kBytesPerRepeatedObject = 64;

// Bytes of a field's name, and of its default appearance, that is changed; longer ones stay as they
// are.
inline constexpr std::size_t kMaxFieldText = 4096;
// Resources of the forms of two sources that are compared: bytes of one, objects in each other, and
// objects of a source. Larger ones count as different.
inline constexpr std::size_t kMaxComparedBytes = 4096;
inline constexpr int kMaxComparedDepth = 8;
inline constexpr std::uint32_t kMaxComparedObjects = 20'000;

// Configurations of layers beside the first, and what one is intended for.
inline constexpr std::size_t kMaxAlternateConfigurations = 256;
inline constexpr std::size_t kMaxLayerIntents = 16;

// Bytes of a page label's prefix; a label with a longer one has none.
inline constexpr std::size_t kMaxLabelPrefix = 4096;
// Items of a destination; the standard has five after the page.
inline constexpr std::size_t kMaxViewItems = 8;
// Actions that follow one another.
inline constexpr std::size_t kMaxActionChain = 100;
// Events in an /AA; the standard has 22 (ISO 32000-2, tables 197 to 200).
inline constexpr std::size_t kMaxActionEvents = 64;
// Nesting of the outline: each piece of a document repeats an item's ancestors, and what is nested
// deeper stands one beside the other.
inline constexpr int kMaxOutlineLevels = 100;

// Elements and pieces of content in the structure of one document.
inline constexpr std::size_t kMaxStructureItems = std::size_t{16} << 20;
// Items of a list that an element shares with others, perhaps with all: classes, and as many
// revision numbers; attributes; related elements.
inline constexpr std::size_t kMaxElementClasses = 256;
inline constexpr std::size_t kMaxElementAttributes = 1024;
inline constexpr std::size_t kMaxRelatedElements = 4096;
// Steps that are followed in a role map.
inline constexpr std::size_t kMaxRoleSteps = 64;
// Descendants of a table row that is looked through for empty cells.
inline constexpr std::uint32_t kMaxRowElements = 4096;
// Marked-content ids should count up from 0 on every page, and are indexes of an array that is
// written. One is believed up to this, and this many times the number of items on the page.
inline constexpr std::size_t kMarkedIdAllowance = 1024;
inline constexpr std::size_t kMarkedIdRatio = 64;
// Bytes of elements that wait until it is known what the catalog says of the language. Those of
// larger trees name their language although the catalog may turn out to do so.
inline constexpr std::size_t kMaxWaitingElementBytes = std::size_t{8} << 20;

}  // namespace TarnixTools::engines::toolbox::limits

#endif  // TARNIX_ENGINES_TOOLBOX_LIMITS_H_
