#include "model/model.h"

#include "model/derived.h"
#include "model/gear_table.h"
#include "model/resistance.h"

namespace torvane {

void rebuildModel(Model& model)
{
    computeDerived(model);
    buildGearTable(model);
    keepDragFactors(model);
}

Model modelOf(ParameterBlock& block)
{
    Model model;
    startModel(model.state, block);
    model.calibration = block.calibration;
    model.calibratesClassic = block.useCalibration != 0;
    rebuildModel(model);
    return model;
}

void keepEvaluation(ModelState& state, const Evaluation& evaluation)
{
    state.currentFrontTooth = evaluation.currentFrontTooth;
    state.currentRearTooth = evaluation.currentRearTooth;
    state.frontWeightRatio = evaluation.frontWeightRatio;
    state.rearWeightRatio = evaluation.rearWeightRatio;
    state.effectiveRolling = evaluation.effectiveRolling;
    state.effectiveFriction = evaluation.effectiveFriction;
    state.frontFrictionShare = evaluation.frontFrictionShare;
    state.rearFrictionShare = evaluation.rearFrictionShare;
}

} // namespace torvane
