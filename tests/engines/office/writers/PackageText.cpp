#include "engines/office/writers/PackageText.h"

#include <string_view>

#include "engines/office/writers/schema/XmlNode.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::size_t kShort = 60;  // characters of an element that is written again

// A part as a tree.
class Tree {
 public:
  explicit Tree(const XmlNode& root) {
    Count(root);
    Write(root, 0);
  }

  const std::string& text() const { return text_; }

 private:
  struct Known {
    int count = 0;
    int number = 0;  // 0 before it is written
  };

  void Count(const XmlNode& node) {
    if (++known_[Shown(node)].count > 1) {
      return;
    }
    for (const XmlNode& child : node.children) {
      Count(child);
    }
  }

  void Write(const XmlNode& node, std::size_t depth) {
    const std::string shown = Shown(node);
    Known& known = known_[shown];
    text_ += std::string(depth, ' ');
    if (known.number > 0 && shown.size() > kShort) {
      text_ += node.name + " #" + std::to_string(known.number) + "\n";
      return;
    }
    text_ += node.name;
    if (known.count > 1 && shown.size() > kShort) {
      known.number = ++count_;
      text_ += " (#" + std::to_string(known.number) + ")";
    }
    for (const auto& [name, value] : node.attributes) {
      text_ += " " + name + "=" + value;
    }
    text_ += node.text.empty() ? "\n" : ": \"" + node.text + "\"\n";
    for (const XmlNode& child : node.children) {
      Write(child, depth + 1);
    }
  }

  std::map<std::string, Known> known_;  // by what is written of it
  int count_ = 0;
  std::string text_;
};

// What a PNG file says of itself: its sides, the bits of a sample and the kind of its colours.
std::string PngText(const std::string& part) {
  const auto byte = [&part](std::size_t at) { return static_cast<unsigned char>(part.at(at)); };
  return "PNG of " + std::to_string(byte(18) * 256 + byte(19)) + " x " +
         std::to_string(byte(22) * 256 + byte(23)) + ", " + std::to_string(byte(24)) +
         " bits, colours " + std::to_string(byte(25)) + "\n";
}

std::string PartText(const std::string& part) {
  if (part.starts_with("\x89PNG")) {
    return PngText(part);
  }
  if (part.starts_with("\xFF\xD8")) {
    return "JPEG\n";
  }
  const std::string_view declaration =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  return part.starts_with(declaration) ? Tree(ParsedXml(part)).text() : part + "\n";
}

}  // namespace

std::string PackageText(const Parts& parts, const Parts& other) {
  std::string text;
  for (const auto& [name, part] : parts) {
    const auto same = other.find(name);
    if (same == other.end() || same->second != part) {
      text += "== " + name + "\n" + PartText(part);
    }
  }
  return text;
}

}  // namespace TarnixTools::engines::office
