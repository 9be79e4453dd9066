#ifndef FL_FILESYSTEM_CONFIG_HPP
#define FL_FILESYSTEM_CONFIG_HPP
// Public. The version of these headers, and the macros that mark what the library
// exports. Includes nothing and declares nothing.

/// One part of the version of these headers.
#define FL_FILESYSTEM_VERSION_MAJOR 0
#define FL_FILESYSTEM_VERSION_MINOR 2
#define FL_FILESYSTEM_VERSION_PATCH 0

/// The version as one number that grows with every release: major * 10000 +
/// minor * 100 + patch.
#define FL_FILESYSTEM_VERSION                                                                      \
    (FL_FILESYSTEM_VERSION_MAJOR * 10000 + FL_FILESYSTEM_VERSION_MINOR * 100 +                     \
     FL_FILESYSTEM_VERSION_PATCH)

// FL_FILESYSTEM_STATIC: set by the CMake target for whoever uses the static
// library. FL_FILESYSTEM_BUILD: set while the library itself is compiled.
#if defined(FL_FILESYSTEM_STATIC)
#define FL_FILESYSTEM_API
#elif defined(_WIN32)
#if defined(FL_FILESYSTEM_BUILD)
#define FL_FILESYSTEM_API __declspec(dllexport)
#else
#define FL_FILESYSTEM_API __declspec(dllimport)
#endif
#else
#define FL_FILESYSTEM_API __attribute__((visibility("default")))
#endif

// An exported template is declared in a header and instantiated in one source
// file. GCC and Clang take the mark from the declaration and warn about a second
// one; MSVC, while it builds the DLL, wants it on the instantiation alone.
#if defined(_MSC_VER) && defined(FL_FILESYSTEM_BUILD) && !defined(FL_FILESYSTEM_STATIC)
#define FL_FILESYSTEM_TEMPLATE_DECLARATION
#define FL_FILESYSTEM_TEMPLATE_INSTANTIATION FL_FILESYSTEM_API
#else
#define FL_FILESYSTEM_TEMPLATE_DECLARATION FL_FILESYSTEM_API
#define FL_FILESYSTEM_TEMPLATE_INSTANTIATION
#endif

// Exported classes hold members of standard types and derive from them, of which MSVC
// warns: library and program must share one runtime, in the same configuration. That is
// seen to below.
#if defined(_MSC_VER)
#define FL_FILESYSTEM_BEGIN_CLASSES                                                                \
    __pragma(warning(push)) __pragma(warning(disable : 4251)) __pragma(warning(disable : 4275))
#define FL_FILESYSTEM_END_CLASSES __pragma(warning(pop))
#else
#define FL_FILESYSTEM_BEGIN_CLASSES
#define FL_FILESYSTEM_END_CLASSES
#endif

// MSVC's strings and containers are larger where their iterators are checked, in Debug. A
// program of one kind that ran on a library of the other would corrupt its memory, so it
// isn't linked: it asks for a symbol that is named after the level, and the DLL has only
// its own. (For static libraries the standard library sees to that.)
#if defined(_ITERATOR_DEBUG_LEVEL)
#define FL_FILESYSTEM_ITERATOR_DEBUG_LEVEL _ITERATOR_DEBUG_LEVEL
#elif defined(_MSC_VER) && defined(_DEBUG)
#define FL_FILESYSTEM_ITERATOR_DEBUG_LEVEL 2
#else
#define FL_FILESYSTEM_ITERATOR_DEBUG_LEVEL 0
#endif
#if defined(_MSC_VER) && !defined(FL_FILESYSTEM_BUILD) && !defined(FL_FILESYSTEM_STATIC)
#define FL_FILESYSTEM_TEXT(tokens) #tokens
#define FL_FILESYSTEM_DEMAND(level)                                                                \
    "/include:__imp_fl_filesystem_iterator_debug_level_" FL_FILESYSTEM_TEXT(level)
#pragma comment(linker, FL_FILESYSTEM_DEMAND(FL_FILESYSTEM_ITERATOR_DEBUG_LEVEL))
#endif

#endif
