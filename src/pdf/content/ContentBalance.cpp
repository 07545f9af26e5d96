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

// Unknown operators from which on a reader may stop, which gives up at a hundred errors of any kind.
constexpr std::size_t kManyUnknown = 32;

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
          ++position_;
          break;
        case Start::kNumber:
          TakeNumber();
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
      is_image_cut = true;
    }
  }

  std::vector<std::size_t> restore_positions;
  std::size_t open_saves = 0;
  std::size_t surplus_ends = 0;
  std::size_t open_marks = 0;
  ContentBalance::State text = ContentBalance::State::kAsBefore;
  ContentBalance::State path = ContentBalance::State::kAsBefore;
  std::string cut;
  bool is_image_cut = false;
  ContentBalance::Operands operands;

 private:
  // An operator may follow without white space.
  void TakeNumber() {
    AddOperand();
    while (position_ < content_.size() && StartOf(content_[position_]) == Start::kNumber) {
      ++position_;
    }
  }

  void AddOperand() { operands.left += open_.empty() ? 1 : 0; }

  void SkipRegular() {
    while (position_ < content_.size() && StartOf(content_[position_]) >= Start::kNumber) {
      ++position_;
    }
  }

  void TakeOperator() {
    const std::size_t begin = position_;
    SkipRegular();
    const std::string_view name = content_.substr(begin, position_ - begin);
    if (name.size() > 3 && (name == "true" || name == "false" || name == "null")) {
      AddOperand();
      return;
    }
    const std::uint32_t code = OperatorCode(name);
    CheckOperands(code);
    Count(code, begin);
  }

  // Within an array or a dictionary it is no operator.
  void CheckOperands(std::uint32_t code) {
    if (!open_.empty()) {
      return;
    }
    const int needed = OperandsOf(code);
    const auto missing = needed - static_cast<std::int64_t>(operands.left);
    if (needed < 0) {
      operands.unknown_operators += compatible_ == 0 ? 1 : 0;
    } else if (missing > 0 && operands.has_operator) {
      operands.is_missing = true;
    } else if (missing > 0) {
      operands.missing_first = static_cast<std::size_t>(missing);
    }
    operands.has_operator = true;
    operands.left = 0;
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
      case OperatorCode("BX"):
        ++compatible_;
        break;
      case OperatorCode("EX"):
        compatible_ -= compatible_ > 0 ? 1 : 0;
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
        AddOperand();
        SkipString();
        break;
      case '/':
        AddOperand();
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
          AddOperand();
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
    AddOperand();
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
    const std::size_t end = content_.find(')', position_);
    const std::string_view inside = content_.substr(position_, end - position_);
    if (end != std::string_view::npos && inside.find('(') == std::string_view::npos &&
        inside.find('\\') == std::string_view::npos) {
      position_ = end + 1;
    } else {
      SkipNestedString();
    }
  }

  void SkipNestedString() {
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
        is_image_cut = true;
      }
      return;
    }
  }

  std::string_view content_;
  std::size_t position_ = 0;
  std::string open_;
  bool lacks_image_data_ = false;  // a BI had no ID so far
  std::size_t compatible_ = 0;     // sections in which operators need not be known (BX)
  InlineImageMeasure images_;
  Arena arena_;
};

void ContentBalance::Operands::Append(const Operands& next) {
  unknown_operators =
      std::min(unknown_operators + next.unknown_operators, limits::kMaxCountedStates);
  if (!next.has_operator) {
    left += next.left;
    return;
  }
  const std::size_t missing = next.missing_first - std::min(left, next.missing_first);
  is_missing = is_missing || next.is_missing || (has_operator && missing > 0);
  missing_first = has_operator ? missing_first : missing;
  has_operator = true;
  left = next.left;
}

bool ContentBalance::stops_readers() const {
  return operands_.is_missing || operands_.missing_first > 0 || is_image_cut_ ||
         operands_.unknown_operators >= kManyUnknown;
}

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
  is_image_cut_ = next.is_image_cut_;
  operands_.Append(next.operands_);
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
  balance.is_image_cut_ = scanner.is_image_cut;
  balance.operands_ = scanner.operands;
  return balance;
}

}  // namespace TarnixTools::pdf
