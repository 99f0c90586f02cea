// Every form of the program, and which pages make a sheet.
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
    &humanPage,           &equipPage,         &shiftPage,           &wheelPage,         &tyrePage,
    &brakePage,           &lossPage,          &assistPage,          &predictWheelForm,  &coursePage,
    &pelotonPage,         &physiologyPage,    &processIntervalPage, &specificHeatPage,  &emittancePage,
    &graphPage,           &initialValuesPage, &gpsDataPage,         &cadenceTheoryForm, &pedalingDynamicsForm,
    &gearCombinationForm, &powerVelocityForm, &accelerationForm,    &decelerationForm,  &patternBrakingForm,
    &inclinationForm,     &corneringForm,     &expressForm,         &analyseForm,       &createForm,
    &oneStrokeForm,       &rideAnswerForm,    &combineForm,         &convertForm,       &addForm,
    &divideForm,          &excludeForm,       &timestampForm,       &dumpForm,          &prepareForm,
    &calibrateForm,       &planForm,
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

std::span<const Form* const> sheetPages(Sheet sheet)
{
    switch (sheet) {
    case Sheet::profile:
        return profileSheet;
    case Sheet::condition:
        return conditionSheet;
    case Sheet::preference:
        return preferenceSheet;
    case Sheet::none:
        break;
    }
    return {};
}

} // namespace torvane
