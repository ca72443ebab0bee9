#include "tool/CommandLine.h"

#include <algorithm>

namespace tool
{
namespace
{
constexpr size_t kWidth = 80;

// Words of a text in lines of at most kWidth characters, each behind so many blanks.
void printWrapped(std::ostream& out, std::string_view text, size_t indent, size_t firstColumn)
{
    size_t column = firstColumn;
    bool isFirst = true;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (!isFirst && column + 1 + word.size() > kWidth) {
            out << '\n' << std::string(indent, ' ');
            column = indent;
            isFirst = true;
        }
        out << (isFirst ? "" : " ") << word;
        column += word.size() + (isFirst ? 0 : 1);
        isFirst = false;
    }
    out << '\n';
}

// A term and its explanation in two columns.
void printTerm(std::ostream& out, const std::string& term, std::string_view what, size_t column)
{
    out << "  " << term;
    const size_t end = term.size() + 2;
    if (end + 2 > column)
        out << '\n' << std::string(column, ' ');
    else
        out << std::string(column - end, ' ');
    printWrapped(out, what, column, column);
}

std::string optionTerm(const OptionDef& option)
{
    std::string term = option.brief != nullptr ? std::string(option.brief) + ", " : "    ";
    term += option.name;
    return option.value != nullptr ? term + " " + option.value : term;
}
} // namespace

void printHelp(std::ostream& out)
{
    out << "usage: invhwctl COMMAND [OPTION]... [OPERAND]...\n\n"
           "The inventory of a Linux machine from what its kernel tells, and tools for reports of it.\n\n";
    for (const CommandDef* command : commands())
        printTerm(out, command->name, command->summary, 12);
    out << "\n  --help      this text; invhwctl COMMAND --help tells of one command\n"
           "  --version   version, and the libraries that it was built with\n\n"
           "Examples:\n";
    for (const CommandDef* command : commands())
        if (!command->examples.empty())
            out << "  " << command->examples.front().line << '\n';
}

void printHelp(std::ostream& out, const CommandDef& command)
{
    out << "usage: invhwctl " << command.name << (command.options.empty() ? "" : " [OPTION]...");
    if (command.operands != nullptr)
        out << ' ' << command.operands;
    out << "\n\n";
    printWrapped(out, command.description, 0, 0);
    if (!command.options.empty())
        out << "\nOptions:\n";
    for (const OptionDef& option : command.options)
        printTerm(out, optionTerm(option), option.help, 28);
    printTerm(out, "-h, --help", "this text", 28);
    if (!command.examples.empty())
        out << "\nExamples:\n";
    for (const ExampleDef& example : command.examples) {
        out << "  " << example.line << "\n      ";
        printWrapped(out, example.what, 6, 6);
    }
}
} // namespace tool
