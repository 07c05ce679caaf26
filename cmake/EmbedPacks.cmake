# Writes OUTPUT, a source file that holds the texts of the JSON files PACKS.
# cmake -DPACKS=a.json;b.json -DOUTPUT=file.cpp -P EmbedPacks.cmake
set(source "#include \"BrimloCore/RulePacks/RulePacks.h\"

#include <array>

namespace Brimlo::RulePacks {

std::span<const Source> embedded() {
    static constexpr std::array kSources{
")
foreach(pack IN LISTS PACKS)
    cmake_path(GET pack FILENAME name)
    file(READ ${pack} hex HEX)
    # As bytes, because a text may contain CMake's own syntax.
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" text "${hex}")
    string(APPEND source "        Source{\"${name}\", \"${text}\"},\n")
endforeach()
string(APPEND source "    };
    return kSources;
}

}  // namespace Brimlo::RulePacks
")
file(WRITE ${OUTPUT} "${source}")
