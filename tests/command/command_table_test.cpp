// The command table and the menu agree with each other and with the forms.
#include "command/command_table.h"

#include "forms/form.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace torvane {

TEST(CommandTable, IsComplete)
{
    std::set<int> expected = {302, 303, 318, 321, 322, 323, 324, 325, 701, 702, 703, 991, 992, 993, 994};
    auto add = [&](int first, int last) {
        for (int id = first; id <= last; ++id)
            expected.insert(id);
    };
    add(304, 317);
    add(501, 512);
    add(801, 806);
    add(901, 910);
    std::set<int> found;
    for (const Command& command : commandTable())
        found.insert(command.id);
    EXPECT_EQ(found, expected);
    EXPECT_EQ(findCommand(801)->form, 2021);
    EXPECT_EQ(findCommand(700), nullptr);
    EXPECT_EQ(findCommand(999), nullptr);
}

TEST(CommandTable, KeysAreThoseOfTheManual)
{
    struct Case {
        int id;
        const char* key;
    };
    constexpr Case cases[] = {
        {302, "Q"},  {303, "X"},  {316, "+1"}, {317, "+2"}, {321, "P"},  {322, "O"},  {323, "S"},
        {324, "R"},  {325, "K"},  {501, "+H"}, {502, "+E"}, {503, "+S"}, {504, "+W"}, {505, "+Y"},
        {506, "+B"}, {507, "+L"}, {508, "+P"}, {509, "+A"}, {510, ""},   {511, ""},   {512, "+C"},
        {701, "+T"}, {702, "+D"}, {703, "+G"}, {801, "V"},  {802, "A"},  {803, "D"},  {804, "B"},
        {805, "I"},  {806, "C"},  {901, "L"},  {902, "E"},  {903, "T"},  {904, "F"},  {905, "M"},
        {906, "N"},  {907, "U"},  {908, "+V"}, {909, "+X"}, {910, "+F"}, {991, "+I"}, {992, "+Q"},
    };
    for (const Case& c : cases) {
        const Command& command = *findCommand(c.id);
        std::string key = command.key ? std::string(command.shift ? "+" : "") + command.key : "";
        EXPECT_EQ(key, c.key) << c.id;
    }
}

TEST(CommandTable, DialogsHaveTheirForms)
{
    for (const Command& command : commandTable()) {
        bool ownWindow = command.work == Work::frontEnd; // about, exit
        if (command.entry == Entry::dialog && !ownWindow) {
            EXPECT_NE(findForm(command.form), nullptr) << command.id;
        }
        EXPECT_EQ(command.entry == Entry::sheet, !sheetPages(command.id).empty()) << command.id;
        EXPECT_TRUE(isBuilt(command)) << command.id;
    }
}

TEST(CommandTable, ConsoleNamesAreUnique)
{
    std::set<std::string> names;
    for (const Command& command : commandTable()) {
        if (command.work == Work::frontEnd)
            continue;
        EXPECT_TRUE(names.insert(consoleName(command)).second) << command.id;
        EXPECT_EQ(findCommand(consoleName(command)), &command);
        EXPECT_EQ(findCommand(std::to_string(command.id)), &command);
    }
    EXPECT_EQ(findCommand("load"), findCommand(901));
    EXPECT_EQ(findCommand("predict"), findCommand(903));
    EXPECT_EQ(findCommand(""), nullptr);
    EXPECT_EQ(findCommand("801x"), nullptr);
}

TEST(Menu, HoldsEveryCommandWithAnEntryOnce)
{
    int depth = 0;
    std::set<int> shown;
    for (const MenuItem& item : menuTable()) {
        if (item.kind == MenuKind::menu || item.kind == MenuKind::submenu) {
            EXPECT_EQ(depth++, item.kind == MenuKind::submenu) << item.label;
        }
        if (item.kind == MenuKind::end)
            --depth;
        if (item.kind == MenuKind::command) {
            EXPECT_NE(findCommand(item.command), nullptr) << item.command;
            EXPECT_TRUE(shown.insert(item.command).second) << item.command;
        }
    }
    EXPECT_EQ(depth, 0);
    for (int id : {316, 317, 510, 511, 991, 992, 994}) // by key, message or console alone
        EXPECT_FALSE(shown.contains(id)) << id;
    EXPECT_EQ(shown.size() + 7, commandTable().size());
}

} // namespace torvane
