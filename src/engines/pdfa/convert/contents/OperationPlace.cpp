#include "engines/pdfa/convert/contents/OperationPlace.h"

#include <string_view>

namespace TarnixTools::engines::pdfa {

namespace {

// An inline image ends with EI, behind its data and white space.
std::size_t EndOf(const pdf::Operation& operation, std::size_t offset) {
  if (operation.image_data.data() == nullptr) {
    return offset + operation.name.size();
  }
  constexpr std::string_view kSpaces(" \t\r\n\f\0", 6);
  const char* at = operation.image_data.data() + operation.image_data.size();
  while (kSpaces.find(*at) != std::string_view::npos) {
    ++at;
  }
  return static_cast<std::size_t>(at - (operation.name.data() - offset)) + 2;
}

}  // namespace

OperationPlace PlaceOf(const pdf::Operation& operation, std::size_t offset) {
  const char* const content = operation.name.data() - offset;
  const std::size_t begin = operation.operands.empty()
                                ? offset
                                : static_cast<std::size_t>(operation.operands.data() - content);
  return {begin, EndOf(operation, offset)};
}

}  // namespace TarnixTools::engines::pdfa
