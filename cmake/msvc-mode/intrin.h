// Clang has intrinsics of its own here, which get along with those of MinGW-w64's <windows.h>
// only if each is told what the other has.
#pragma once
#ifndef _INTRIN_MAC_ // not behind it
#define _setjmp fl_other_setjmp
#include_next <intrin.h>
#undef _setjmp
#define __INTRINSIC_DEFINED___movsb
#define __INTRINSIC_DEFINED___movsd
#define __INTRINSIC_DEFINED___movsq
#define __INTRINSIC_DEFINED___movsw
#define __INTRINSIC_DEFINED___stosd
#define __INTRINSIC_DEFINED___stosq
#define __INTRINSIC_DEFINED___stosw
#endif
