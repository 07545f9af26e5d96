#include "engines/repair/checks/MendedContent.h"

#include <cstddef>
#include <vector>

#include "pdf/content/ContentBalance.h"
#include "pdf/content/ContentReader.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::Operation;
using pdf::OperatorCode;

// Says of operations, in their order, whether they stay.
class Selection {
 public:
  bool Takes(const Operation& operation) {
    if (!pdf::IsOperator(operation.code)) {
      return sections_ > 0;
    }
    return operation.operand_count >= static_cast<std::size_t>(pdf::OperandsOf(operation.code)) &&
           (operation.code != OperatorCode("BI") || !operation.image_data.empty()) &&
           Matches(operation.code);
  }

 private:
  // Whether what the operator closes is open.
  bool Matches(std::uint32_t code) {
    switch (code) {
      case OperatorCode("q"):
        ++saves_;
        return true;
      case OperatorCode("Q"):
        return Close(saves_);
      case OperatorCode("BMC"):
      case OperatorCode("BDC"):
        ++marks_;
        return true;
      case OperatorCode("EMC"):
        return Close(marks_);
      case OperatorCode("BT"):
        texts_ += texts_ == 0 ? 1 : 0;
        return true;
      case OperatorCode("ET"):
        return Close(texts_);
      case OperatorCode("BX"):
        ++sections_;
        return true;
      case OperatorCode("EX"):
        return Close(sections_);
      default:
        return true;
    }
  }

  static bool Close(std::size_t& open) {
    const bool is_open = open > 0;
    open -= is_open ? 1 : 0;
    return is_open;
  }

  std::size_t saves_ = 0;
  std::size_t marks_ = 0;
  std::size_t texts_ = 0;
  std::size_t sections_ = 0;  // of compatibility
};

// Arrays that begin in the operands and do not end there.
int OpenArrays(std::string_view operands) {
  int open = 0;
  pdf::Lexer lexer(operands, true);
  for (pdf::Token token = lexer.Next(); token.kind != pdf::Token::Kind::kEnd;
       token = lexer.Next()) {
    open += token.kind == pdf::Token::Kind::kArrayOpen ? 1 : 0;
    open -= token.kind == pdf::Token::Kind::kArrayClose ? 1 : 0;
  }
  return open;
}

// Writes operations of content, one segment after the other.
class Mender {
 public:
  void Add(std::string_view content) {
    pdf::ContentReader reader(content);
    Operation operation;
    while (reader.Next(operation)) {
      const int open = operation.code == OperatorCode("BI") ? 0 : OpenArrays(operation.operands);
      if (!held_.empty() && open < 0) {
        Join(operation);
      } else if (held_.empty() && open <= 0) {
        Take(operation, operation.operands);
      } else {
        held_.push_back(operation);
      }
      if (held_.size() > kMaxHeld) {
        Release();
      }
    }
    Release();
  }

  std::string Finish() {
    const std::string closing = pdf::MeasureBalance(mended_).closing();
    return closing.empty() ? mended_ : mended_ + closing + '\n';
  }

 private:
  // Operators that are looked through for the end of an array that one of them stands in.
  static constexpr std::size_t kMaxHeld = 1000;

  // The array goes on to here: what stands in it are operands, and no operators.
  void Join(const Operation& operation) {
    std::string operands;
    for (const Operation& held : held_) {
      operands += held.operands;
      operands += ' ';
    }
    operands += operation.operands;
    held_.clear();
    Operation joined = operation;
    ++joined.operand_count;  // the array
    Take(joined, operands);
  }

  // The array does not end: the operator behind its beginning lacks operands, the others do not.
  void Release() {
    for (std::size_t i = 1; i < held_.size(); ++i) {
      Take(held_[i], held_[i].operands);
    }
    held_.clear();
  }

  // Operands are written anew: between them may stand what is none.
  void Take(const Operation& operation, std::string_view operands) {
    if (!selection_.Takes(operation)) {
      return;
    }
    if (operation.code == OperatorCode("BI")) {
      mended_ += "BI";
      mended_ += operation.image_entries;
      mended_ += "\nID ";
      mended_ += operation.image_data;
      mended_ += "\nEI\n";
      return;
    }
    arena_.Reset();
    for (const pdf::Object& operand : pdf::ParseOperands(operands, arena_)) {
      pdf::AppendObject(mended_, operand);
    }
    pdf::AppendToken(mended_, operation.name);
    mended_ += '\n';
  }

  std::string mended_;
  std::vector<Operation> held_;  // from one on that stands in an array
  Selection selection_;
  pdf::Arena arena_;
};

}  // namespace

std::string MendedContent(std::string_view content) {
  return MendedContent(std::span(&content, 1));
}

// Operands may stand in one part and their operator in the next: parts are read together as long as
// none is cut.
std::string MendedContent(std::span<const std::string_view> parts) {
  Mender mender;
  std::string together;
  for (const std::string_view part : parts) {
    together += part;
    together += '\n';
    if (pdf::MeasureBalance(part).is_cut()) {
      mender.Add(together);
      together.clear();
    }
  }
  mender.Add(together);
  return mender.Finish();
}

}  // namespace TarnixTools::engines::repair
