#include <fl/filesystem/config.hpp>

// What programs of MSVC ask for by its name: see config.hpp. The value is never read.
#define FL_NAME_WITH(level) fl_filesystem_iterator_debug_level_##level
#define FL_NAME(level) FL_NAME_WITH(level)

extern "C" {
extern FL_FILESYSTEM_API int const FL_NAME(FL_FILESYSTEM_ITERATOR_DEBUG_LEVEL);
int const FL_NAME(FL_FILESYSTEM_ITERATOR_DEBUG_LEVEL) = FL_FILESYSTEM_ITERATOR_DEBUG_LEVEL;
}
