# Sanitizer and fuzzing instrumentation, applied target by target like the
# warning policy (quorvane_set_warnings calls this), so that every target of
# ours is instrumented and prebuilt third-party code is linked as it is.
#
# QUORVANE_SANITIZE takes the list that -fsanitize takes ("address,undefined").
# Every finding stops the program (-fno-sanitize-recover=all): a report that
# scrolls past in a passing test run is a report nobody reads.
# QUORVANE_FUZZ adds libFuzzer's coverage instrumentation to every target
# (clang only); the fuzz targets add the libFuzzer runtime themselves.
# QUORVANE_COVERAGE instruments every target for gcov (scripts/coverage.sh).
function(quorvane_apply_sanitizers target)
    if(QUORVANE_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${QUORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        # Public, so that an executable linking one of our static libraries
        # gets the runtimes even if it were to skip this function itself.
        target_link_options(${target} PUBLIC -fsanitize=${QUORVANE_SANITIZE})
    endif()
    if(QUORVANE_FUZZ)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
    if(QUORVANE_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage -O0)
        target_link_options(${target} PUBLIC --coverage)
    endif()
endfunction()
