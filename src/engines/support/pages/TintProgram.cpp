#include "engines/support/pages/TintProgram.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kMostSteps = 10'000;
constexpr std::size_t kMostDepth = 32;   // of blocks
constexpr std::size_t kMostStack = 100;  // numbers
constexpr double kDegrees = 57.29577951308232;

using Stack = std::vector<double>;

double Truth(bool is_true) {
  return is_true ? 1 : 0;
}

std::int64_t Whole(double number) {
  constexpr double kMost = 1e15;
  return static_cast<std::int64_t>(std::clamp(number, -kMost, kMost));
}

double Shifted(double number, double by) {
  const auto bits = static_cast<std::uint32_t>(Whole(number));
  const std::int64_t places = std::clamp<std::int64_t>(Whole(by), -31, 31);
  return static_cast<std::int32_t>(places >= 0 ? bits << places : bits >> -places);
}

// Takes numbers off the stack and puts one on it, for as many as it takes.
struct Operator {
  std::string_view name;
  int taken = 0;  // -1 for what moves numbers on the stack
  double (*compute)(double a, double b) = nullptr;
};

// Numbers and truth are not told apart: what is not 0 is true.
constexpr std::array<Operator, 40> kOperators = {{
    {"abs", 1, [](double a, double) { return std::abs(a); }},
    {"add", 2, [](double a, double b) { return a + b; }},
    {"and", 2, [](double a, double b) { return static_cast<double>(Whole(a) & Whole(b)); }},
    {"atan", 2,
     [](double a, double b) {
       const double degrees = std::atan2(a, b) * kDegrees;
       return degrees < 0 ? degrees + 360 : degrees;
     }},
    {"bitshift", 2, Shifted},
    {"ceiling", 1, [](double a, double) { return std::ceil(a); }},
    {"cos", 1, [](double a, double) { return std::cos(a / kDegrees); }},
    {"cvi", 1, [](double a, double) { return std::trunc(a); }},
    {"cvr", 1, [](double a, double) { return a; }},
    {"div", 2, [](double a, double b) { return b == 0 ? 0 : a / b; }},
    {"eq", 2, [](double a, double b) { return Truth(a == b); }},
    {"exp", 2, [](double a, double b) { return std::pow(a, b); }},
    {"false", 0, [](double, double) { return 0.0; }},
    {"floor", 1, [](double a, double) { return std::floor(a); }},
    {"ge", 2, [](double a, double b) { return Truth(a >= b); }},
    {"gt", 2, [](double a, double b) { return Truth(a > b); }},
    {"idiv", 2,
     [](double a, double b) {
       const std::int64_t whole = Whole(b) == 0 ? 0 : Whole(a) / Whole(b);
       return static_cast<double>(whole);
     }},
    {"le", 2, [](double a, double b) { return Truth(a <= b); }},
    {"ln", 1, [](double a, double) { return std::log(a); }},
    {"log", 1, [](double a, double) { return std::log10(a); }},
    {"lt", 2, [](double a, double b) { return Truth(a < b); }},
    {"mod", 2,
     [](double a, double b) {
       return Whole(b) == 0 ? 0 : static_cast<double>(Whole(a) % Whole(b));
     }},
    {"mul", 2, [](double a, double b) { return a * b; }},
    {"ne", 2, [](double a, double b) { return Truth(a != b); }},
    {"neg", 1, [](double a, double) { return -a; }},
    {"not", 1, [](double a, double) { return Truth(a == 0); }},
    {"or", 2, [](double a, double b) { return static_cast<double>(Whole(a) | Whole(b)); }},
    {"round", 1, [](double a, double) { return std::floor(a + 0.5); }},
    {"sin", 1, [](double a, double) { return std::sin(a / kDegrees); }},
    {"sqrt", 1, [](double a, double) { return std::sqrt(std::max(a, 0.0)); }},
    {"sub", 2, [](double a, double b) { return a - b; }},
    {"true", 0, [](double, double) { return 1.0; }},
    {"truncate", 1, [](double a, double) { return std::trunc(a); }},
    {"xor", 2, [](double a, double b) { return static_cast<double>(Whole(a) ^ Whole(b)); }},
    {"copy", -1},
    {"dup", -1},
    {"exch", -1},
    {"index", -1},
    {"pop", -1},
    {"roll", -1},
}};

// Takes a count off the stack; nothing where there are not so many numbers below it.
std::optional<std::size_t> TakeCount(Stack& stack, std::size_t extra) {
  if (stack.empty() || !(stack.back() >= 0)) {
    return std::nullopt;
  }
  const auto count = static_cast<std::size_t>(Whole(stack.back()));
  stack.pop_back();
  return count + extra <= stack.size() ? std::optional(count) : std::nullopt;
}

bool Roll(Stack& stack) {
  if (stack.size() < 2) {
    return false;
  }
  const std::int64_t by = Whole(stack.back());
  stack.pop_back();
  const auto count = TakeCount(stack, 0);
  if (!count || *count == 0) {
    return count.has_value();
  }
  const auto size = static_cast<std::int64_t>(*count);
  const std::int64_t up = (by % size + size) % size;
  std::rotate(stack.end() - size, stack.end() - up, stack.end());
  return true;
}

bool Move(std::string_view name, Stack& stack) {
  if (name == "roll") {
    return Roll(stack);
  }
  if (name == "copy") {
    const auto count = TakeCount(stack, 0);
    const std::size_t first = stack.size() - count.value_or(0);
    for (std::size_t i = 0; i < count.value_or(0); ++i) {
      stack.push_back(stack[first + i]);
    }
    return count.has_value();
  }
  if (name == "index") {
    const auto count = TakeCount(stack, 1);
    if (count) {
      stack.push_back(stack[stack.size() - 1 - *count]);
    }
    return count.has_value();
  }
  if (stack.size() < (name == "exch" ? 2U : 1U)) {
    return false;
  }
  if (name == "exch") {
    std::swap(stack[stack.size() - 1], stack[stack.size() - 2]);
  } else if (name == "dup") {
    stack.push_back(stack.back());
  } else {
    stack.pop_back();
  }
  return true;
}

bool Apply(const Operator& step, Stack& stack) {
  if (step.taken < 0) {
    return Move(step.name, stack);
  }
  const auto taken = static_cast<std::size_t>(step.taken);
  if (stack.size() < taken) {
    return false;
  }
  const double b = taken > 1 ? stack.back() : 0;
  const double a = taken > 0 ? stack[stack.size() - taken] : 0;
  stack.resize(stack.size() - taken);
  stack.push_back(step.compute(a, b));
  return std::isfinite(stack.back());
}

}  // namespace

// Takes a program apart; blocks within blocks are followed by a stack of those that are open.
class TintProgramReader {
 public:
  explicit TintProgramReader(std::string_view text) : text_(text) {}

  std::optional<TintProgram> Read();

 private:
  using Step = TintProgram::Step;
  using Kind = TintProgram::Kind;

  std::string_view Next();
  bool Add(std::string_view word);
  bool AddChoice(bool has_second);

  std::string_view text_;
  TintProgram program_;
  std::vector<std::size_t> open_;                 // blocks
  std::vector<std::vector<std::size_t>> closed_;  // in each of them, those that wait for a choice
};

// Empty at the end.
std::string_view TintProgramReader::Next() {
  constexpr std::string_view kSpaces("\0\t\n\f\r ", 6);
  constexpr std::string_view kEnds("\0\t\n\f\r {}%", 9);
  std::size_t first = text_.find_first_not_of(kSpaces);
  while (first != std::string_view::npos && text_[first] == '%') {
    text_.remove_prefix(std::min(text_.find_first_of("\r\n", first), text_.size()));
    first = text_.find_first_not_of(kSpaces);
  }
  if (first == std::string_view::npos) {
    return {};
  }
  const bool is_brace = text_[first] == '{' || text_[first] == '}';
  const std::size_t end = is_brace ? first + 1 : text_.find_first_of(kEnds, first);
  const std::string_view word = text_.substr(first, end - first);
  text_.remove_prefix(std::min(end, text_.size()));
  return word;
}

bool TintProgramReader::AddChoice(bool has_second) {
  std::vector<std::size_t>& blocks = closed_.back();
  if (blocks.size() != (has_second ? 2U : 1U)) {
    return false;
  }
  program_.blocks_[open_.back()].push_back(
      {.kind = Kind::kChoice, .first = blocks.front(), .second = has_second ? blocks.back() : 0});
  blocks.clear();
  return true;
}

bool TintProgramReader::Add(std::string_view word) {
  if (word == "if" || word == "ifelse") {
    return AddChoice(word == "ifelse");
  }
  if (!closed_.back().empty()) {
    return false;
  }
  const auto known = std::find_if(kOperators.begin(), kOperators.end(),
                                  [word](const Operator& own) { return own.name == word; });
  Step step;
  if (known != kOperators.end()) {
    step.kind = Kind::kOperator;
    step.code = static_cast<std::size_t>(known - kOperators.begin());
  } else {
    word.remove_prefix(word.starts_with('+') ? 1 : 0);
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), step.number);
    if (error != std::errc() || end != word.data() + word.size()) {
      return false;
    }
  }
  program_.blocks_[open_.back()].push_back(step);
  return true;
}

std::optional<TintProgram> TintProgramReader::Read() {
  if (Next() != "{") {
    return std::nullopt;
  }
  program_.blocks_.emplace_back();
  open_ = {0};
  closed_.emplace_back();
  while (!open_.empty()) {
    const std::string_view word = Next();
    if (word.empty() || ++program_.step_count_ > kMostSteps || open_.size() > kMostDepth) {
      return std::nullopt;
    }
    if (word == "{") {
      open_.push_back(program_.blocks_.size());
      closed_.emplace_back();
      program_.blocks_.emplace_back();
    } else if (word == "}") {
      if (!closed_.back().empty()) {
        return std::nullopt;
      }
      const std::size_t block = open_.back();
      open_.pop_back();
      closed_.pop_back();
      if (!closed_.empty()) {
        closed_.back().push_back(block);
      }
    } else if (!Add(word)) {
      return std::nullopt;
    }
  }
  return std::move(program_);
}

std::optional<TintProgram> TintProgram::Read(std::string_view text) {
  return TintProgramReader(text).Read();
}

// Blocks are within each other no deeper than was read.
bool TintProgram::RunBlock(std::size_t block, std::vector<double>& stack) const {
  for (const Step& step : blocks_[block]) {
    if (step.kind == Kind::kNumber) {
      stack.push_back(step.number);
    } else if (step.kind == Kind::kOperator) {
      if (!Apply(kOperators[step.code], stack)) {
        return false;
      }
    } else {
      if (stack.empty()) {
        return false;
      }
      const std::size_t chosen = stack.back() != 0 ? step.first : step.second;
      stack.pop_back();
      if (chosen != 0 && !RunBlock(chosen, stack)) {
        return false;
      }
    }
    if (stack.size() > kMostStack) {
      return false;
    }
  }
  return true;
}

std::vector<double> TintProgram::Run(std::span<const double> numbers) const {
  std::vector<double> stack(numbers.begin(), numbers.end());
  if (!RunBlock(0, stack)) {
    stack.clear();
  }
  return stack;
}

}  // namespace TarnixTools::engines
