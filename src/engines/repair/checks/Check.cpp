#include "engines/repair/checks/Check.h"

#include <array>

#include "engines/repair/checks/FileCheck.h"
#include "engines/repair/checks/PageTreeCheck.h"
#include "engines/repair/checks/StreamDataCheck.h"

namespace TarnixTools::engines::repair {

namespace {

constexpr auto kChecks = std::to_array<Check>({
    {kAnalyzeFile, CheckFile},
    {kAnalyzeFile, CheckStreamData},
    {kAnalyzeDocument, CheckPageTree},
});

}  // namespace

std::span<const Check> Checks() {
  return kChecks;
}

}  // namespace TarnixTools::engines::repair
