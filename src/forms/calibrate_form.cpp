// The dialog of calibration: rides with a power meter, where the meter sits, and the profile that is to keep what they
// teach.
#include "core/files.h"
#include "core/ride_choices.h"
#include "forms/dialogs.h"
#include "forms/output_rows.h"
#include "forms/prepare_rows.h"

namespace torvane {

namespace {

template <int32_t CalibrationOptions::*member>
double shown(const FormState& state, const Row&)
{
    return state.calibration.*member;
}

template <int32_t CalibrationOptions::*member>
void take(FormState& state, const Row&, int value)
{
    state.calibration.*member = value;
}

constexpr std::span<const char* const> meterPlaces = std::span(stageNames).first<meterPlaceCount>();

constexpr Row meterRow(int id)
{
    Row row = choiceRow(id, {"meterPlace", noField}, meterPlaces);
    row.shows = shown<&CalibrationOptions::meter>;
    row.takes = take<&CalibrationOptions::meter>;
    row.kept = true;
    return row;
}

constexpr Row asAngleRow(int id)
{
    Row row = checkRow(id, {"asAngle", noField});
    row.shows = shown<&CalibrationOptions::asAngle>;
    row.takes = take<&CalibrationOptions::asAngle>;
    return row;
}

constexpr Row temperatureRow(int id, int spin)
{
    return realRow(id, spin, TORVANE_FIELD(averageTemperature), {0, 50, 0.1}, "%5.1lf", "temperature", "Cel");
}

constexpr size_t gapLimit = toolSourceCount + 3, jumpSpeed = gapLimit + 1;

// The window has room for some of the rides that the console takes.
constexpr Row rows[] = {
    rideSourceRow(9711, 9721, "source", 0),
    rideSourceRow(9712, 9722, "source2", 1),
    rideSourceRow(9713, 9723, "source3", 2),
    rideSourceRow(0, 0, "source4", 3),
    rideSourceRow(0, 0, "source5", 4),
    rideSourceRow(0, 0, "source6", 5),
    rideSourceRow(0, 0, "source7", 6),
    rideSourceRow(0, 0, "source8", 7),
    rideSourceRow(0, 0, "source9", 8),
    rideSourceRow(0, 0, "source10", 9),
    rideSourceRow(0, 0, "source11", 10),
    rideSourceRow(0, 0, "source12", 11),
    destinationRow(9714, 9724, Browse::saveProfile),
    meterRow(9731),
    temperatureRow(9743, 9753),
    gapLimitRow(9741, 9751),
    jumpSpeedRow(9742, 9752),
    rideSportRow(9732),
    asAngleRow(9733),
};
static_assert(rows[gapLimit].kind == RowKind::whole && rows[jumpSpeed].kind == RowKind::real);
static_assert(rows[toolSourceCount].index == destinationPath);

void changed(FormState& state, const Row&)
{
    takeLimits(state, rows[gapLimit], rows[jumpSpeed]);
}

// What is in the rides their run tells.
Verdict check(FormState& state)
{
    Verdict verdict;
    for (size_t i = 0; i < toolSourceCount; ++i) {
        const std::string& path = state.inputs.files[i].path;
        bool named = !path.empty() || i == 0;
        if (named && !fileExists(path))
            return aboutPaths(state, {false, {{"error", "not existing a source file"}}, i});
    }
    if (!state.inputs.files[toolDestination].path.empty())
        verdict.passed = checkProfileDestination(state.inputs, verdict);
    return aboutPaths(state, std::move(verdict));
}

constexpr Form makeForm()
{
    Form form = keptForm(gpsForm(2097, "calibrate by rides with a power meter", "Calibrate", gpsOneStroke, rows), 3063);
    form.changed = changed;
    form.check = check;
    return form;
}

} // namespace

constinit const Form calibrateForm = makeForm();

} // namespace torvane
