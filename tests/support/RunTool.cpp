#include "tests/support/RunTool.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <system_error>

#include "tests/support/TempDir.h"

namespace vornrun::test {

namespace {

/// Reports the last system call's failure.
int checked(int result, const char* what) {
    if (result < 0) throw std::system_error(errno, std::generic_category(), what);
    return result;
}

/// The posix_spawn family returns its error instead of setting errno.
void checkedSpawn(int error, const char* what) {
    if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

class Descriptor {
  public:
    explicit Descriptor(int number) : mNumber(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }  // gives the descriptor back to the system

    int number() const noexcept { return mNumber; }
    void close() {
        if (mNumber >= 0) ::close(mNumber);
        mNumber = -1;
    }

  private:
    int mNumber;
};

/// A file in memory that stands for a standard stream: no pipe that could fill up, and what a killed process has
/// written is there.
class MemoryFile {
  public:
    explicit MemoryFile(const std::string& content = {})
        : mDescriptor(checked(memfd_create("stream", MFD_CLOEXEC), "memfd_create")) {
        std::size_t done = 0;
        while (done < content.size()) {
            const ssize_t count = write(number(), content.data() + done, content.size() - done);
            checked(count < 0 ? -1 : 0, "write");
            done += static_cast<std::size_t>(count);
        }
        rewind();
    }
    int number() const noexcept { return mDescriptor.number(); }
    std::string content() {
        rewind();
        std::string result;
        std::array<char, 65536> buffer;
        for (;;) {
            const ssize_t count = read(number(), buffer.data(), buffer.size());
            checked(count < 0 ? -1 : 0, "read");
            if (count == 0) return result;
            result.append(buffer.data(), static_cast<std::size_t>(count));
        }
    }

  private:
    void rewind() { checked(lseek(number(), 0, SEEK_SET) < 0 ? -1 : 0, "lseek"); }

    Descriptor mDescriptor;
};

class SpawnActions {
  public:
    SpawnActions() { checkedSpawn(posix_spawn_file_actions_init(&mActions), "posix_spawn_file_actions_init"); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { posix_spawn_file_actions_destroy(&mActions); }  // frees what the C interface allocated

    void redirect(int from, int to) {
        checkedSpawn(posix_spawn_file_actions_adddup2(&mActions, from, to), "posix_spawn_file_actions_adddup2");
    }
    void changeDirectory(const std::filesystem::path& directory) {
        checkedSpawn(posix_spawn_file_actions_addchdir_np(&mActions, directory.c_str()),
                     "posix_spawn_file_actions_addchdir_np");
    }
    const posix_spawn_file_actions_t* get() const noexcept { return &mActions; }

  private:
    posix_spawn_file_actions_t mActions{};
};

/// The write end of this pipe lives in the child only, so that the read end hangs up when the child is gone.
struct LifeLine {
    std::array<int, 2> ends{makePipe()};
    Descriptor readEnd{ends[0]};
    Descriptor writeEnd{ends[1]};

    static std::array<int, 2> makePipe() {
        std::array<int, 2> result{};
        checked(pipe2(result.data(), O_CLOEXEC), "pipe2");
        return result;
    }
    /// False when the time passed first.
    bool waitForEnd(std::chrono::milliseconds timeLimit) {
        const auto deadline = std::chrono::steady_clock::now() + timeLimit;
        for (;;) {
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
            pollfd state{readEnd.number(), 0, 0};
            const int ready = poll(&state, 1, left.count() > 0 ? static_cast<int>(left.count()) : 0);
            if (ready >= 0) return ready > 0;
            checked(errno == EINTR ? 0 : -1, "poll");
        }
    }
};

std::vector<char*> argumentPointers(std::vector<std::string>& words) {
    std::vector<char*> result;
    result.reserve(words.size() + 1);
    for (std::string& word : words) result.push_back(word.data());
    result.push_back(nullptr);
    return result;
}

int waitFor(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0) checked(errno == EINTR ? 0 : -1, "waitpid");
    return status;
}

}  // namespace

ToolResult runProgram(const std::filesystem::path& program, const ToolCall& call) {
    std::optional<TempDir> fresh;
    if (call.directory.empty()) fresh.emplace();

    MemoryFile input(call.input);
    MemoryFile output;
    MemoryFile errors;
    LifeLine lifeLine;
    SpawnActions actions;
    actions.changeDirectory(fresh ? fresh->path() : call.directory);
    actions.redirect(input.number(), STDIN_FILENO);
    actions.redirect(output.number(), STDOUT_FILENO);
    actions.redirect(errors.number(), STDERR_FILENO);
    actions.redirect(lifeLine.writeEnd.number(), lifeLine.writeEnd.number());  // takes the close-on-exec mark away

    std::vector<std::string> words{program.string()};
    words.insert(words.end(), call.arguments.begin(), call.arguments.end());
    pid_t process = 0;
    checkedSpawn(
        posix_spawn(&process, program.c_str(), actions.get(), nullptr, argumentPointers(words).data(), environ),
        program.c_str());
    lifeLine.writeEnd.close();

    ToolResult result;
    result.timedOut = !lifeLine.waitForEnd(call.timeLimit);
    if (result.timedOut) kill(process, SIGKILL);
    const int status = waitFor(process);
    if (WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    result.output = output.content();
    result.errors = errors.content();
    return result;
}

std::filesystem::path toolPath() { return VORNRUN_EXECUTABLE; }

ToolResult runTool(const ToolCall& call) { return runProgram(toolPath(), call); }

}  // namespace vornrun::test
