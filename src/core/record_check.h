// Whether a record that came out of a file can be used: every number finite, every count and index inside its table,
// every text ended. Limits of entered values are no business of this: they are checked where they are entered.
#pragma once

#include "core/parameter_block.h"

namespace torvane {

bool isSound(const ParameterBlock& block);
bool isSound(const ModelState& state);

} // namespace torvane
