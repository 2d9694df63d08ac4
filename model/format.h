#pragma once
// Numbers, dates and times in the user's locale, as the wizard shows them.

#include <cstdint>
#include <string>

#include "platform/clock.h"

namespace tsaw {

// A counter in the "%.0n" form: no decimals, thousands grouped with the separator of the locale
// `locale_name` ("" is the user's, from LC_ALL / LC_NUMERIC / LANG). When that locale cannot be
// loaded or groups nothing (as "C" and "POSIX" do), groups of three joined by "," are used.
std::string FormatCount(int64_t count, const std::string& locale_name = "");

// The short date (strftime's %x) and the time (%X) of a reading in the locale `locale_name`
// ("" is the user's LC_TIME; "C" when it cannot be loaded). A UTC reading is shown in UTC, any
// other in local time. Empty when the reading cannot be converted to a calendar time.
std::string FormatShortDate(const platform::ClockReading& reading, const std::string& locale_name = "");
std::string FormatTime(const platform::ClockReading& reading, const std::string& locale_name = "");
// The year of a reading as a decimal number ("2024"); empty as above.
std::string FormatYear(const platform::ClockReading& reading);

}  // namespace tsaw
