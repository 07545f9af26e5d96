#include "engines/repair/checks/Check.h"

#include <array>

#include "engines/repair/checks/PageTreeCheck.h"

namespace TarnixTools::engines::repair {

namespace {

constexpr auto kChecks = std::to_array<Check>({
    {kAnalyzeDocument, CheckPageTree},
});

}  // namespace

std::span<const Check> Checks() {
  return kChecks;
}

}  // namespace TarnixTools::engines::repair
