#include "pdf/content/ResourceNames.h"

#include <string>
#include <vector>

#include "pdf/content/ContentReader.h"
#include "pdf/content/NameScan.h"

namespace TarnixTools::pdf {

namespace {

// Operands that are names. An operator with too many is taken differently by different readers, so
// all of them count.
void CollectOperandNames(std::string_view operands, ResourceCategory category,
                         const ResourceNameSink& sink, std::string& name) {
  if (operands.find('/') == std::string_view::npos) {
    return;
  }
  Lexer lexer(operands, true);
  int depth = 0;
  for (;;) {
    const Token token = lexer.Next();
    switch (token.kind) {
      case Token::Kind::kEnd:
      case Token::Kind::kMore:
        return;
      case Token::Kind::kArrayOpen:
      case Token::Kind::kDictionaryOpen:
        ++depth;
        break;
      case Token::Kind::kArrayClose:
      case Token::Kind::kDictionaryClose:
        --depth;
        break;
      case Token::Kind::kName:
        if (depth <= 0) {
          name.clear();
          DecodeName(token.text, name);
          sink(category, name);
        }
        break;
      default:
        break;
    }
  }
}

}  // namespace

ContentNames CollectResourceNames(std::string_view content, const ResourceNameSink& sink) {
  std::vector<ScannedName> names;
  if (!ScanNames(content, names)) {
    return ReadResourceNames(content, sink);
  }
  std::string name;
  for (const auto& [category, text] : names) {
    name.clear();
    DecodeName(text, name);
    sink(category, name);
  }
  return {};
}

ContentNames ReadResourceNames(std::string_view content, const ResourceNameSink& sink) {
  ContentReader reader(content);
  ContentNames result;
  Operation operation;
  Arena arena;
  std::string name;
  while (reader.Next(operation)) {
    if (const auto category = CategoryOf(operation.code)) {
      CollectOperandNames(operation.operands, *category, sink, name);
    } else if (operation.code == OperatorCode("BI")) {
      arena.Reset();
      const Object entries = ParseInlineEntries(operation.image_entries, arena);
      CollectColorSpaceNames(entries.Get("CS"), sink);
      CollectColorSpaceNames(entries.Get("ColorSpace"), sink);
    } else if (!IsOperator(operation.code)) {
      result.is_complete = false;
    }
  }
  result.is_complete = result.is_complete && !reader.is_damaged();
  result.has_operands_left = reader.has_operands_left();
  return result;
}

void CollectColorSpaceNames(const Object& color_space, const ResourceNameSink& sink) {
  std::vector<Object> waiting = {color_space};
  while (!waiting.empty()) {
    const Object value = waiting.back();
    waiting.pop_back();
    if (value.IsName()) {
      sink(ResourceCategory::kColorSpace, value.Text());
    }
    waiting.insert(waiting.end(), value.Items().begin(), value.Items().end());
  }
}

}  // namespace TarnixTools::pdf
