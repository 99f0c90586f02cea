// The dialog templates of the desktop program hold every control that the forms name.
#include "forms/form.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace torvane {

namespace {

// All numbers of each template, by the template's id.
std::map<int, std::set<int>> readTemplates()
{
    std::map<int, std::set<int>> templates;
    std::regex numbers("\\b[0-9]+");
    int current = 0;
    for (const auto& file : std::filesystem::directory_iterator(TORVANE_CHECKOUT "/resources")) {
        if (file.path().extension() != ".rc")
            continue;
        std::ifstream in(file.path());
        for (std::string line; std::getline(in, line);) {
            if (line.find(" DIALOGEX ") != line.npos && std::isdigit(static_cast<unsigned char>(line[0])))
                current = std::stoi(line);
            for (std::sregex_iterator number(line.begin(), line.end(), numbers), end; number != end; ++number)
                templates[current].insert(std::stoi(number->str()));
        }
    }
    return templates;
}

} // namespace

TEST(Templates, HoldTheControlsOfTheForms)
{
    std::map<int, std::set<int>> templates = readTemplates();
    for (const Form* form : allForms()) {
        ASSERT_TRUE(templates.contains(form->id)) << form->id;
        const std::set<int>& numbers = templates[form->id];
        auto holds = [&](int id) { EXPECT_TRUE(id == 0 || numbers.contains(id)) << form->id << " lacks " << id; };
        holds(form->saveBox);
        for (const Row& row : form->rows) {
            holds(row.id);
            bool spinIsComputed = form->id == 1003 || form->id == 1006; // by a macro of the template
            holds(spinIsComputed ? 0 : row.spin);
            for (int id : row.radioIds)
                holds(id);
        }
    }
}

} // namespace torvane
