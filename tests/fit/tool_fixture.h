// A FIT tool on files built for the test: paths in a folder of its own, options all clear.
#pragma once

#include "fit/fit_tools.h"
#include "fit_builder.h"

namespace torvane {

using Check = Verdict (*)(ToolInputs&, ParameterBlock&);
using ToolRun = ToolOutcome (*)(const ToolInputs&, const ParameterBlock&, Progress*);

struct ToolBench {
    TestFolder folder;
    ToolInputs inputs;
    ParameterBlock options = {};

    ToolBench()
    {
        to("out.fit");
    }
    std::string write(const std::string& name, const Bytes& file)
    {
        writeBytes(folder.path + name, file);
        return folder.path + name;
    }
    ToolBench& from(const Bytes& file, size_t source = 0)
    {
        inputs.files[source].path = write("in" + std::to_string(source) + ".fit", file);
        return *this;
    }
    ToolBench& to(const std::string& name)
    {
        inputs.files[toolDestination].path = folder.path + name;
        return *this;
    }
    // Boxes of a check, each on a line as "title: text".
    std::string boxes(Check check)
    {
        std::string texts;
        Verdict verdict = check(inputs, options);
        for (const Box& box : verdict.boxes)
            texts += (texts.empty() ? "" : "\n") + box.title + ": " + box.text;
        EXPECT_EQ(verdict.passed, texts.empty());
        return texts;
    }
    // Code of a run behind its check.
    StatusCode run(Check check, ToolRun runTool)
    {
        EXPECT_EQ(boxes(check), "");
        outcome = runTool(inputs, options, nullptr);
        return outcome.code;
    }
    Bytes output(const std::string& name = "out.fit")
    {
        return bytesOf(folder.path + name);
    }

    ToolOutcome outcome;
};

// file_id of an activity by default, on local type 0.
inline FitBuilder fitFile(bool bigEndian = false, int type = 4, int manufacturer = 0x1234)
{
    FitBuilder file;
    file.define(0, 0, {{0, 1, 0}, {1, 2, 0x84}, {4, 4, 0x86}}, bigEndian);
    file.message(0, {type, manufacturer, 900'000'000});
    return file;
}

class BothByteOrders : public testing::TestWithParam<bool> {
protected:
    bool bigEndian = GetParam();
    int marked = bigEndian ? 0xFF00 : 0x00FF; // what a rewriting tool leaves in a manufacturer field of two bytes
    ToolBench bench;
};

} // namespace torvane
