// The pages of the three property sheets, one by one, for the list of forms.
#pragma once

#include "forms/form.h"

namespace torvane {

// Profile
extern const Form humanPage, equipPage, shiftPage, wheelPage, tyrePage, brakePage, lossPage, assistPage;
extern const Form predictWheelForm; // child of the wheel page
// Condition
extern const Form coursePage, pelotonPage;
// Preference
extern const Form physiologyPage, processIntervalPage, specificHeatPage, emittancePage, graphPage, initialValuesPage,
    gpsDataPage;

} // namespace torvane
