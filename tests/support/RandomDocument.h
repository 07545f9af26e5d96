// Sound documents that a number makes up: pages of any size and rotation, with what documents have
// on and beside them, written in one of the ways in which programs write them.
//
//   const RandomDocument document(17);
//   const PdfDoc doc(document.Write(directory.Path("a.pdf")), document.Password(), true);
#ifndef TARNIX_TESTS_SUPPORT_RANDOMDOCUMENT_H_
#define TARNIX_TESTS_SUPPORT_RANDOMDOCUMENT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "support/TestPdf.h"

namespace TarnixTools::testing {

class RandomDocument {
 public:
  explicit RandomDocument(std::uint32_t seed);

  std::size_t PageCount() const { return pages_.size(); }

  // What only this page has, and nothing made without it may have: a title, the value of a field.
  //   page - from 0
  std::string SecretOf(std::size_t page) const;

  const std::string& Password() const { return password_; }

  // Writes the document and returns the path.
  std::string Write(const std::string& path) const;

  // Documents that are the same but for one thing that they lack.
  std::vector<RandomDocument> Simpler() const;

  // All that is not as in a plain document, in words.
  std::string Description() const;

 private:
  struct Page {
    int number = 0;  // in the document that was made up first
    int width = 0;
    int height = 0;
    int rotation = 0;
    bool is_cropped = false;
    bool has_image = false;
    bool has_note = false;
    bool has_field = false;
    bool has_link = false;
  };

  // What may be left out.
  enum Feature : std::size_t {
    kInherits,  // box and rotation of the first page stand in the page tree
    kOutline,
    kTags,
    kLayers,
    kLabels,
    kNames,
    kObjectStreams,
    kLinearized,
    kFeatureCount
  };

  bool Has(Feature feature) const { return has_[feature]; }

  void AddPage(TestPdf& pdf, std::size_t index) const;
  std::string ContentOf(std::size_t index) const;
  void AddBeside(TestPdf& pdf) const;
  std::vector<std::string> RewriteOptions() const;

  std::uint32_t seed_;
  std::vector<Page> pages_;
  std::vector<bool> has_ = std::vector<bool>(kFeatureCount);
  std::string password_;
  int key_bits_ = 0;  // 0: not encrypted
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_RANDOMDOCUMENT_H_
