#include <fl/filesystem/exceptions.hpp>

#include "support/names.hpp"

#include <functional>
#include <locale>
#include <type_traits>

// Code outside the library relies on where the members stand, and they are
// private. An explicit instantiation may name a private member.
template <typename Tag, typename Tag::type Member>
struct revealed
{
    friend typename Tag::type address_of(Tag) { return Member; }
};

#define FL_TEST_REVEAL(name, Class, Type, member)                                                  \
    struct name                                                                                    \
    {                                                                                              \
        using type = Type Class::*;                                                                \
        friend type address_of(name);                                                              \
    };                                                                                             \
    template struct revealed<name, &Class::member>;

using paths = std::vector<std::u16string>;
using fl::filesystem::FsysExceptionBase;
using foundation::ustring::CtypeExceptionBase;
FL_TEST_REVEAL(base_identifier, FsysExceptionBase, std::string, identifier)
FL_TEST_REVEAL(base_id, FsysExceptionBase, fl::filesystem::fsys_excp_id, excp_id)
FL_TEST_REVEAL(base_path, FsysExceptionBase, std::u16string, path_name)
FL_TEST_REVEAL(base_additional, FsysExceptionBase, paths, additional_path_names)
FL_TEST_REVEAL(base_code, FsysExceptionBase, unsigned int, error_code)
FL_TEST_REVEAL(argument_what, fl::filesystem::InvalidArgument, std::string, what_text)
FL_TEST_REVEAL(argument_message, fl::filesystem::InvalidArgument, std::string, message)
FL_TEST_REVEAL(ctype_message, CtypeExceptionBase, std::string, message)
FL_TEST_REVEAL(ctype_code, CtypeExceptionBase, unsigned int, code)
FL_TEST_REVEAL(ctype_subcode, CtypeExceptionBase, unsigned int, subcode)

namespace fl::filesystem::tests {
namespace {

using foundation::ustring::CtypeInvalidCharacter;
using test_support::describe;
using test_support::failure;

/// By number: numbers stay the same for ever.
constexpr fsys_excp_id id(int number)
{
    return static_cast<fsys_excp_id>(number);
}

template <typename Tag, typename Object>
std::size_t offset(Object const &object)
{
    auto const &member = object.*address_of(Tag());
    return static_cast<std::size_t>(reinterpret_cast<std::byte const *>(&member) -
                                    reinterpret_cast<std::byte const *>(&object));
}

TEST(Exceptions, LayoutOfTheBase)
{
    struct expected_layout : std::exception
    {
        std::string identifier;
        fsys_excp_id excp_id;
        std::u16string path_name;
        std::vector<std::u16string> additional_path_names;
        unsigned int error_code;
    };
    std::size_t const string_size = sizeof(std::string);
    SystemError const error;
    EXPECT_EQ(offset<base_identifier>(error), sizeof(std::exception));
    std::size_t const first = sizeof(std::exception);
    EXPECT_EQ(offset<base_id>(error), first + string_size);
    EXPECT_EQ(offset<base_path>(error), first + string_size + 8);
    EXPECT_EQ(offset<base_additional>(error), first + 2 * string_size + 8);
    EXPECT_EQ(offset<base_code>(error),
              first + 2 * string_size + 8 + sizeof(std::vector<std::u16string>));
    EXPECT_EQ(sizeof(FsysExceptionBase), sizeof(expected_layout));
}

TEST(Exceptions, LayoutOfInvalidArgument)
{
    InvalidArgument const error("", u"", {});
    EXPECT_EQ(offset<argument_what>(error), sizeof(FsysExceptionBase));
    EXPECT_EQ(offset<argument_message>(error), sizeof(FsysExceptionBase) + sizeof(std::string));
    EXPECT_EQ(sizeof(InvalidArgument), sizeof(FsysExceptionBase) + 2 * sizeof(std::string));
}

template <typename... Classes>
constexpr bool add_no_data = ((sizeof(Classes) == sizeof(FsysExceptionBase)) && ...);
template <typename... Classes>
constexpr bool derive_directly = (std::is_base_of_v<FsysExceptionBase, Classes> && ...);

/// A class is a base of itself, and here of no other.
template <typename... Classes>
constexpr bool none_derives_from_another()
{
    auto const derived_from = []<typename Class>(std::type_identity<Class>) {
        return (static_cast<int>(std::is_base_of_v<Class, Classes>) + ...);
    };
    return ((derived_from(std::type_identity<Classes>()) == 1) && ...);
}

TEST(Exceptions, OtherClassesAddNoData)
{
    EXPECT_TRUE((add_no_data<InvalidOperation, FileNameTooLarge, FileNameConversionFailure,
                             CvtInvalidCharacter, AccessDenied, PathNotFound, NotDirectoryError,
                             DirectoryNotEmpty, FileIsDirectory, FileExistsError,
                             PathNameComparisonFailure, SystemError, TempEnvNotSpecified>));
    EXPECT_TRUE(
        (derive_directly<InvalidArgument, InvalidOperation, FileNameTooLarge,
                         FileNameConversionFailure, CvtInvalidCharacter, AccessDenied, PathNotFound,
                         NotDirectoryError, DirectoryNotEmpty, FileIsDirectory, FileExistsError,
                         PathNameComparisonFailure, SystemError, TempEnvNotSpecified>));
    EXPECT_TRUE(
        (none_derives_from_another<InvalidArgument, InvalidOperation, FileNameTooLarge,
                                   FileNameConversionFailure, CvtInvalidCharacter, AccessDenied,
                                   PathNotFound, NotDirectoryError, DirectoryNotEmpty,
                                   FileIsDirectory, FileExistsError, PathNameComparisonFailure,
                                   SystemError, TempEnvNotSpecified>()));
    EXPECT_TRUE((std::is_base_of_v<std::exception, FsysExceptionBase>));
    EXPECT_TRUE((std::has_virtual_destructor_v<FsysExceptionBase>));
}

std::u16string const path = u"C:\\dir";

TEST(Exceptions, IdentifierNumberAndPathOfEachClass)
{
    struct
    {
        failure made, expected;
    } const cases[] = {
        {describe(InvalidOperation()), {id(2), "fl:filesystem:InvalidOperation", {}, {}}},
        {describe(FileNameTooLarge(path)), {id(3), "fl:filesystem:FileNameTooLarge", path, {}}},
        {describe(FileNameConversionFailure()),
         {id(4), "fl:filesystem:FileNameConversionFailure", {}, {}}},
        {describe(CvtInvalidCharacter()), {id(5), "fl:filesystem:CvtInvalidCharacter", {}, {}}},
        {describe(AccessDenied(path)), {id(6), "fl:filesystem:AccessDenied", path, {}}},
        {describe(PathNotFound(path)), {id(7), "fl:filesystem:PathNotFound", path, {}}},
        {describe(NotDirectoryError(path)), {id(8), "fl:filesystem:NotDirectoryError", path, {}}},
        {describe(DirectoryNotEmpty(path)), {id(9), "fl:filesystem:DirectoryNotEmpty", path, {}}},
        {describe(FileIsDirectory(path)), {id(10), "fl:filesystem:FileIsDirectory", path, {}}},
        {describe(FileExistsError(path)), {id(11), "fl:filesystem:FileExistsError", path, {}}},
        {describe(PathNameComparisonFailure()),
         {id(12), "fl:filesystem:PathNameComparisonFailure", {}, {}}},
        {describe(SystemError(32, path, {u"other"})),
         {id(13), "fl:filesystem:SystemError", path, {u"other"}, 32}},
        {describe(TempEnvNotSpecified()), {id(14), "fl:filesystem:TempEnvNotSpecified", {}, {}}},
        {describe(InvalidArgument("m", path, {u"a", u"b"})),
         {id(1), "fl:filesystem:InvalidArgument: m: {C:\\dir}", path, {u"a", u"b"}}},
    };
    for (auto const &row : cases)
        EXPECT_EQ(row.made, row.expected);
}

TEST(Exceptions, DefaultConstructionNamesNoPath)
{
    EXPECT_EQ(describe(PathNotFound()), (failure{id(7), "fl:filesystem:PathNotFound", {}, {}}));
    EXPECT_EQ(describe(FileNameTooLarge()).path_name, u"");
    EXPECT_EQ(describe(AccessDenied()).path_name, u"");
    EXPECT_EQ(describe(NotDirectoryError()).path_name, u"");
    EXPECT_EQ(describe(DirectoryNotEmpty()).path_name, u"");
    EXPECT_EQ(describe(FileIsDirectory()).path_name, u"");
    EXPECT_EQ(describe(FileExistsError()).path_name, u"");
    EXPECT_EQ(describe(SystemError()), (failure{id(13), "fl:filesystem:SystemError", {}, {}}));
}

TEST(Exceptions, SystemErrorKeepsItsCodeOutOfItsText)
{
    SystemError const error(5);
    EXPECT_STREQ(error.what(), "fl:filesystem:SystemError");
    EXPECT_EQ(error.get_error_code(), 5U);
    EXPECT_TRUE(error.get_additional_path_names().empty());
}

struct what_case
{
    char const *message;
    char16_t const *path;
    char const *expected;
    char const *why;
};

constexpr what_case what_cases[] = {
    {"", u"", "fl:filesystem:InvalidArgument", "neither message nor path"},
    {"", u"a", "fl:filesystem:InvalidArgument: {a}", "no doubled separator"},
    {"Empty Path not permitted", u"", "fl:filesystem:InvalidArgument: Empty Path not permitted",
     "no braces without a path"},
    {"Invalid Path Type", u"C:\\temp\\caf\u00E9",
     "fl:filesystem:InvalidArgument: Invalid Path Type: {C:\\temp\\caf\\u00E9}",
     "backslashes stand as they are"},
    {"m", u"a\tb", "fl:filesystem:InvalidArgument: m: {a\\u0009b}", "a tab"},
    {"m", u"\u007F", "fl:filesystem:InvalidArgument: m: {\x7F}", "127 stands raw"},
    {"m", u"\u0080", "fl:filesystem:InvalidArgument: m: {\\u0080}", "128 does not"},
    {"m", u" ", "fl:filesystem:InvalidArgument: m: { }", "32 stands raw"},
    {"m", u"\u001F", "fl:filesystem:InvalidArgument: m: {\\u001F}", "31 does not"},
    {"m", u"\uFFFD", "fl:filesystem:InvalidArgument: m: {\\uFFFD}", "upper case, four digits"},
    {"m", u"\U0001F600", "fl:filesystem:InvalidArgument: m: {\\uD83D\\uDE00}",
     "a surrogate pair is two escapes"},
};

TEST(InvalidArgument, What)
{
    for (auto const &row : what_cases) {
        InvalidArgument const error(row.message, row.path, {u"never printed"});
        EXPECT_STREQ(error.what(), row.expected) << row.why;
        EXPECT_STREQ(error.what(), row.expected) << "the same when asked again";
    }
}

TEST(InvalidArgument, WhatDoesNotDependOnTheProgramsLocale)
{
    struct grouping : std::numpunct<char>
    {
        std::string do_grouping() const override { return "\1"; }
        char do_thousands_sep() const override { return '.'; }
    };
    std::locale const before = std::locale::global(std::locale(std::locale(), new grouping));
    std::string const what = InvalidArgument("", u"\uFFFD", {}).what();
    std::locale::global(before);
    EXPECT_EQ(what, "fl:filesystem:InvalidArgument: {\\uFFFD}");
}

TEST(InvalidArgument, CopiesHoldTheLastText)
{
    InvalidArgument const error("m", u"p", {u"q"});
    InvalidArgument const before = error;
    EXPECT_EQ(before.*address_of(argument_what()), "") << "built on demand";
    static_cast<void>(error.what());
    InvalidArgument const copy = error;
    EXPECT_EQ(copy.*address_of(argument_what()), "fl:filesystem:InvalidArgument: m: {p}");
    InvalidArgument assigned("other", u"", {});
    assigned = error;
    EXPECT_EQ(assigned.*address_of(argument_what()), "fl:filesystem:InvalidArgument: m: {p}");
    EXPECT_EQ(describe(assigned), describe(error));
}

TEST(Exceptions, CopyAndAssignmentCarryEveryField)
{
    SystemError const original(87, u"first", {u"second", u"third"});
    SystemError const copy = original;
    EXPECT_EQ(describe(copy), describe(original));
    SystemError assigned;
    EXPECT_EQ(&(assigned = original), &assigned);
    EXPECT_EQ(describe(assigned), describe(original));
}

TEST(Exceptions, AssignedThroughTheirBasesTheyAreTheOther)
{
    PathNotFound error(u"was");
    FsysExceptionBase &base = error;
    SystemError const other(32, path, {u"second"});
    EXPECT_EQ(&(base = other), &base);
    EXPECT_EQ(describe(error), describe(other)) << "identifier and number, too";
    InvalidArgument argument("message", u"was", {});
    static_cast<FsysExceptionBase &>(argument) = other;
    EXPECT_STREQ(argument.what(), "fl:filesystem:SystemError: message: {C:\\dir}")
        << "what the base doesn't hold stays";
    foundation::ustring::CtypeExceptionBase const text("text", 7, 9);
    CtypeInvalidCharacter character;
    static_cast<CtypeExceptionBase &>(character) = text;
    EXPECT_STREQ(character.what(), "text");
    EXPECT_EQ(character.*address_of(ctype_code()), 7U);
    character = CtypeInvalidCharacter();
    EXPECT_STREQ(character.what(), "Invalid character error.");
    EXPECT_EQ(character.*address_of(ctype_code()), 3U);
}

TEST(Exceptions, SelfAssignmentLeavesEverythingAsItIs)
{
    SystemError error(87, u"first", {u"second"});
    auto const before = describe(error);
    error = std::ref(error).get();
    EXPECT_EQ(describe(error), before);
    InvalidArgument argument("m", u"p", {u"q"});
    argument = std::ref(argument).get();
    EXPECT_STREQ(argument.what(), "fl:filesystem:InvalidArgument: m: {p}");
}

// The second slot behind the destructor's is `what`: it is found through the root
// of the standard family, whose slots stand in that order.
TEST(Exceptions, WhatIsReachedThroughTheStandardRoot)
{
    InvalidArgument const argument("m", u"", {});
    std::exception const &root = argument;
    EXPECT_STREQ(root.what(), "fl:filesystem:InvalidArgument: m");
    FsysExceptionBase const &base = argument;
    EXPECT_STREQ(base.what(), "fl:filesystem:InvalidArgument: m");
}

TEST(Exceptions, ThrowInvalidOperation)
{
    EXPECT_FAILURE(detail::throw_invalid_operation_exception(),
                   (failure{id(2), "fl:filesystem:InvalidOperation", {}, {}}));
    EXPECT_THROW(detail::throw_invalid_operation_exception(), InvalidOperation);
}

TEST(CtypeInvalidCharacter, MessageAndCodes)
{
    CtypeInvalidCharacter const error;
    EXPECT_STREQ(error.what(), "Invalid character error.");
    EXPECT_EQ(error.*address_of(ctype_code()), 3U);
    EXPECT_EQ(error.*address_of(ctype_subcode()), 0U);
    EXPECT_FALSE((std::is_base_of_v<FsysExceptionBase, CtypeInvalidCharacter>));
    EXPECT_EQ(sizeof(CtypeInvalidCharacter), sizeof(CtypeExceptionBase));
}

TEST(CtypeExceptionBase, LayoutAndCopies)
{
    CtypeExceptionBase const error("text", 7, 9);
    std::size_t const first = sizeof(std::exception);
    EXPECT_EQ(offset<ctype_message>(error), first);
    EXPECT_EQ(offset<ctype_code>(error), first + sizeof(std::string));
    EXPECT_EQ(offset<ctype_subcode>(error), first + sizeof(std::string) + 4);
    CtypeExceptionBase copy = CtypeInvalidCharacter();
    copy = error;
    EXPECT_STREQ(copy.what(), "text");
    EXPECT_EQ(copy.*address_of(ctype_subcode()), 9U);
}

} // namespace
} // namespace fl::filesystem::tests
