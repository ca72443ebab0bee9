#include "tool/CommandLine.h"

#include <gtest/gtest.h>
#include <sstream>

#include "tool/Commands.h"

using namespace tool;

namespace
{
struct Parsed {
    bool ok;
    Arguments arguments;
    std::string reason;
};

Parsed parsed(const CommandDef& command, std::vector<const char*> words)
{
    Parsed result{};
    result.ok = parse(command, words, result.arguments, result.reason);
    return result;
}
} // namespace

TEST(CommandLine, takesOptionsInEveryForm)
{
    const Parsed p =
        parsed(SCAN_COMMAND, {"--group", "Storage", "-g", "IP Address", "--format=json", "-ofile", "--sources"});
    ASSERT_TRUE(p.ok) << p.reason;
    const auto groups = p.arguments.values("--group");
    EXPECT_EQ(std::vector<std::string>(groups.begin(), groups.end()),
              (std::vector<std::string>{"Storage", "IP Address"}));
    EXPECT_EQ(p.arguments.value("--format", "xml"), "json");
    EXPECT_EQ(p.arguments.value("--output", "-"), "file");
    EXPECT_TRUE(p.arguments.has("--sources"));
    EXPECT_FALSE(p.arguments.has("--root"));
    EXPECT_EQ(p.arguments.value("--root", "/"), "/");
}

TEST(CommandLine, refusesInOneLineThatNamesTheNearestWord)
{
    static const struct {
        const CommandDef& command;
        std::vector<const char*> words;
        const char* reason;
    } cases[] = {
        {SCAN_COMMAND, {"--gruop", "Storage"}, "unknown option --gruop; did you mean --group?"},
        {SCAN_COMMAND, {"--form=json"}, "unknown option --form=json; did you mean --format?"},
        {SCAN_COMMAND, {"--xyzzy"}, "unknown option --xyzzy"},
        {SCAN_COMMAND, {"--format", "yaml"}, "--format yaml: expected xml or json"},
        {SCAN_COMMAND, {"operand"}, "too many operands: operand"},
        {RECORD_COMMAND, {"one", "two"}, "too many operands: two"},
        {RECORD_COMMAND, {"--output", "file"}, "missing operand: DIR"},
        {RECORD_COMMAND, {"--root", "/", "dir"}, "unknown option --root; did you mean --group?"},
        {SCAN_COMMAND, {"--", "--sources"}, "too many operands: --sources"},
    };
    for (const auto& c : cases) {
        const Parsed p = parsed(c.command, c.words);
        EXPECT_FALSE(p.ok);
        EXPECT_EQ(p.reason, c.reason);
    }
    const Parsed missing = parsed(SCAN_COMMAND, {"--group"});
    EXPECT_FALSE(missing.ok);
    EXPECT_EQ(missing.reason.find('\n'), std::string::npos);
    EXPECT_NE(missing.reason.find("--group"), std::string::npos);
}

TEST(CommandLine, knowsTheNearestWord)
{
    const std::vector<std::string> words{"Storage", "Memory", "Memory Modules"};
    EXPECT_EQ(nearest("storge", words), "Storage");
    EXPECT_EQ(nearest("memory", words), "Memory");
    EXPECT_EQ(nearest("Memory Mod", words), "Memory Modules");
    EXPECT_EQ(nearest("zzzzzzzz", words), "");
    EXPECT_EQ(nearest("", words), "");
    EXPECT_EQ(nearest(std::string(100000, 'a'), words), "");
}

TEST(Help, tellsEveryOptionAndHasAnExampleOfEveryCommand)
{
    for (const CommandDef* command : commands()) {
        std::ostringstream help;
        printHelp(help, *command);
        for (const OptionDef& option : command->options)
            EXPECT_NE(help.str().find(option.name), std::string::npos) << command->name << ' ' << option.name;
        ASSERT_FALSE(command->examples.empty()) << command->name;
        for (const ExampleDef& example : command->examples)
            EXPECT_NE(help.str().find(example.line), std::string::npos);
        std::istringstream lines(help.str());
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(line.size(), 100u) << line;
    }
    std::ostringstream help;
    printHelp(help);
    for (const CommandDef* command : commands())
        EXPECT_NE(help.str().find(command->summary), std::string::npos);
}
