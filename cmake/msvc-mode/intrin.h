// Clang has a _setjmp of its own here, which MinGW-w64 declares otherwise.
#pragma once
#define _setjmp fl_other_setjmp
#include_next <intrin.h>
#undef _setjmp
