#pragma once
/// \file
/// Runs the built tool, or another program, in its own process, and gives what a user sees of it.

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace vornrun::test {

/// How a program is called.
struct ToolCall {
    std::vector<std::string> arguments{};
    /// All of standard input, which ends behind it.
    std::string input{};
    /// The current directory; when empty, a fresh folder that is gone afterwards.
    std::filesystem::path directory{};
    /// A process that takes longer is killed.
    std::chrono::milliseconds timeLimit{std::chrono::seconds(120)};
};

/// What a program left behind.
struct ToolResult {
    std::string output;     ///< standard output
    std::string errors;     ///< standard error
    int exitStatus = -1;    ///< -1 when a signal ended the process
    int signal = 0;         ///< the signal that ended the process; 0 when it exited
    bool timedOut = false;  ///< killed at the time limit
};

/// The vornrun executable of this build.
std::filesystem::path toolPath();

/// Runs that executable.
/// \throws std::system_error when the process cannot be started
ToolResult runTool(const ToolCall& call);

/// The same for any program.
ToolResult runProgram(const std::filesystem::path& program, const ToolCall& call);

}  // namespace vornrun::test
