// The one file that knows CLI11: declarations of a subcommand become its options, its findings become Arguments.

#include "tool/CommandLine.h"

#include <CLI/CLI.hpp>

namespace tool
{
namespace
{
std::string spelling(const OptionDef& option)
{
    return option.brief != nullptr ? std::string(option.brief) + "," + option.name : option.name;
}

void declare(CLI::App& app, const OptionDef& option, std::vector<std::string>& values)
{
    if (option.value == nullptr) {
        app.add_flag(spelling(option), option.help)->disable_flag_override();
        return;
    }
    CLI::Option* declared = app.add_option(spelling(option), values, option.help)->expected(1)->allow_extra_args(false);
    if (option.repeatable)
        declared->take_all();
}

std::vector<std::string> optionNames(const CommandDef& command)
{
    std::vector<std::string> names{"--help"};
    for (const OptionDef& option : command.options)
        names.emplace_back(option.name);
    return names;
}

// The first word that begins like an option and is none.
std::string unknownOption(const CommandDef& command, const std::vector<std::string>& extras)
{
    for (const std::string& word : extras)
        if (word.size() > 1 && word[0] == '-')
            return "unknown option " + word + suggestion(word.substr(0, word.find('=')), optionNames(command));
    return "too many operands: " + (extras.empty() ? "" : extras.front());
}

bool areWordsAllowed(const OptionDef& option, const std::vector<std::string>& values, std::string& reason)
{
    std::vector<std::string> words(option.words.begin(), option.words.end());
    for (const std::string& value : values) {
        if (words.empty() || std::find(words.begin(), words.end(), value) != words.end())
            continue;
        reason = std::string(option.name) + " " + value + ": expected ";
        for (const std::string& word : words)
            reason += (&word == &words.front() ? "" : &word == &words.back() ? " or " : ", ") + word;
        return false;
    }
    return true;
}

bool checkOperands(const CommandDef& command, const Arguments& arguments, std::string& reason)
{
    const size_t count = arguments.operands.size();
    if (count < command.leastOperands)
        reason = std::string("missing operand: ") + command.operands;
    else if (count > command.mostOperands)
        reason = "too many operands: " + arguments.operands[command.mostOperands];
    return reason.empty();
}
} // namespace

bool parse(const CommandDef& command, std::span<const char* const> words, Arguments& arguments, std::string& reason)
{
    CLI::App app;
    app.set_help_flag();
    std::vector<std::vector<std::string>> values(command.options.size());
    for (size_t i = 0; i < values.size(); ++i)
        declare(app, command.options[i], values[i]);
    app.add_option("operands", arguments.operands);
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend())); // taken from its back
    } catch (const CLI::ExtrasError&) {
        reason = unknownOption(command, app.remaining());
        return false;
    } catch (const CLI::ParseError& error) {
        reason = error.what();
        std::replace(reason.begin(), reason.end(), '\n', ' ');
        return false;
    }
    for (size_t i = 0; i < values.size(); ++i) {
        const OptionDef& option = command.options[i];
        if (app.count(option.name) != 0)
            arguments.options[option.name] = values[i];
        if (!areWordsAllowed(option, values[i], reason))
            return false;
    }
    return checkOperands(command, arguments, reason);
}
} // namespace tool
