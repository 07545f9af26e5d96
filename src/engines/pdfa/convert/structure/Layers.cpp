#include "engines/pdfa/convert/structure/Layers.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;

namespace {

constexpr std::size_t kMaxConfigurations = 1'000;

class LayerMender {
 public:
  explicit LayerMender(Conversion& conversion) : conversion_(&conversion) {}

  void Mend() {
    const Object value = document().Catalog(arena_).Get("OCProperties");
    const Object properties = document().Resolve(value, arena_);
    if (!properties.IsDictionary()) {
      return;
    }
    for (const Object& group : document().Resolve(properties.Get("OCGs"), arena_).Items()) {
      groups_.push_back(group.AsReference().number);
    }
    std::string text = "<<";
    for (const DictionaryEntry& entry : properties.Entries()) {
      pdf::AppendName(text, entry.Key());
      AppendProperty(text, entry);
    }
    conversion_->rewriter.SetEntry(conversion_->rewriter.catalog(), "OCProperties", text + ">>");
  }

 private:
  pdf::Document& document() { return conversion_->document; }

  void AppendProperty(std::string& text, const DictionaryEntry& entry) {
    if (entry.Key() == "D") {
      text += Configuration(entry.value, "Default");
    } else if (entry.Key() == "Configs") {
      text += Configurations(document().Resolve(entry.value, arena_));
    } else {
      pdf::AppendObject(text, entry.value);
    }
  }

  std::string Configurations(const Object& all) {
    std::string text = "[";
    std::size_t left = kMaxConfigurations;
    for (const Object& item : all.Items()) {
      if (left-- > 0) {
        text += Configuration(item, "Configuration");
      }
    }
    return text + "]";
  }

  std::string Configuration(const Object& value, const std::string& name) {
    const Object configuration = document().Resolve(value, arena_);
    std::string text = "<</Name";
    const std::string_view own = document().Resolve(configuration.Get("Name"), arena_).Text();
    pdf::AppendString(text, UniqueName(own.empty() ? name : std::string(own)), false);
    for (const DictionaryEntry& entry : configuration.Entries()) {
      if (entry.Key() == "AS") {
        conversion_->report.Dropped("layers that switch by themselves");
      } else if (entry.Key() == "Order") {
        text += "/Order" + Order(document().Resolve(entry.value, arena_));
      } else if (entry.Key() != "Name") {
        pdf::AppendName(text, entry.Key());
        pdf::AppendObject(text, entry.value);
      }
    }
    return text + ">>";
  }

  std::string UniqueName(const std::string& wanted) {
    std::string name = wanted;
    for (int i = 2; !names_.insert(name).second; ++i) {
      name = pdf::TextStringWith(wanted, " " + std::to_string(i));
    }
    return name;
  }

  // With the layers that it does not have at its end.
  std::string Order(const Object& order) {
    std::vector<std::uint32_t> listed;
    pdf::CollectReferences(order, listed);
    AddReferencedLists(order, listed);
    std::string text = "[";
    for (const Object& item : order.Items()) {
      pdf::AppendObject(text, item);
    }
    for (const std::uint32_t group : groups_) {
      if (group != 0 && std::find(listed.begin(), listed.end(), group) == listed.end()) {
        pdf::AppendReference(text, group);
      }
    }
    return text + "]";
  }

  // Lists within the list may be objects of their own.
  void AddReferencedLists(const Object& order, std::vector<std::uint32_t>& listed) {
    for (const Object& item : order.Items()) {
      if (item.IsReference()) {
        const Object list = document().Resolve(item, arena_);
        if (list.IsArray()) {
          pdf::CollectReferences(list, listed);
        }
      }
    }
  }

  Conversion* conversion_;
  Arena arena_;
  std::vector<std::uint32_t> groups_;
  std::set<std::string> names_;
};

}  // namespace

void MendLayers(Conversion& conversion) {
  if (conversion.is_part1()) {
    pdf::Arena arena;
    if (conversion.document.Catalog(arena).Has("OCProperties")) {
      conversion.rewriter.RemoveEntry(conversion.rewriter.catalog(), "OCProperties");
      conversion.report.Dropped("layers");
    }
    return;
  }
  LayerMender(conversion).Mend();
}

}  // namespace TarnixTools::engines::pdfa
