#ifndef FL_FILESYSTEM_CONFIG_HPP
#define FL_FILESYSTEM_CONFIG_HPP
// Public. The version of these headers, and the macro that marks what the
// library exports. Includes nothing and declares nothing.

#define FL_FILESYSTEM_VERSION_MAJOR 0
#define FL_FILESYSTEM_VERSION_MINOR 1
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

#endif
