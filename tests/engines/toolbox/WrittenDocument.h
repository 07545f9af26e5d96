// A document that the engine has written, looked at with the core.
#ifndef TARNIX_TESTS_ENGINES_TOOLBOX_WRITTENDOCUMENT_H_
#define TARNIX_TESTS_ENGINES_TOOLBOX_WRITTENDOCUMENT_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

class WrittenDocument {
 public:
  explicit WrittenDocument(std::string bytes)
      : bytes_(std::move(bytes)),
        document_(pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes_), "")),
        tree_(*document_) {
    EXPECT_EQ(document_->findings().count(), 0U);
  }

  std::size_t PageCount() const { return tree_.pages().size(); }

  pdf::Object Page(std::size_t index) { return tree_.Load(tree_.pages().at(index), arena_); }

  std::uint32_t PageNumber(std::size_t index) { return tree_.pages().at(index).number; }

  pdf::Object Catalog() { return document_->Catalog(arena_); }

  pdf::Object Follow(const pdf::Object& value) { return document_->Resolve(value, arena_); }

  // The value of a key, both followed.
  pdf::Object Get(const pdf::Object& dictionary, std::string_view key) {
    return Follow(Follow(dictionary).Get(key));
  }

  // A stream's data.
  std::string Data(const pdf::Object& reference) {
    return document_->TryDecodeStream(reference.AsReference().number)->data;
  }

  const std::string& bytes() const { return bytes_; }

  static std::string Text(const pdf::Object& value) {
    std::string text;
    pdf::AppendObject(text, value);
    return text;
  }

  pdf::Document& document() { return *document_; }

  // Objects in the file that satisfy the predicate.
  template <typename Predicate>
  int Count(Predicate is_wanted) {
    int count = 0;
    for (std::uint32_t number = 1; number < document_->object_limit(); ++number) {
      pdf::Arena arena;
      count += is_wanted(document_->Load({number, 0}, arena)) ? 1 : 0;
    }
    return count;
  }

 private:
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  pdf::PageTree tree_;
  pdf::Arena arena_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_TESTS_ENGINES_TOOLBOX_WRITTENDOCUMENT_H_
