#include "tools/run_flfs.hpp"

#include <string>

#if FLFS_SYSTEM_IS_SIMULATED

namespace {

using namespace test_support;

TEST(FlfsMkdir, IsRefusedWhereThereIsNoWindows)
{
    for (char const *option : {"--parents", "-p", "other"}) {
        EXPECT_EQ(run_flfs({"mkdir", option, "C:\\dir"}),
                  refused(2, "flfs: mkdir works on Windows only: there is no Windows file system "
                             "to change here.\n"))
            << option;
    }
}

} // namespace

#else

#include <windows.h>

namespace {

using namespace test_support;

/// A fresh folder below the system's folder for temporary files.
class FlfsMkdir : public testing::Test
{
protected:
    void SetUp() override
    {
        wchar_t temp[MAX_PATH + 1] = {};
        ASSERT_NE(::GetTempPathW(MAX_PATH + 1, temp), 0u);
        std::wstring const name = L"flfs-mkdir-" + std::to_wstring(::GetCurrentProcessId());
        std::wstring const root = temp + name;
        remove_tree(root); // of a former process with our number
        ASSERT_TRUE(::CreateDirectoryW(root.c_str(), nullptr)) << ::GetLastError();
        root_.assign(root.begin(), root.end());
    }

    void TearDown() override { remove_tree(wide(root_)); }

    /// A pathname in the folder, as an argument.
    std::string path(std::u16string const &relative) const
    {
        return fl::filesystem::to_utf8(root_ + u'\\' + relative);
    }

    bool is_directory(std::u16string const &relative) const
    {
        DWORD const attributes = attributes_of(relative);
        return attributes != INVALID_FILE_ATTRIBUTES &&
               (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    }

    bool exists(std::u16string const &relative) const
    {
        return attributes_of(relative) != INVALID_FILE_ATTRIBUTES;
    }

private:
    static std::wstring wide(std::u16string const &text) { return {text.begin(), text.end()}; }

    DWORD attributes_of(std::u16string const &relative) const
    {
        return ::GetFileAttributesW((L"\\\\?\\" + wide(root_ + u'\\' + relative)).c_str());
    }

    // by the system's own calls: names here are longer than others take
    static void remove_tree(std::wstring const &directory)
    {
        std::wstring const long_form = L"\\\\?\\" + directory;
        WIN32_FIND_DATAW entry{};
        HANDLE const search = ::FindFirstFileW((long_form + L"\\*").c_str(), &entry);
        if (search == INVALID_HANDLE_VALUE)
            return;
        do {
            std::wstring const name = entry.cFileName;
            if (name != L"." && name != L"..")
                remove_tree(directory + L'\\' + name);
        } while (::FindNextFileW(search, &entry));
        ::FindClose(search);
        ::RemoveDirectoryW(long_form.c_str());
    }

    std::u16string root_;
};

TEST_F(FlfsMkdir, MakesDirectoriesInOrder)
{
    EXPECT_EQ(run_flfs({"mkdir", path(u"a"), path(u"a\\b")}),
              printed("made " + path(u"a") + "\nmade " + path(u"a\\b") + "\n"));
    EXPECT_TRUE(is_directory(u"a\\b"));
}

TEST_F(FlfsMkdir, ShowsTheNativeForm)
{
    EXPECT_EQ(run_flfs({"mkdir", path(u"") + "/a//"}), printed("made " + path(u"a") + "\n"));
    EXPECT_TRUE(is_directory(u"a"));
}

TEST_F(FlfsMkdir, MissingParentStopsIt)
{
    EXPECT_EQ(
        run_flfs({"mkdir", path(u"a"), path(u"no\\dir"), path(u"b")}),
        (flfs_result{
            1, "made " + path(u"a") + "\n",
            report_of("PathNotFound", "pathname", {path(u"no\\dir")},
                      "The directory above it doesn't exist. Use --parents to make it, too.")}));
    EXPECT_FALSE(exists(u"no"));
    EXPECT_FALSE(exists(u"b")) << "nothing is made behind a failure";
}

TEST_F(FlfsMkdir, ParentsMakesWhatIsMissing)
{
    for (char const *option : {"--parents", "-p"}) {
        std::u16string const chain = option[1] == 'p' ? u"p\\q\\r" : u"x\\y\\z";
        EXPECT_EQ(run_flfs({"mkdir", option, path(chain)}), printed("made " + path(chain) + "\n"));
        EXPECT_TRUE(is_directory(chain)) << option;
    }
}

TEST_F(FlfsMkdir, ExistingDirectoryIsAFailure)
{
    run_flfs({"mkdir", path(u"a")});
    for (char const *option : {"--parents", "--"}) {
        EXPECT_EQ(
            run_flfs({"mkdir", option, path(u"a")}),
            refused(1, report_of("FileExistsError", "pathname", {path(u"a")},
                                 "Something of that name is there already. Choose another name, "
                                 "or remove it first.")))
            << option;
    }
}

TEST_F(FlfsMkdir, EmptyPathname)
{
    EXPECT_EQ(run_flfs({"mkdir", ""}),
              refused(1, report_of("InvalidArgument", "argument", {"(empty)"},
                                   "Empty Path not permitted.")));
}

TEST_F(FlfsMkdir, PathnameBeyondTheOldLimit)
{
    std::u16string const chain = std::u16string(150, u'd') + u'\\' + std::u16string(150, u'e');
    flfs_result const result = run_flfs({"mkdir", "--parents", path(chain)});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_TRUE(is_directory(chain));
}

TEST_F(FlfsMkdir, NameBeyondAscii)
{
    std::u16string const name = {u'\u00E9', 0xD83D, 0xDE00};
    EXPECT_EQ(run_flfs({"mkdir", path(name)}), printed("made " + path(name) + "\n"));
    EXPECT_TRUE(is_directory(name));
}

} // namespace

#endif
