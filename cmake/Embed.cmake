# Writes a source file whose constant holds the bytes of a file: cmake -D IN=FILE -D OUT=FILE.cpp -D HEADER=FILE -D NAME=NAME -P Embed.cmake
file(READ "${IN}" bytes HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
string(REGEX REPLACE "((,?'[^']*'){24})," "\\1,\n    " bytes "${bytes}")
file(WRITE "${OUT}" "#include \"${HEADER}\"

namespace report
{
namespace
{
constexpr char kBytes[] = {
    ${bytes}
};
} // namespace

constexpr std::string_view ${NAME}(kBytes, sizeof kBytes);
} // namespace report
")
