// The ride in hand: taken out of a file's bytes, and put in order.
#pragma once

#include "command/session.h"
#include "fit/fit_image.h"
#include "torvane/calculator.h"

#include <optional>
#include <string>

namespace torvane::library {

Error noRide();

// Takes a ride in hand whose image was read with this code.
std::optional<Error> takeRide(Session& session, StatusCode read, FitImage&& image, const std::string& name,
                              Answer& answer);
// Puts the prepared one in the place of the ride in hand.
std::optional<Error> prepareInHand(Session& session, const Preparation& preparation, Answer& answer);

} // namespace torvane::library
