// What invhwctl shows on a terminal: its width, its colours, its characters.

#include <gtest/gtest.h>
#include <pty.h>
#include <sstream>
#include <sys/ioctl.h>
#include <unistd.h>

#include "tests/ctl/Program.h"

namespace
{
const std::string kReport = std::string(INVHW_HOSTS) + "/../show.json";

// What a program writes to a terminal of this width.
std::string onTerminal(std::vector<std::string> arguments, size_t width, const std::vector<std::string>& environment)
{
    winsize size{};
    size.ws_col = static_cast<unsigned short>(width);
    size.ws_row = 24;
    int terminal = -1, program = -1;
    EXPECT_EQ(openpty(&terminal, &program, nullptr, nullptr, &size), 0);
    Program run(std::move(arguments));
    for (const std::string& variable : environment)
        run.environment(variable);
    run.before([&] {
        dup2(program, STDOUT_FILENO);
        close(terminal);
    });
    run.start();
    close(program);
    std::string text;
    char block[4096];
    for (ssize_t got = 0; (got = read(terminal, block, sizeof block)) > 0;)
        text.append(block, static_cast<size_t>(got));
    EXPECT_EQ(run.finish().status, 0);
    close(terminal);
    return text;
}

// Characters of a line as UTF-8 has them, without escape sequences of colours.
size_t columnsOf(const std::string& line)
{
    size_t columns = 0;
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\033')
            i = line.find('m', i);
        else if ((static_cast<unsigned char>(line[i]) & 0xC0U) != 0x80 && line[i] != '\r')
            ++columns;
    }
    return columns;
}

class Show : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        const ProgramResult scanned =
            Program({"scan", "--root", std::string(INVHW_HOSTS) + "/laptop", "-f", "json", "-o", kReport}).run();
        ASSERT_EQ(scanned.status, 0) << scanned.errors;
    }
};
} // namespace

TEST_F(Show, isAsWideAsTheTerminal)
{
    for (const size_t width : {60U, 80U, 132U}) {
        for (const std::vector<std::string>& arguments :
             {std::vector<std::string>{"show", kReport}, {"show", "--group", "Route", "-g", "Storage", kReport}}) {
            std::istringstream lines(onTerminal(arguments, width, {"TERM=xterm", "LC_ALL=C.UTF-8"}));
            for (std::string line; std::getline(lines, line);)
                EXPECT_LE(columnsOf(line), width) << line;
        }
    }
}

TEST_F(Show, hasColoursWhereTheyAreWanted)
{
    const std::vector<std::string> arguments{"show", kReport};
    EXPECT_NE(onTerminal(arguments, 80, {"TERM=xterm", "LC_ALL=C.UTF-8"}).find("\033[1m"), std::string::npos);
    EXPECT_NE(onTerminal(arguments, 80, {"TERM=xterm", "NO_COLOR="}).find("\033[1m"), std::string::npos);
    for (const std::vector<std::string>& environment :
         {std::vector<std::string>{"TERM=xterm", "NO_COLOR=1"}, {"TERM=dumb"}, {}})
        EXPECT_EQ(onTerminal(arguments, 80, environment).find('\033'), std::string::npos);
    EXPECT_EQ(Program(arguments).run().output.find('\033'), std::string::npos);
}

TEST_F(Show, writesAsciiToATerminalThatHasNothingElse)
{
    const std::string ascii = onTerminal({"show", kReport}, 132, {"TERM=xterm", "LC_ALL=C"});
    for (const char c : ascii)
        ASSERT_GE(c, 0) << ascii;
    EXPECT_NE(ascii.find("`-/dev/nvme0n1p3"), std::string::npos) << ascii;
    EXPECT_NE(Program({"show", kReport}).run().output.find("\xE2\x94\x94\xE2\x94\x80/dev/nvme0n1p3"),
              std::string::npos);
}
