// The fuzz targets' check: a broken property is a crash, which libFuzzer reports with the input.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace quorvane {

// Not assert(): the fuzzers are built with NDEBUG like any optimised build,
// and a property must hold there too.
inline void fuzzAssert(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", property);
        std::abort();
    }
}

} // namespace quorvane
