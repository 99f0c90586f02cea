// Profile pages "shift", "tyre", "brake" and "loss".
#include "core/choices.h"
#include "core/text.h"
#include "forms/pages.h"
#include "forms/rows.h"

namespace torvane {

namespace {

// Shift

bool isFittedChainring(const FormState& state, const Row& row)
{
    return row.index < state.values.chainringCount;
}

bool isFittedSprocket(const FormState& state, const Row& row)
{
    return row.index < state.values.sprocketCount;
}

constexpr Row chainringRow(int index, Field field)
{
    Row row = messages(wholeRow(1322 + index, 1362 + index, field, {28, 70}, nullptr),
                       "found too small tooth of chainring", "found too large tooth of chainring");
    return checkedWhen(enabledWhen(numbered(row, index), isFittedChainring), isFittedChainring);
}

constexpr Row sprocketRow(int index, Field field)
{
    Row row = messages(wholeRow(1326 + index, 1366 + index, field, {8, 40}, nullptr),
                       "found too small tooth of sprockets", "found too large tooth of sprockets");
    return checkedWhen(enabledWhen(numbered(row, index), isFittedSprocket), isFittedSprocket);
}

constexpr Row shiftRows[] = {
    realRow(1311, 1351, TORVANE_FIELD(shiftTimeLoss), {0, 1, 0.1}, "%5.3lf", "a shifting time loss", "sec"),
    realRow(1312, 1352, TORVANE_FIELD(crankLength), {100, 200}, "%5.1lf", "a crank length", "mm"),
    messages(wholeRow(1321, 1361, TORVANE_FIELD(chainringCount), {1, 3}, nullptr),
             "found too small value of chainring count", "found too large value of chainring count"),
    chainringRow(0, TORVANE_FIELD(chainring[0])),
    chainringRow(1, TORVANE_FIELD(chainring[1])),
    chainringRow(2, TORVANE_FIELD(chainring[2])),
    messages(wholeRow(1325, 1365, TORVANE_FIELD(sprocketCount), {1, 15}, nullptr),
             "found too small value of sprockets count", "found too large value of sprockets count"),
    sprocketRow(0, TORVANE_FIELD(sprocket[0])),
    sprocketRow(1, TORVANE_FIELD(sprocket[1])),
    sprocketRow(2, TORVANE_FIELD(sprocket[2])),
    sprocketRow(3, TORVANE_FIELD(sprocket[3])),
    sprocketRow(4, TORVANE_FIELD(sprocket[4])),
    sprocketRow(5, TORVANE_FIELD(sprocket[5])),
    sprocketRow(6, TORVANE_FIELD(sprocket[6])),
    sprocketRow(7, TORVANE_FIELD(sprocket[7])),
    sprocketRow(8, TORVANE_FIELD(sprocket[8])),
    sprocketRow(9, TORVANE_FIELD(sprocket[9])),
    sprocketRow(10, TORVANE_FIELD(sprocket[10])),
    sprocketRow(11, TORVANE_FIELD(sprocket[11])),
    sprocketRow(12, TORVANE_FIELD(sprocket[12])),
    sprocketRow(13, TORVANE_FIELD(sprocket[13])),
    sprocketRow(14, TORVANE_FIELD(sprocket[14])),
};

// Tyre

constexpr Row tyreSizeRow(int id, Field field)
{
    return realRow(id, id + 10, field, {18, 50}, "%5.1lf", "a tyre size", "mm");
}

constexpr Row tyreWeightRow(int id, Field field)
{
    return realRow(id, id + 10, field, {100, 700}, "%5.1lf", "a tyre weight", "g");
}

constexpr Row rollingRow(int id, Field field)
{
    return realRow(id, id + 10, field, {0.001, 0.01, 0.001}, "%5.3lf", "a tyre rolling coefficient");
}

constexpr Row frictionRow(int id, Field field)
{
    return realRow(id, id + 10, field, {0.4, 1.1, 0.1}, "%5.1lf", "a tyre friction coefficient");
}

constexpr Row tyreRows[] = {
    tyreSizeRow(1511, TORVANE_FIELD(tyreSize[0])),
    tyreSizeRow(1515, TORVANE_FIELD(tyreSize[1])),
    tyreWeightRow(1512, TORVANE_FIELD(tyreWeight[0])),
    tyreWeightRow(1516, TORVANE_FIELD(tyreWeight[1])),
    rollingRow(1513, TORVANE_FIELD(rollingCoefficient[0])),
    rollingRow(1517, TORVANE_FIELD(rollingCoefficient[1])),
    frictionRow(1514, TORVANE_FIELD(frictionCoefficient[0])),
    frictionRow(1518, TORVANE_FIELD(frictionCoefficient[1])),
};

// Brake. A wheel shows the entries of its selected type; the others stay as they are in the block.

constexpr int frontBrakeButtons[] = {1611, 1612};
constexpr int rearBrakeButtons[] = {1613, 1614};

constexpr int brakeEntry(int type, int wheel)
{
    return type * wheelCount + wheel;
}

bool isSelectedBrake(const FormState& state, const Row& row)
{
    return state.values.brakeType[row.index % wheelCount] == row.index / wheelCount;
}

constexpr Row brakeWeightRow(int type, int wheel, Field field)
{
    int id = 1641 + 2 * wheel;
    Row row = realRow(id, id + 10, field, {50, 700}, "%5.1lf", "a brake weight", "g");
    return presentWhen(numbered(row, brakeEntry(type, wheel)), isSelectedBrake);
}

constexpr Row brakeSizeRow(int type, int wheel, Field field)
{
    int id = 1642 + 2 * wheel;
    Row row = realRow(id, id + 10, field, {10, 300}, "%5.1lf", "a brake surface size", "mm");
    return presentWhen(numbered(row, brakeEntry(type, wheel)), isSelectedBrake);
}

constexpr Row brakeMaterialRow(int type, int wheel, Field field)
{
    Row row = choiceRow(1621 + wheel, field, brakeMaterialNames);
    return presentWhen(numbered(row, brakeEntry(type, wheel)), isSelectedBrake);
}

std::string brakeWeightLabel(const FormState& state, const Row& row)
{
    return state.values.brakeType[row.index] == brakeRim ? "rim weight" : "rotor weight";
}

std::string brakeSizeLabel(const FormState& state, const Row& row)
{
    return state.values.brakeType[row.index] == brakeRim ? "rim depth" : "rotor diameter";
}

constexpr Row brakeRows[] = {
    radioRow(frontBrakeButtons, TORVANE_FIELD(brakeType[0]), brakeTypeNames),
    radioRow(rearBrakeButtons, TORVANE_FIELD(brakeType[1]), brakeTypeNames),
    brakeMaterialRow(brakeRim, wheelFront, TORVANE_FIELD(brakeMaterial[0][0])),
    brakeMaterialRow(brakeDisc, wheelFront, TORVANE_FIELD(brakeMaterial[1][0])),
    brakeMaterialRow(brakeRim, wheelRear, TORVANE_FIELD(brakeMaterial[0][1])),
    brakeMaterialRow(brakeDisc, wheelRear, TORVANE_FIELD(brakeMaterial[1][1])),
    labelRow(1631, brakeWeightLabel, wheelFront),
    labelRow(1632, brakeWeightLabel, wheelRear),
    labelRow(1633, brakeSizeLabel, wheelFront),
    labelRow(1634, brakeSizeLabel, wheelRear),
    brakeWeightRow(brakeRim, wheelFront, TORVANE_FIELD(brakeWeight[0][0])),
    brakeWeightRow(brakeDisc, wheelFront, TORVANE_FIELD(brakeWeight[1][0])),
    brakeWeightRow(brakeRim, wheelRear, TORVANE_FIELD(brakeWeight[0][1])),
    brakeWeightRow(brakeDisc, wheelRear, TORVANE_FIELD(brakeWeight[1][1])),
    brakeSizeRow(brakeRim, wheelFront, TORVANE_FIELD(brakeSurfaceSize[0][0])),
    brakeSizeRow(brakeDisc, wheelFront, TORVANE_FIELD(brakeSurfaceSize[1][0])),
    brakeSizeRow(brakeRim, wheelRear, TORVANE_FIELD(brakeSurfaceSize[0][1])),
    brakeSizeRow(brakeDisc, wheelRear, TORVANE_FIELD(brakeSurfaceSize[1][1])),
};

// Loss

constexpr Range percents = {0, 15, 0.1};
constexpr Range torques = {10, 300};

constexpr Row lossRows[] = {
    realRow(1711, 1721, TORVANE_FIELD(shellLossPercent), percents, "%5.1lf", "loss of a shell", "%"),
    realRow(1712, 1722, TORVANE_FIELD(shellLossTorque), torques, "%5.1lf", "torque of a case for a shell", "Nm"),
    realRow(1713, 1723, TORVANE_FIELD(missionLossPercent), percents, "%5.1lf", "loss of a mission", "%"),
    realRow(1714, 1724, TORVANE_FIELD(wheelLossPercent), percents, "%5.1lf", "loss of a wheel", "%"),
    realRow(1715, 1725, TORVANE_FIELD(wheelLossTorque), torques, "%5.1lf", "torque of a case for a wheel", "Nm"),
};

} // namespace

constinit const Form shiftPage = pageForm(1003, "shift", pageShift, Marks::profile, shiftRows);
constinit const Form tyrePage = pageForm(1005, "tyre", pageTyre, Marks::profile, tyreRows);
constinit const Form brakePage = pageForm(1006, "brake", pageBrake, Marks::profile, brakeRows);
constinit const Form lossPage = pageForm(1007, "loss", pageLoss, Marks::profile, lossRows);

} // namespace torvane
