# Writes a C++ source that holds files as constant bytes, so that an installed program needs none of
# them beside it.
#
# cmake -DOUTPUT=resources.cpp -DROOT=dir -DGROUPS="schema masterdata" -P embed.cmake
#
# Each group is a folder of ROOT; its .sql and .tsv files come out in the order of their names.

cmake_minimum_required(VERSION 3.25)
string(REPLACE " " ";" groups "${GROUPS}")

set(bytes "")
set(tables "")
set(number 0)
foreach(group IN LISTS groups)
    file(GLOB files LIST_DIRECTORIES false ${ROOT}/${group}/*.sql ${ROOT}/${group}/*.tsv)
    list(SORT files COMPARE STRING)
    set(entries "")
    foreach(path IN LISTS files)
        get_filename_component(name ${path} NAME)
        file(READ ${path} hex HEX)
        string(LENGTH "${hex}" length)
        math(EXPR length "${length} / 2")
        string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," list "${hex}")
        string(APPEND bytes "constexpr std::array<unsigned char, ${length}> file${number}{${list}};\n")
        string(APPEND entries "        {\"${name}\", textOf(file${number})},\n")
        math(EXPR number "${number} + 1")
    endforeach()
    list(LENGTH files count)
    string(APPEND tables "    static const std::array<Resource, ${count}> ${group}{{\n${entries}    }};\n")
    string(APPEND tables "    if (group == \"${group}\") return ${group};\n")
endforeach()

file(WRITE ${OUTPUT}.new "// Made by database/cmake/embed.cmake from the files under database/.
#include <array>
#include <cstddef>

#include \"database/resources.h\"

namespace tamarok::database {
namespace {

${bytes}
template <std::size_t Size>
std::string_view textOf(const std::array<unsigned char, Size>& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace

std::span<const Resource> resources(std::string_view group)
{
${tables}    return {};
}

} // namespace tamarok::database
")
file(COPY_FILE ${OUTPUT}.new ${OUTPUT} ONLY_IF_DIFFERENT)
file(REMOVE ${OUTPUT}.new)
