# Runs clang-format in dry-run mode over every tracked C++ and Objective-C++ file.
# Invoked by CTest as a script: cmake -DCLANG_FORMAT=... -DSOURCE_DIR=... -P CheckFormat.cmake
execute_process(
    COMMAND git ls-files -- *.h *.cpp *.mm
    WORKING_DIRECTORY ${SOURCE_DIR}
    OUTPUT_VARIABLE files
    RESULT_VARIABLE git_result
    OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT git_result EQUAL 0)
    message(FATAL_ERROR "git ls-files failed in ${SOURCE_DIR}")
endif()
string(REPLACE "\n" ";" files "${files}")
if(files STREQUAL "")
    return()
endif()
execute_process(
    COMMAND ${CLANG_FORMAT} --dry-run --Werror ${files}
    WORKING_DIRECTORY ${SOURCE_DIR}
    RESULT_VARIABLE format_result)
if(NOT format_result EQUAL 0)
    message(FATAL_ERROR "Files differ from .clang-format; run: clang-format -i $(git ls-files '*.h' '*.cpp' '*.mm')")
endif()
