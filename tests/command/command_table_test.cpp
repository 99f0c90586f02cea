// The command table and the menu agree with each other and with the forms.
#include "command/command_table.h"

#include "fit/fit_codes.h"
#include "forms/form.h"

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <string>

namespace torvane {

TEST(CommandTable, DialogsHaveTheirForms)
{
    for (const Command& command : commandTable()) {
        bool ownWindow = command.work == Work::frontEnd; // about, exit
        bool asks = command.entry == Entry::dialog && !ownWindow;
        EXPECT_TRUE(!asks || findForm(command.form) != nullptr) << command.id;
        EXPECT_EQ(command.entry == Entry::sheet, !sheetPages(command.sheet).empty()) << command.id;
        EXPECT_EQ(command.operation == nullptr, ownWindow) << command.id;
        EXPECT_TRUE(std::islower(*command.meaning)) << command.id;
    }
}

TEST(CommandTable, ConsoleNamesAreUnique)
{
    std::set<std::string> names;
    std::string withRows;
    for (const Command& command : commandTable()) {
        if (command.work == Work::frontEnd)
            continue;
        EXPECT_TRUE(names.insert(consoleName(command)).second) << command.id;
        EXPECT_EQ(findCommand(consoleName(command)), &command) << command.id;
        EXPECT_EQ(findCommand(std::to_string(command.id)), &command) << command.id;
        withRows += command.hasRows ? std::to_string(command.id) + ' ' : "";
    }
    EXPECT_EQ(withRows, "801 802 803 804 805 806 902 903 904 910 992 994 995 996 997 ")
        << "all that are tables by nature";
    for (ResultStatus code : {fitOk, fitLoaded, fitPrepared})
        EXPECT_TRUE(succeeded(*findCommand(901), code)) << code;
    EXPECT_EQ(findCommand("load"), findCommand(901));
    EXPECT_EQ(findCommand("predict"), findCommand(903));
    EXPECT_EQ(findCommand(700), nullptr);
    EXPECT_EQ(findCommand(""), nullptr);
    EXPECT_EQ(findCommand("801x"), nullptr);
}

// Those of a group stand in the order of their numbers.
TEST(Menu, HoldsEveryCommandWithAnEntryOnce)
{
    int depth = 0, before = 0;
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
            EXPECT_TRUE(item.command > before || item.command == commandAbout) << item.command;
        }
        before = item.kind == MenuKind::command ? item.command : 0;
    }
    EXPECT_EQ(depth, 0);
    for (int id : {510, 511, 994}) // by key, message or console alone
        EXPECT_FALSE(shown.contains(id)) << id;
    EXPECT_EQ(shown.size() + 3, commandTable().size());
}

} // namespace torvane
