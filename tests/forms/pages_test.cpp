// What is special to a page: what enables what, what one choice does to other entries, checks beyond the limits.
#include "figures.h"
#include "form_fixture.h"

namespace torvane {

TEST(HumanPage, FtpIsEnteredOnlyWhenUsed)
{
    OpenForm page(1001);
    EXPECT_FALSE(page.enabled(1118));
    page.working.useFtp = 1;
    EXPECT_TRUE(page.open(1001).enabled(1118));
    page.type(1112, "80");
    EXPECT_EQ(page.type(1118, "50").confirm(), "found too small value of an expected cadence");
    EXPECT_EQ(page.refused(), 1118);
    EXPECT_EQ(page.working.humanWeight, 60);           // a refused page stores nothing
    EXPECT_EQ(page.pick(1131, 3).text(1113), " 41.0"); // a position brings its angle
    page.working.useFtp = 0;
    EXPECT_EQ(page.open(1001).type(1118, "50").confirm(), "") << "no limit holds it while it is disabled";
}

TEST(EquipPage, WeightStaysWhatItWasWhenThePageOpened)
{
    OpenForm page(1002);
    EXPECT_EQ(page.text(1241), "  5.800");
    page.pick(1221, 0).type(1241, "6.5");
    EXPECT_EQ(page.confirm(), "");
    expectFigures({page.working.exceptWheels, page.working.bikeWeightExceptWheels, page.working.bikeWeight},
                  {0, 6.5, 8});
    EXPECT_EQ(page.open(1002).text(1241), "  8.000");
    EXPECT_FALSE(page.enabled(1242));
    EXPECT_TRUE(page.pick(1231, 1).enabled(1242));
}

TEST(ShiftPage, CountsEnableAndCheckTheirTeeth)
{
    OpenForm page(1003);
    EXPECT_EQ(page.enabledOf({1323, 1324, 1337}), "100");
    EXPECT_TRUE(page.type(1321, "3").enabled(1324));
    EXPECT_EQ(page.type(1324, "20").confirm(), "found too small tooth of chainring");
    EXPECT_EQ(page.type(1321, "2").confirm(), "");
}

TEST(Spin, OfAPageMayPassALimitByLessThanAStepOfADialogNot)
{
    OpenForm page(1003);
    EXPECT_EQ(page.type(1311, "0.95").press(1311, true).text(1311), "1.050");
    EXPECT_EQ(page.press(1311, true).text(1311), "1.050");
    EXPECT_EQ(page.confirm(), "found too large value of a shifting time loss");
    page.type(1311, "0.7");
    for (int i = 0; i < 5; ++i)
        page.press(1311, true);
    EXPECT_EQ(page.text(1311), "1.000") << "0.7 + 0.1 + 0.1 + 0.1 is less, but nobody sees it";
    EXPECT_EQ(page.type(1322, "28").press(1322, false).text(1322), "28");
    EXPECT_EQ(page.press(1322, true).text(1322), "29");
    OpenForm dialog(2021);
    dialog.pick(5111, 1);
    EXPECT_EQ(dialog.type(5131, "2999.5").press(5131, true).text(5131), "2999.5");
    EXPECT_EQ(dialog.type(5131, "2999").press(5131, true).text(5131), " 3000.0");
    EXPECT_EQ(dialog.type(5133, "-99.95").press(5133, false).text(5133), "-99.95");
}

// A box shows fewer digits than its value has. What the user does not change stays to the last one.
TEST(TyrePage, KeepsTheDigitsThatItDoesNotShow)
{
    OpenForm page(1005);
    EXPECT_EQ(page.text(1514) + page.text(1518), "  0.8  0.8");
    page.type(1511, "25").type(1518, "0.9").type(1518, "  0.8"); // typed, and typed back
    EXPECT_EQ(page.press(1514, true).text(1514), "  0.9");
    EXPECT_EQ(page.confirm(), "");
    expectFigures({page.working.tyreSize[0], page.working.frictionCoefficient[1]}, {25, 0.75});
    EXPECT_DOUBLE_EQ(page.working.frictionCoefficient[0], 0.95);
    EXPECT_EQ(page.type(1514, "0.8").confirm(), "");
    EXPECT_EQ(page.working.frictionCoefficient[0], 0.8);
}

// At 50 kph: 38.572590548 x exp(spokes x 0.008015186913 - depth x 0.00924480958 - 9 log10(11) x 0.034550905509)
TEST(WheelPage, PredictsOneWheelFromItsBuild)
{
    OpenForm page(1004);
    const Row& rear = page.at(1412);
    EXPECT_TRUE(pressButton(page.state, rear, page.working).passed);
    OpenForm child;
    child.working = page.working;
    EXPECT_EQ(child.open(1450).type(1451, "80").confirm(), "");
    page.working = child.working;
    expectFigures({page.working.rimDepth[0], page.working.rimDepth[1]}, {50, 80});
    page.type(1422, "14").type(1428, "45");
    buttonReturned(page.state, rear, page.working);
    EXPECT_EQ(page.text(1427), "  4.8"); // 16.14 W x 0.6 x 14 / 28
    EXPECT_EQ(page.text(1424) + page.text(1428), " 20.0 50.0");
    EXPECT_EQ(page.confirm(), "found too small value of a case of wheel regist");
    expectFigures({page.working.rimDepth[1], page.working.predictWheel}, {50, 0}); // taken back with the page
    page.working.rimDepth[1] = 80;
    EXPECT_EQ(page.type(1427, "20").confirm(), "");
    page.working.rimDepth[1] = 90;
    cancelForm(page.state, page.working);
    EXPECT_EQ(page.working.rimDepth[1], 80); // what was accepted before stays
}

TEST(BrakePage, ShowsTheEntriesOfTheSelectedType)
{
    OpenForm page(1006);
    EXPECT_EQ(page.text(1631) + page.text(1641), "rim weight350.0");
    page.type(1641, "400").pick(1611, 1);
    EXPECT_EQ(page.text(1631) + ", " + page.text(1633) + ", " + page.text(1634),
              "rotor weight, rotor diameter, rim depth");
    EXPECT_EQ(page.text(1641) + " " + page.text(1642), "100.0 160.0");
    EXPECT_EQ(page.chosen(1621), 2);
    page.pick(1611, 0);
    EXPECT_EQ(page.text(1641), "350.0"); // fetched anew
    page.pick(1611, 1).type(1641, "120");
    EXPECT_EQ(page.confirm(), "");
    expectFigures({page.working.brakeWeight[0][0], page.working.brakeWeight[1][0]}, {350, 120});
    EXPECT_EQ(page.pick(1611, 0).pick(1611, 1).text(1641), "120.0"); // what was applied is what is fetched
    EXPECT_EQ(page.type(1644, "9").type(1642, "9").confirm(), "found too small value of a brake surface size");
    EXPECT_EQ(page.refused(), 1642) << "the front wheel goes first, whatever its brake";
}

TEST(AssistPage, ChecksInItsOwnOrder)
{
    using Entries = std::vector<std::pair<int, const char*>>;
    Entries good = {{1811, "1"},  {1821, "1"},   {1824, "1"},  {1827, "2"}, {1832, "25"}, {1833, "2"},
                    {1834, "32"}, {1835, "1.5"}, {1836, "45"}, {1837, "1"}, {1831, "250"}};
    // What is entered otherwise; the message, and the entry that it is about.
    const std::tuple<Entries, const char*, int> cases[] = {
        {{}, "", 0},
        {{{1811, "0"}, {1824, "0"}, {1831, "99999"}}, "found illegal motor location", 1811},
        {{{1821, "0"}, {1827, "0"}, {1831, "99999"}}, "found illegal maximum e-Power value", 1831},
        {{{1821, "0"}, {1827, "0"}}, "found illegal void range 1", 1824},
        {{{1824, "0"}, {1832, "-1"}}, "found illegal void range 2", 1827},
        {{{1834, "24.9"}, {1827, "0"}}, "found illegal speed order of a range 1", 1834},
        {{{1834, "25"}, {1827, "0"}}, "", 0},
        {{{1827, "1"}, {1837, "0"}}, "found non-sense ratio for constant range 2", 1837},
        {{{1837, "0"}}, "", 0},
        {{{1827, "1"}, {1832, "-1"}, {1836, "101"}, {1835, "11"}}, "found too small speed of range 0", 1832},
        {{{1827, "1"}, {1832, "5"}, {1836, "101"}, {1835, "11"}}, "found too large ratio of range 1", 1835},
    };
    for (const auto& [otherwise, message, refused] : cases) {
        SCOPED_TRACE(message);
        OpenForm page(1008);
        for (const Entries& entries : {good, otherwise})
            for (auto [id, text] : entries)
                page.at(id).kind == RowKind::real ? page.type(id, text) : page.pick(id, std::atoi(text));
        EXPECT_EQ(page.confirm(), message);
        EXPECT_EQ(page.refused(), refused);
    }
    OpenForm others;
    others.working.assistRangeMode[1] = 2; // without a motor the other ranges may stay
    EXPECT_EQ(others.open(1008).confirm(), "");
}

TEST(AssistPage, LabelsTellWhereARangeStarts)
{
    OpenForm page(1008);
    EXPECT_EQ(page.enabledOf({1831, 1834}), "00");
    EXPECT_EQ(page.pick(1811, 2).pick(1824, 1).enabledOf({1831, 1834}), "11");
    EXPECT_EQ(page.text(1851) + page.text(1853), " 25.0 kph   ~ ");
    page.pick(1824, 2).type(1832, "20");
    EXPECT_EQ(page.text(1853) + page.text(1852), "at  20.0 kph   ~  32.0 kph   ~ ");
}

TEST(CoursePage, ShowsTheComputedPressure)
{
    OpenForm page(1011);
    EXPECT_EQ(page.text(1924), "1007.4"); // 1013.25 x (1 - 50 x 0.0065 / 293.15)^5.2559
    EXPECT_EQ(page.enabledOf({1922, 1923, 1924}), "110");
    EXPECT_EQ(page.type(1922, "2000").text(1924), "1007.4"); // not while it is typed
    EXPECT_EQ(page.pick(1911, 1).enabledOf({1922, 1923, 1924}), "021");
    EXPECT_EQ(page.text(1924), "1013.2"); // the stored one, which counts now
    EXPECT_EQ(page.pick(1911, 0).text(1924), "798.3");
    EXPECT_EQ(page.pick(1911, 1).confirm(), "");
    EXPECT_EQ(page.working.hectoPascal, 1013.25);
}

TEST(PelotonPage, ShowsTheRatio)
{
    OpenForm page(1012);
    EXPECT_EQ(page.text(11955), "1.000");
    EXPECT_EQ(page.enabledOf({11951, 11952, 11943}), "100");
    EXPECT_EQ(page.type(11951, "0.85").text(11955), "0.850");
    EXPECT_TRUE(page.enabled(11952));
    EXPECT_EQ(page.pick(11941, 1).enabledOf({11951, 11943}), "01");
    // 10^-0.2 x 0.6^0.2 = 0.56968; in turns (9 x 0.56968 + 1) / 10
    EXPECT_EQ(page.text(11955), "0.613");
    EXPECT_EQ(page.pick(11943, 0).text(11955), "0.570");
    EXPECT_EQ(page.type(11953, "20").text(11955), "0.512"); // as 17 of them: 17^-0.2 x 0.6^0.2
    EXPECT_EQ(page.type(11953, "1").text(11955), "1.000");
}

TEST(PreferencePages, EnableTheirEntries)
{
    OpenForm interval(2002);
    EXPECT_EQ(interval.enabledOf({2221, 2222}), "00");
    EXPECT_EQ(interval.pick(2211, 1).enabledOf({2221, 2222}), "10");
    OpenForm gps(2007);
    EXPECT_FALSE(gps.enabled(2722));
    EXPECT_TRUE(gps.pick(2712, 1).enabled(2722));
    EXPECT_EQ(gps.type(2721, "25").press(2721, true).text(2721), "25");
    EXPECT_EQ(gps.type(2721, "19.9").press(2721, true).press(2721, true).text(2721), " 20.0");
    EXPECT_EQ(gps.type(2721, "25").confirm(), "");
    EXPECT_EQ(gps.working.thresholdSpeed, 25);
}

} // namespace torvane
