# Writes OUTPUT, a source file that holds the rows of the JSON file PACK as tables.
# cmake -DPACK=a.json -DOUTPUT=file.cpp -P CompilePack.cmake

# Each key of a row, its field in C++ and the form of its value, in the order of the fields.
set(fields
    id:id:text name:name:text group:group:text personas:personas:personas risk:risk:risk
    paths:paths:list regenerates:regenerates:text officialCommand:officialCommand:text
    quitApps:quitApps:list contentsOnly:contentsOnly:switch names:names:list
    suffixes:suffixes:list markers:markers:list excludes:excludes:list
    proofs:proofs:list disproofs:disproofs:list
    minAgeDays:minAgeDays:number catchAll:isCatchAll:switch)

# Sets `initializer` to that of the row, an object of JSON, with the fields `more` at its end.
function(initialize row more)
    set(initializer "")
    foreach(entry IN LISTS fields)
        string(REPLACE ":" ";" entry ${entry})
        list(GET entry 0 key)
        list(GET entry 1 field)
        list(GET entry 2 form)
        string(JSON value ERROR_VARIABLE isMissing GET "${row}" ${key})
        if(isMissing)
            continue()
        elseif(form STREQUAL text)
            string(REPLACE "\\" "\\\\" value "${value}")
            string(REPLACE "\"" "\\\"" value "${value}")
            set(value "\"${value}\"")
        elseif(form STREQUAL risk)
            set(value "Risk::${value}")
        elseif(form STREQUAL switch)
            set(value true)
        elseif(NOT form STREQUAL number)
            # A text within a list is escaped in JSON as it is in C++.
            string(REGEX REPLACE "^\\[(.*)\\]$" "{\\1}" value "${value}")
            if(form STREQUAL personas)
                string(REGEX REPLACE "\"([^\"]+)\"" "Persona::\\1" value "${value}")
            endif()
        endif()
        string(APPEND initializer ".${field} = ${value}, ")
    endforeach()
    set(initializer "        {${initializer}${more}},\n" PARENT_SCOPE)
endfunction()

# Sets `rows` to the initializers of the pack's elements `key`.
function(initialize_all key more)
    set(rows "")
    string(JSON elements GET "${pack}" ${key})
    string(JSON count LENGTH "${elements}")
    math(EXPR last "${count} - 1")
    foreach(index RANGE ${last})
        string(JSON row GET "${elements}" ${index})
        string(JSON isCatchAll ERROR_VARIABLE isMissing GET "${row}" catchAll)
        if(NOT isMissing)
            string(JSON row SET "${row}" risk "\"safe\"")
            string(JSON row SET "${row}" regenerates
                "\"Apps rebuild their caches on demand. Apple-owned caches are left alone.\"")
        endif()
        initialize("${row}" "${more}")
        string(APPEND rows "${initializer}")
    endforeach()
    set(rows "${rows}" PARENT_SCOPE)
endfunction()

file(READ ${PACK} pack)
set(source "#include \"BrimloCore/RulePacks/RulePacks.h\"\n\nnamespace Brimlo::RulePacks {\n")
initialize_all(rules ".confidence = Confidence::unverified")
string(APPEND source "\nstd::vector<CleanupRule> compiledRules() {\n    return {\n${rows}    };\n}\n")
initialize_all(artifacts "")
string(APPEND source
    "\nstd::vector<ArtifactPattern> compiledArtifacts() {\n    return {\n${rows}    };\n}\n")
file(WRITE ${OUTPUT} "${source}\n}  // namespace Brimlo::RulePacks\n")
