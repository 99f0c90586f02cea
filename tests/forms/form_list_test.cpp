// What holds for every form: control ids, limits, defaults, the slot of its "save as default" box.
#include "form_fixture.h"

#include <cstring>
#include <map>
#include <set>

namespace torvane {

namespace {

bool shareControl(const Row& a, const Row& b)
{
    return a.id == b.id && a.present && b.present;
}

} // namespace

TEST(FormList, GivesEveryControlItsOwnId)
{
    std::set<int> forms;
    for (const Form* form : allForms()) {
        EXPECT_TRUE(forms.insert(form->id).second) << form->id;
        EXPECT_EQ(findForm(form->id), form);
        std::map<int, const Row*> controls;
        for (const Row& row : form->rows) {
            auto [found, fresh] = controls.insert({row.id, &row});
            EXPECT_TRUE(fresh || row.id == 0 || shareControl(*found->second, row)) << form->id << " " << row.id;
            for (size_t i = 1; i < row.radioIds.size(); ++i)
                EXPECT_TRUE(controls.insert({row.radioIds[i], &row}).second) << form->id << " " << row.radioIds[i];
            if (row.spin != 0 && fresh) {
                EXPECT_TRUE(controls.insert({row.spin, &row}).second) << form->id << " " << row.spin;
            }
            EXPECT_EQ(row.radioIds.size(), row.kind == RowKind::radio ? row.labels.size() : 0);
        }
    }
    EXPECT_EQ(findForm(9999), nullptr);
}

TEST(FormList, KeepsDefaultsInsideTheLimits)
{
    for (const Form* form : allForms()) {
        OpenForm open(form->id);
        for (const Row& row : form->rows) {
            if ((row.kind != RowKind::real && row.kind != RowKind::whole) || !isPresent(open.state, row))
                continue;
            EXPECT_LT(row.least, row.most) << form->id << " " << row.id;
            double value = shownValue(open.state, row);
            EXPECT_TRUE(value >= row.least && value <= row.most) << form->id << " " << row.id << " " << value;
        }
    }
}

// Opened and confirmed by the console with nothing typed, a form leaves every value as it is, to the last bit.
TEST(FormList, StoresNothingThatWasNotTyped)
{
    for (const Form* form : allForms()) {
        bool asksForFiles = form->id >= 2054 && form->id <= 2093;
        if (asksForFiles)
            continue;
        OpenForm open;
        open.working.initialValueMode = 1;
        open.working.rideVelocity[0] = 40 / 3.6 + 1e-9;
        open.working.torsoAngle = form->id == 1001 ? 30 : 31;
        fieldPresence.altitudeFlags = 7;
        ParameterBlock before = open.working;
        EXPECT_EQ(open.open(form->id, true).confirm(), "") << form->id;
        EXPECT_EQ(std::memcmp(&before, &open.working, sizeof before), 0) << form->id;
    }
}

// An edit box holds its text, and that is what is read back.
TEST(FormList, ReadsTextsBackOnTheDesktop)
{
    OpenForm open;
    open.working.humanWeight = 71.23456;
    EXPECT_EQ(open.open(1001).text(1112), " 71.2");
    EXPECT_EQ(open.confirm(), "");
    EXPECT_EQ(open.working.humanWeight, 71.2);
    EXPECT_TRUE(formMarks.profile);
    EXPECT_FALSE(formMarks.condition);
}

TEST(FormList, PutsSaveAsDefaultIntoItsSlot)
{
    struct Case {
        int form;
        size_t slot;
    };
    constexpr Case cases[] = {
        {1001, 0x054}, {1002, 0x058}, {1003, 0x05C}, {1004, 0x060}, {1005, 0x064}, {1006, 0x068}, {1007, 0x06C},
        {1008, 0x070}, {1011, 0x074}, {1012, 0x078}, {2001, 0x07C}, {2002, 0x080}, {2003, 0x084}, {2004, 0x088},
        {2005, 0x08C}, {2006, 0x090}, {2007, 0x094}, {2011, 0x098}, {2012, 0x09C}, {2013, 0x0A0}, {2021, 0x0A4},
        {2022, 0x0A8}, {2023, 0x0AC}, {2024, 0x0B0}, {2025, 0x0B4}, {2026, 0x0B8}, {2052, 0x0C0}, {2053, 0x0C4},
    };
    for (const Case& c : cases) {
        OpenForm open(c.form);
        EXPECT_FALSE(open.state.saveAsDefault) << c.form;
        open.state.saveAsDefault = true;
        EXPECT_EQ(open.confirm(), "") << c.form;
        int32_t flag = 0;
        std::memcpy(&flag, reinterpret_cast<const char*>(&open.working) + c.slot, sizeof flag);
        EXPECT_EQ(flag, 1) << c.form;
        EXPECT_TRUE(open.open(c.form).state.saveAsDefault) << c.form;
    }
    constexpr Case checked[] = {{2054, 0x0C8}, {2055, 0x0CC}, {2056, 0x0D0}, {2057, 0x0D4},
                                {2058, 0x0D8}, {2059, 0x0DC}, {2060, 0x0E0}};
    for (const Case& c : checked)
        EXPECT_EQ(findForm(c.form)->saveFlag, c.slot);
    EXPECT_EQ(findForm(2091)->saveFlag, noField);
    EXPECT_EQ(findForm(2092)->saveBox, 0);
}

TEST(FormList, OpensWithDefaultsOrPreviousInput)
{
    OpenForm open;
    open.working.ridePower[0] = 222;
    open.working.bpn = 50;
    EXPECT_EQ(open.open(2021).text(5131), "  400.0");
    open.working.initialValueMode = 1;
    EXPECT_EQ(open.open(2021).text(5131), "  222.0");
    open.working.initialValueMode = 0;
    EXPECT_EQ(open.open(1011).text(1925), "50"); // pages never open with the defaults
    // The target is of the session; one that the list does not have counts as the first.
    open.saved.rideTarget = 0;
    open.working.rideTarget = 1;
    EXPECT_EQ(open.open(2021).chosen(5111), 1);
    open.working.rideTarget = 7;
    EXPECT_EQ(open.open(2021).chosen(5111), 0);
}

TEST(FormList, SheetsHoldTheirPages)
{
    EXPECT_EQ(sheetPages(321).size(), 8u);
    EXPECT_EQ(sheetPages(324).size(), 2u);
    EXPECT_EQ(sheetPages(325).size(), 7u);
    EXPECT_TRUE(sheetPages(801).empty());
    EXPECT_STREQ(sheetPages(321)[7]->title, "e-Assist");
}

} // namespace torvane
