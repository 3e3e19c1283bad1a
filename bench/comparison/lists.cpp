// Compares how Mirrolet, wmctrl, xdotool and libwnck read the list of windows. Runs on one desktop (Xvfb,
// openbox) with many windows, each of its own process. Prints one line of tab-separated values for each
// reading. The script bench/side-by-side reads these lines.
//
//   bench_lists [ROUNDS]    default: 3 rounds

#include "bench/Crowd.h"
#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/ProcessorTime.h"
#include "tests/desktop/harness/Wait.h"
#include "tests/desktop/harness/WindowManager.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <spawn.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>

namespace {

using namespace mirrolet::bench;
using namespace mirrolet::harness;
using Clock = std::chrono::steady_clock;

/// Holds the cost in milliseconds of reading the list of windows once: processor time and elapsed time.
struct Reading {
    double program = 0;
    double wall = 0;
    std::size_t found = 0; ///< The number of windows whose titles were read.
};

/// Reads the list of windows, in the way of one program.
class Reader {
  public:
    virtual ~Reader() = default;
    virtual Reading read() = 0;
};

/// Reads the list with a program that keeps running between readings, so that its start-up time is not
/// measured.
class LivingReader final : public Reader {
  public:
    LivingReader(const XServer& server, const std::string& program)
        : process({.command = {program},
                   .environment = server.with(sandbox.environment()),
                   .log = sandbox.folder() / "reader.log",
                   .pipeInput = true,
                   .pipeOutput = true}) {
        // The first reading is not measured. Later readings take less time, because they use what the first
        // one has found.
        read();
    }

    [[nodiscard]] pid_t pid() const { return process.pid(); }

    Reading read() override {
        const double before = processorTime(process.pid());
        const auto answers = process.lines().size();
        process.write("\n");
        require("an answer of the reader",
                [&] { return process.lines().size() > answers || !process.running(); });
        Reading reading;
        if (process.lines().size() > answers)
            std::istringstream(process.lines().back()) >> reading.found >> reading.wall;
        // Waits, because the program may still use processor time after its answer.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        reading.program = processorTime(process.pid()) - before;
        return reading;
    }

  private:
    Sandbox sandbox;
    ChildProcess process;
};

/// Reads the list with a command that is started anew for each reading.
class CommandReader final : public Reader {
  public:
    CommandReader(const XServer& server, std::vector<std::string> words)
        : command(std::move(words)), environment(server.with(sandbox.environment())),
          output(sandbox.folder() / "output") {}

    Reading read() override {
        const auto start = Clock::now();
        const pid_t process = spawn();
        rusage used{};
        int status = 0;
        if (wait4(process, &status, 0, &used) != process || status != 0)
            throw HarnessError(command.front() + " failed");
        const std::chrono::duration<double, std::milli> wall = Clock::now() - start;
        return {milliseconds(used.ru_utime) + milliseconds(used.ru_stime), wall.count(), found()};
    }

  private:
    static double milliseconds(const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    }

    pid_t spawn() {
        std::vector<std::string> variables;
        for (const auto& [name, value] : environment)
            variables.push_back(name + "=" + value);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        pid_t process = -1;
        const int problem = posix_spawnp(&process, command.front().c_str(), &actions, nullptr,
                                         pointersTo(command).data(), pointersTo(variables).data());
        posix_spawn_file_actions_destroy(&actions);
        if (problem != 0)
            throw HarnessError("cannot start " + command.front());
        return process;
    }

    static std::vector<char*> pointersTo(std::vector<std::string>& strings) {
        std::vector<char*> pointers;
        for (auto& string : strings)
            pointers.push_back(string.data());
        pointers.push_back(nullptr);
        return pointers;
    }

    /// Returns the number of windows in the command's output. The output is either that number or a list of
    /// titles.
    [[nodiscard]] std::size_t found() const {
        const std::string text = Sandbox::read(output);
        if (std::size_t number = 0;
            std::istringstream(text) >> number && text.find(crowdTitle) == std::string::npos)
            return number;
        const std::string title = crowdTitle;
        std::size_t count = 0;
        for (auto at = text.find(title); at != std::string::npos; at = text.find(title, at + 1))
            ++count;
        return count;
    }

    Sandbox sandbox;
    std::vector<std::string> command;
    Environment environment;
    std::filesystem::path output;
};

struct Candidate {
    std::string name;
    std::unique_ptr<Reader> reader;
    int readings; ///< How often the list is read in each round.
};

/// A shell command that reads the title, the process and the place of each window.
constexpr const char* commandForEachWindow =
    "for window in $(xdotool search --onlyvisible --name .); do "
    "xdotool getwindowname $window getwindowpid $window getwindowgeometry $window; done";

/// Returns the names and file names of the programs that keep running between readings.
std::vector<std::pair<std::string, std::string>> livingReaders() {
    return {{"Mirrolet", MIRROLET_READER_PROGRAM},
#ifdef WNCK_READER_PROGRAM
            {"libwnck", WNCK_READER_PROGRAM}
#endif
    };
}

std::vector<Candidate> candidates(const XServer& server) {
    std::vector<Candidate> all;
    for (const auto& [name, program] : livingReaders())
        all.push_back({name, std::make_unique<LivingReader>(server, program), 15});
    const auto command = [&](const char* name, int readings, const std::vector<std::string>& words) {
        all.push_back({name, std::make_unique<CommandReader>(server, words), readings});
    };
#ifdef WNCK_READER_PROGRAM
    command("libwnck, started anew", 5, {WNCK_READER_PROGRAM, "once"});
#endif
    command("wmctrl", 5, {"wmctrl", "-lpGx"});
    command("xdotool, one command", 5,
            {"xdotool", "search", "--onlyvisible", "--name", ".", "getwindowname", "%@", "getwindowpid", "%@",
             "getwindowgeometry", "%@"});
    command("xdotool, a command a window", 1, {"sh", "-c", commandForEachWindow});
    return all;
}

void print(const char* what, std::size_t windows, const std::string& name, double program, double server,
           double wall) {
    std::printf("%s\t%zu\t%s\t%.3f\t%.3f\t%.3f\n", what, windows, name.c_str(), program, server, wall);
    std::fflush(stdout);
}

void measureReadings(const XServer& server, const Crowd& windows, int rounds) {
    const auto all = candidates(server);
    for (int round = 0; round < rounds; ++round)
        for (const auto& [name, reader, readings] : all)
            for (int i = 0; i < readings; ++i) {
                const double before = processorTime(server.pid());
                const auto reading = reader->read();
                // Waits, because the X server still needs processor time to remove the reader's connection.
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
                const double used = processorTime(server.pid()) - before;
                if (reading.found < windows.size())
                    throw HarnessError(name + " found " + std::to_string(reading.found) + " of " +
                                       std::to_string(windows.size()) + " windows");
                print("reading", windows.size(), name, reading.program, used, reading.wall);
            }
}

/// Holds the milliseconds of processor time that a program and the X server use in a second. Meanwhile one
/// window changes its title ten times a second, as a busy terminal does, and the program reads the list as
/// often as Mirrolet polls.
struct Seconds {
    double program, server;
};
Seconds secondsOf(const XServer& server, const Crowd& windows, LivingReader* reader) {
    constexpr int seconds = 4;
    const auto start = Clock::now();
    const double program = reader != nullptr ? processorTime(reader->pid()) : 0;
    const double used = processorTime(server.pid());
    for (int tick = 0; tick < 10 * seconds; ++tick) {
        windows.front()->tell(std::string("title ") + crowdTitle + std::to_string(tick));
        if (reader != nullptr && tick % 20 == 10)
            reader->read();
        std::this_thread::sleep_until(start + (tick + 1) * std::chrono::milliseconds(100));
    }
    return {((reader != nullptr ? processorTime(reader->pid()) : 0) - program) / seconds,
            (processorTime(server.pid()) - used) / seconds};
}

void measureSeconds(const XServer& server, const Crowd& windows, int rounds) {
    for (int round = 0; round < rounds; ++round) {
        const double alone = secondsOf(server, windows, nullptr).server;
        for (const auto& [name, program] : livingReaders()) {
            LivingReader reader(server, program);
            const auto used = secondsOf(server, windows, &reader);
            print("second", windows.size(), name, used.program, used.server - alone, 0);
        }
    }
}

void measure(int windowCount, int rounds) {
    const XServer server({.more = {"-maxclients", "1024"}});
    const WindowManager manager(server, WindowManagerKind::openbox);
    const auto windows = crowd(server, windowCount);
    measureReadings(server, windows, rounds);
    measureSeconds(server, windows, rounds);
}

} // namespace

int main(int argumentCount, char** arguments) {
    const int rounds = argumentCount > 1 ? std::atoi(arguments[1]) : 3; // NOLINT: atoi() suffices here.
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, [](int) { interruptWait(); });
    try {
        requireProgram("wmctrl", "wmctrl");
        requireProgram("xdotool", "xdotool");
        std::puts("what\twindows\tprogram\tprogram ms\tserver ms\twall ms");
        for (const int windows : {50, 500})
            measure(windows, rounds);
        return EXIT_SUCCESS;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return EXIT_FAILURE;
    }
}
