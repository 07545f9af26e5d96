#include "pdf/write/Serialize.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"
#include "pdf/syntax/HexText.h"

namespace TarnixTools::pdf {

namespace {

constexpr int kBoxDecimals = 6;  // finer than readers keep

}  // namespace

void AppendToken(std::string& out, std::string_view token) {
  // A slash at the end is an empty name.
  const bool may_run_on = !out.empty() && (IsRegular(out.back()) || out.back() == '/');
  if (may_run_on && !token.empty() && IsRegular(token.front())) {
    out += ' ';
  }
  out += token;
}

void AppendInteger(std::string& out, std::int64_t value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  AppendToken(out, {digits, static_cast<std::size_t>(end - digits)});
}

void AppendNumber(std::string& out, double value, int decimals) {
  constexpr double kMost = limits::kMaxCoordinate;
  const double bounded = std::isfinite(value) ? std::clamp(value, -kMost, kMost) : 0;
  char digits[32];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, bounded, std::chars_format::fixed, decimals)
          .ptr;
  std::string_view text(digits, static_cast<std::size_t>(end - digits));
  if (text.find('.') != std::string_view::npos) {
    text = text.substr(0, text.find_last_not_of('0') + 1);
    text.remove_suffix(text.back() == '.' ? 1 : 0);
  }
  std::string number = text.starts_with('-') && text != "-0" ? "-" : "";
  text.remove_prefix(text.starts_with('-') ? 1 : 0);
  number += text.starts_with("0.") ? text.substr(1) : text;
  AppendToken(out, number);
}

void AppendBox(std::string& out, const Box& box) {
  out += '[';
  for (const double value : {box.left, box.bottom, box.right, box.top}) {
    AppendNumber(out, value, kBoxDecimals);
  }
  out += ']';
}

void AppendReference(std::string& out, std::uint32_t number, std::uint16_t generation) {
  AppendInteger(out, number);
  AppendInteger(out, generation);
  out += " R";
}

void AppendName(std::string& out, std::string_view name) {
  out += '/';
  const auto is_plain = [](char c) { return IsRegular(c) && c != '#' && c > 0x20 && c < 0x7f; };
  while (!name.empty()) {
    const auto end = std::find_if_not(name.begin(), name.end(), is_plain);
    const auto count = static_cast<std::size_t>(end - name.begin());
    out += name.substr(0, count);
    name.remove_prefix(count);
    if (!name.empty()) {
      out += '#';
      AppendHexByte(out, name.front());
      name.remove_prefix(1);
    }
  }
}

namespace {

std::size_t LiteralSize(std::string_view bytes) {
  std::size_t size = bytes.size() + 2;
  for (const char c : bytes) {
    size += c == '(' || c == ')' || c == '\\' || c == '\r' ? 1 : 0;
  }
  return size;
}

}  // namespace

void AppendString(std::string& out, std::string_view bytes, bool as_hex) {
  if (as_hex || LiteralSize(bytes) > 2 * bytes.size() + 2) {
    out += '<';
    for (const char c : bytes) {
      AppendHexByte(out, c);
    }
    out += '>';
    return;
  }
  out += '(';
  const auto is_plain = [](char c) { return c != '(' && c != ')' && c != '\\' && c != '\r'; };
  while (!bytes.empty()) {
    const auto end = std::find_if_not(bytes.begin(), bytes.end(), is_plain);
    const auto count = static_cast<std::size_t>(end - bytes.begin());
    out += bytes.substr(0, count);
    bytes.remove_prefix(count);
    if (!bytes.empty()) {
      out += '\\';
      out += bytes.front() == '\r' ? 'r' : bytes.front();  // as it is, it would be a line feed
      bytes.remove_prefix(1);
    }
  }
  out += ')';
}

namespace {

void AppendScalar(std::string& out, const Object& value, const SerializeHooks& hooks) {
  switch (value.kind()) {
    case Object::Kind::kBoolean:
      AppendToken(out, value.BooleanOr(false) ? "true" : "false");
      break;
    case Object::Kind::kInteger:
      AppendInteger(out, value.IntegerOr(0));
      break;
    case Object::Kind::kReal:
      if (hooks.real) {
        hooks.real(out, value.Text());
      } else {
        AppendToken(out, value.Text());
      }
      break;
    case Object::Kind::kName:
      AppendName(out, value.Text());
      break;
    case Object::Kind::kString:
      if (hooks.strings != nullptr) {
        std::string bytes(value.Text());
        hooks.strings->Apply(bytes);
        AppendString(out, bytes, true);
      } else {
        AppendString(out, value.Text(), value.is_hex());
      }
      break;
    case Object::Kind::kReference:
      if (hooks.reference) {
        hooks.reference(out, value.AsReference());
      } else {
        AppendReference(out, value.AsReference().number, value.AsReference().generation);
      }
      break;
    default:
      AppendToken(out, "null");
      break;
  }
}

bool IsLeftOut(const Object& value, const SerializeHooks& hooks) {
  return hooks.leaves_out && value.IsReference() && hooks.leaves_out(value.AsReference());
}

}  // namespace

void AppendObject(std::string& out, const Object& value, const SerializeHooks& hooks) {
  struct Open {
    Object container;
    std::size_t next = 0;
  };

  std::vector<Open> open;
  const auto begin = [&](const Object& v) {
    if (v.IsArray() || v.IsDictionary()) {
      out += v.IsArray() ? "[" : "<<";
      const bool is_chosen = v.IsDictionary() && hooks.entries;
      open.push_back({is_chosen ? Object::Dictionary(hooks.entries(v.Entries())) : v, 0});
    } else {
      AppendScalar(out, v, hooks);
    }
  };
  const auto begin_nested = [&](const Object& v) {
    const bool may_differ = hooks.nested && (v.IsArray() || v.IsDictionary());
    if (!may_differ || !hooks.nested(out, v)) {
      begin(v);
    }
  };
  begin(value);
  while (!open.empty()) {
    Open& top = open.back();
    if (top.container.IsArray()) {
      if (top.next == top.container.Items().size()) {
        out += ']';
        open.pop_back();
      } else if (const Object& item = top.container.Items()[top.next++]; !IsLeftOut(item, hooks)) {
        begin_nested(item);
      }
    } else if (top.next == top.container.Entries().size()) {
      out += ">>";
      open.pop_back();
    } else {
      const DictionaryEntry& entry = top.container.Entries()[top.next++];
      if (!IsLeftOut(entry.value, hooks)) {
        AppendName(out, entry.Key());
        begin_nested(entry.value);
      }
    }
  }
}

}  // namespace TarnixTools::pdf
