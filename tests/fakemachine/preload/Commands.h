#pragma once

#include <map>
#include <string>

namespace fakemachine
{

/// What one command line does on the machine.
struct CommandAnswer {
    std::string output;
    std::string errors; // goes where "2>NAME" on the command line says
    int exitStatus = 0;
    int startError = 0; // errno with which popen fails, 0 when it does not
};

/// The commands of a machine by exact command line: commands/commands.conf (see README.md).
class Commands
{
public:
    /// Reads the folder; a missing one means a machine without commands.
    explicit Commands(const std::string& folder);

    /// Runs a command line: writes its errors where it redirects them to, and gives its answer. "cat NAME" and
    /// "rm -f NAME" with "2>/dev/null" act on the real file NAME of the working folder; every other command that is not
    /// listed is one that the shell does not find.
    CommandAnswer run(const std::string& commandLine) const;

private:
    std::map<std::string, CommandAnswer> answers_;
};

} // namespace fakemachine
