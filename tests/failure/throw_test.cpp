#include "failure/throw.hpp"

#include "support/names.hpp"

#include <boost/exception_ptr.hpp>

#include <thread>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using test_support::describe;

/// Carries `exception` to another thread and back and compares it with itself.
template <typename Exception>
void expect_carried(Exception const &exception)
{
    boost::exception_ptr carried;
    std::thread([&] {
        try {
            throw_exception(exception);
        } catch (...) {
            carried = boost::current_exception();
        }
    }).join();
    try {
        boost::rethrow_exception(carried);
    } catch (Exception const &caught) {
        EXPECT_EQ(describe(caught), describe(exception));
        EXPECT_NE(dynamic_cast<boost::exception_detail::clone_impl<Exception> const *>(&caught),
                  nullptr);
        return;
    } catch (...) {
    }
    ADD_FAILURE() << "lost its class: " << exception.what();
}

TEST(ThrowException, EveryRaisedClassIsCarriedWhole)
{
    std::u16string const path = u"\\\\?\\C:\\caf\u00E9";
    expect_carried(AccessDenied(path));
    expect_carried(DirectoryNotEmpty(path));
    expect_carried(FileExistsError(path));
    expect_carried(FileIsDirectory(path));
    expect_carried(FileNameTooLarge(path));
    expect_carried(InvalidArgument("message", path, {u"a", u"b"}));
    expect_carried(InvalidOperation());
    expect_carried(NotDirectoryError(path));
    expect_carried(PathNotFound(path));
    expect_carried(SystemError(87, path, {u"second"}));
}

TEST(ThrowInvalidCharacter, IsCarriedToo)
{
    using foundation::ustring::CtypeInvalidCharacter;
    boost::exception_ptr carried;
    try {
        throw_invalid_character();
    } catch (CtypeInvalidCharacter const &caught) {
        EXPECT_STREQ(caught.what(), "Invalid character error.");
        using carried_type = boost::exception_detail::clone_impl<CtypeInvalidCharacter>;
        EXPECT_NE(dynamic_cast<carried_type const *>(&caught), nullptr);
        carried = boost::current_exception();
    }
    EXPECT_THROW(boost::rethrow_exception(carried), CtypeInvalidCharacter);
}

} // namespace
} // namespace fl::filesystem::detail
