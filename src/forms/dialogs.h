// The dialogs, one by one, for the list of forms.
#pragma once

#include "forms/form.h"

namespace torvane {

extern const Form cadenceTheoryForm, pedalingDynamicsForm, gearCombinationForm;
extern const Form powerVelocityForm, accelerationForm, decelerationForm, patternBrakingForm, inclinationForm,
    corneringForm;
extern const Form expressForm, analyseForm, createForm, oneStrokeForm, rideAnswerForm, calibrateForm;
extern const Form planForm;
extern const Form combineForm, convertForm, addForm, divideForm, excludeForm, timestampForm, dumpForm, prepareForm;

} // namespace torvane
