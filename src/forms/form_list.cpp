// Every form of the program, and which pages make a sheet.
#include "core/command_ids.h"
#include "forms/dialogs.h"
#include "forms/pages.h"

namespace torvane {

namespace {

constexpr const Form* profileSheet[] = {&humanPage, &equipPage, &shiftPage, &wheelPage,
                                        &tyrePage,  &brakePage, &lossPage,  &assistPage};
constexpr const Form* conditionSheet[] = {&coursePage, &pelotonPage};
constexpr const Form* preferenceSheet[] = {&physiologyPage, &processIntervalPage, &specificHeatPage, &emittancePage,
                                           &graphPage,      &initialValuesPage,   &gpsDataPage};

constexpr const Form* forms[] = {
    &humanPage,
    &equipPage,
    &shiftPage,
    &wheelPage,
    &tyrePage,
    &brakePage,
    &lossPage,
    &assistPage,
    &predictWheelForm,
    &coursePage,
    &pelotonPage,
    &physiologyPage,
    &processIntervalPage,
    &specificHeatPage,
    &emittancePage,
    &graphPage,
    &initialValuesPage,
    &gpsDataPage,
    &cadenceTheoryForm,
    &pedalingDynamicsForm,
    &gearCombinationForm,
    &powerVelocityForm,
    &accelerationForm,
    &decelerationForm,
    &patternBrakingForm,
    &inclinationForm,
    &corneringForm,
    &expressForm,
    &analyseForm,
    &createForm,
    &oneStrokeForm,
    &combineForm,
    &convertForm,
    &addForm,
    &divideForm,
    &excludeForm,
    &timestampForm,
    &dumpForm,
    &prepareForm,
};

} // namespace

const Form* findForm(int id)
{
    for (const Form* form : forms)
        if (form->id == id)
            return form;
    return nullptr;
}

std::span<const Form* const> allForms()
{
    return forms;
}

std::span<const Form* const> sheetPages(int command)
{
    switch (command) {
    case commandProfile:
        return profileSheet;
    case commandCondition:
        return conditionSheet;
    case commandPreference:
        return preferenceSheet;
    default:
        return {};
    }
}

} // namespace torvane
