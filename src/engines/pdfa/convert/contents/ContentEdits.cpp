#include "engines/pdfa/convert/contents/ContentEdits.h"

#include <algorithm>
#include <iterator>

namespace TarnixTools::engines::pdfa {

void ContentEdits::Replace(std::size_t begin, std::size_t end, std::string text) {
  edits_.push_back({begin, end, std::move(text)});
}

void ContentEdits::Take(ContentEdits other) {
  edits_.insert(edits_.end(), std::make_move_iterator(other.edits_.begin()),
                std::make_move_iterator(other.edits_.end()));
  appended_ += other.appended_;
}

std::string ContentEdits::AppliedTo(std::string_view content) const {
  // What is put in goes before what stands in the same place and is replaced.
  const auto comes_before = [](const Edit* left, const Edit* right) {
    return left->begin != right->begin ? left->begin < right->begin
                                       : left->begin == left->end && right->begin != right->end;
  };
  std::vector<const Edit*> order;
  for (const Edit& edit : edits_) {
    order.push_back(&edit);
  }
  std::stable_sort(order.begin(), order.end(), comes_before);
  std::string text;
  std::size_t done = 0;
  for (const Edit* edit : order) {
    const std::size_t begin = std::clamp(edit->begin, done, std::max(done, content.size()));
    text += content.substr(std::min(done, content.size()), begin - done);
    const bool is_gone = edit->begin < edit->end && edit->begin < done && edit->end <= done;
    text += is_gone ? "" : edit->text;
    done = std::max(begin, edit->end);
  }
  text += content.substr(std::min(done, content.size()));
  return text += appended_;
}

}  // namespace TarnixTools::engines::pdfa
