#ifndef FL_FILESYSTEM_HPP
#define FL_FILESYSTEM_HPP
// Public. The whole interface of the library.

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/attempt.hpp>
#include <fl/filesystem/config.hpp>
#include <fl/filesystem/copy_progress.hpp>
#include <fl/filesystem/directory.hpp>
#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/file_status.hpp>
#include <fl/filesystem/file_time.hpp>
#include <fl/filesystem/install_path.hpp>
#include <fl/filesystem/links.hpp>
#include <fl/filesystem/mixed_arguments.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/pathname_traits.hpp>
#include <fl/filesystem/queries.hpp>
#include <fl/filesystem/removal.hpp>
#include <fl/filesystem/standard.hpp>
#include <fl/filesystem/text.hpp>
#include <fl/filesystem/utf8.hpp>
#include <fl/filesystem/windows.hpp>
#include <fl/filesystem/windows_types.hpp>

#endif
