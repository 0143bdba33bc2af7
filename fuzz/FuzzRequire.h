// The property check of the fuzz targets: a broken property aborts, which libFuzzer reports
// as a finding.
#pragma once

#include <cstdio>
#include <cstdlib>

#define REQUIRE(condition)                                                                         \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: broken: %s\n", __FILE__, __LINE__, #condition);           \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)
