// Exceptions that are thrown inside the library, caught here, and carried to
// another thread: across the boundary of the DLL, where there is one.

#include <fl/filesystem.hpp>

#include "support/names.hpp"

#include <boost/exception_ptr.hpp>

#include <thread>

namespace fl::filesystem::tests {
namespace {

using test_support::describe;
using test_support::failure;

/// Runs `call` on a thread of its own and returns what it threw.
template <typename Call>
boost::exception_ptr thrown_elsewhere(Call call)
{
    boost::exception_ptr carried;
    std::thread([&] {
        try {
            call();
        } catch (...) {
            carried = boost::current_exception();
        }
    }).join();
    return carried;
}

TEST(CarriedExceptions, KeepEveryField)
{
    boost::exception_ptr const carried =
        thrown_elsewhere([] { create_directory(std::u16string(u"\\\\?\\")); });
    ASSERT_TRUE(carried);
    for (int times = 0; times < 2; ++times) {
        try {
            boost::rethrow_exception(carried);
        } catch (InvalidArgument const &caught) {
            EXPECT_EQ(describe(caught), empty_path());
            EXPECT_NE(dynamic_cast<boost::exception_detail::clone_base const *>(&caught), nullptr)
                << "Boost would carry another one as well, but not every toolchain's";
            continue;
        }
        FAIL() << "not caught as its own class";
    }
}

TEST(CarriedExceptions, AreCaughtByEachOfTheirBases)
{
    boost::exception_ptr const carried =
        thrown_elsewhere([] { detail::throw_invalid_operation_exception(); });
    EXPECT_THROW(boost::rethrow_exception(carried), InvalidOperation);
    EXPECT_THROW(boost::rethrow_exception(carried), FsysExceptionBase);
    EXPECT_THROW(boost::rethrow_exception(carried), std::exception);
}

TEST(CarriedExceptions, CopiesAreOfTheWholeObject)
{
    // a name that can't be made: what it is about must arrive with it
    std::u16string const name = u"C:\\fl-no-such-folder\\caf\u00E9";
    boost::exception_ptr const carried = thrown_elsewhere([&] { create_directory(name); });
    ASSERT_TRUE(carried);
    try {
        boost::rethrow_exception(carried);
    } catch (FsysExceptionBase const &caught) {
        EXPECT_EQ(describe(caught),
                  (failure{fsys_excp_path_not_found, "fl:filesystem:PathNotFound", name, {}}));
        EXPECT_NE(dynamic_cast<PathNotFound const *>(&caught), nullptr);
        EXPECT_NE(dynamic_cast<boost::exception_detail::clone_base const *>(&caught), nullptr);
    }
}

TEST(CarriedExceptions, ProgramsCanThrowTheFamilyThemselves)
{
    boost::exception_ptr const carried = thrown_elsewhere(
        [] { throw boost::enable_current_exception(SystemError(87, u"first", {u"second"})); });
    try {
        boost::rethrow_exception(carried);
    } catch (SystemError const &caught) {
        EXPECT_EQ(
            describe(caught),
            (failure{
                fsys_excp_system_error, "fl:filesystem:SystemError", u"first", {u"second"}, 87}));
        return;
    }
    FAIL() << "not caught as its own class";
}

} // namespace
} // namespace fl::filesystem::tests
