#include "pdf/write/NameTreeWriter.h"

#include <algorithm>

#include "pdf/write/Serialize.h"
#include "pdf/write/TreeWriter.h"

namespace TarnixTools::pdf {

std::uint32_t WriteNameTree(FileWriter& writer, std::vector<NamedObject> objects) {
  std::sort(objects.begin(), objects.end(),
            [](const NamedObject& a, const NamedObject& b) { return a.name < b.name; });
  TreeWriter tree(writer, "Names");
  for (const NamedObject& object : objects) {
    std::string name;
    AppendString(name, object.name, false);
    std::string value;
    AppendReference(value, object.number);
    tree.Add(name, value);
  }
  const std::uint32_t root = writer.Reserve();
  writer.WriteObject(root, tree.Finish());
  return root;
}

}  // namespace TarnixTools::pdf
