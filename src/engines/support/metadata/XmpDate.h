// Dates of XMP (ISO 16684-1, 8.2.1.2) and of the document information (ISO 32000-2, 7.9.4).
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPDATE_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPDATE_H_

#include <optional>
#include <string>
#include <string_view>

namespace TarnixTools::engines {

// What a date says. What it leaves out is as in the document information: the first month and day,
// midnight.
struct XmpDate {
  int year = 0;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
  std::optional<int> offset;  // of local time from UTC, in minutes; nothing: it is not known

  // Whether both name the same second. Local time counts as UTC.
  bool IsSameMoment(const XmpDate& other) const;
};

// "2016-02-01T13:19:21+01:00" and what is less exact; nullopt for what is no date.
std::optional<XmpDate> ReadXmpDate(std::string_view text);

// "D:20160201131921+01'00'" and what is less exact.
std::optional<XmpDate> ReadInfoDate(std::string_view text);

bool IsXmpDate(std::string_view text);

// As XMP has it, to the second.
std::string XmpDateText(const XmpDate& date);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPDATE_H_
