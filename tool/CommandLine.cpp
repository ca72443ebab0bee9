#include "tool/CommandLine.h"

#include <algorithm>
#include <iostream>

#include "host/Scan.h"
#include "tool/Commands.h"

namespace tool
{
namespace
{
constexpr const CommandDef* kCommands[] = {&SCAN_COMMAND, &RECORD_COMMAND,  &SHOW_COMMAND,  &CHECK_COMMAND,
                                           &DIFF_COMMAND, &CONVERT_COMMAND, &REDACT_COMMAND};

const CommandDef* findCommand(std::string_view name)
{
    for (const CommandDef* command : kCommands)
        if (command->name == name)
            return command;
    return nullptr;
}

bool isHelp(std::string_view word)
{
    return word == "--help" || word == "-h" || word == "help";
}

int unknownCommand(std::string_view word)
{
    std::vector<std::string> names;
    for (const CommandDef* command : kCommands)
        names.emplace_back(command->name);
    const bool isOption = word.starts_with('-');
    if (isOption)
        names = {"--help", "--version"};
    complain(std::string(isOption ? "unknown option " : "unknown subcommand ") + std::string(word) +
             suggestion(word, names));
    return EXIT_TROUBLE;
}

int runCommand(const CommandDef& command, std::span<const char* const> words)
{
    if (std::any_of(words.begin(), words.end(),
                    [](std::string_view word) { return word == "--help" || word == "-h"; })) {
        printHelp(std::cout, command);
        return EXIT_OK;
    }
    Arguments arguments;
    std::string reason;
    if (!parse(command, words, arguments, reason))
        return fail(command.name, reason);
    return command.run(arguments);
}
} // namespace

std::span<const CommandDef* const> commands()
{
    return kCommands;
}

std::string Arguments::value(std::string_view option, std::string_view otherwise) const
{
    const std::span<const std::string> all = values(option);
    return all.empty() ? std::string(otherwise) : all.back();
}

std::span<const std::string> Arguments::values(std::string_view option) const
{
    const auto found = options.find(option);
    return found != options.end() ? std::span<const std::string>(found->second) : std::span<const std::string>();
}

int run(std::span<const char* const> words)
{
    if (words.empty()) {
        printHelp(std::cerr);
        return EXIT_TROUBLE;
    }
    const std::string_view first = words[0];
    if (first == "--version") {
        printVersion(std::cout);
        return EXIT_OK;
    }
    const CommandDef* command = findCommand(isHelp(first) && words.size() > 1 ? words[1] : first);
    if (command != nullptr && isHelp(first))
        printHelp(std::cout, *command);
    else if (isHelp(first))
        printHelp(std::cout);
    else
        return command != nullptr ? runCommand(*command, words.subspan(1)) : unknownCommand(first);
    return EXIT_OK;
}

int fail(const char* command, std::string_view reason)
{
    complain(std::string(command) + ": " + std::string(reason));
    return EXIT_TROUBLE;
}

void complain(std::string_view message)
{
    std::cerr << "invhwctl: " << message << '\n';
}
} // namespace tool
