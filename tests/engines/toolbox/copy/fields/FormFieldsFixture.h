// What tests of copied forms share: a document with a form, and the form of its copy.
#ifndef TARNIX_TESTS_ENGINES_TOOLBOX_COPY_FIELDS_FORMFIELDSFIXTURE_H_
#define TARNIX_TESTS_ENGINES_TOOLBOX_COPY_FIELDS_FORMFIELDSFIXTURE_H_

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {

// A document whose catalog has the form, and whose pages (objects 3 on) have these annotations.
class FormPdf {
 public:
  FormPdf(const std::string& form, const std::vector<std::string>& annotations) {
    file_.Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<<" + form + ">>>>");
    std::string kids;
    int number = 3;
    for (const std::string& list : annotations) {
      kids += std::to_string(number) + " 0 R ";
      file_.Object(number++,
                   "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Annots[" + list + "]>>");
    }
    file_.Object(
        2, "<</Type/Pages/Kids[" + kids + "]/Count " + std::to_string(annotations.size()) + ">>");
  }

  FormPdf& Object(int number, const std::string& entries) {
    file_.Object(number, "<<" + entries + ">>");
    return *this;
  }

  FormPdf& Widget(int number, const std::string& entries) {
    return Object(number, "/Type/Annot/Subtype/Widget/Rect[0 0 9 9]" + entries);
  }

  FormPdf& Stream(int number, const std::string& entries, const std::string& data) {
    file_.Stream(number, entries, data);
    return *this;
  }

  std::string Bytes() { return file_.Table(); }

 private:
  testing::RawPdf file_;
};

// The form of a copy, as its fields lead to it.
class CopiedForm : public CopiedDocument {
 public:
  using Object = pdf::Object;

  explicit CopiedForm(const std::vector<PagesOf>& parts, int options = 15)
      : CopiedDocument(parts, options), form_(Follow(Catalog().Get("AcroForm"))) {
    for (const Object& root : form_.Get("Fields").Items()) {
      waiting_.insert(waiting_.begin(), {root, Object(), ""});
    }
    while (!waiting_.empty()) {
      const Place place = waiting_.back();
      waiting_.pop_back();
      Read(place);
    }
  }

  const Object& form() const { return form_; }

  // Each field without fields below it: "name=value", then the pages of its widgets: " @0@2".
  const std::vector<std::string>& fields() const { return fields_; }

  // A field's dictionary by its full name.
  Object Field(const std::string& name) { return by_name_.at(name); }

  std::vector<std::string> Calculations() {
    std::vector<std::string> names;
    for (const Object& item : Follow(form_.Get("CO")).Items()) {
      names.push_back(std::string(Follow(Follow(item).Get("T")).Text()));
    }
    return names;
  }

 private:
  struct Place {
    Object reference;
    Object parent;
    std::string name;
  };

  void Read(const Place& place) {
    const Object field = Follow(place.reference);
    ASSERT_TRUE(field.IsDictionary());
    ASSERT_TRUE(seen_.insert(place.reference.AsReference().number).second) << "a field twice";
    EXPECT_EQ(field.Get("Parent").AsReference().number, place.parent.AsReference().number);
    std::string name = place.name;
    if (field.Has("T")) {
      name += (name.empty() ? "" : ".") + std::string(Follow(field.Get("T")).Text());
    }
    by_name_[name] = field;
    const auto kids = Follow(field.Get("Kids")).Items();
    std::string widgets = PageOf(place.reference);
    bool is_terminal = true;
    std::vector<Place> fields;
    for (const Object& kid : kids) {
      const Object dictionary = Follow(kid);
      if (dictionary.Has("T")) {
        is_terminal = false;
        fields.insert(fields.begin(), {kid, place.reference, name});
      } else {
        EXPECT_EQ(dictionary.Get("Parent").AsReference().number,
                  place.reference.AsReference().number);
        widgets += PageOf(kid);
      }
    }
    if (is_terminal) {
      fields_.push_back(name + "=" + ValueOf(field) + (widgets.empty() ? "" : " " + widgets));
    }
    waiting_.insert(waiting_.end(), fields.begin(), fields.end());
  }

  std::string ValueOf(const Object& field) {
    const Object value = Follow(field.Get("V"));
    return value.IsString() || value.IsName() ? std::string(value.Text())
           : value.IsNull()                   ? ""
                                              : Text(value);
  }

  std::string PageOf(const Object& reference) {
    std::string pages;
    for (std::size_t i = 0; i < PageCount(); ++i) {
      for (const Object& item : Follow(Page(i).Get("Annots")).Items()) {
        if (item.AsReference().number == reference.AsReference().number) {
          pages += "@" + std::to_string(i);
          EXPECT_EQ(Follow(item).Get("P").AsReference().number, PageNumber(i));
        }
      }
    }
    return pages;
  }

  Object form_;
  std::vector<Place> waiting_;
  std::vector<std::string> fields_;
  std::map<std::string, Object> by_name_;
  std::set<std::uint32_t> seen_;
};

using Names = std::vector<std::string>;

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_TESTS_ENGINES_TOOLBOX_COPY_FIELDS_FORMFIELDSFIXTURE_H_
