#pragma once
// The component's one source of the current date and time. Everything that shows or logs
// "now" or computes a date relative to today reads it here, so tests can fix it.
#include <optional>

#include "platform/core/date.h"

namespace cp {

// The current local date and time, to the whole second (or the fixed value, when set).
Date Now();
// Today's date, without time of day.
Date Today();
// Fixes what Now() returns; nullopt goes back to the system clock. For tests.
void SetFixedNow(std::optional<Date> fixed);

}  // namespace cp
