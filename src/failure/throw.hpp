#ifndef FL_FILESYSTEM_SRC_FAILURE_THROW_HPP
#define FL_FILESYSTEM_SRC_FAILURE_THROW_HPP
// How everything is thrown: so that `boost::current_exception` can carry it to
// another thread with every field.

#include <fl/filesystem/exceptions.hpp>

#include <boost/exception/enable_current_exception.hpp>
#include <boost/version.hpp>

#include <string>

static_assert(BOOST_VERSION >= 107400, "fl::filesystem needs Boost 1.74 or later");

namespace fl::filesystem::detail {

template <typename Exception>
[[noreturn]] void throw_exception(Exception const &exception)
{
    throw boost::enable_current_exception(exception);
}

/// Throws `InvalidArgument` with neither a pathname nor further ones.
[[noreturn]] inline void throw_invalid_argument(std::string const &message)
{
    throw_exception(InvalidArgument(message, {}, {}));
}

/// What every ASCII-only character routine calls on a unit above 127.
[[noreturn]] inline void throw_invalid_character()
{
    throw_exception(foundation::ustring::CtypeInvalidCharacter());
}

} // namespace fl::filesystem::detail

#endif
