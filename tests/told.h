// What a whole report has to tell stands in a file, as its reader sees it.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <initializer_list>
#include <string>

namespace torvane {

inline void expectTold(const std::string& told, const std::string& wantedFile)
{
    std::string wanted;
    std::ifstream file(std::string(TORVANE_CHECKOUT "/") + wantedFile);
    ASSERT_TRUE(std::getline(file, wanted, '\0')) << wantedFile;
    EXPECT_EQ(told, wanted) << wantedFile;
}

inline void expectUntold(const std::string& told, std::initializer_list<const char*> words)
{
    for (const char* each : words)
        EXPECT_EQ(told.find(each), told.npos) << each << " in " << told;
}

} // namespace torvane
