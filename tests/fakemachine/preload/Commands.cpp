#include "preload/Commands.h"

#include <fcntl.h>
#include <unistd.h>

#include "preload/Calls.h"
#include "preload/Text.h"

namespace fakemachine
{

static constexpr int kNotFoundStatus = 127;
static constexpr char kQuiet[] = " 2>/dev/null";

static std::string outputFile(const std::string& folder, const std::string& name, const LinePlace& place)
{
    std::optional<std::string> text = readWhole(folder + "/" + name);
    if (!text)
        fail(place, "cannot read " + name);
    return *text;
}

Commands::Commands(const std::string& folder)
{
    LinePlace place{folder + "/commands.conf", 0};
    CommandAnswer* answer = nullptr;
    for (const std::string& line : splitLines(readWhole(place.file).value_or(""))) {
        ++place.number;
        const size_t blank = line.find(' ');
        const std::string directive = line.substr(0, blank);
        const std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
        if (line.empty() || line[0] == '#')
            continue;
        if (directive == "command")
            answer = &(answers_[rest] = {});
        else if (answer == nullptr)
            fail(place, "no command before this line");
        else if (directive == "output")
            answer->output = outputFile(folder, rest, place);
        else if (directive == "stderr")
            answer->errors = outputFile(folder, rest, place);
        else if (directive == "exit")
            answer->exitStatus = static_cast<int>(parseNumber(rest, place));
        else if (directive == "fail")
            answer->startError = parseErrno(rest, place);
        else
            fail(place, "unknown directive " + directive);
    }
}

// The file of the working folder to which the command line redirects its errors; empty when there is none.
static std::string errorFile(const std::string& commandLine)
{
    const size_t redirection = commandLine.find(" 2>");
    if (redirection == std::string::npos)
        return "";
    const size_t start = redirection + 3;
    const std::string name = commandLine.substr(start, commandLine.find(' ', start) - start);
    return name.empty() || name[0] == '/' || name[0] == '&' ? "" : name;
}

// False when the file cannot be made: the shell then does not start the command.
static bool writeErrors(const std::string& name, const std::string& text)
{
    static auto* const realOpen = realFunction<int(const char*, int, ...)>("open64");
    static auto* const realWrite = realFunction<ssize_t(int, const void*, size_t)>("write");
    static auto* const realClose = realFunction<int(int)>("close");
    const int descriptor = realOpen(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return false;
    const bool written = realWrite(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    realClose(descriptor);
    return written;
}

// The operand of "PROGRAM NAME 2>/dev/null" when it names a file of the working folder; else empty.
static std::string localOperand(const std::string& commandLine, const std::string& program)
{
    const size_t quietSize = sizeof kQuiet - 1;
    if (commandLine.rfind(program, 0) != 0 || commandLine.size() <= program.size() + quietSize ||
        commandLine.compare(commandLine.size() - quietSize, quietSize, kQuiet) != 0)
        return "";
    const std::string name = commandLine.substr(program.size(), commandLine.size() - program.size() - quietSize);
    return name[0] == '/' || name.find_first_of(" ;|&$`*?") != std::string::npos ? "" : name;
}

CommandAnswer Commands::run(const std::string& commandLine) const
{
    const auto listed = answers_.find(commandLine);
    CommandAnswer answer;
    if (listed != answers_.end()) {
        answer = listed->second;
    } else if (const std::string shown = localOperand(commandLine, "cat "); !shown.empty()) {
        const std::optional<std::string> text = readWhole(shown);
        answer.output = text.value_or("");
        answer.exitStatus = text ? 0 : 1;
        return answer;
    } else if (const std::string removed = localOperand(commandLine, "rm -f "); !removed.empty()) {
        static auto* const realUnlink = realFunction<int(const char*)>("unlink");
        realUnlink(removed.c_str());
        return answer;
    } else {
        answer.exitStatus = kNotFoundStatus;
        answer.errors = "sh: " + commandLine.substr(0, commandLine.find(' ')) + ": not found\n";
    }
    const std::string errors = errorFile(commandLine);
    if (answer.startError == 0 && !errors.empty() && !writeErrors(errors, answer.errors))
        return CommandAnswer{"", "", 2, 0};
    return answer;
}

} // namespace fakemachine
