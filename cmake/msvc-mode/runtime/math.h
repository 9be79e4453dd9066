// Microsoft's C library has functions where MinGW-w64 has macros.
#pragma once
#include_next <math.h>
#undef fpclassify
#undef signbit
#undef isfinite
#undef isinf
#undef isnan
#undef isnormal
#undef isgreater
#undef isgreaterequal
#undef isless
#undef islessequal
#undef islessgreater
#undef isunordered

#define FL_TAKES_ONE(result, name)                                                                 \
    result name(float) noexcept;                                                                   \
    result name(double) noexcept;                                                                  \
    result name(long double) noexcept;
#define FL_TAKES_TWO(name)                                                                         \
    bool name(float, float) noexcept;                                                              \
    bool name(double, double) noexcept;                                                            \
    bool name(long double, long double) noexcept;

extern "C++" {
FL_TAKES_ONE(int, fpclassify)
FL_TAKES_ONE(bool, signbit)
FL_TAKES_ONE(bool, isfinite)
FL_TAKES_ONE(bool, isinf)
FL_TAKES_ONE(bool, isnan)
FL_TAKES_ONE(bool, isnormal)
FL_TAKES_TWO(isgreater)
FL_TAKES_TWO(isgreaterequal)
FL_TAKES_TWO(isless)
FL_TAKES_TWO(islessequal)
FL_TAKES_TWO(islessgreater)
FL_TAKES_TWO(isunordered)
}

#undef FL_TAKES_ONE
#undef FL_TAKES_TWO
