#pragma once

#include <cstddef>
#include <map>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The command line, declared once: parsing, --help, the manual page and shell completion follow from these rows.

namespace tool
{
/// Exit statuses of every subcommand but those that document more.
enum ExitStatus { EXIT_OK = 0, EXIT_TROUBLE = 2 };

/// One option of a subcommand.
struct OptionDef {
    const char* name;  // "--group"
    const char* brief; // "-g", or null
    const char* value; // "NAME", null for a flag
    const char* help;
    bool repeatable = false;
    std::span<const char* const> words = {}; // the only values, or any
};

/// A whole command line and what it does.
struct ExampleDef {
    const char* line;
    const char* what;
};

class Arguments;

/// One subcommand.
struct CommandDef {
    const char* name;
    const char* summary;     // one line, for the list of subcommands
    const char* description; // what it does, for its own help; lines are wrapped
    const char* operands;    // "FILE", "[FILE]...", null when it takes none
    size_t leastOperands;
    size_t mostOperands;
    std::span<const OptionDef> options;
    std::span<const ExampleDef> examples;
    int (*run)(const Arguments&); // returns the exit status
};

/// The subcommands in the order of the help text.
std::span<const CommandDef* const> commands();

/// What a user wrote behind a subcommand, parsed: every option is one that the subcommand declares.
class Arguments
{
public:
    std::map<std::string, std::vector<std::string>, std::less<>> options;
    std::vector<std::string> operands;

    bool has(std::string_view option) const { return options.find(option) != options.end(); }
    /// The last value of an option, or a default.
    std::string value(std::string_view option, std::string_view otherwise = "") const;
    /// All values of an option.
    std::span<const std::string> values(std::string_view option) const;
};

/// Parses what stands behind a subcommand's name. Returns false, and one line that names the nearest valid word, when
/// it is no command line of that subcommand.
bool parse(const CommandDef& command, std::span<const char* const> words, Arguments& arguments, std::string& reason);

/// Runs the program: words are those behind its name. Returns its exit status.
int run(std::span<const char* const> words);

/// Help of the program, and of one subcommand.
void printHelp(std::ostream& out);
void printHelp(std::ostream& out, const CommandDef& command);

/// One line to standard error, behind the program's name.
void complain(std::string_view message);

/// The same of a subcommand that cannot do its work, whose exit status it returns.
int fail(const char* command, std::string_view reason);

/// The word of a list that is most like the given one, empty when none is like it.
std::string nearest(std::string_view word, std::span<const std::string> words);

/// "; did you mean NEAREST?", or nothing.
std::string suggestion(std::string_view word, std::span<const std::string> words);
} // namespace tool
