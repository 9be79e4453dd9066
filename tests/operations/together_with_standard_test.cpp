// Paths on their way to the standard library and back, and why streams don't open.

#include <fl/filesystem/standard.hpp>

#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <type_traits>

namespace fl::filesystem::tests {
namespace {

/// The text of the standard's path, unit for unit.
std::u16string units(std::filesystem::path const &path)
{
    return detail::path_source<std::filesystem::path>::of(path);
}

TEST_IN_WORKSPACE(ToStandard, IsWhatOperationsHandToTheSystem)
{
    row_of<std::u16string, std::u16string> const cases[] = {
        {u"", u"", "nothing"},
        {u"C:/dir//a.txt", uR"(C:\dir\a.txt)", "native"},
        {uR"(C:\dir\.\x\..\a.txt)", uR"(C:\dir\a.txt)", "cleaned"},
        {uR"(\\?\C:\dir)", uR"(C:\dir)", "no prefix where none is needed"},
        {of_size(u"C:\\", 259), of_size(u"C:\\", 259), "the longest without a prefix"},
        {of_size(u"C:\\", 260), uR"(\\?\)" + of_size(u"C:\\", 260), "the first with one"},
        {uR"(\\server\share\)" + std::u16string(300, u'a'),
         uR"(\\?\UNC\server\share\)" + std::u16string(300, u'a'), "a share"},
        {uR"(\\server)", uR"(\\server)", "as it is: it has no share"},
        {u"C:\\caf\u00E9\\\U0001F600", u"C:\\caf\u00E9\\\U0001F600", "not ASCII"},
        {u"C:\\\xD800", u"C:\\\xD800", "half of a pair"},
    };
    expect_rows(cases, [](auto const &given) { return units(to_standard(upath(given))); });
    expect_rows(cases, [](auto const &given) { return units(to_standard(given)); });
}

TEST_IN_WORKSPACE(ToStandard, MakesRelativeOnesAbsolute)
{
    EXPECT_EQ(units(to_standard(upath(u"a.txt"))), at(u"a.txt"));
}

TEST(FromStandard, IsTheNativeForm)
{
    EXPECT_EQ(from_standard(std::filesystem::path("C:/dir/")), u"C:\\dir");
    EXPECT_EQ(from_standard(std::filesystem::path()), upath());
    upath const path(u"C:\\caf\u00E9\\\xD800\\" + std::u16string(300, u'a'));
    EXPECT_EQ(from_standard(to_standard(path)), path) << "without the prefix again";
    upath const implicit = std::filesystem::path("C:/dir/");
    EXPECT_EQ(implicit.native(), u"C:\\dir");
    static_assert(std::is_convertible_v<std::filesystem::path, upath>);
    static_assert(!std::is_convertible_v<upath, std::filesystem::path>, "for which purpose?");
}

TEST(StreamNeeds, GoByTheMode)
{
    using ios = std::ios_base;
    constexpr unsigned int r = detail::stream_reads, w = detail::stream_writes,
                           c = detail::stream_creates;
    row_of<std::ios_base::openmode, unsigned int> const cases[] = {
        {ios::in, r, "r"},
        {ios::out, w | c, "w"},
        {ios::out | ios::trunc, w | c, "w"},
        {ios::app, w | c, "a"},
        {ios::out | ios::app, w | c, "a"},
        {ios::in | ios::out, r | w, "r+"},
        {ios::in | ios::out | ios::trunc, r | w | c, "w+"},
        {ios::in | ios::app, r | w | c, "a+"},
        {ios::in | ios::out | ios::app, r | w | c, "a+"},
        {ios::in | ios::binary, r, "rb"},
        {ios::in | ios::ate, r, "r, then to the end"},
        {ios::trunc, 0, "empties what isn't written to"},
        {ios::in | ios::trunc, 0, "the same"},
        {ios::out | ios::trunc | ios::app, 0, "empty it, and keep what is in it"},
        {ios::in | ios::trunc | ios::app, 0, "the same, and reads"},
        {ios::binary, 0, "nothing is to be done with it"},
    };
    expect_rows(cases, [](auto const &given) { return detail::stream_needs(given); });
}

TEST_IN_WORKSPACE(StreamFailure, NamesWhatWentToTheSystem)
{
    make({u"file", u"dir\\"});
    auto const failure_at = [&](char16_t const *name, unsigned int needs) {
        return failure_of([&] { detail::throw_stream_failure(upath(at(name)), needs); });
    };
    constexpr unsigned int r = detail::stream_reads, w = detail::stream_writes,
                           c = detail::stream_creates;
    EXPECT_EQ(failure_at(u"missing", r), not_found(at(u"missing")));
    EXPECT_EQ(failure_at(u"missing/file", w | c), not_found(at(u"missing\\file")));
    EXPECT_EQ(failure_at(u"dir", r), denied(at(u"dir")));
    EXPECT_EQ(failure_at(u"dir", w | c), denied(at(u"dir")));
    EXPECT_EQ(failure_at(u"file", 0), invalid_argument("Unsupported open mode"));
    EXPECT_FAILURE(detail::throw_stream_failure(upath(), r), empty_path());

    EXPECT_EQ(failure_at(u"file", r), system_error(110, at(u"file")))
        << "nothing stands in the way any longer";
    EXPECT_EQ(failure_at(u"missing", w | c), system_error(110, at(u"missing")));
    EXPECT_EQ(entries(), (names{u"dir", u"file"})) << "no trace of the attempt";
}

TEST_IN_WORKSPACE(StreamFailure, NamesALongPathnameWithItsPrefix)
{
    std::u16string const path = at(std::u16string(250, u'd')) + u"\\file";
    EXPECT_FAILURE(detail::throw_stream_failure(upath(path), detail::stream_reads),
                   not_found(uR"(\\?\)" + path));
}

TEST_IN_WORKSPACE(StreamFailure, OfWhatTheCallerMayNotRead)
{
    NEEDS(work.can_deny_rights(), "rights can't be denied here");
    std::u16string const path = make_file(u"file");
    work.deny(path, access_right::read);
    EXPECT_FAILURE(detail::throw_stream_failure(upath(path), detail::stream_reads), denied(path));
}

#ifdef _WIN32 // elsewhere streams are the host's, and the disk isn't

std::string content_of(std::fstream file)
{
    return std::string(std::istreambuf_iterator<char>(file), {});
}

TEST_IN_WORKSPACE(Open, ReadsAndWritesAtAnyLength)
{
    std::u16string const deep = chain_of_size(work.root(), 450);
    work.make_directory(deep);
    for (upath const &path : {upath(at(u"short.txt")), upath(deep) / u"long.txt"}) {
        open(path, std::ios::out) << "written";
        EXPECT_EQ(work.content(path.native()), "written");
        open(path, std::ios::app) << ", more";
        EXPECT_EQ(content_of(open(path, std::ios::in)), "written, more");
        open(path) << "W";
        EXPECT_EQ(content_of(open(path, std::ios::in)), "Written, more");
        std::ifstream standard(to_standard(path));
        EXPECT_TRUE(standard.is_open());
        EXPECT_EQ(std::filesystem::file_size(to_standard(path)), 13U);
    }
}

TEST_IN_WORKSPACE(Open, ThrowsWhatStandsInTheWay)
{
    upath const missing(at(u"missing"));
    EXPECT_FAILURE(open(missing), not_found(missing.native()));
    EXPECT_FAILURE(open(missing, std::ios::in), not_found(missing.native()));
    upath const root(work.root());
    EXPECT_FAILURE(open(root, std::ios::out), denied(root.native()));
    EXPECT_FAILURE(open(missing, std::ios::trunc), invalid_argument("Unsupported open mode"));
    EXPECT_FAILURE(open(upath(), std::ios::out), empty_path());
    EXPECT_EQ(entries(), names{});
}

#endif

} // namespace
} // namespace fl::filesystem::tests
