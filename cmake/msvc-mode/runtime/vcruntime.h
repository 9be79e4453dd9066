// Stands in for the headers that Microsoft's compiler brings along and its standard library
// expects, over the C library of MinGW-w64. Declarations only: nothing is linked.
#pragma once
#include <_mingw.h>

#include <corecrt.h>
#include <sal.h>
#include <vadefs.h>

#define _VCRUNTIME_H
#define _WCHAR_T_DEFINED
#define _NATIVE_WCHAR_T_DEFINED
#define _NATIVE_NULLPTR_SUPPORTED

#define _HAS_CXX17 (_MSVC_LANG >= 201703L)
#define _HAS_CXX20 (_MSVC_LANG >= 202002L)
#define _HAS_CXX23 0
#define _HAS_EXCEPTIONS 1
#define _HAS_NODISCARD 1
#define _HAS_STATIC_RTTI 1
#define _NODISCARD [[nodiscard]]
#define _MSVC_CONSTEXPR
#undef _CONST_RETURN
#define _CONST_RETURN const

// where things come from, how they are called and what is checked in them: of no concern here
#define _ACRTIMP
#define _VCRTIMP
#define _CRT_SATELLITE_1
#define _CRT_SATELLITE_2
#define _CRT_SATELLITE_CODECVT_IDS
#define _CRT_SATELLITE_CODECVT_IDS_NOIMPORT
#define _CRT_GUARDOVERFLOW
#define _CRT_INSECURE_DEPRECATE(replacement)
#define _CRT_SECURE_INVALID_PARAMETER(expression)
#define _CRT_SUPPRESS_RESTRICT
#define _Deref_post_opt_valid_
#define __CLR_OR_THIS_CALL
#define __CLRCALL_OR_CDECL __cdecl
#define __CLRCALL_PURE_OR_CDECL __cdecl
#define _VA_ALIGN 8

#define _CRT_BEGIN_C_HEADER extern "C" {
#define _CRT_END_C_HEADER }
#define _CRT_CONCATENATE_(a, b) a##b
#define _CRT_CONCATENATE(a, b) _CRT_CONCATENATE_(a, b)
#define _CRT_STRINGIZE_(tokens) #tokens
#define _CRT_STRINGIZE(tokens) _CRT_STRINGIZE_(tokens)
#define _CRT_DEPRECATE_TEXT(text) __declspec(deprecated(text))
#define _CRT_WIDE_(text) L##text
#define _CRT_WIDE(text) _CRT_WIDE_(text)
#define __FILEW__ _CRT_WIDE(__FILE__)
#define _STATIC_ASSERT(expression) static_assert(expression, #expression)

typedef int _Mbstatet; // as MinGW-w64 has it
struct _iobuf;
struct timespec;

extern "C" {
typedef void(__cdecl *terminate_handler)();
terminate_handler __cdecl set_terminate(terminate_handler) noexcept;
terminate_handler __cdecl _get_terminate();
__declspec(noreturn) void __cdecl terminate() noexcept;
__declspec(noreturn) void __cdecl quick_exit(int);
void __cdecl _invalid_parameter(wchar_t const *, wchar_t const *, wchar_t const *, unsigned, size_t);
int __cdecl at_quick_exit(void(__cdecl *)(void));
int __cdecl timespec_get(struct timespec *, int);
int __cdecl _get_stream_buffer_pointers(struct _iobuf *, char ***, char ***, int **);
}
