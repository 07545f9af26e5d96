// Entries of a dictionary as text, as far as they stay what they are.
//
//   std::string text = "<<";
//   AppendEntries(text, resources, {"XObject"});
//   text += "/XObject<<" + added + ">>>>";
#ifndef TARNIX_PDF_WRITE_ENTRYTEXT_H_
#define TARNIX_PDF_WRITE_ENTRYTEXT_H_

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

// Appends those whose keys are none of these; nothing for what is no dictionary.
void AppendEntries(std::string& out, const Object& dictionary,
                   std::span<const std::string_view> without);

inline void AppendEntries(std::string& out, const Object& dictionary,
                          std::initializer_list<std::string_view> without = {}) {
  AppendEntries(out, dictionary, std::span(without.begin(), without.size()));
}

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_ENTRYTEXT_H_
