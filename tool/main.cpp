// invhwctl: the words behind its name choose a subcommand (tool/<Name>Command.cpp).

#include "tool/CommandLine.h"

int main(int argc, char** argv)
{
    const std::span<const char* const> words(argv, static_cast<size_t>(argc));
    return tool::run(words.subspan(words.empty() ? 0 : 1));
}
