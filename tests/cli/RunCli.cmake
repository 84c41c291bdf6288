# Runs the built quillon-cli the way scripts use it and checks what it gives.
#   cmake -DCLI=<quillon-cli> -DSUITE=<sample suite> -DWORK=<scratch folder> -DCASE=<case> -P RunCli.cmake
# Cases:
#   view        view of a sample file prints the file as it stands, to standard
#               output and with --out to a file of the same name; exit 0
#   diff        the sample files keep every value ("No values change.", exit 0);
#               a value the writer rounds is reported (exit 1); a file that
#               can't be opened gives exit 2
#   exit-codes  0 for success, 1 for a file that can't be opened (view) or
#               a file with findings (check), 2 for a wrong command line or a
#               file that can't be opened (check)

set(maize "${SUITE}/Maize/QLNV2101.MZX")
set(seasonal "${SUITE}/Seasonal/QLNV1902.SNX")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")

# Runs the tool with the arguments that follow EXPECT; fails unless it ends
# with that exit code. Standard output goes to ${WORK}/stdout.
function(run expected)
    execute_process(COMMAND "${CLI}" ${ARGN}
        RESULT_VARIABLE code
        OUTPUT_FILE "${WORK}/stdout"
        ERROR_VARIABLE errors
        TIMEOUT 120)
    if(NOT code STREQUAL "${expected}")
        message(FATAL_ERROR "quillon-cli ${ARGN}: exit ${code}, expected ${expected}\n${errors}")
    endif()
    set(errors "${errors}" PARENT_SCOPE)
endfunction()

function(same_file expected actual)
    execute_process(COMMAND "${CMAKE_COMMAND}" -E compare_files "${expected}" "${actual}" RESULT_VARIABLE differ)
    if(differ)
        file(SIZE "${expected}" expected_size)
        file(SIZE "${actual}" actual_size)
        message(FATAL_ERROR "${actual} (${actual_size} bytes) differs from ${expected} (${expected_size} bytes)")
    endif()
endfunction()

if(CASE STREQUAL "view")
    run(0 view "${maize}" --suite "${SUITE}")
    same_file("${maize}" "${WORK}/stdout")

    # Two files in one run, written to a folder, with a program folder that
    # is kept: the second run finds the working database already built.
    foreach(round 1 2)
        run(0 view "${maize}" "${seasonal}" --suite "${SUITE}" --app-dir "${WORK}/app" --out "${WORK}/out${round}")
        same_file("${maize}" "${WORK}/out${round}/QLNV2101.MZX")
        same_file("${seasonal}" "${WORK}/out${round}/QLNV1902.SNX")
    endforeach()
    if(NOT EXISTS "${WORK}/app/QUILLONTEMP2.mdb")
        message(FATAL_ERROR "the working database wasn't kept in the program folder")
    endif()

elseif(CASE STREQUAL "exit-codes")
    # A file that can't be opened costs that file, not the run.
    run(1 view "${WORK}/MISSING1.MZX" "${maize}" --suite "${SUITE}" --out "${WORK}/out")
    same_file("${maize}" "${WORK}/out/QLNV2101.MZX")
    if(NOT errors MATCHES "Cannot open file [^\n]*MISSING1\\.MZX\\.")
        message(FATAL_ERROR "no word of the missing file:\n${errors}")
    endif()

    run(0 check "${seasonal}" --suite "${SUITE}")
    run(1 check "${maize}" --suite "${SUITE}")
    file(READ "${WORK}/stdout" findings)
    if(NOT findings MATCHES "Treatment #8/Irrigation")
        message(FATAL_ERROR "check printed no findings:\n${findings}")
    endif()
    run(2 check "${WORK}/MISSING1.MZX" --suite "${SUITE}")

    run(2)
    run(2 frob "${maize}")
    run(2 view)
    run(2 view "${maize}" --colour)
    run(2 view "${maize}" --suite)
    run(2 check "${maize}" --out "${WORK}/out")
    run(2 view "${maize}" --suite "${WORK}/no such suite")
    if(NOT errors MATCHES "usage: quillon-cli")
        message(FATAL_ERROR "a wrong command line shows no usage:\n${errors}")
    endif()

elseif(CASE STREQUAL "diff")
    run(0 diff "${maize}" "${seasonal}" --suite "${SUITE}")
    file(READ "${WORK}/stdout" report)
    string(REGEX MATCHALL "\n  No values change[.]\n" unchanged "${report}")
    list(LENGTH unchanged count)
    if(NOT count EQUAL 2)
        message(FATAL_ERROR "the samples should keep every value:\n${report}")
    endif()

    file(READ "${maize}" text)
    string(REPLACE " 1    15   1.3  2.10" " 1    15  1.34  2.10" text "${text}")
    file(WRITE "${WORK}/QLNV2101.MZX" "${text}")
    run(1 diff "${WORK}/QLNV2101.MZX" "${maize}" --suite "${SUITE}" --all)
    file(READ "${WORK}/stdout" report)
    if(NOT report MATCHES "  value changed: \\*SOIL ANALYSIS, @A SABL, level 1, SADM: \"1\\.34\" -> \"1\\.3\" \\(line 53 -> 53\\)\n")
        message(FATAL_ERROR "the rounded value isn't reported:\n${report}")
    endif()

    run(2 diff "${WORK}/MISSING1.MZX" "${maize}" --suite "${SUITE}")
    if(NOT errors MATCHES "Cannot open file [^\n]*MISSING1\\.MZX\\.")
        message(FATAL_ERROR "no word of the missing file:\n${errors}")
    endif()
    run(2 view "${maize}" --all)
    run(2 diff)

else()
    message(FATAL_ERROR "unknown case '${CASE}'")
endif()
