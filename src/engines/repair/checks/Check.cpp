#include "engines/repair/checks/Check.h"

#include <array>

#include "engines/repair/checks/ContentCheck.h"
#include "engines/repair/checks/FieldCheck.h"
#include "engines/repair/checks/FileCheck.h"
#include "engines/repair/checks/OutlineCheck.h"
#include "engines/repair/checks/PageTreeCheck.h"
#include "engines/repair/checks/ResourceCheck.h"
#include "engines/repair/checks/StreamDataCheck.h"
#include "engines/repair/checks/StructureCheck.h"
#include "engines/repair/checks/TreeCheck.h"

namespace TarnixTools::engines::repair {

namespace {

constexpr auto kChecks = std::to_array<Check>({
    {kAnalyzeFile, CheckFile},
    {kAnalyzeFile, CheckStreamData},
    {kAnalyzeDocument, CheckPageTree},
    {kAnalyzeDocument, CheckCatalog},
    {kAnalyzeDocument, CheckKeyedTrees},
    {kAnalyzeDocument, CheckOutline},
    {kAnalyzeDocument, CheckFields},
    {kAnalyzeDocument, CheckAnnotations},
    {kAnalyzeDocument, CheckStructure},
    {kAnalyzeContent, CheckResources},
    {kAnalyzeContent, CheckContent},
});

}  // namespace

std::span<const Check> Checks() {
  return kChecks;
}

}  // namespace TarnixTools::engines::repair
