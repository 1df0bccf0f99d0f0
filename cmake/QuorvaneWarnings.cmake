# One place for the project's warning policy, applied target by target so that
# third-party code (GoogleTest, Qt's generated sources) never inherits it.
#
# The set catches the faults that matter most in this code base: implicit
# narrowing and sign mixing in money and geometry arithmetic (-Wall -Wextra),
# non-portable extensions (-Wpedantic), shadowed members in small value types
# (-Wshadow), C casts that hide reinterpretations (-Wold-style-cast), and
# interfaces deleted through a base pointer without a virtual destructor
# (-Wnon-virtual-dtor, -Woverloaded-virtual). CI turns them into errors.
#
# Every target of ours passes through here, so this is also where the
# sanitizer and fuzzing instrumentation is applied when it is asked for.
include(QuorvaneSanitizers)

function(quorvane_set_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast
        -Wnon-virtual-dtor -Woverloaded-virtual)
    if(QUORVANE_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    quorvane_apply_sanitizers(${target})
endfunction()
