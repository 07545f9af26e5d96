#include "ValidationReport.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <tuple>

#include "PdfALevel.h"

namespace TarnixTools::cli {
namespace {

constexpr std::size_t kMostPlaces = 20;  // that are listed of one rule

constexpr std::string_view kStyle = R"(
:root{color-scheme:light dark;--ink:#1d2430;--paper:#fff;--soft:#5c6675;--line:#d9dee6;--bad:#b3261e;--good:#1b6e3c}
@media(prefers-color-scheme:dark){:root{--ink:#e6e9ef;--paper:#14181f;--soft:#a2acba;--line:#333b47;--bad:#ff8a80;--good:#7ddc9f}}
*{box-sizing:border-box}
body{margin:0 auto;max-width:60rem;padding:1.5rem 1rem;background:var(--paper);color:var(--ink);font:1rem/1.5 system-ui,sans-serif}
h1{font-size:1.4rem;margin:0 0 .2rem;overflow-wrap:anywhere}
h2{font-size:1.05rem;margin:0}
p{margin:.3rem 0}
section{margin-bottom:3rem}
.verdict{font-size:1.1rem;font-weight:600}
.yes{color:var(--good)}
.no{color:var(--bad)}
.soft{color:var(--soft)}
.rule{border-top:1px solid var(--line);padding:.9rem 0;break-inside:avoid}
.rule ul{margin:.3rem 0;padding-left:1.2rem;overflow-wrap:anywhere}
.pages{display:grid;grid-template-columns:repeat(auto-fill,minmax(15rem,1fr));gap:1.2rem;margin-top:1rem}
figure{margin:0;break-inside:avoid}
.sheet{position:relative;border:1px solid var(--line);background:#fff}
.sheet img{display:block;width:100%;height:auto}
.mark{position:absolute;border:2px solid #d11;background:rgba(255,40,40,.18);min-width:6px;min-height:6px}
.mark b{position:absolute;left:-2px;bottom:100%;background:#d11;color:#fff;font:600 .7rem/1.2 system-ui,sans-serif;padding:0 .25rem;white-space:nowrap}
@media print{:root{--ink:#000;--paper:#fff;--soft:#444;--line:#bbb;--bad:#900;--good:#060}body{max-width:none;padding:0;font-size:10pt}.pages{grid-template-columns:1fr 1fr}.mark,.mark b{print-color-adjust:exact;-webkit-print-color-adjust:exact}}
)";

std::string Escaped(std::string_view text) {
  std::string html;
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string Base64(std::string_view bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::string_view three = bytes.substr(i, 3);
    unsigned value = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      value = value << 8U | (k < three.size() ? static_cast<unsigned char>(three[k]) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      text += k <= three.size() ? kDigits[value >> (18 - 6 * k) & 0x3FU] : '=';
    }
  }
  return text;
}

std::string Counted(std::size_t count, const std::string& word) {
  return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

std::string Percent(double part, double whole) {
  char text[40];
  const double share = whole > 0 ? part / whole * 100 : 0;
  std::snprintf(text, sizeof text, "%.2f%%", std::clamp(share, 0.0, 100.0));
  return text;
}

std::string RuleName(const PdfFinding& finding) {
  return finding.clause + "-" + std::to_string(finding.test);
}

// Where a finding is: "page 3, object 12: font Helvetica".
std::string PlaceOf(const PdfFinding& finding) {
  std::string place;
  if (finding.page > 0) {
    place = "page " + std::to_string(finding.page);
  }
  if (finding.object > 0) {
    place += (place.empty() ? "object " : ", object ") + std::to_string(finding.object);
  }
  if (!finding.subject.empty()) {
    place += (place.empty() ? "" : ": ") + finding.subject;
  }
  return place;
}

std::string Verdict(const ValidatedFile& file) {
  const std::string level = "PDF/A-" + WordOfLevel(file.level);
  const std::string claim = WordOfLevel(file.claims);
  std::string html = "<p class=\"verdict ";
  html += file.is_valid ? "yes\">Valid " + level : "no\">Not valid " + level;
  html += "</p>\n<p class=\"soft\">";
  html += claim.empty() ? "The document does not claim to be PDF/A."
                        : "The document claims to be PDF/A-" + claim + ".";
  return html + "</p>\n";
}

using Findings = std::vector<PdfFinding>;

// One rule, with all that breaks it.
std::string Rule(Findings::const_iterator first, Findings::const_iterator last) {
  const auto count = static_cast<std::size_t>(last - first);
  std::string html = "<div class=\"rule\"><h2>" + Escaped(RuleName(*first)) + "</h2>\n<p>" +
                     Escaped(first->message) + "</p>\n";
  if (!first->cure.empty()) {
    html += "<p class=\"soft\">" + Escaped(first->cure) + "</p>\n";
  }
  html += "<p class=\"soft\">" + Counted(count, "finding") + "</p>\n<ul>\n";
  std::size_t listed = 0;
  for (auto finding = first; finding != last && listed < kMostPlaces; ++finding) {
    if (const std::string place = PlaceOf(*finding); !place.empty()) {
      html += "<li>" + Escaped(place) + "</li>\n";
      ++listed;
    }
  }
  if (count > listed && listed == kMostPlaces) {
    html += "<li>and " + std::to_string(count - listed) + " more</li>\n";
  }
  return html + "</ul></div>\n";
}

std::string Rules(const Findings& findings) {
  std::string html;
  for (auto first = findings.begin(); first != findings.end();) {
    const auto last = std::find_if(first, findings.end(), [&](const PdfFinding& finding) {
      return std::tie(finding.clause, finding.test) != std::tie(first->clause, first->test);
    });
    html += Rule(first, last);
    first = last;
  }
  return html;
}

// Adds a rule to a list of rules that has each of them once.
void AddRule(const std::string& rule, std::string& rules) {
  if ((", " + rules + ",").find(", " + rule + ",") == std::string::npos) {
    rules += (rules.empty() ? "" : ", ") + rule;
  }
}

// A place on a page, with the rules that are broken there.
struct Mark {
  const PdfFinding* finding;
  std::string rules;
};

bool IsAtPlaceOf(const PdfFinding& finding, const PdfFinding& other) {
  return std::tie(finding.left, finding.bottom, finding.right, finding.top) ==
         std::tie(other.left, other.bottom, other.right, other.top);
}

void AddMark(const PdfFinding& finding, std::vector<Mark>& marks) {
  auto mark = std::find_if(marks.begin(), marks.end(),
                           [&](const Mark& known) { return IsAtPlaceOf(finding, *known.finding); });
  if (mark == marks.end()) {
    mark = marks.insert(mark, {&finding, ""});
  }
  AddRule(RuleName(finding), mark->rules);
}

std::string ToHtml(const Mark& mark, PdfSize size) {
  const double width = size.GetWidth();
  const double height = size.GetHeight();
  const PdfFinding& finding = *mark.finding;
  return "<span class=\"mark\" style=\"left:" + Percent(finding.left, width) +
         ";top:" + Percent(height - finding.top, height) +
         ";width:" + Percent(finding.right - finding.left, width) +
         ";height:" + Percent(finding.top - finding.bottom, height) + "\"><b>" +
         Escaped(mark.rules) + "</b></span>";
}

std::string Page(int number, const PagePicture& picture, const Findings& findings) {
  const std::string name = "Page " + std::to_string(number);
  std::vector<Mark> marks;
  std::string rules;
  for (const PdfFinding& finding : findings) {
    if (finding.page == number) {
      AddRule(RuleName(finding), rules);
      if (finding.has_box) {
        AddMark(finding, marks);
      }
    }
  }
  std::string html = "<figure><div class=\"sheet\"><img alt=\"" + name +
                     "\" src=\"data:image/jpeg;base64," + Base64(picture.jpeg) + "\">";
  for (const Mark& mark : marks) {
    html += ToHtml(mark, picture.size);
  }
  return html + "</div><figcaption class=\"soft\">" + name + ": " + Escaped(rules) +
         "</figcaption></figure>\n";
}

std::string Section(const ValidatedFile& file) {
  std::string html = "<section>\n<h1>" + Escaped(file.path) + "</h1>\n" + Verdict(file);
  html += Rules(file.findings);
  if (!file.pictures.empty()) {
    html += "<div class=\"pages\">\n";
    for (const auto& [number, picture] : file.pictures) {
      html += Page(number, picture, file.findings);
    }
    html += "</div>\n";
  }
  if (!file.no_pictures.empty()) {
    html += "<p class=\"soft\">No pictures of the pages: " + Escaped(file.no_pictures) + "</p>\n";
  }
  return html + "</section>\n";
}

}  // namespace

std::string HtmlReport(const std::vector<ValidatedFile>& files) {
  std::string html =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<title>Validation of PDF/A</title>\n<style>" +
      std::string(kStyle) + "</style>\n</head>\n<body>\n";
  for (const ValidatedFile& file : files) {
    html += Section(file);
  }
  return html + "</body>\n</html>\n";
}

}  // namespace TarnixTools::cli
