// Patterns of pages: the input is one, as a host or a user gives it. It is refused by our exception,
// or it selects pages: those that are listed, each once, are those that are said to be selected, and
// as many as are counted.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <list>
#include <set>
#include <string>

#include "PdfException.h"
#include "PdfTransformation.h"

namespace {

using TarnixTools::PdfException;
using TarnixTools::PdfTransformation;
using TarnixTools::PdfTransformType;

constexpr int kMaxListed = 10'000;

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

void CompareLists(PdfTransformation& transformation) {
  const std::list<int> pages = transformation.GetTargetPages();
  const std::set<int> different(pages.begin(), pages.end());
  Require(different.size() == pages.size());
  Require(pages.size() == static_cast<std::size_t>(transformation.GetTargetPagesNum()));
  for (const int page : pages) {
    Require(transformation.IsTargetPage(page));
    if (page < std::numeric_limits<int>::max()) {
      Require(different.contains(page + 1) == transformation.IsTargetPage(page + 1));
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string pattern(reinterpret_cast<const char*>(data), size);
  PdfTransformation transformation(PdfTransformType::AddPageNumber);
  try {
    transformation.AddTargetPattern(pattern);
  } catch (const PdfException&) {
  }
  // What came before an item that is refused stays.
  if (transformation.GetTargetPagesNum() > 0 && transformation.GetTargetPagesNum() <= kMaxListed) {
    CompareLists(transformation);
  }
  return 0;
}
