// Every numeric entry of every form at its limits and one step beyond, against a table of its own.
#include "form_fixture.h"

#include "core/text.h"

#include <set>
#include <tuple>
#include <utility>

namespace torvane {

namespace {

struct Limits {
    int form, id;
    double least, most;
    int choice = 0, value = 0; // what brings the entry into view
    bool mostBinds = true;
};

// Form, first and last control of neighbours, limits.
constexpr double plain[][5] = {
    {1001, 1111, 1111, 100, 250},    {1001, 1112, 1112, 30, 200},   {1001, 1114, 1117, 30, 300},
    {1002, 1241, 1241, 5, 30},       {1002, 1242, 1242, 0.3, 1},    {1003, 1311, 1311, 0, 1},
    {1003, 1312, 1312, 100, 200},    {1003, 1321, 1321, 1, 3},      {1003, 1322, 1323, 28, 70},
    {1003, 1325, 1325, 1, 15},       {1003, 1326, 1336, 8, 40},     {1004, 1421, 1422, 10, 30},
    {1004, 1423, 1423, 250, 2500},   {1004, 1424, 1424, 10, 70},    {1004, 1425, 1425, 40, 50},
    {1004, 1426, 1426, 250, 2500},   {1004, 1427, 1427, 10, 70},    {1004, 1428, 1428, 40, 50},
    {1450, 1451, 1451, 10, 300},     {1450, 1452, 1452, 3, 36},     {1450, 1453, 1453, 1970, 2100},
    {1005, 1511, 1511, 18, 50},      {1005, 1512, 1512, 100, 700},  {1005, 1513, 1513, 0.001, 0.01},
    {1005, 1514, 1514, 0.4, 1.1},    {1005, 1515, 1515, 18, 50},    {1005, 1516, 1516, 100, 700},
    {1005, 1517, 1517, 0.001, 0.01}, {1005, 1518, 1518, 0.4, 1.1},  {1007, 1711, 1711, 0, 15},
    {1007, 1712, 1712, 10, 300},     {1007, 1713, 1714, 0, 15},     {1007, 1715, 1715, 10, 300},
    {1008, 1831, 1831, 0, 9999},     {1008, 1832, 1832, 0, 100},    {1008, 1833, 1833, 0, 10},
    {1008, 1834, 1834, 0, 100},      {1008, 1835, 1835, 0, 10},     {1008, 1836, 1836, 0, 100},
    {1008, 1837, 1837, 0, 10},       {1011, 1921, 1921, -30, 30},   {1011, 1922, 1922, -100, 10000},
    {1011, 1923, 1923, -50, 50},     {1011, 1925, 1925, 40, 100},   {1012, 11951, 11951, 0.3, 1},
    {1012, 11952, 11952, 30, 100},   {1012, 11953, 11953, 2, 100},  {1012, 11954, 11954, 5, 300},
    {2001, 2121, 2121, 0.1, 0.5},    {2002, 2221, 2222, 0.01, 0.1}, {2003, 2311, 2313, 0.1, 1},
    {2004, 2411, 2413, 0.1, 1},      {2011, 4125, 4125, -100, 100}, {2012, 4221, 4221, 30, 300},
    {2012, 4222, 4222, 0, 3000},     {2012, 4223, 4224, 0, 300},    {2012, 4225, 4225, -100, 100},
    {2013, 4321, 4321, 30, 300},     {2013, 4322, 4322, 0, 200},    {2013, 4323, 4323, -100, 100},
    {2021, 5131, 5131, 0, 3000},     {2021, 5132, 5132, 0, 200},    {2021, 5133, 5133, -100, 100},
    {2022, 5242, 5243, 0, 200},      {2022, 5244, 5244, 0.1, 1},    {2022, 5245, 5245, -100, 100},
    {2023, 5342, 5343, 0, 200},      {2023, 5344, 5344, -100, 100}, {2024, 5431, 5431, -100, 0},
    {2024, 5432, 5433, 0, 200},      {2024, 5434, 5435, 0, 100000}, {2025, 5531, 5531, 0, 200},
    {2025, 5532, 5532, -100, 100},   {2025, 5533, 5533, 0, 200},    {2025, 5534, 5534, 0, 100000},
    {2025, 5535, 5535, 0, 1000},     {2026, 5621, 5621, 0, 200},    {2026, 5622, 5622, 0, 1000},
    {2026, 5623, 5623, 0, 0.5},      {2052, 6131, 6131, 1, 100},    {2052, 6132, 6132, 0.5, 5},
    {2053, 7131, 7131, 1, 100},      {2053, 7132, 7132, 0.5, 5},    {2053, 7133, 7133, 0, 30},
    {2053, 7151, 7151, 0, 359},      {2053, 7134, 7134, 0, 50},     {2093, 9331, 9331, 1, 300},
    {2093, 9332, 9332, 10, 1000},    {2095, 9541, 9541, 1, 300},    {2095, 9542, 9542, 10, 1000},
    {2096, 9631, 9631, 20, 2000},    {2096, 9632, 9632, 1, 14400},  {2096, 9633, 9633, 10, 150},
    {2096, 9634, 9635, -30, 30},     {2096, 9636, 9638, 0, 300},    {2096, 9639, 9639, 0, 100},
    {2096, 9640, 9640, 100, 300},    {2096, 9641, 9641, 1, 100},    {2096, 9642, 9642, 0, 1000},
    {2096, 9643, 9643, 0, 30},       {2096, 9644, 9644, 0, 360},    {2096, 9645, 9645, 10, 150},
    {2096, 9646, 9646, 0.5, 10},     {2096, 9647, 9647, 0.3, 8},    {2096, 9648, 9648, 20, 80},
    {2097, 9741, 9741, 1, 300},      {2097, 9742, 9742, 10, 1000},  {2097, 9743, 9743, 0, 50},
};

// And what brings the entry into view.
constexpr double chosen[][6] = {
    {1001, 1113, 0, 90, 1131, 0},        {1006, 1641, 50, 700, 1611, 0},      {1006, 1641, 50, 700, 1611, 1},
    {1006, 1642, 10, 300, 1611, 0},      {1006, 1642, 10, 300, 1611, 1},      {1006, 1643, 50, 700, 1613, 0},
    {1006, 1643, 50, 700, 1613, 1},      {1006, 1644, 10, 300, 1613, 0},      {1006, 1644, 10, 300, 1613, 1},
    {1011, 1924, 0, 1500, 1911, 1},      {2013, 4324, 28, 70, 4341, 0},       {2013, 4325, 8, 40, 4341, 0},
    {2011, 4121, 30, 300, 4111, 1},      {2011, 4122, 0, 3000, 4111, 3},      {2011, 4123, 30, 300, 4111, 1},
    {2011, 4124, 0, 3000, 4111, 1},      {2021, 5134, 0, 1000, 5121, 0},      {2021, 5135, 0, 1000, 5121, 0},
    {2021, 5134, 0, 1000, 5121, 1},      {2021, 5135, 0, 1000, 5121, 1},      {2022, 5241, 0, 3000, 5211, 0},
    {2022, 5241, 0, 3000, 5211, 1},      {2022, 5241, 0, 1000, 5211, 4},      {2022, 5241, 0, 100000, 5211, 5},
    {2022, 5241, 0, 10, 5211, 6},        {2022, 5241, 0, 1.2, 5211, 7},       {2022, 5241, 0, 3000, 5211, 8},
    {2023, 5341, -15000, 3000, 5311, 0}, {2023, 5341, -15000, 3000, 5311, 1}, {2023, 5341, 0, 1000, 5311, 3},
    {2023, 5341, 0, 100000, 5311, 4},    {2023, 5341, -10, 10, 5311, 5},      {2023, 5341, -1.2, 1.2, 5311, 6},
    {2023, 5341, -15000, 3000, 5311, 7}, {2024, 5436, -100, 100, 5411, 0},    {2024, 5436, -100, 100, 5411, 1},
    {2024, 5436, -100, 100, 5411, 2},    {2024, 5436, -100, 100, 5411, 3},
};

std::vector<Limits> allLimits()
{
    std::vector<Limits> all = {{2007, 2721, 0, 20, 0, 0, false}, {2007, 2722, 0, 5000, 0, 0, false}};
    for (auto [form, first, last, least, most] : plain)
        for (int id = static_cast<int>(first); id <= static_cast<int>(last); ++id)
            all.push_back({static_cast<int>(form), id, least, most});
    for (auto [form, id, least, most, choice, value] : chosen)
        all.push_back({static_cast<int>(form), static_cast<int>(id), least, most, static_cast<int>(choice),
                       static_cast<int>(value)});
    return all;
}

// Message after typing the value into a form opened anew.
std::string answerTo(const Limits& limits, double value)
{
    OpenForm form(limits.form);
    if (limits.choice != 0)
        form.pick(limits.choice, limits.value);
    return form.type(limits.id, formatText("%.10g", value)).confirm();
}

} // namespace

TEST(FormLimits, HoldWhereTheyAre)
{
    for (const Limits& limits : allLimits()) {
        SCOPED_TRACE(formatText("form %d, control %d", limits.form, limits.id));
        double beyond = OpenForm(limits.form).at(limits.id).kind == RowKind::whole ? 1 : 0.001;
        if (limits.form < 2093) { // ask for files next
            EXPECT_EQ(answerTo(limits, limits.least), "");
            EXPECT_EQ(answerTo(limits, limits.most), "");
        }
        EXPECT_EQ(answerTo(limits, limits.least - beyond).substr(0, 6), "found ");
        EXPECT_EQ(answerTo(limits, limits.most + beyond).substr(0, 6), limits.mostBinds ? "found " : "");
    }
}

// But for sprockets beyond the fitted ones, the third chainring and an FTP not in use the table leaves no entry with a
// limit out.
TEST(FormLimits, LeaveNoEntryOut)
{
    std::set<std::pair<int, int>> known = {{1001, 1118}, {1003, 1324}, {1003, 1337},
                                           {1003, 1338}, {1003, 1339}, {1003, 1340}};
    for (const Limits& limits : allLimits())
        known.insert({limits.form, limits.id});
    for (const Form* form : allForms())
        for (const Row& row : form->rows) {
            bool numeric = row.kind == RowKind::real || row.kind == RowKind::whole;
            bool limited = numeric && row.id != 0 && (row.leastBinds || row.mostBinds);
            EXPECT_TRUE(!limited || known.contains({form->id, row.id})) << form->id << " " << row.id;
        }
}

TEST(FormLimits, LetTextThatIsNoNumberReadAsAnEditBoxDoes)
{
    constexpr std::tuple<const char*, const char*, double> cases[] = {
        {"72,5", "", 72}, // as far as it is a number
        {"  71.5 kg", "", 71.5},
        {"", "found too small value of a human weight", 60},
        {"abc", "found too small value of a human weight", 60},
        {"nan", "found too small value of a human weight", 60},
        {"1e999", "found too large value of a human weight", 60},
        {"-1e999", "found too small value of a human weight", 60},
    };
    for (const auto& [text, message, weight] : cases) {
        SCOPED_TRACE(text);
        OpenForm form(1001);
        EXPECT_EQ(form.type(1112, text).confirm(), message);
        EXPECT_EQ(form.working.humanWeight, weight);
    }
    EXPECT_EQ(OpenForm(1003).type(1322, "99999999999999999999").confirm(), "found too large tooth of chainring");
}

} // namespace torvane
