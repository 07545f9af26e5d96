#include "pdf/content/ContentBalance.h"

#include <algorithm>
#include <array>

#include "pdf/Limits.h"
#include "pdf/content/InlineImage.h"
#include "pdf/content/Operators.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Chars.h"
#include "pdf/syntax/Lexer.h"

namespace TarnixTools::pdf {

namespace {

// What begins with a byte.
enum class Start : std::uint8_t { kOther, kSpace, kNumber, kOperator };

constexpr std::array<Start, 256> MakeStarts() {
  std::array<Start, 256> starts{};
  for (std::size_t i = 0; i < starts.size(); ++i) {
    const char c = static_cast<char>(i);
    const bool is_number = IsDigit(c) || c == '+' || c == '-' || c == '.';
    starts[i] = IsSpace(c)       ? Start::kSpace
                : is_number      ? Start::kNumber
                : IsDelimiter(c) ? Start::kOther
                                 : Start::kOperator;
  }
  return starts;
}

constexpr std::array<Start, 256> kStarts = MakeStarts();

Start StartOf(char c) {
  return kStarts[static_cast<unsigned char>(c)];
}

}  // namespace

// Goes through a content token by token, looking only at what can open or close something.
class BalanceScanner {
 public:
  explicit BalanceScanner(std::string_view content) : content_(content), images_(content) {}

  void Scan() {
    while (position_ < content_.size()) {
      switch (StartOf(content_[position_])) {
        case Start::kSpace:
        case Start::kNumber:  // an operator may follow without white space
          ++position_;
          break;
        case Start::kOperator:
          TakeOperator();
          break;
        case Start::kOther:
          TakeDelimiter();
          break;
      }
    }
    for (; !open_.empty(); open_.pop_back()) {
      cut += open_.back() == '[' ? "]" : ">>";
    }
    if (lacks_image_data_) {
      cut += "\nID\nEI";
    }
  }

  std::vector<std::size_t> restore_positions;
  std::size_t open_saves = 0;
  std::size_t surplus_ends = 0;
  std::size_t open_marks = 0;
  ContentBalance::State text = ContentBalance::State::kAsBefore;
  ContentBalance::State path = ContentBalance::State::kAsBefore;
  std::string cut;

 private:
  void SkipRegular() {
    while (position_ < content_.size() && StartOf(content_[position_]) >= Start::kNumber) {
      ++position_;
    }
  }

  void TakeOperator() {
    const std::size_t begin = position_;
    SkipRegular();
    const std::size_t size = position_ - begin;
    if (size > 3) {
      return;
    }
    Count(OperatorCode(content_.substr(begin, size)), begin);
  }

  void Count(std::uint32_t code, std::size_t begin) {
    switch (code) {
      case OperatorCode("q"):
        open_saves += open_saves < limits::kMaxCountedStates ? 1 : 0;
        break;
      case OperatorCode("Q"):
        Restore(begin);
        break;
      case OperatorCode("BT"):
        text = ContentBalance::State::kOpen;
        break;
      case OperatorCode("ET"):
        text = ContentBalance::State::kClosed;
        break;
      case OperatorCode("BMC"):
      case OperatorCode("BDC"):
        open_marks += open_marks < limits::kMaxCountedStates ? 1 : 0;
        break;
      case OperatorCode("EMC"):
        if (open_marks > 0) {
          --open_marks;
        } else {
          ++surplus_ends;
        }
        break;
      case OperatorCode("BI"):
        TakeInlineImage();
        break;
      case OperatorCode("ID"):
        lacks_image_data_ = false;
        break;
      case OperatorCode("m"):
      case OperatorCode("re"):
        path = ContentBalance::State::kOpen;
        break;
      case OperatorCode("f"):
      case OperatorCode("F"):
      case OperatorCode("f*"):
      case OperatorCode("S"):
      case OperatorCode("s"):
      case OperatorCode("B"):
      case OperatorCode("B*"):
      case OperatorCode("b"):
      case OperatorCode("b*"):
      case OperatorCode("n"):
        path = ContentBalance::State::kClosed;
        break;
      default:
        break;
    }
  }

  void Restore(std::size_t begin) {
    if (open_saves > 0) {
      --open_saves;
    } else if (restore_positions.size() < limits::kMaxSurplusRestores) {
      restore_positions.push_back(begin);
    }
  }

  void TakeDelimiter() {
    const char c = content_[position_++];
    const char next = position_ < content_.size() ? content_[position_] : '\0';
    switch (c) {
      case '(':
        SkipString();
        break;
      case '/':
        SkipRegular();
        break;
      case '%':
        SkipComment();
        break;
      case '[':
        Open('[');
        break;
      case ']':
        Close('[');
        break;
      case '<':
        if (next == '<') {
          ++position_;
          Open('<');
        } else {
          SkipHexString();
        }
        break;
      case '>':
        if (next == '>') {
          ++position_;
          Close('<');
        }
        break;
      default:
        break;
    }
  }

  void Open(char kind) {
    if (open_.size() < static_cast<std::size_t>(limits::kMaxNesting)) {
      open_ += kind;
    }
  }

  void Close(char kind) {
    if (!open_.empty() && open_.back() == kind) {
      open_.pop_back();
    }
  }

  void SkipString() {
    std::size_t depth = 1;
    while (position_ < content_.size()) {
      const char c = content_[position_++];
      if (c == '\\') {
        position_ += position_ < content_.size() ? 1 : 0;
      } else if (c == '(') {
        ++depth;
      } else if (c == ')' && --depth == 0) {
        return;
      }
    }
    cut.append(std::min(depth, limits::kMaxCountedStates), ')');
  }

  void SkipHexString() {
    const std::size_t end = content_.find('>', position_);
    position_ = end == std::string_view::npos ? content_.size() : end + 1;
    if (end == std::string_view::npos) {
      cut += '>';
    }
  }

  void SkipComment() {
    const std::size_t end = content_.find_first_of("\r\n", position_);
    position_ = end == std::string_view::npos ? content_.size() : end;
  }

  // After BI, as ContentReader reads it.
  void TakeInlineImage() {
    Lexer lexer(content_, true);
    lexer.set_position(position_);
    for (;;) {
      const std::size_t before = lexer.position();
      const Token token = lexer.Next();
      if (token.kind == Token::Kind::kEnd) {
        position_ = content_.size();
        lacks_image_data_ = true;
        return;
      }
      if (token.kind != Token::Kind::kKeyword || token.text == "true" || token.text == "false" ||
          token.text == "null") {
        continue;
      }
      if (token.text != "ID") {
        // No image, though some readers go on looking for one.
        position_ = before;
        lacks_image_data_ = true;
        return;
      }
      arena_.Reset();
      const auto extent = images_.Measure(
          ParseInlineEntries(content_.substr(position_, before - position_), arena_),
          lexer.position());
      position_ = extent ? extent->after : content_.size();
      if (!extent) {
        cut += "\nEI";
      }
      return;
    }
  }

  std::string_view content_;
  std::size_t position_ = 0;
  std::string open_;
  bool lacks_image_data_ = false;  // a BI had no ID so far
  InlineImageMeasure images_;
  Arena arena_;
};

std::string ContentBalance::closing() const {
  std::string text = cut_;
  const auto add = [&text](std::string_view operator_name) {
    if (!text.empty()) {
      text += ' ';
    }
    text += operator_name;
  };
  if (path_ == State::kOpen) {
    add("n");
  }
  if (text_ == State::kOpen) {
    add("ET");
  }
  for (std::size_t i = 0; i < open_marks_; ++i) {
    add("EMC");
  }
  for (std::size_t i = 0; i < open_saves_; ++i) {
    add("Q");
  }
  return text;
}

void ContentBalance::Append(const ContentBalance& next) {
  const std::size_t restored = std::min(open_saves_, next.surplus_restores_);
  surplus_restores_ += next.surplus_restores_ - restored;
  restore_positions_.clear();
  open_saves_ = open_saves_ - restored + next.open_saves_;
  const std::size_t ended = std::min(open_marks_, next.surplus_ends_);
  surplus_ends_ += next.surplus_ends_ - ended;
  open_marks_ = open_marks_ - ended + next.open_marks_;
  text_ = next.text_ == State::kAsBefore ? text_ : next.text_;
  path_ = next.path_ == State::kAsBefore ? path_ : next.path_;
  cut_ = next.cut_;
}

ContentBalance MeasureBalance(std::string_view content) {
  BalanceScanner scanner(content);
  scanner.Scan();
  ContentBalance balance;
  balance.restore_positions_ = std::move(scanner.restore_positions);
  balance.surplus_restores_ = balance.restore_positions_.size();
  balance.open_saves_ = scanner.open_saves;
  balance.surplus_ends_ = scanner.surplus_ends;
  balance.open_marks_ = scanner.open_marks;
  balance.text_ = scanner.text;
  balance.path_ = scanner.path;
  balance.cut_ = std::move(scanner.cut);
  return balance;
}

}  // namespace TarnixTools::pdf
