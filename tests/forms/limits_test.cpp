// Every numeric entry of every form at its limits and one step beyond, against a table of its own.
#include "form_fixture.h"

#include "core/text.h"

#include <set>
#include <utility>
#include <vector>

namespace torvane {

namespace {

struct Choice {
    int id, value;
};

struct Limits {
    int form, id;
    double least, most;
    const char* name;               // completes the common messages; or
    const char* tooSmall = nullptr; // a whole message
    const char* tooLarge = nullptr;
    std::vector<Choice> choices = {}; // that bring the entry into view
    double beyond = 0.001;
    bool mostBinds = true;
};

constexpr const char* smallTooth = "found too small tooth of chainring";
constexpr const char* largeTooth = "found too large tooth of chainring";
constexpr const char* smallSprocket = "found too small tooth of sprockets";
constexpr const char* largeSprocket = "found too large tooth of sprockets";

Limits whole(int form, int id, double least, double most, const char* name, std::vector<Choice> choices = {})
{
    return {form, id, least, most, name, nullptr, nullptr, std::move(choices), 1};
}

Limits wholeText(int form, int id, double least, double most, const char* tooSmall, const char* tooLarge)
{
    return {form, id, least, most, nullptr, tooSmall, tooLarge, {}, 1};
}

Limits own(int form, int id, double least, double most, const char* tooSmall, const char* tooLarge,
           bool mostBinds = true)
{
    return {form, id, least, most, nullptr, tooSmall, tooLarge, {}, 0.001, mostBinds};
}

std::vector<Limits> pageLimits()
{
    std::vector<Limits> limits = {
        {1001, 1111, 100, 250, "a human height"},
        {1001, 1112, 30, 200, "a human weight"},
        {1001, 1113, 0, 90, "a torso angle", nullptr, nullptr, {{1131, 0}}},
        {1001, 1114, 30, 300, "a usual cadence"},
        {1001, 1115, 30, 300, "a maximum cadence"},
        {1001, 1116, 30, 300, "a shift-up cadence"},
        {1001, 1117, 30, 300, "a shift-down cadence"},
        {1001, 1118, 100, 700, "an expected cadence"},
        {1002, 1241, 5, 30, "an equipment weight"},
        {1002, 1242, 0.3, 1, "a shell air ratio"},
        {1003, 1311, 0, 1, "a shifting time loss"},
        {1003, 1312, 100, 200, "a crank length"},
        wholeText(1003, 1321, 1, 3, "found too small value of chainring count",
                  "found too large value of chainring count"),
        wholeText(1003, 1322, 28, 70, smallTooth, largeTooth),
        wholeText(1003, 1323, 28, 70, smallTooth, largeTooth),
        wholeText(1003, 1325, 1, 15, "found too small value of sprockets count",
                  "found too large value of sprockets count"),
        wholeText(1004, 1421, 10, 30, "found too small inches of a wheel", "found too large inches of a wheel"),
        wholeText(1004, 1422, 10, 30, "found too small inches of a wheel", "found too large inches of a wheel"),
        {1004, 1423, 250, 2500, "a wheel weight"},
        {1004, 1426, 250, 2500, "a wheel weight"},
        {1004, 1424, 10, 70, "a case of wheel regist"},
        {1004, 1427, 10, 70, "a case of wheel regist"},
        {1004, 1425, 40, 50, "a case of velocity"},
        {1004, 1428, 40, 50, "a case of velocity"},
        whole(1450, 1451, 10, 300, "a rim depth"),
        whole(1450, 1452, 3, 36, "a spoke count"),
        whole(1450, 1453, 1970, 2100, "a model year"),
        {1005, 1511, 18, 50, "a tyre size"},
        {1005, 1515, 18, 50, "a tyre size"},
        {1005, 1512, 100, 700, "a tyre weight"},
        {1005, 1516, 100, 700, "a tyre weight"},
        {1005, 1513, 0.001, 0.01, "a tyre rolling coefficient"},
        {1005, 1517, 0.001, 0.01, "a tyre rolling coefficient"},
        {1005, 1514, 0.4, 1.1, "a tyre friction coefficient"},
        {1005, 1518, 0.4, 1.1, "a tyre friction coefficient"},
        {1007, 1711, 0, 15, "loss of a shell"},
        {1007, 1712, 10, 300, "torque of a case for a shell"},
        {1007, 1713, 0, 15, "loss of a mission"},
        {1007, 1714, 0, 15, "loss of a wheel"},
        {1007, 1715, 10, 300, "torque of a case for a wheel"},
        own(1008, 1831, 0, 9999, "found illegal maximum e-Power value", "found illegal maximum e-Power value"),
        own(1008, 1832, 0, 100, "found too small speed of range 0", "found too large speed of range 0"),
        own(1008, 1833, 0, 10, "found too small ratio of range 0", "found too large ratio of range 0"),
        own(1008, 1834, 0, 100, "found too small speed of range 1", "found too large speed of range 1"),
        own(1008, 1835, 0, 10, "found too small ratio of range 1", "found too large ratio of range 1"),
        own(1008, 1836, 0, 100, "found too small speed of range 2", "found too large speed of range 2"),
        own(1008, 1837, 0, 10, "found too small ratio of range 2", "found too large ratio of range 2"),
        {1011, 1921, -30, 30, "a wind speed"},
        {1011, 1922, -100, 10000, "altitude"},
        {1011, 1923, -50, 50, "temperature"},
        {1011, 1924, 0, 1500, "hecto pascal", nullptr, nullptr, {{1911, 1}}},
        wholeText(1011, 1925, 40, 100, "found too small value of the BPN", "found too large value of the BPN"),
        {1012, 11951, 0.3, 1, "air ratio in a peloton"},
        {1012, 11952, 30, 100, "velocity of a peloton"},
        whole(1012, 11953, 2, 100, "a number of a peloton"),
        whole(1012, 11954, 5, 300, "a distance of wheels"),
        own(2001, 2121, 0.1, 0.5, "found too small value of an energy efficiency",
            "found too large value of an energy efficiency"),
        own(2002, 2221, 0.01, 0.1, "found too small value of a recording interval",
            "found too large value of a recording interval"),
        own(2002, 2222, 0.01, 0.1, "found too small value of a recording interval",
            "found too large value of a recording interval"),
        own(2007, 2721, 0, 20, "found too small value of the speed", nullptr, false),
        own(2007, 2722, 0, 5000, "found too small value as the threshold power", nullptr, false),
    };
    for (int id : {2311, 2312, 2313})
        limits.push_back(own(2003, id, 0.1, 1, "found too small value of a specific heat",
                             "found too large value of a specific heat"));
    for (int id : {2411, 2412, 2413})
        limits.push_back(
            own(2004, id, 0.1, 1, "found too small value of an emittance", "found too large value of an emittance"));
    for (int id = 1326; id <= 1336; ++id)
        limits.push_back(wholeText(1003, id, 8, 40, smallSprocket, largeSprocket));
    for (int type : {0, 1})
        for (int wheel : {0, 1}) {
            Choice brake = {wheel == 0 ? 1611 : 1613, type};
            limits.push_back({1006, 1641 + 2 * wheel, 50, 700, "a brake weight", nullptr, nullptr, {brake}});
            limits.push_back({1006, 1642 + 2 * wheel, 10, 300, "a brake surface size", nullptr, nullptr, {brake}});
        }
    return limits;
}

Limits chosen(int form, int id, double least, double most, const char* name, Choice choice)
{
    return {form, id, least, most, name, nullptr, nullptr, {choice}};
}

std::vector<Limits> dialogLimits()
{
    std::vector<Limits> limits = {
        chosen(2011, 4121, 30, 300, "a cadence", {4111, 1}),
        chosen(2011, 4122, 0, 3000, "a power", {4111, 3}),
        chosen(2011, 4123, 30, 300, "a cadence powered maximum", {4111, 1}),
        chosen(2011, 4124, 0, 3000, "a maximum power", {4111, 1}),
        {2011, 4125, -100, 100, "an inclination"},
        {2012, 4221, 30, 300, "a cadence"},
        {2012, 4222, 0, 3000, "a power"},
        {2012, 4223, 0, 300, "a torque"},
        {2012, 4224, 0, 300, "a force"},
        {2012, 4225, -100, 100, "an inclination"},
        {2013, 4321, 30, 300, "a cadence"},
        {2013, 4322, 0, 200, "a velocity"},
        {2013, 4323, -100, 100, "an inclination"},
        whole(2013, 4324, 28, 70, "a front tooth"),
        whole(2013, 4325, 8, 40, "a rear tooth"),
        {2021, 5131, 0, 3000, "a power"},
        {2021, 5132, 0, 200, "a velocity"},
        {2021, 5133, -100, 100, "an inclination"},
        whole(2021, 5134, 0, 1000, "a time", {{5121, 0}}),
        whole(2021, 5135, 0, 1000, "a time", {{5121, 0}}),
        whole(2021, 5134, 0, 1000, "a distance", {{5121, 1}}),
        whole(2021, 5135, 0, 1000, "a distance", {{5121, 1}}),
        chosen(2022, 5241, 0, 3000, "a power", {5211, 0}),
        chosen(2022, 5241, 0, 3000, "a power", {5211, 1}),
        chosen(2022, 5241, 0, 1000, "a leg time", {5211, 4}),
        chosen(2022, 5241, 0, 100000, "a distance", {5211, 5}),
        chosen(2022, 5241, 0, 10, "an accele", {5211, 6}),
        chosen(2022, 5241, 0, 1.2, "a gravity", {5211, 7}),
        chosen(2022, 5241, 0, 3000, "a power", {5211, 8}),
        {2022, 5242, 0, 200, "a starting velocity"},
        {2022, 5243, 0, 200, "a ending velocity"},
        {2022, 5244, 0.1, 1, "an initial kick time"},
        {2022, 5245, -100, 100, "an inclination"},
        chosen(2023, 5341, -15000, 3000, "a power", {5311, 0}),
        chosen(2023, 5341, -15000, 3000, "a power", {5311, 1}),
        chosen(2023, 5341, 0, 1000, "a leg time", {5311, 3}),
        chosen(2023, 5341, 0, 100000, "a distance", {5311, 4}),
        chosen(2023, 5341, -10, 10, "an accele", {5311, 5}),
        chosen(2023, 5341, -1.2, 1.2, "a gravity", {5311, 6}),
        chosen(2023, 5341, -15000, 3000, "a power", {5311, 7}),
        {2023, 5342, 0, 200, "a starting velocity"},
        {2023, 5343, 0, 200, "a ending velocity"},
        {2023, 5344, -100, 100, "an inclination"},
        {2024, 5431, -100, 0, "a force"},
        {2024, 5432, 0, 200, "a starting velocity"},
        {2024, 5433, 0, 200, "a ending velocity"},
        {2024, 5434, 0, 100000, "an interval distance"},
        {2024, 5435, 0, 100000, "a total distance"},
        {2025, 5531, 0, 200, "a velocity"},
        {2025, 5532, -100, 100, "an inclination"},
        {2025, 5533, 0, 200, "a velocity"},
        {2025, 5534, 0, 100000, "a distance"},
        {2025, 5535, 0, 1000, "a leg time"},
        {2026, 5621, 0, 200, "a velocity"},
        {2026, 5622, 0, 1000, "a corner radius"},
        {2026, 5623, 0, 0.5, "a friction safty margin"},
        {2052, 6131, 1, 100, "unreal inclination"},
        {2052, 6132, 0.5, 5, "unreal acceleration"},
        {2053, 7131, 1, 100, "unreal inclination"},
        {2053, 7132, 0.5, 5, "unreal acceleration"},
        {2053, 7133, 0, 30, "wind speed"},
        whole(2053, 7151, 0, 359, "wind direction"),
        {2053, 7134, 0, 50, "temperature"},
    };
    for (int pattern = 0; pattern < 4; ++pattern)
        limits.push_back(chosen(2024, 5436, -100, 100, "an inclination", {5411, pattern}));
    return limits;
}

std::string typed(double value)
{
    return formatText("%.10g", value);
}

// Message after typing the value into a form opened anew.
std::string answerTo(const Limits& limits, double value)
{
    OpenForm form(limits.form);
    for (const Choice& choice : limits.choices)
        form.pick(choice.id, choice.value);
    return form.type(limits.id, typed(value)).confirm();
}

std::string expected(const Limits& limits, const char* wholeMessage, const char* frame)
{
    return wholeMessage ? wholeMessage : std::string(frame) + limits.name;
}

void walk(const std::vector<Limits>& table)
{
    for (const Limits& limits : table) {
        SCOPED_TRACE(formatText("form %d, control %d", limits.form, limits.id));
        EXPECT_EQ(answerTo(limits, limits.least), "");
        EXPECT_EQ(answerTo(limits, limits.most), "");
        EXPECT_EQ(answerTo(limits, limits.least - limits.beyond),
                  expected(limits, limits.tooSmall, "found too small value of "));
        EXPECT_EQ(answerTo(limits, limits.most + limits.beyond),
                  limits.mostBinds ? expected(limits, limits.tooLarge, "found too large value of ") : "");
    }
}

} // namespace

TEST(FormLimits, HoldOnPages)
{
    walk(pageLimits());
}

TEST(FormLimits, HoldInDialogs)
{
    walk(dialogLimits());
}

// The tables above know every entry with a limit: the sprockets beyond the fitted ones, the third chainring, the other
// wheel's build, the offset in seconds, which has no control, and those of a dialog that asks for files are the only
// ones that they leave out.
TEST(FormLimits, LeaveNoEntryOut)
{
    std::set<std::pair<int, int>> known;
    for (const auto& table : {pageLimits(), dialogLimits()})
        for (const Limits& limits : table)
            known.insert({limits.form, limits.id});
    known.insert({{1003, 1324}, {2093, 9331}, {2093, 9332}});
    for (int id = 1337; id <= 1340; ++id)
        known.insert({1003, id});
    for (const Form* form : allForms())
        for (const Row& row : form->rows) {
            bool numeric = row.kind == RowKind::real || row.kind == RowKind::whole;
            if (numeric && row.id != 0 && (row.leastBinds || row.mostBinds)) {
                EXPECT_TRUE(known.contains({form->id, row.id})) << form->id << " " << row.id;
            }
        }
}

TEST(FormLimits, LetTextThatIsNoNumberReadAsAnEditBoxDoes)
{
    struct Case {
        const char* text;
        const char* message;
        double weight;
    };
    constexpr Case cases[] = {
        {"72,5", "", 72}, // as far as it is a number
        {"  71.5 kg", "", 71.5},
        {"", "found too small value of a human weight", 60},
        {"abc", "found too small value of a human weight", 60},
        {"nan", "found too small value of a human weight", 60},
        {"inf", "found too small value of a human weight", 60},
        {"1e999", "found too large value of a human weight", 60},
        {"-1e999", "found too small value of a human weight", 60},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        OpenForm form(1001);
        EXPECT_EQ(form.type(1112, c.text).confirm(), c.message);
        EXPECT_EQ(form.working.humanWeight, c.weight);
    }
    OpenForm teeth(1003);
    EXPECT_EQ(teeth.type(1322, "99999999999999999999").confirm(), largeTooth);
}

} // namespace torvane
