// Whether a record that came out of a file can be used: every number that a user can enter finite, every count and
// index inside its table, every text ended. Limits of entered values are no business of this: the forms have them.
#pragma once

#include "core/parameter_block.h"

namespace torvane {

bool isSound(const ParameterBlock& block);
bool isSound(const ModelState& state);

// Of what derives from the entries, or was left by the last run, whatever is no number becomes 0. It is derived anew,
// or overwritten by the next run, before anything reads it.
void settleLeftovers(ModelState& state);

} // namespace torvane
