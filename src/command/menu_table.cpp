// The menu bar as data. Labels of its commands stand in the command table.
#include "command/command_table.h"

namespace torvane {

namespace {

using enum MenuKind;

constexpr MenuItem menus[] = {
    {menu, "File(&F)"},
    {submenu, "upperScreen"},
    {command, nullptr, 304},
    {command, nullptr, 305},
    {separator},
    {command, nullptr, 308},
    {command, nullptr, 310},
    {separator},
    {command, nullptr, 312},
    {command, nullptr, 314},
    {end},
    {submenu, "lowerScreen"},
    {command, nullptr, 306},
    {command, nullptr, 307},
    {separator},
    {command, nullptr, 309},
    {command, nullptr, 311},
    {separator},
    {command, nullptr, 313},
    {command, nullptr, 315},
    {end},
    {command, nullptr, 318},
    {separator},
    {command, nullptr, 303},
    {end},

    {menu, "Profile(&P)"},
    {submenu, "Check Current Profile"},
    {command, nullptr, 501},
    {command, nullptr, 502},
    {command, nullptr, 503},
    {command, nullptr, 504},
    {command, nullptr, 505},
    {command, nullptr, 506},
    {command, nullptr, 507},
    {command, nullptr, 508},
    {separator},
    {command, nullptr, 509},
    {separator},
    {command, nullptr, 512},
    {end},
    {command, nullptr, 321},
    {separator},
    {command, nullptr, 322},
    {command, nullptr, 323},
    {separator},
    {command, nullptr, 324},
    {end},

    {menu, "Simulation(&S)"},
    {command, nullptr, 701},
    {command, nullptr, 702},
    {command, nullptr, 703},
    {separator},
    {command, nullptr, 801},
    {command, nullptr, 802},
    {command, nullptr, 803},
    {command, nullptr, 804},
    {command, nullptr, 805},
    {command, nullptr, 806},
    {end},

    {menu, "GPS(&G)"},
    {command, nullptr, 901},
    {command, nullptr, 902},
    {command, nullptr, 903},
    {command, nullptr, 904},
    {separator},
    {command, nullptr, 910},
    {separator},
    {command, nullptr, 905},
    {command, nullptr, 906},
    {command, nullptr, 907},
    {command, nullptr, 908},
    {command, nullptr, 909},
    {separator},
    {command, nullptr, 993},
    {end},

    {menu, "Option(&O)"},
    {command, nullptr, 325},
    {end},

    {menu, "Help(&H)"},
    {command, nullptr, 302},
    {end},
};

} // namespace

std::span<const MenuItem> menuTable()
{
    return menus;
}

} // namespace torvane
