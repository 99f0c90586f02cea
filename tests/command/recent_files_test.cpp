// Recent files and folders in the entry file, the manual's headings behind F1, and where the panes meet.
#include "command/command_table.h"
#include "command/help_topics.h"
#include "command/recent_files.h"
#include "core/pane_split.h"
#include "forms/form.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <set>

namespace torvane {
namespace {

TEST(RecentFiles, LatestFirstTenOfEachKind)
{
    EntryFile file;
    file.lines = {"# mine", "power=200"};
    for (int i = 0; i < 12; ++i)
        rememberFile(file, RecentKind::rides, "C:\\rides\\" + std::to_string(i) + ".fit");
    rememberFile(file, RecentKind::rides, "c:\\Rides\\5.FIT"); // one that is there, in other letters
    rememberFile(file, RecentKind::profiles, "road.pro");
    rememberFile(file, RecentKind::profiles, "");
    std::vector<std::string> rides = recentFiles(file, RecentKind::rides);
    ASSERT_EQ(rides.size(), 10u);
    EXPECT_EQ((std::vector{rides[0], rides[1], rides[9]}),
              (std::vector<std::string>{"c:\\Rides\\5.FIT", "C:\\rides\\11.fit", "C:\\rides\\2.fit"}));
    EXPECT_EQ(recentFiles(file, RecentKind::profiles), std::vector<std::string>{"road.pro"});
    EXPECT_EQ(file.lines[1], "power=200");
    file.changed = false;
    rememberFile(file, RecentKind::profiles, "road.pro");
    EXPECT_FALSE(file.changed);
    EXPECT_EQ(recentLabel(0, "C:\\rides\\a & b.fit"), "&1 a && b.fit  (C:\\rides)");
    EXPECT_EQ(recentLabel(8, "c.fit"), "&9 c.fit");
    EXPECT_EQ(recentLabel(9, "c.fit"), "1&0 c.fit");
    keepFolderOf(file, "Ride", "C:\\rides\\a.fit");
    keepFolderOf(file, "Ride", "bare.fit");
    EXPECT_EQ(keptFolder(file, "Ride"), "C:\\rides");
    EXPECT_EQ(keptFolder(file, "Text"), "");
}

// As the pages of the manual name their headings.
std::set<std::string, std::less<>> manualHeadings()
{
    std::set<std::string, std::less<>> anchors;
    std::ifstream manual(TORVANE_CHECKOUT "/docs/manual.md");
    for (std::string line; std::getline(manual, line);) {
        std::string anchor;
        for (unsigned char c : line.substr(line.find(' ') + 1))
            if (std::isalnum(c) || c == '-' || c == ' ')
                anchor += c == ' ' ? '-' : static_cast<char>(std::tolower(c));
        if (line[0] == '#')
            anchors.insert(anchor);
    }
    return anchors;
}

TEST(HelpTopics, EveryCommandAndFormHasAHeadingOfTheManual)
{
    auto headings = manualHeadings();
    for (const Command& command : commandTable())
        EXPECT_TRUE(headings.contains(manualAnchor(command.id))) << command.label << ' ' << manualAnchor(command.id);
    for (const Form* form : allForms())
        EXPECT_TRUE(headings.contains(manualAnchorOfForm(form->id))) << form->id;
    EXPECT_EQ(manualAnchorOfForm(1001), "your-own-bicycle");
    EXPECT_EQ(manualAnchorOfForm(2095), "what-a-ride-cost");
    EXPECT_EQ(manualAnchor(0), "");
}

TEST(PaneSplit, BothPanesKeepTheirLeast)
{
    constexpr int cases[][4] = {// wanted, room, least, height
                                {150, 400, 40, 150}, {10, 400, 40, 40}, {500, 400, 40, 360},
                                {150, 60, 40, 30},   {150, 0, 40, 0},   {150, -9, 40, 0}};
    for (auto [wanted, room, least, height] : cases)
        EXPECT_EQ(upperPaneHeight(wanted, room, least), height) << wanted << ' ' << room;
}

} // namespace
} // namespace torvane
