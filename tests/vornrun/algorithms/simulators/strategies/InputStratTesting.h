#pragma once
/// \file
/// What the tests of the interactive strategy share.

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/support/DrivenModel.h"
#include "tests/support/ScriptedConsole.h"
#include "tests/support/TempDir.h"

namespace vornrun::test {

inline const std::string PROMPT =
    "Enter command (s = print state, d # = discrete transition, t #.# = timed transition, q = quit)\n";
inline const std::string SELECTION_HELP =
    "Select transitions to take ( r,#,#,r,a )\n"
    "a/A: Select for all following EDAs automatically\n"
    "r/R: Select for given EDA randomly\n"
    "  #: Select for given EDA manually\n";

/// Each test runs in a folder of its own, where the dumps of the topologies go.
class InputStratTesting : public testing::Test {
  protected:
    void SetUp() override { std::filesystem::current_path(mFolder.path()); }
    void TearDown() override { std::filesystem::current_path(mFormerFolder); }

    static std::string declaration(DrivenModel& driven, std::size_t index, const std::string& eda = "main") {
        std::ostringstream text;
        text << *driven.eda(eda)->component()->transitions()[index]->transition();
        return text.str();
    }
    /// One step under that input: how it went and all that was printed.
    static std::pair<std::string, std::string> stepWith(DrivenModel& driven, const std::string& input) {
        ScriptedConsole console(input);
        driven.strategy().setConsole(&console);
        std::string told;
        try {
            told = driven.step();
        } catch (const std::logic_error& error) {
            told = error.what();
        }
        driven.strategy().setConsole(nullptr);
        return {told, console.text()};
    }
    static std::string prompt(const std::string& allowed) { return "Time in:  " + allowed + "\n" + PROMPT; }

  private:
    TempDir mFolder;
    std::filesystem::path mFormerFolder = std::filesystem::current_path();
};

}  // namespace vornrun::test
