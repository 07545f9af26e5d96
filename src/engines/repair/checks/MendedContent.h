// Content without what stops readers or makes them complain.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_MENDEDCONTENT_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_MENDEDCONTENT_H_

#include <span>
#include <string>
#include <string_view>

namespace TarnixTools::engines::repair {

// All operations that can be read, in their order and as they stand. Left out are operators that do
// not exist, outside of compatibility sections, and those that lack operands or stand within an
// array; and what closes what was not opened. What is left open at the end is closed.
std::string MendedContent(std::string_view content);

// That of content in several parts. One that ends within a string or an array does not take the
// others with it.
std::string MendedContent(std::span<const std::string_view> parts);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_MENDEDCONTENT_H_
