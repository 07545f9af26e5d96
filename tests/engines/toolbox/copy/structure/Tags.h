// Tagged documents, and the structure of what was copied from them.
//
//   CopiedDocument copy({{TaggedPdf(1, "/K 21 0 R").Element(21, 20, "P", "/Pg 3 0 R/K 0").Bytes()}});
//   Tags tags(copy);
//   tags.paths();
#ifndef TARNIX_TESTS_ENGINES_TOOLBOX_COPY_STRUCTURE_TAGS_H_
#define TARNIX_TESTS_ENGINES_TOOLBOX_COPY_STRUCTURE_TAGS_H_

#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {

// A document with pages 3, 4, ... that have the keys 0, 1, ..., and the tree's root as object 20;
// its entries and further objects are the test's.
class TaggedPdf {
 public:
  explicit TaggedPdf(int pages, const std::string& root, const std::string& catalog = "") {
    pdf_.Pages(pages);
    pdf_.Object(1, "<</Type/Catalog/Pages 2 0 R/StructTreeRoot 20 0 R/MarkInfo<</Marked true>>" +
                       catalog + ">>");
    for (int i = 0; i < pages; ++i) {
      Page(i, "");
    }
    pdf_.Object(20, "<</Type/StructTreeRoot" + root + ">>");
  }

  // Gives the page further entries.
  TaggedPdf& Page(int index, const std::string& entries) {
    pdf_.Object(3 + index, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/StructParents " +
                               std::to_string(index) + entries + ">>");
    return *this;
  }

  TaggedPdf& Object(int number, const std::string& body) {
    pdf_.Object(number, body);
    return *this;
  }

  TaggedPdf& Element(int number, int parent, const std::string& type, const std::string& entries) {
    return Object(number, "<</Type/StructElem/S/" + type + "/P " + std::to_string(parent) + " 0 R" +
                              entries + ">>");
  }

  TaggedPdf& Stream(int number, const std::string& entries, const std::string& data) {
    pdf_.Stream(number, entries, data);
    return *this;
  }

  std::string Bytes() { return pdf_.Table(); }

 private:
  ::TarnixTools::testing::RawPdf pdf_;
};

// The structure of an outcome. Everything that must hold of any is checked on the way.
class Tags {
 public:
  explicit Tags(CopiedDocument& document) : document_(&document) {
    const pdf::Object catalog = document.Catalog();
    root_number_ = catalog.Get("StructTreeRoot").AsReference().number;
    root_ = document.Follow(catalog.Get("StructTreeRoot"));
    Walk();
    ReadTree(root_.Get("ParentTree"), "Nums",
             [this](const pdf::Object& key, const pdf::Object& value) {
               EXPECT_TRUE(parent_tree_.emplace(key.IntegerOr(-1), value).second) << "a key twice";
             });
    CheckItems();
  }

  const pdf::Object& root() const { return root_; }

  std::size_t count() const { return paths_.size(); }

  // Types from the root to each element, in document order.
  const std::vector<std::string>& paths() const { return paths_; }

  // The types that lead to marked content of a page (or another stream, by its object number).
  std::string PathOf(std::size_t page, int mcid) {
    return PathIn(document_->PageNumber(page), mcid);
  }

  std::string PathIn(std::uint32_t place, int mcid) {
    const pdf::Object dictionary = document_->document().Load({place, 0}, arena_);
    const auto entry = parent_tree_.find(dictionary.Get("StructParents").IntegerOr(-1));
    if (entry == parent_tree_.end()) {
      return "";
    }
    const auto holders = document_->Follow(entry->second).Items();
    const std::uint32_t number =
        static_cast<std::size_t>(mcid) < holders.size() ? holders[mcid].AsReference().number : 0;
    if (number == 0) {
      return "";
    }
    EXPECT_EQ(holders_.count({place, mcid}), 1U) << "no element has content " << mcid;
    EXPECT_EQ((holders_[{place, mcid}]), number);
    return elements_.count(number) != 0 ? elements_[number].path : "not in the tree";
  }

  // The types that lead to an annotation or another object that is content as a whole.
  std::string PathOfObject(const pdf::Object& reference) {
    const pdf::Object dictionary = document_->Follow(reference);
    const auto entry = parent_tree_.find(dictionary.Get("StructParent").IntegerOr(-1));
    if (entry == parent_tree_.end()) {
      return "";
    }
    const std::uint32_t number = entry->second.AsReference().number;
    EXPECT_EQ((holders_[{reference.AsReference().number, -1}]), number);
    return elements_.count(number) != 0 ? elements_[number].path : "not in the tree";
  }

  // The first element with this path.
  pdf::Object Element(const std::string& path) {
    for (const auto& [number, element] : elements_) {
      if (element.path == path) {
        return element.dictionary;
      }
    }
    return {};
  }

  std::vector<std::int64_t> Keys() const {
    std::vector<std::int64_t> keys;
    for (const auto& [key, value] : parent_tree_) {
      keys.push_back(key);
    }
    return keys;
  }

  // Names of the ID tree, with the path of the element they lead to.
  std::map<std::string, std::string> Ids() {
    std::map<std::string, std::string> ids;
    ReadTree(root_.Get("IDTree"), "Names", [&](const pdf::Object& key, const pdf::Object& value) {
      const auto element = elements_.find(value.AsReference().number);
      ASSERT_NE(element, elements_.end());
      EXPECT_EQ(element->second.dictionary.Get("ID").Text(), key.Text());
      ids[std::string(key.Text())] = element->second.path;
    });
    return ids;
  }

 private:
  struct ElementFacts {
    pdf::Object dictionary;
    std::string path;
  };

  template <typename Visit>
  void ReadTree(const pdf::Object& root, const char* leaf_key, const Visit& visit) {
    std::vector<pdf::Object> nodes = {root};
    while (!nodes.empty()) {
      const pdf::Object node = document_->Follow(nodes.back());
      nodes.pop_back();
      const auto items = document_->Follow(node.Get(leaf_key)).Items();
      for (std::size_t i = 0; i + 1 < items.size(); i += 2) {
        visit(items[i], items[i + 1]);
      }
      for (const pdf::Object& kid : document_->Follow(node.Get("Kids")).Items()) {
        nodes.push_back(kid);
      }
    }
  }

  static std::vector<pdf::Object> KidsOf(const pdf::Object& dictionary) {
    const pdf::Object kids = dictionary.Get("K");
    if (kids.IsArray()) {
      return {kids.Items().begin(), kids.Items().end()};
    }
    return kids.IsNull() ? std::vector<pdf::Object>() : std::vector<pdf::Object>{kids};
  }

  void Walk() {
    struct Step {
      pdf::Object kid;
      std::uint32_t parent;
    };

    std::vector<Step> waiting;
    const auto add = [&](const pdf::Object& dictionary, std::uint32_t number) {
      const auto kids = KidsOf(dictionary);
      for (auto kid = kids.rbegin(); kid != kids.rend(); ++kid) {
        waiting.push_back({*kid, number});
      }
    };
    add(root_, root_number_);
    while (!waiting.empty()) {
      const Step step = waiting.back();
      waiting.pop_back();
      const std::uint32_t number = step.kid.AsReference().number;
      const pdf::Object value = document_->Follow(step.kid);
      if (number == 0) {
        AddItem(value, step.parent);
        continue;
      }
      EXPECT_EQ(value.Get("P").AsReference().number, step.parent);
      EXPECT_EQ(elements_.count(number), 0U) << "an element twice";
      const std::string above =
          elements_.count(step.parent) != 0 ? elements_[step.parent].path : "";
      const std::string path =
          above + (above.empty() ? "" : "/") + std::string(value.Get("S").Text());
      elements_[number] = {value, path};
      paths_.push_back(path);
      add(value, number);
    }
  }

  void AddItem(const pdf::Object& kid, std::uint32_t parent) {
    ASSERT_EQ(elements_.count(parent), 1U);
    std::uint32_t place = elements_[parent].dictionary.Get("Pg").AsReference().number;
    if (const pdf::Object page = kid.Get("Pg"); !page.IsNull()) {
      place = page.AsReference().number;
    }
    if (const pdf::Object stream = kid.Get("Stm"); !stream.IsNull()) {
      place = stream.AsReference().number;
    }
    int mcid = static_cast<int>((kid.IsDictionary() ? kid.Get("MCID") : kid).IntegerOr(-2));
    if (const pdf::Object object = kid.Get("Obj"); kid.Get("Type").IsName("OBJR")) {
      place = object.AsReference().number;
      mcid = -1;
    }
    EXPECT_NE(place, 0U);
    EXPECT_TRUE(holders_.emplace(std::make_pair(place, mcid), parent).second) << "content twice";
  }

  // What an element holds must lead back to it, and the parent tree must lead to elements.
  void CheckItems() {
    for (const auto& [place_and_mcid, element] : holders_) {
      const auto& [place, mcid] = place_and_mcid;
      if (mcid >= 0) {
        EXPECT_EQ(PathIn(place, mcid), elements_[element].path);
      }
    }
    for (const auto& [key, value] : parent_tree_) {
      const pdf::Object resolved = document_->Follow(value);
      const auto items =
          resolved.IsArray() ? resolved.Items() : std::span<const pdf::Object>(&value, 1);
      for (const pdf::Object& item : items) {
        EXPECT_TRUE(item.IsNull() || elements_.count(item.AsReference().number) == 1U);
      }
    }
  }

  CopiedDocument* document_;
  pdf::Arena arena_;
  pdf::Object root_;
  std::uint32_t root_number_ = 0;
  std::map<std::uint32_t, ElementFacts> elements_;
  std::vector<std::string> paths_;
  std::map<std::pair<std::uint32_t, int>, std::uint32_t> holders_;
  std::map<std::int64_t, pdf::Object> parent_tree_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_TESTS_ENGINES_TOOLBOX_COPY_STRUCTURE_TAGS_H_
