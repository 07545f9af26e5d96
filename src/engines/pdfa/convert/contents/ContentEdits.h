// Changes of a content stream, by places in it as it was before all of them.
//
//   ContentEdits edits;
//   edits.Insert(0, "q\n");
//   edits.Replace(12, 17, "0 Tr");
//   const std::string changed = edits.AppliedTo(content);
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_CONTENTEDITS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_CONTENTEDITS_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TarnixTools::engines::pdfa {

class ContentEdits {
 public:
  // What is put in one place more than once stands there in the order of the calls.
  void Insert(std::size_t at, std::string text) { Replace(at, at, std::move(text)); }

  // What lies in the range of two of them goes once; one that lies in another brings no text.
  void Replace(std::size_t begin, std::size_t end, std::string text);

  // Behind the end, after a line feed.
  void Append(const std::string& text) { appended_ += "\n" + text; }

  // Those of the other come after the own ones.
  void Take(ContentEdits other);

  // How many there are, besides what is appended.
  std::size_t count() const { return edits_.size(); }

  bool empty() const { return edits_.empty() && appended_.empty(); }

  std::string AppliedTo(std::string_view content) const;

 private:
  struct Edit {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string text;
  };

  std::vector<Edit> edits_;
  std::string appended_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_CONTENTEDITS_H_
