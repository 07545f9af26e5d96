#include "Recipe.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

#include "CommandParser.h"
#include "DecorationOptions.h"
#include "Failure.h"
#include "Job.h"
#include "PdfException.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

// Bounds what is read from a file that is no such thing.
constexpr std::size_t kMaxRecipeBytes = std::size_t{16} << 20U;

[[noreturn]] void ThrowInvalid(const std::string& what) {
  throw PdfException(PdfExceptionCode::InvalidParameter, 0, "%s", what.c_str());
}

struct FileCloser {
  void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

FilePtr OpenFile(const std::string& path) {
  return FilePtr(std::fopen(NativePath(path).c_str(), "rb"));
}

std::string ReadFile(const std::string& path) {
  const FilePtr file = OpenFile(path);
  std::string bytes;
  std::array<char, 4096> block{};
  std::size_t count = 1;
  while (file != nullptr && count > 0 && bytes.size() <= kMaxRecipeBytes) {
    count = std::fread(block.data(), 1, block.size(), file.get());
    bytes.append(block.data(), count);
  }
  if (file == nullptr || std::ferror(file.get()) != 0) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to open recipe [%s]",
                       path.c_str());
  }
  if (bytes.size() > kMaxRecipeBytes) {
    ThrowInvalid(path + ": the recipe is too long");
  }
  return bytes;
}

// The parser's message without the tag at its front.
std::string Untagged(const std::string& message) {
  const std::size_t end = message.find("] ");
  return message.starts_with('[') && end != std::string::npos ? message.substr(end + 2) : message;
}

Json ParseList(const std::string& path) {
  Json list;
  try {
    list = Json::parse(ReadFile(path));
  } catch (const Json::exception& error) {
    ThrowInvalid(path + ": " + Untagged(error.what()));
  }
  if (!list.is_array()) {
    ThrowInvalid(path + ": not a list of decorations");
  }
  return list;
}

std::string WithoutDashes(std::string_view name) {
  std::string text(name);
  text.erase(std::remove(text.begin(), text.end(), '-'), text.end());
  return text;
}

const OptionRow& RowNamed(const Job& job, const std::string& name) {
  for (const OptionRow& row : job.options) {
    if (row.name == name || WithoutDashes(row.name) == name) {
      return row;
    }
  }
  throw UsageError(std::string(job.name) + " has no option '" + name + "'");
}

// A value as it would stand on the command line.
std::string ValueText(const OptionRow& row, const Json& value) {
  if (value.is_string()) {
    return value.get<std::string>();
  }
  if (value.is_number()) {
    return value.dump();
  }
  const bool is_pair =
      value.is_array() && value.size() == 2 && value[0].is_number() && value[1].is_number();
  if (is_pair) {
    return value[0].dump() + "," + value[1].dump();
  }
  throw UsageError("--" + std::string(row.name) +
                   ": the value is no text, number or pair of numbers");
}

void SetValue(OptionValues& values, const OptionRow& row, const Json& value) {
  if (row.kind != ValueKind::Flag) {
    values.Set(row.name, ValueText(row, value));
  } else if (!value.is_boolean()) {
    throw UsageError("--" + std::string(row.name) + ": the value is neither true nor false");
  } else if (value.get<bool>()) {
    values.Set(row.name, "");
  }
}

OptionValues ValuesOf(const Job& job, const Json& entry) {
  OptionValues values;
  for (const OptionRow& row : job.options) {
    values.Declare(row);
  }
  for (const auto& [name, value] : entry.items()) {
    if (name != "type") {
      SetValue(values, RowNamed(job, name), value);
    }
  }
  for (const OptionRow& row : job.options) {
    CheckOption(row, values);
  }
  return values;
}

std::string TypeOf(const Json& entry) {
  if (!entry.is_object()) {
    throw UsageError("not an object");
  }
  const auto type = entry.find("type");
  if (type == entry.end() || !type->is_string()) {
    throw UsageError("no type");
  }
  return type->get<std::string>();
}

PdfTransformation StampTextEntry(const OptionValues& values) {
  PdfTransformation transformation(PdfTransformType::StampText);
  SetStampTextOptions(values, transformation);
  return transformation;
}

PdfTransformation StampImageEntry(const OptionValues& values) {
  PdfTransformation transformation(PdfTransformType::StampImage);
  SetStampImageOptions(values, transformation);
  const std::string& path = transformation.GetInputImage();
  if (OpenFile(path) == nullptr) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Image file not found: %s", path.c_str());
  }
  return transformation;
}

PdfTransformation NumberEntry(const OptionValues& values) {
  PdfTransformation transformation(PdfTransformType::AddPageNumber);
  SetNumberOptions(values, transformation);
  return transformation;
}

PdfTransformation ReadEntry(const Json& entry, const PdfDoc& document) {
  const std::string type = TypeOf(entry);
  if (type != "number" && type != "stamp-text" && type != "stamp-image") {
    throw UsageError("type '" + type + "' is none of number|stamp-text|stamp-image");
  }
  const OptionValues values = ValuesOf(*FindJob(type), entry);
  PdfTransformation transformation = type == "number"       ? NumberEntry(values)
                                     : type == "stamp-text" ? StampTextEntry(values)
                                                            : StampImageEntry(values);
  SetTargets(values, document, transformation);
  return transformation;
}

}  // namespace

std::vector<PdfTransformation> ReadRecipe(const std::string& path, const PdfDoc& document) {
  const Json list = ParseList(path);
  std::vector<PdfTransformation> transformations;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const std::string where = path + ": entry " + std::to_string(i + 1) + ": ";
    try {
      transformations.push_back(ReadEntry(list[i], document));
    } catch (const UsageError& error) {
      ThrowInvalid(where + error.what());
    } catch (PdfException& error) {
      throw PdfException(error.GetCode(), 0, "%s%s", where.c_str(), error.what());
    }
  }
  return transformations;
}

}  // namespace TarnixTools::cli
