#include "model/format.h"

#include <langinfo.h>
#include <locale.h>

#include <climits>
#include <ctime>
#include <optional>

namespace tsaw {
namespace {

struct NumericGrouping {
  std::string separator = ",";
  std::string sizes = "\3";  // as the C library gives it: one group size per char, the last repeats
};

NumericGrouping GroupingOf(const std::string& locale_name) {
  NumericGrouping grouping;
  locale_t locale = newlocale(LC_NUMERIC_MASK, locale_name.c_str(), static_cast<locale_t>(0));
  if (!locale) return grouping;
  const std::string separator = nl_langinfo_l(THOUSEP, locale);
  const std::string sizes = nl_langinfo_l(GROUPING, locale);
  freelocale(locale);
  if (!separator.empty() && !sizes.empty() && sizes[0] > 0 && sizes[0] != CHAR_MAX) {
    grouping.separator = separator;
    grouping.sizes = sizes;
  }
  return grouping;
}

std::optional<std::tm> CalendarTime(const platform::ClockReading& reading) {
  std::tm calendar{};
  const bool converted = reading.Utc ? gmtime_r(&reading.Seconds, &calendar) != nullptr
                                     : localtime_r(&reading.Seconds, &calendar) != nullptr;
  if (!converted) return std::nullopt;
  return calendar;
}

std::string FormatCalendar(const platform::ClockReading& reading, const char* format,
                           const std::string& locale_name) {
  const auto calendar = CalendarTime(reading);
  if (!calendar) return "";
  locale_t locale = newlocale(LC_TIME_MASK, locale_name.c_str(), static_cast<locale_t>(0));
  if (!locale) locale = newlocale(LC_TIME_MASK, "C", static_cast<locale_t>(0));
  char buffer[256];
  const size_t length = locale ? strftime_l(buffer, sizeof buffer, format, &*calendar, locale) : 0;
  if (locale) freelocale(locale);
  return std::string(buffer, length);
}

}  // namespace

std::string FormatCount(int64_t count, const std::string& locale_name) {
  const NumericGrouping grouping = GroupingOf(locale_name);
  // Through the unsigned magnitude, so that the lowest int64 has a positive form too.
  const uint64_t magnitude = count < 0 ? 0 - static_cast<uint64_t>(count) : static_cast<uint64_t>(count);
  const std::string digits = std::to_string(magnitude);
  std::string grouped;
  size_t size_index = 0;
  size_t in_group = 0;
  for (size_t i = digits.size(); i > 0; --i) {
    const int group_size = grouping.sizes[size_index];
    if (group_size > 0 && group_size != CHAR_MAX && in_group == static_cast<size_t>(group_size)) {
      grouped.insert(0, grouping.separator);
      in_group = 0;
      if (size_index + 1 < grouping.sizes.size()) ++size_index;
    }
    grouped.insert(grouped.begin(), digits[i - 1]);
    ++in_group;
  }
  return count < 0 ? "-" + grouped : grouped;
}

std::string FormatShortDate(const platform::ClockReading& reading, const std::string& locale_name) {
  return FormatCalendar(reading, "%x", locale_name);
}

std::string FormatTime(const platform::ClockReading& reading, const std::string& locale_name) {
  return FormatCalendar(reading, "%X", locale_name);
}

std::string FormatYear(const platform::ClockReading& reading) {
  const auto calendar = CalendarTime(reading);
  return calendar ? std::to_string(calendar->tm_year + 1900) : "";
}

}  // namespace tsaw
