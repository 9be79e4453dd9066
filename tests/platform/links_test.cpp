#include "platform/links.hpp"

#include "platform/finding.hpp"

namespace contract {

namespace {

constexpr DWORD to_file = SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
constexpr DWORD to_directory = to_file | SYMBOLIC_LINK_FLAG_DIRECTORY;
constexpr DWORD any_link = FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY;

class SymbolicLinks : public testing::Test
{
protected:
    void SetUp() override
    {
        NEEDS(has_symlinks(), "no symbolic links can be made here");
        fill(space);
    }
    std::wstring at(std::wstring const &name) const { return in(space, name); }
    void link(std::wstring const &name, std::wstring const &target, DWORD flags = to_file)
    {
        ASSERT_EQ(make_symlink(at(name), target, flags), success);
    }
    void unlink(DWORD flags)
    {
        auto const remove = flags == to_file ? &::DeleteFileW : &::RemoveDirectoryW;
        ASSERT_TRUE(remove(at(L"link").c_str()));
    }
    DWORD open(std::wstring const &name) const { return opened(at(name), GENERIC_READ).code; }

    workspace space;
};

TEST_F(SymbolicLinks, Outcomes)
{
    auto const link_it = [](std::wstring const &name) {
        DWORD const code = make_symlink(name, L"file", to_file);
        if (code == success) {
            EXPECT_EQ(attributes_of(name) & any_link, DWORD{FILE_ATTRIBUTE_REPARSE_POINT}) << name;
        }
        return code;
    };
    expect_codes(fill, link_it, new_names, taken_names, impossible_names, no_names);
    EXPECT_EQ(link_it(at(LR"(file\new)")), DWORD{ERROR_PATH_NOT_FOUND}) << "below a file";
    EXPECT_EQ(make_symlink(at(L"new"), L"file", 8), DWORD{ERROR_INVALID_PARAMETER});
}

TEST_F(SymbolicLinks, AreMadeToAnything)
{
    for (wchar_t const *target : {L"dir", L"file", L"missing", LR"(Q:\missing)"}) {
        for (DWORD const flags : {to_file, to_directory}) {
            DWORD const directory = flags == to_directory ? FILE_ATTRIBUTE_DIRECTORY : 0U;
            link(L"link", target, flags);
            EXPECT_EQ(attributes_of(at(L"link")) & any_link,
                      FILE_ATTRIBUTE_REPARSE_POINT | directory)
                << target;
            unlink(flags);
        }
    }
}

struct target_case
{
    wchar_t const *target;
    char16_t const *substitute;
    char16_t const *print;
    unsigned long relative;
    char const *why;
};

constexpr target_case target_cases[] = {
    {L"file", u"file", u"file", 1, "a name"},
    {LR"(..\A\.\b)", uR"(..\A\.\b)", uR"(..\A\.\b)", 1, "kept as it is"},
    {LR"(\dir)", uR"(\dir)", uR"(\dir)", 1, "on the link's own volume"},
    {LR"(C:\dir\x)", uR"(\??\C:\dir\x)", uR"(C:\dir\x)", 0, "absolute"},
    {LR"(\\server\share\x)", uR"(\??\UNC\server\share\x)", uR"(\\server\share\x)", 0, "on a share"},
    {LR"(\\?\C:\x)", uR"(\??\C:\x)", uR"(\\?\C:\x)", 0, "with a long prefix"},
};

TEST_F(SymbolicLinks, KeepTheTextOfTheirTarget)
{
    for (target_case const &row : target_cases) {
        link(L"link", row.target);
        bytes const data = reparse_data(at(L"link"));
        ASSERT_GE(data.size(), 20U);
        EXPECT_EQ(number_at(data, 0, 4), symlink_tag) << row.why;
        EXPECT_EQ(number_at(data, 4, 2), data.size() - 8) << row.why;
        EXPECT_EQ(number_at(data, 16, 4), row.relative) << row.why;
        EXPECT_EQ(text_at(data, 8, 20), row.substitute) << row.why;
        EXPECT_EQ(text_at(data, 12, 20), row.print) << row.why;
        unlink(to_file);
    }
}

TEST_F(SymbolicLinks, AreFollowedByOpening)
{
    link(L"to_file", L"file");
    link(L"to_dir", at(L"dir"), to_directory);
    link(L"rooted", wide(space.root()).substr(2) + LR"(\file)");
    EXPECT_EQ(content_of(at(L"to_file")), "content");
    EXPECT_EQ(content_of(at(L"rooted")), "content");
    EXPECT_EQ(content_of(at(LR"(to_dir\leaf)")), "leaf");
    EXPECT_EQ(attributes_of(at(LR"(to_dir\leaf)")) & any_link, 0U) << "followed within";
}

TEST_F(SymbolicLinks, LeadOnFromWhereTheyReallyAre)
{
    link(L"to_sub", LR"(dir\inner)", to_directory);
    link(LR"(dir\inner\up)", LR"(..\leaf)");
    EXPECT_EQ(content_of(at(LR"(to_sub\up)")), "leaf");
    EXPECT_EQ(content_of(at(LR"(to_sub\..\file)")), "content") << "dots in a text go before";
}

TEST_F(SymbolicLinks, AreNotFollowedOnDemand)
{
    link(L"link", L"dir", to_directory);
    reparse_point const self(at(L"link"), FILE_READ_ATTRIBUTES);
    ASSERT_EQ(self.code, success);
    BY_HANDLE_FILE_INFORMATION information = {};
    ASSERT_TRUE(::GetFileInformationByHandle(self.get(), &information));
    EXPECT_EQ(information.dwFileAttributes & any_link, any_link);
    EXPECT_EQ(attributes_of(at(L"link")) & any_link, any_link);
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    ASSERT_TRUE(::GetFileAttributesExW(at(L"link").c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(data.dwFileAttributes & any_link, any_link);
    EXPECT_EQ(information_of(at(L"link")).dwFileAttributes & any_link,
              DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

// Before Windows 11 nobody minded who asked for directories, too.
TEST_F(SymbolicLinks, AreOfTheKindOfTheirTarget)
{
    bool const minds = running_edition() >= windows_edition::windows_11;
    for (DWORD const flags : {to_file, to_directory}) {
        link(L"link", flags == to_file ? L"dir" : L"file", flags);
        DWORD const code = flags == to_file ? ERROR_ACCESS_DENIED : ERROR_DIRECTORY;
        EXPECT_EQ(open(L"link"), minds ? code : success);
        EXPECT_EQ(code_of_open(at(L"link"), {.access = 0}), DWORD{ERROR_ACCESS_DENIED})
            << "a directory or a link to one, without the flag";
        unlink(flags);
    }
}

/// Targets.
constexpr call_row broken_cases[] = {
    {L"missing", ERROR_FILE_NOT_FOUND, "nothing there"},
    {LR"(missing\a)", ERROR_PATH_NOT_FOUND, "nor the directory above"},
    {LR"(Q:\a)", ERROR_PATH_NOT_FOUND, "no such drive"},
    {L"dir/leaf", ERROR_INVALID_NAME, "in the target, a slash is no separator"},
};

TEST_F(SymbolicLinks, LeadAstray)
{
    for (call_row const &row : broken_cases) {
        for (DWORD const flags : {to_file, to_directory}) {
            link(L"link", row.text, flags);
            EXPECT_EQ(open(L"link"), row.code) << row.why;
            EXPECT_EQ(get_file_attributes(at(L"link")), success) << row.why;
            unlink(flags);
        }
    }
}

TEST_F(SymbolicLinks, AreFollowedUpTo63Times)
{
    std::wstring target = L"file";
    for (int count = 1; count <= 64; ++count) {
        std::wstring const name = L"link" + std::to_wstring(count);
        link(name, target);
        target = name;
    }
    EXPECT_EQ(open(L"link63"), success);
    EXPECT_EQ(open(L"link64"), DWORD{ERROR_CANT_RESOLVE_FILENAME});
}

TEST_F(SymbolicLinks, ToThemselvesAreFollowedNowhere)
{
    for (DWORD const flags : {to_file, to_directory}) {
        link(L"link", L"link", flags);
        EXPECT_EQ(open(L"link"), DWORD{ERROR_CANT_RESOLVE_FILENAME});
        EXPECT_EQ(get_file_attributes(at(L"link")), success);
        unlink(flags);
    }
}

TEST_F(SymbolicLinks, AreDeletedThemselves)
{
    link(L"to_file", L"file");
    link(L"to_dir", L"dir", to_directory);
    auto const remove_file = [&](wchar_t const *name) {
        return outcome_of([&] { return ::DeleteFileW(at(name).c_str()) != FALSE; });
    };
    EXPECT_EQ(remove_file(L"to_dir"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(remove_directory(at(L"to_file")), DWORD{ERROR_DIRECTORY});
    EXPECT_EQ(remove_file(L"to_file"), success);
    EXPECT_EQ(remove_directory(at(L"to_dir")), success);
    EXPECT_FALSE(space.exists(space.path(u"to_file")));
    EXPECT_FALSE(space.exists(space.path(u"to_dir")));
    EXPECT_EQ(content_of(at(L"file")), "content");
    EXPECT_EQ(content_of(at(LR"(dir\leaf)")), "leaf");
}

TEST_F(SymbolicLinks, AreMovedThemselvesAndCopiedByContent)
{
    link(L"link", L"file");
    ASSERT_TRUE(::MoveFileExW(at(L"link").c_str(), at(L"moved").c_str(), 0));
    EXPECT_NE(attributes_of(at(L"moved")) & FILE_ATTRIBUTE_REPARSE_POINT, 0U);
    ASSERT_TRUE(::CopyFileW(at(L"moved").c_str(), at(L"copied").c_str(), TRUE));
    EXPECT_EQ(attributes_of(at(L"copied")) & FILE_ATTRIBUTE_REPARSE_POINT, 0U);
    EXPECT_EQ(content_of(at(L"copied")), "content");
    EXPECT_FALSE(space.exists(space.path(u"link")));
}

TEST_F(SymbolicLinks, AreEnumeratedThemselves)
{
    link(L"link", L"dir", to_directory);
    search const entry(at(L"link"));
    ASSERT_EQ(entry.code, success);
    EXPECT_EQ(entry.data.dwFileAttributes & any_link, any_link);
    EXPECT_EQ(entry.data.dwReserved0, symlink_tag);
    EXPECT_EQ(units(found(at(LR"(link\*)"))), u".|..|inner|leaf") << "followed within";
}

// Wine, too, says that there is none.
TEST(ReparseQueries, FailWhereThereIsNone)
{
    workspace space;
    space.make_file(space.path(u"file"));
    space.make_directory(space.path(u"dir"));
    for (wchar_t const *name : {L"file", L"dir"}) {
        bytes data;
        reparse_point point(in(space, name));
        ASSERT_EQ(point.code, success);
        EXPECT_EQ(point.read(data), DWORD{ERROR_NOT_A_REPARSE_POINT});
        EXPECT_TRUE(data.empty());
        bytes const nothing = with_header(mount_point_tag, {});
        EXPECT_EQ(point.control(FSCTL_DELETE_REPARSE_POINT, nothing),
                  expected(ERROR_NOT_A_REPARSE_POINT, ERROR_NOT_SUPPORTED));
    }
}

TEST(ReparseQueries, KnowNoOtherCodes)
{
    workspace space;
    constexpr DWORD unknown = 0x00090F9C; // of the file systems, and none that there is
    EXPECT_EQ(reparse_point(wide(space.root())).control(unknown, {}),
              expected(ERROR_INVALID_FUNCTION, ERROR_NOT_SUPPORTED));
}

class Junctions : public testing::Test
{
protected:
    void SetUp() override
    {
        NEEDS(has_reparse_data(), "no reparse data can be set here");
        fill(space);
        space.make_directory(space.path(u"point"));
        data = junction_data(in(space, L"dir"));
    }
    DWORD clear(wchar_t const *name, bytes const &header)
    {
        return reparse_point(in(space, name)).control(FSCTL_DELETE_REPARSE_POINT, header);
    }

    workspace space;
    bytes data;
    std::wstring point = in(space, L"point");
};

TEST_F(Junctions, AreFollowed)
{
    ASSERT_EQ(set_reparse_data(point, data), success);
    EXPECT_EQ(attributes_of(point) & any_link, any_link);
    EXPECT_EQ(content_of(point + LR"(\leaf)"), "leaf");
    EXPECT_EQ(search(point).data.dwReserved0, mount_point_tag);
    EXPECT_TRUE(reparse_data(point) == data) << "given back as it was";
    EXPECT_EQ(remove_directory(point), success);
    EXPECT_EQ(content_of(in(space, LR"(dir\leaf)")), "leaf");
}

TEST_F(Junctions, GoWithTheirData)
{
    ASSERT_EQ(set_reparse_data(point, data), success);
    EXPECT_EQ(clear(L"point", with_header(symlink_tag, {})), DWORD{ERROR_REPARSE_TAG_MISMATCH});
    EXPECT_EQ(clear(L"point", strange_data(0, 0, {})), DWORD{ERROR_REPARSE_TAG_INVALID});
    EXPECT_EQ(clear(L"point", data), DWORD{ERROR_INVALID_REPARSE_DATA}) << "the header only";
    EXPECT_EQ(clear(L"point", with_header(mount_point_tag, {})), success);
    EXPECT_EQ(attributes_of(point) & any_link, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(units(found(point + LR"(\*)")), u".|..");
}

TEST_F(Junctions, AreReadInPartOrNotAtAll)
{
    ASSERT_EQ(set_reparse_data(point, data), success);
    bytes read;
    EXPECT_EQ(reparse_point(point).read(read, 30), DWORD{ERROR_MORE_DATA});
    EXPECT_TRUE(read == bytes(data.begin(), data.begin() + 30));
    EXPECT_EQ(reparse_point(point).read(read, 4), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_TRUE(read.empty());
}

TEST_F(Junctions, AreSetOnEmptyDirectoriesOnly)
{
    EXPECT_EQ(set_reparse_data(in(space, L"dir"), data), DWORD{ERROR_DIR_NOT_EMPTY});
    EXPECT_EQ(set_reparse_data(in(space, L"file"), data), DWORD{ERROR_DIRECTORY});
    EXPECT_EQ(attributes_of(in(space, L"dir")) & any_link, DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

TEST_F(Junctions, TakeOtherDataOfTheirTagOnly)
{
    ASSERT_EQ(set_reparse_data(point, data), success);
    bytes const other = junction_data(wide(space.root()));
    EXPECT_EQ(set_reparse_data(point, strange_data(strange_tag, 7, {})),
              DWORD{ERROR_REPARSE_TAG_MISMATCH});
    EXPECT_EQ(set_reparse_data(point, other), success);
    EXPECT_EQ(content_of(point + LR"(\file)"), "content");
}

TEST_F(Junctions, RefuseMalformedData)
{
    bytes longer = data;
    longer.push_back(0);
    bytes const shorter(data.begin(), data.end() - 1);
    bytes beyond = data;
    beyond[11] = 0x40; // a text that is longer than all data
    for (bytes const &wrong : {longer, shorter, beyond, bytes(7, 1), bytes()})
        EXPECT_EQ(set_reparse_data(point, wrong), DWORD{ERROR_INVALID_REPARSE_DATA})
            << wrong.size();
    EXPECT_EQ(set_reparse_data(point, strange_data(0, 7, {1})), DWORD{ERROR_INVALID_REPARSE_DATA})
        << "the system's own tag";
    EXPECT_EQ(attributes_of(point) & any_link, DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

TEST_F(Junctions, AreNotTheOnlyTags)
{
    bytes const strange = strange_data(strange_tag, 7, {1, 2, 3});
    std::wstring const file = in(space, L"file");
    ASSERT_EQ(set_reparse_data(file, strange), success);
    EXPECT_TRUE(reparse_data(file) == strange);
    EXPECT_EQ(opened(file, GENERIC_READ).code, DWORD{ERROR_CANT_ACCESS_FILE});
    EXPECT_EQ(search(file).data.dwReserved0, strange_tag);
    EXPECT_EQ(set_reparse_data(file, strange_data(strange_tag, 8, {})),
              DWORD{ERROR_REPARSE_ATTRIBUTE_CONFLICT})
        << "another GUID";
    EXPECT_EQ(clear(L"file", strange_data(strange_tag, 7, {})), success);
    EXPECT_EQ(content_of(file), "content");
}

} // namespace

} // namespace contract
