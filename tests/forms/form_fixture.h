// A form opened over fresh defaults, driven by control ids as a user would.
#pragma once

#include "forms/form.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace torvane {

struct OpenForm {
    ParameterBlock saved = {}, working = {};
    Model model;
    LoadedRide ride = {};
    FormState state;

    // Defaults everywhere; the model holds them too, so that gear lists have rows.
    OpenForm()
    {
        setDefaults(saved);
        working = saved;
        applyProfile(model.state, working);
        applyCondition(model.state, working);
        rebuildModel(model);
    }
    explicit OpenForm(int form) : OpenForm()
    {
        open(form);
    }

    OpenForm& open(int form)
    {
        openForm(state, *findForm(form), saved, working, model, false, ride);
        return *this;
    }
    // A radio button's id is that of its first button.
    // Of the rows that share a control, the one that it shows now.
    const Row& at(int id)
    {
        const Row* found = nullptr;
        for (const Row& row : state.form->rows)
            if (row.id == id && id != 0 && (!found || isPresent(state, row)))
                found = &row;
        EXPECT_NE(found, nullptr) << "control " << id;
        return found ? *found : state.form->rows[0];
    }
    OpenForm& type(int id, const std::string& text)
    {
        editText(state, at(id), text);
        return *this;
    }
    OpenForm& pick(int id, int value)
    {
        choose(state, at(id), value);
        return *this;
    }
    OpenForm& press(int id, bool up)
    {
        spin(state, at(id), up);
        return *this;
    }
    std::string text(int id)
    {
        return rowText(state, at(id));
    }
    int chosen(int id)
    {
        return chosenValue(state, at(id));
    }
    bool enabled(int id)
    {
        return isEnabled(state, at(id));
    }
    // Which of the controls are enabled, as a row of digits; 2: disabled, but its value takes effect.
    std::string enabledOf(const std::vector<int>& ids)
    {
        std::string digits;
        for (int id : ids)
            digits += enabled(id) ? '1' : takesEffect(state, at(id)) ? '2' : '0';
        return digits;
    }

    // Control of the entry that was refused; 0: none.
    int refused()
    {
        return state.refused ? state.refused->id : 0;
    }
    // Text of the first box; "" when the form was confirmed, "open" when it stays open without a word.
    std::string confirm()
    {
        Verdict verdict = confirmForm(state, working);
        if (verdict.boxes.empty())
            return verdict.passed ? "" : "open";
        EXPECT_FALSE(verdict.passed);
        EXPECT_EQ(verdict.boxes[0].title, "warning");
        return verdict.boxes[0].text;
    }
};

} // namespace torvane
