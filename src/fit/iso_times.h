// Times as other programs read them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace torvane {

// Writes one time after the other; the date is only worked out where a day begins.
class IsoTimes {
public:
    // "2024-07-06T07:30:00Z" of a FIT timestamp. Holds until the next.
    std::string_view of(uint32_t timestamp);

private:
    void put(size_t at, uint32_t number);

    uint32_t today = 0;
    std::string text = {};
};

} // namespace torvane
