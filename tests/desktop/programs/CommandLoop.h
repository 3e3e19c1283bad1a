#pragma once

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <poll.h>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

/// Functions by the name of an option or a command. The text is what follows the name.
using Handlers = std::map<std::string, std::function<void(const std::string&)>>;

inline std::function<void(const std::string&)> storesIn(std::string& text) {
    return [&text](const std::string& value) { text = value; };
}

inline std::function<void(const std::string&)> storesIn(int& number) {
    return [&number](const std::string& value) { number = std::stoi(value); };
}

/// Reads a program's arguments. An option in `flags` stands alone, and one in `values` is followed by its
/// value. Returns false if an argument is neither.
inline bool readOptions(const std::vector<std::string>& arguments, const Handlers& values,
                        const std::map<std::string, bool*>& flags) {
    for (auto name = arguments.begin(); name != arguments.end(); ++name) {
        if (const auto flag = flags.find(*name); flag != flags.end()) {
            *flag->second = true;
            continue;
        }
        const auto option = values.find(*name);
        if (option == values.end() || ++name == arguments.end())
            return false;
        option->second(*name);
    }
    return true;
}

/// Runs the commands that a test writes to the program's standard input, and paints frames at a rate. Ends at
/// the command "quit" and at the end of standard input. Knows the command "rate" by itself.
class CommandLoop {
  public:
    CommandLoop(Handlers handlers, std::function<void()> nextFrame, int framesPerSecond)
        : commands(std::move(handlers)), nextFrame(std::move(nextFrame)) {
        commands["rate"] = [this](const std::string& rate) { setRate(std::stoi(rate)); };
        commands["quit"] = [this](const std::string& /*rest*/) { done = true; };
        setRate(framesPerSecond);
    }

    [[nodiscard]] bool isDone() const { return done; }

    /// Waits until the connection to the display server can be read, a command arrives or a frame is due.
    /// Returns whether the connection can be read.
    bool wait(int connection) {
        std::array<pollfd, 2> sources{{{connection, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
        poll(sources.data(), sources.size(), timeout());
        hasInput = (sources[1].revents & (POLLIN | POLLHUP)) != 0;
        return (sources[0].revents & (POLLIN | POLLHUP)) != 0;
    }

    /// Runs the commands that have arrived, and paints the frame that is due.
    void proceed() {
        if (std::exchange(hasInput, false))
            readCommands();
        if (!period || Clock::now() < due)
            return;
        // Skips the frames that are already late, so that they are not all painted at once.
        while (due <= Clock::now())
            due += *period;
        nextFrame();
    }

  private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] int timeout() const {
        if (!period)
            return -1;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now());
        return static_cast<int>(std::max<std::int64_t>(0, left.count()));
    }

    void setRate(int framesPerSecond) {
        period.reset();
        if (framesPerSecond > 0)
            period = std::chrono::nanoseconds(1'000'000'000 / framesPerSecond);
        due = Clock::now();
    }

    void readCommands() {
        std::array<char, 1024> block{};
        const ssize_t count = read(STDIN_FILENO, block.data(), block.size());
        if (count == 0 || (count < 0 && errno != EINTR))
            done = true;
        pending.append(block.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        for (auto end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
            obey(pending.substr(0, end));
            pending.erase(0, end + 1);
        }
    }

    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        std::string rest;
        words >> verb >> std::ws;
        std::getline(words, rest);
        const auto command = commands.find(verb);
        if (command == commands.end())
            std::cerr << "no such command: " << line << std::endl;
        else
            command->second(rest);
    }

    Handlers commands;
    std::function<void()> nextFrame;
    std::optional<std::chrono::nanoseconds> period;
    Clock::time_point due;
    std::string pending;
    bool hasInput = false;
    bool done = false;
};
