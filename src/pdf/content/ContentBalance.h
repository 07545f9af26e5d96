// What a content stream leaves open when it ends: saved graphics states, text objects, marked
// content, paths, and tokens that are not complete (ISO 32000-2, 8.4.2, 9.4.1, 14.6).
//
//   ContentBalance balance = MeasureBalance(content);
//   content += '\n' + balance.closing();  // from here on nothing of it is in force any more
//
// A page's contents may be several streams. Each can be measured for itself, and so once for all
// pages that share it, as long as none ends within a token:
//
//   ContentBalance all;
//   all.Append(first);
//   all.Append(second);
#ifndef TARNIX_PDF_CONTENT_CONTENTBALANCE_H_
#define TARNIX_PDF_CONTENT_CONTENTBALANCE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::pdf {

class ContentBalance {
 public:
  enum class State : std::uint8_t { kAsBefore, kOpen, kClosed };

  // How many Q find no state that the content has saved.
  std::size_t surplus_restores() const { return surplus_restores_; }

  // Where they are, in a content that was measured as one: the first limits::kMaxSurplusRestores of
  // them. Readers ignore them.
  const std::vector<std::size_t>& restore_positions() const { return restore_positions_; }

  std::size_t open_saves() const { return open_saves_; }

  // Whether the content ends within a string, an array, a dictionary or an inline image.
  bool is_cut() const { return !cut_.empty(); }

  // Whether it has what makes readers pass over all that follows it in the page's content: an
  // operator without the operands it needs, which is where poppler stops; an inline image that
  // does not end, for whose data MuPDF takes what follows; or so many operators that are none that
  // MuPDF, which puts up with a hundred, may stop.
  bool stops_readers() const;

  // What closes everything that is open, to be put after the content and a line feed. Empty when
  // nothing is.
  std::string closing() const;

  // Goes on with content that follows. There are no positions then.
  void Append(const ContentBalance& next);

 private:
  // Those that stand before operators, and operators that are none.
  struct Operands {
    bool has_operator = false;
    std::size_t missing_first = 0;  // the first operator may have more of them in a stream before
    bool is_missing = false;        // others lack some
    std::size_t left = 0;           // for an operator in the next stream
    std::size_t unknown_operators = 0;

    void Append(const Operands& next);
  };

  friend class BalanceScanner;
  friend ContentBalance MeasureBalance(std::string_view content);

  std::vector<std::size_t> restore_positions_;
  std::size_t surplus_restores_ = 0;
  std::size_t open_saves_ = 0;
  std::size_t surplus_ends_ = 0;  // EMC without a beginning
  std::size_t open_marks_ = 0;
  State text_ = State::kAsBefore;
  State path_ = State::kAsBefore;
  std::string cut_;  // what completes the last token
  bool is_image_cut_ = false;
  Operands operands_;
};

// Reads the content once; nothing is kept of it.
ContentBalance MeasureBalance(std::string_view content);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_CONTENTBALANCE_H_
