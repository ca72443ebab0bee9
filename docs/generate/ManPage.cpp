// Writes the manual page of invhwctl from the declarations of its command line: invhw_ctl_man FILE

#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include "host/Scan.h"
#include "tool/CommandLine.h"

namespace
{
// Text as roff takes it: no character of it is a request, and a hyphen is the one that is typed.
std::string roff(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '\\')
            escaped += "\\e";
        else if (c == '-')
            escaped += "\\-";
        else
            escaped += c;
    }
    const bool isRequest = escaped.starts_with('.') || escaped.starts_with('\'');
    return isRequest ? "\\&" + escaped : escaped;
}

void writeOption(std::ostream& out, const tool::OptionDef& option)
{
    out << ".TP\n\\fB";
    if (option.brief != nullptr)
        out << roff(option.brief) << "\\fR, \\fB";
    out << roff(option.name) << "\\fR";
    if (option.value != nullptr)
        out << " \\fI" << roff(option.value) << "\\fR";
    out << '\n' << roff(option.help) << '\n';
}

void writeExample(std::ostream& out, const tool::ExampleDef& example)
{
    out << ".PP\n.RS\n.nf\n" << roff(example.line) << "\n.fi\n.RE\n" << roff(example.what) << '\n';
}

void writeCommand(std::ostream& out, const tool::CommandDef& command)
{
    out << ".SS " << roff(command.name) << "\n.B invhwctl " << roff(command.name) << '\n';
    if (!command.options.empty())
        out << "[\\fIOPTION\\fR]...\n";
    if (command.operands != nullptr)
        out << "\\fI" << roff(command.operands) << "\\fR\n";
    out << ".PP\n" << roff(command.description) << '\n';
    for (const tool::OptionDef& option : command.options)
        writeOption(out, option);
    if (!command.examples.empty())
        out << ".PP\nExamples:\n";
    for (const tool::ExampleDef& example : command.examples)
        writeExample(out, example);
}

void writeHead(std::ostream& out)
{
    out << ".TH INVHWCTL 1 \"\" \"" << host::kProgram << "\" \"User Commands\"\n"
        << ".SH NAME\ninvhwctl \\- the inventory of a Linux machine, and tools for reports of it\n"
           ".SH SYNOPSIS\n.B invhwctl\n\\fICOMMAND\\fR [\\fIOPTION\\fR]... [\\fIOPERAND\\fR]...\n.br\n"
           ".B invhwctl\n\\fICOMMAND\\fR \\fB\\-\\-help\\fR\n.br\n.B invhwctl \\-\\-version\n"
           ".SH DESCRIPTION\n.B invhwctl\n"
           "reports what a machine is from what its kernel tells.\n"
           "Each of its commands has examples at its end; the name\n.B \\-\nstands for standard input or output.\n"
           ".SH COMMANDS\n";
}

void writeFoot(std::ostream& out)
{
    out << ".SH EXIT STATUS\n"
           "0 when the command did what it was asked for, 2 when it could not or the command line is wrong;\n"
           "one line on standard error says why.\nCommands that end otherwise say so.\n"
           ".SH SEE ALSO\n.BR invhw (8)\n";
}
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: invhw_ctl_man FILE\n";
        return 2;
    }
    std::ofstream file(argv[1], std::ios::binary);
    writeHead(file);
    for (const tool::CommandDef* command : tool::commands())
        writeCommand(file, *command);
    writeFoot(file);
    file.close();
    if (file.fail())
        std::cerr << argv[1] << " cannot be written\n";
    return file.fail() ? 1 : 0;
}
